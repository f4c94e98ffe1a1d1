#include "service/FaultMode.h"

#include <charconv>

std::optional<FaultMode> FaultMode::parse(const std::vector<std::string>& arguments,
                                          std::uint32_t defaultDelayMs, std::string& error) {
    const std::string usage = "expected: slow [milliseconds] | refuse | drop | overload | off";
    if (arguments.empty() || arguments.size() > 2) {
        error = usage;
        return std::nullopt;
    }
    FaultMode mode;
    const std::string& word = arguments[0];
    if (word == "slow") {
        mode.kind = Kind::Slow;
        mode.delayMs = defaultDelayMs;
        if (arguments.size() == 2) {
            const std::string& text = arguments[1];
            std::uint32_t delay = 0;
            const auto [end, failure] =
                std::from_chars(text.data(), text.data() + text.size(), delay);
            if (failure != std::errc() || end != text.data() + text.size() || delay > 600000) {
                error = "the delay must be a number of milliseconds up to 600000";
                return std::nullopt;
            }
            mode.delayMs = delay;
        }
        return mode;
    }
    if (arguments.size() == 2) {
        error = usage;
        return std::nullopt;
    }
    if (word == "refuse")
        mode.kind = Kind::Refuse;
    else if (word == "drop")
        mode.kind = Kind::Drop;
    else if (word == "overload")
        mode.kind = Kind::Overload;
    else if (word != "off") {
        error = usage;
        return std::nullopt;
    }
    return mode;
}

std::string FaultMode::describe() const {
    switch (kind) {
    case Kind::Off:
        return "off";
    case Kind::Slow:
        return "slow " + std::to_string(delayMs) + " ms";
    case Kind::Refuse:
        return "refuse";
    case Kind::Drop:
        return "drop";
    case Kind::Overload:
        return "overload";
    }
    return "off";
}
