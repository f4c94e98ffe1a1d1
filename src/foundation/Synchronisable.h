#pragma once
// The one lock interface of the foundation: critical sections and mutexes both answer it,
// so that a scoped guard (SyncObject) can hold either kind without knowing which.

#include <cstdint>

namespace Corvane {

// A time-out that never ends, as the Windows INFINITE (a time-out of -1).
inline constexpr std::uint32_t Infinite = 0xFFFFFFFF;

class Synchronisable {
public:
    virtual ~Synchronisable();
    // Waits up to `timeoutMs` milliseconds (Infinite: without limit); true when the lock is
    // had.
    virtual bool lock(std::uint32_t timeoutMs) = 0;
    virtual void unlock() = 0;
};

} // namespace Corvane
