#pragma once
// A manual-reset event, as the Windows one that threads signal each other with: once set it
// stays set, releasing every waiter present and future, until reset.

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace Corvane {

class Event {
public:
    Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    // False when the event could not be signalled (its lock could not be taken).
    bool set() noexcept;
    void reset();
    // Waits up to `timeoutMs` (Infinite: without limit); true when the event is set.
    bool wait(std::uint32_t timeoutMs);
    bool isSet() const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_signalled = false;
};

} // namespace Corvane
