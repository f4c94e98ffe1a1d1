#pragma once
// A counting semaphore that a thread can wait on together with other objects, as
// WaitForMultipleObjects waits on a Windows semaphore and an event. It is an eventfd in
// semaphore mode: readable while the count is above 0, each acquisition taking one. The
// foundation's events are condition variables, which cannot be waited on together with
// anything else; a descriptor can, with poll.

#include <cstdint>
#include <mutex>

class CountingSemaphore {
public:
    // False from valid() when the descriptor could not be made.
    CountingSemaphore(std::uint32_t initialCount, std::uint32_t maximumCount);
    ~CountingSemaphore();
    CountingSemaphore(const CountingSemaphore&) = delete;
    CountingSemaphore& operator=(const CountingSemaphore&) = delete;

    bool valid() const { return m_fd != -1; }
    // Adds `count` (ReleaseSemaphore). False, and nothing added, when that would pass the
    // maximum or the descriptor refused it.
    bool release(std::uint32_t count = 1);
    // Takes one count if there is one, without waiting.
    bool tryAcquire();
    // Readable (for poll) while the count is above 0; -1 when there is no descriptor.
    int handle() const { return m_fd; }

private:
    int m_fd = -1;
    const std::uint32_t m_maximum;
    // The count as far as releases and acquisitions have told it; the kernel's counter is
    // the truth, this only guards the maximum. Between a successful read and the decrement
    // it is one too high, which only makes the maximum stricter for that moment.
    std::mutex m_countLock;
    std::uint64_t m_count = 0;
};
