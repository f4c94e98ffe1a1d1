#pragma once
// What the service shows while mail passes through it, played back for the demo and the
// tests: the tray animation is switched on, the counts rise one mail at a time, and the
// animation is switched off again. Arguments "messages=N" (default 5, up to 1000) and
// "spam=K" (default 2, up to N): K of the N mails count as spam, spread over the run.

#include "service/ServiceState.h"
#include "service/TimerQueue.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class FilterSimulation {
public:
    static constexpr std::chrono::milliseconds Step{100};

    // Sends the tray animation message with its selector (1 on, 0 off).
    using Animate = std::function<void(std::int32_t)>;
    // Told when the run has ended, with a line about it.
    using Done = std::function<void(const std::string&)>;

    FilterSimulation(TimerQueue& timers, ServiceState& state, Animate animate);

    // Starts a run; false with `error` set for bad arguments or while a run is going on.
    bool start(const std::vector<std::string>& arguments, Done done, std::string& error);
    bool running() const { return m_running; }

private:
    void step();

    TimerQueue& m_timers;
    ServiceState& m_state;
    Animate m_animate;
    Done m_done;
    bool m_running = false;
    std::uint32_t m_messages = 0;
    std::uint32_t m_spam = 0;
    std::uint32_t m_stepsDone = 0;
};
