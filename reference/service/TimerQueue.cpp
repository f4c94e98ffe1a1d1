#include "service/TimerQueue.h"

#include <algorithm>
#include <utility>

void TimerQueue::add(std::chrono::milliseconds delay, std::function<void()> action) {
    m_actions.emplace(Clock::now() + delay, std::move(action));
}

int TimerQueue::pollTimeout() const {
    if (m_actions.empty())
        return -1;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(m_actions.begin()->first - Clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 24 * 60 * 60 * 1000));
}

void TimerQueue::runDue() {
    const auto now = Clock::now();
    while (!m_actions.empty() && m_actions.begin()->first <= now) {
        auto action = std::move(m_actions.begin()->second);
        m_actions.erase(m_actions.begin());
        action();
    }
}
