#pragma once
// A lock for the threads of one process. It is recursive, as a Windows critical section is:
// the thread that holds it may take it again and must leave it as often as it entered.

#include "foundation/Synchronisable.h"

#include <mutex>

namespace Corvane {

class CriticalSection : public Synchronisable {
public:
    CriticalSection() = default;
    ~CriticalSection() override;
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    // A critical section cannot time out: the time-out is ignored, the call waits until the
    // section is entered and returns true.
    bool lock(std::uint32_t timeoutMs) override;
    void unlock() override;
    // Enters only when that is possible at once (TryEnterCriticalSection).
    bool tryLock();

private:
    std::recursive_mutex m_section;
};

} // namespace Corvane
