#pragma once
// Things the service does later (a slow reply, the next step of a simulation) without
// blocking its loop: the loop waits in poll() no longer than until the earliest of them.

#include <chrono>
#include <functional>
#include <map>

class TimerQueue {
public:
    using Clock = std::chrono::steady_clock;

    void add(std::chrono::milliseconds delay, std::function<void()> action);
    // Milliseconds until the earliest action is due (0 when one is), -1 when there is none:
    // poll()'s time-out.
    int pollTimeout() const;
    // Runs every action that is due, in the order they fall due; an action may add more.
    void runDue();
    bool empty() const { return m_actions.empty(); }

private:
    std::multimap<Clock::time_point, std::function<void()>> m_actions;
};
