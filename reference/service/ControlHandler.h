#pragma once
// The control operations that tests and the demo send with "qgsasvc --emit" and its
// siblings: send any call to the programs, set the counts, play back filtering, show a
// fault, tell the state. Each is answered with a result code (0 done, 1 refused) and a line
// of text, at once, or when a simulation has run its course.

#include "service/ConfigStore.h"
#include "service/ControlOperation.h"
#include "service/FilterSimulation.h"
#include "service/ProgramChannel.h"
#include "service/ServiceSettings.h"
#include "service/ServiceState.h"
#include "service/TimerQueue.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class ControlHandler {
public:
    static constexpr std::uint32_t Done = 0;
    static constexpr std::uint32_t Refused = 1;

    using Answer = std::function<void(std::uint32_t result, const std::string& text)>;

    ControlHandler(const ServiceSettings& settings, ConfigStore& config, ServiceState& state,
                   TimerQueue& timers, ProgramChannel& programs);

    // Carries out `operation` (the frame's code) and answers through `answer`, exactly once.
    void handle(std::uint32_t operation, const std::vector<std::string>& arguments, Answer answer);

private:
    void emit(const std::vector<std::string>& arguments, const Answer& answer);
    void counts(const std::vector<std::string>& arguments, const Answer& answer);
    void fault(const std::vector<std::string>& arguments, const Answer& answer);
    std::string status() const;

    const ServiceSettings& m_settings;
    ConfigStore& m_config;
    ServiceState& m_state;
    ProgramChannel& m_programs;
    FilterSimulation m_simulation;
};
