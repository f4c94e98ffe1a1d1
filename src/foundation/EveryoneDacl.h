#pragma once
// Who may use a named object that must be reachable from every user's session: everybody
// may open and lock it, and only its owner may change that. On Windows this is an access
// list (deny WRITE_DAC and WRITE_OWNER to Everyone, allow GENERIC_ALL); on Linux the same
// rule is the lock file's mode, read and write for owner, group and others, because only the
// owner of a file (or root) may chmod or chown it. Building it cannot fail here, so there is
// no error to keep.

#include <sys/types.h>

namespace Corvane {

// rw-rw-rw-: every user may open the lock file for writing, which a write lock needs.
inline constexpr mode_t EveryoneMode = 0666;

class EveryoneDacl {
public:
    constexpr EveryoneDacl() = default;
    virtual ~EveryoneDacl();
    EveryoneDacl(const EveryoneDacl&) = delete;
    EveryoneDacl& operator=(const EveryoneDacl&) = delete;

    constexpr mode_t mode() const { return m_mode; }

private:
    mode_t m_mode = EveryoneMode;
};

} // namespace Corvane
