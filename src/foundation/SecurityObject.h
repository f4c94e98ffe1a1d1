#pragma once
// The one process-wide description of how shared named objects are protected, consulted by
// every named Corvane::Mutex when it makes its lock file. On Windows it carries the security
// descriptor with the Everyone access list; on Linux what it gives is the mode with which a
// lock file is created (0666, see EveryoneDacl), so that a copy run by another user can open
// the file that the first copy made. An installed system also lays the file down with a
// tmpfiles.d line, so that its mode does not depend on which user came first.
//
// The object is constant-initialised: it exists before any dynamic initialiser of any file
// runs, so that a named mutex made during static initialisation already sees it. Its
// destruction at exit clears the global pointer; a mutex made after that falls back to a
// file that only its creator may use, as a Windows mutex made without security attributes.

#include "foundation/EveryoneDacl.h"

#include <atomic>
#include <sys/types.h>

namespace Corvane {

class SecurityObject {
public:
    constexpr SecurityObject() = default;
    virtual ~SecurityObject();
    SecurityObject(const SecurityObject&) = delete;
    SecurityObject& operator=(const SecurityObject&) = delete;

    // The mode of a newly created lock file (umask does not apply).
    constexpr mode_t creationMode() const { return m_dacl.mode(); }

private:
    EveryoneDacl m_dacl;
};

// The process's security object; null once it has been destroyed at exit.
extern std::atomic<SecurityObject*> g_securityObject;

} // namespace Corvane
