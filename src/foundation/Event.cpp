#include "foundation/Event.h"

#include "foundation/Synchronisable.h"

#include <chrono>
#include <system_error>

namespace Corvane {

bool Event::set() noexcept {
    try {
        std::lock_guard<std::mutex> guard(m_mutex);
        m_signalled = true;
        // Under the lock: a waiter that sees the flag may destroy the event at once.
        m_changed.notify_all();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void Event::reset() {
    std::lock_guard<std::mutex> guard(m_mutex);
    m_signalled = false;
}

bool Event::wait(std::uint32_t timeoutMs) {
    std::unique_lock<std::mutex> guard(m_mutex);
    if (timeoutMs == Infinite) {
        m_changed.wait(guard, [this] { return m_signalled; });
        return true;
    }
    return m_changed.wait_for(guard, std::chrono::milliseconds(timeoutMs),
                              [this] { return m_signalled; });
}

bool Event::isSet() const {
    std::lock_guard<std::mutex> guard(m_mutex);
    return m_signalled;
}

} // namespace Corvane
