#include "service/FilterSimulation.h"

#include <charconv>
#include <limits>
#include <utility>

namespace {

bool ReadCount(const std::string& text, std::uint32_t high, std::uint32_t& out) {
    std::uint32_t value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size() || text.empty() || value > high)
        return false;
    out = value;
    return true;
}

} // namespace

FilterSimulation::FilterSimulation(TimerQueue& timers, ServiceState& state, Animate animate)
    : m_timers(timers), m_state(state), m_animate(std::move(animate)) {}

bool FilterSimulation::start(const std::vector<std::string>& arguments, Done done,
                             std::string& error) {
    if (m_running) {
        error = "a simulation is running already";
        return false;
    }
    std::uint32_t messages = 5;
    std::uint32_t spam = 2;
    bool spamGiven = false;
    for (const std::string& argument : arguments) {
        if (argument.rfind("messages=", 0) == 0) {
            if (!ReadCount(argument.substr(9), 1000, messages)) {
                error = "messages= takes a number from 0 to 1000";
                return false;
            }
        } else if (argument.rfind("spam=", 0) == 0) {
            if (!ReadCount(argument.substr(5), 1000, spam)) {
                error = "spam= takes a number from 0 to 1000";
                return false;
            }
            spamGiven = true;
        } else {
            error = "expected messages=N and spam=K, not '" + argument + "'";
            return false;
        }
    }
    if (!spamGiven && spam > messages)
        spam = messages;
    if (spam > messages) {
        error = "spam= cannot be more than messages=";
        return false;
    }
    m_running = true;
    m_messages = messages;
    m_spam = spam;
    m_stepsDone = 0;
    m_done = std::move(done);
    m_animate(1);
    m_timers.add(Step, [this] { step(); });
    return true;
}

void FilterSimulation::step() {
    if (m_stepsDone < m_messages) {
        // Mail i is spam when it takes the spam share past another whole mail.
        const std::uint64_t before = std::uint64_t{m_stepsDone} * m_spam / m_messages;
        ++m_stepsDone;
        const std::uint64_t after = std::uint64_t{m_stepsDone} * m_spam / m_messages;
        // Counts set by hand may stand at the top already; they stay there.
        if (m_state.examinedCount < std::numeric_limits<std::int32_t>::max())
            ++m_state.examinedCount;
        if (after > before && m_state.spamCount < std::numeric_limits<std::int32_t>::max())
            ++m_state.spamCount;
        m_timers.add(Step, [this] { step(); });
        return;
    }
    m_animate(0);
    m_running = false;
    const std::string line = "filtered " + std::to_string(m_messages) + " messages, " +
                             std::to_string(m_spam) +
                             " spam; counts now spam=" + std::to_string(m_state.spamCount) +
                             " examined=" + std::to_string(m_state.examinedCount);
    Done done = std::move(m_done);
    m_done = nullptr;
    done(line);
}
