#include "service/ControlHandler.h"

#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"
#include "service/EmitRequest.h"
#include "service/FieldMessage.h"

#include <charconv>
#include <unistd.h>
#include <utility>

namespace {

bool ReadInteger(const std::string& text, std::int32_t& out) {
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), out);
    return failure == std::errc() && end == text.data() + text.size() && !text.empty();
}

} // namespace

ControlHandler::ControlHandler(const ServiceSettings& settings, ConfigStore& config,
                               ServiceState& state, TimerQueue& timers, ProgramChannel& programs)
    : m_settings(settings), m_config(config), m_state(state), m_programs(programs),
      m_simulation(timers, state, [this](std::int32_t animation) {
          m_programs.broadcast(FieldMessage(enumMSG_TRAY_ANIMATION_Message::Id,
                                            enumMSG_TRAY_ANIMATION_Message::Name, {animation}));
      }) {}

void ControlHandler::handle(std::uint32_t operation, const std::vector<std::string>& arguments,
                            Answer answer) {
    switch (static_cast<ControlOperation>(operation)) {
    case ControlOperation::Emit:
        emit(arguments, answer);
        return;
    case ControlOperation::Counts:
        counts(arguments, answer);
        return;
    case ControlOperation::SimulateFiltering: {
        std::string error;
        auto done = [answer](const std::string& line) { answer(Done, line); };
        if (!m_simulation.start(arguments, done, error))
            answer(Refused, error);
        return;
    }
    case ControlOperation::Fault:
        fault(arguments, answer);
        return;
    case ControlOperation::Status:
        if (!arguments.empty())
            answer(Refused, "status takes no arguments");
        else
            answer(Done, status());
        return;
    }
    answer(Refused, "unknown control operation " + std::to_string(operation));
}

void ControlHandler::emit(const std::vector<std::string>& arguments, const Answer& answer) {
    std::string error;
    const auto message = EmitRequest::parse(arguments, m_config.settings(),
                                            static_cast<std::int32_t>(::getpid()), error);
    if (!message) {
        answer(Refused, error);
        return;
    }
    const std::size_t count = m_programs.broadcast(*message);
    answer(Done, "sent " + std::to_string(message->GetId()) + " (" +
                     stdstr::fromTString(std::u16string(message->GetName())) + ") to " +
                     std::to_string(count) + (count == 1 ? " program" : " programs"));
}

void ControlHandler::counts(const std::vector<std::string>& arguments, const Answer& answer) {
    std::int32_t spam = m_state.spamCount;
    std::int32_t examined = m_state.examinedCount;
    if (arguments.empty()) {
        answer(Refused, "expected spam=N and/or examined=M");
        return;
    }
    for (const std::string& argument : arguments) {
        const auto equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        std::int32_t value = 0;
        if (equals == std::string::npos || !ReadInteger(argument.substr(equals + 1), value) ||
            (name != "spam" && name != "examined")) {
            answer(Refused, "expected spam=N and/or examined=M, not '" + argument + "'");
            return;
        }
        (name == "spam" ? spam : examined) = value;
    }
    m_state.spamCount = spam;
    m_state.examinedCount = examined;
    answer(Done, "spam=" + std::to_string(spam) + " examined=" + std::to_string(examined));
}

void ControlHandler::fault(const std::vector<std::string>& arguments, const Answer& answer) {
    std::string error;
    const auto mode = FaultMode::parse(arguments, m_settings.slowReplyMs, error);
    if (!mode) {
        answer(Refused, error);
        return;
    }
    m_state.fault = *mode;
    answer(Done, "fault " + mode->describe());
}

std::string ControlHandler::status() const {
    return "pid=" + std::to_string(::getpid()) +
           " programs=" + std::to_string(m_programs.programCount()) +
           " fault=" + m_state.fault.describe() + " spam=" + std::to_string(m_state.spamCount) +
           " examined=" + std::to_string(m_state.examinedCount) +
           " filter=" + std::to_string(m_state.filterState) +
           " gui=" + std::to_string(m_state.guiProcessId) +
           " simulation=" + (m_simulation.running() ? "running" : "idle");
}
