#pragma once
// A fault that the service is told to show, for the tests of the program's send path and for
// the demo. It concerns requests only: control frames are always served, so that a fault can
// be switched off again.
//   slow      every reply comes late (the delay in ms; the time-out of the caller wins)
//   refuse    every request is answered "Access Denied" (65534)
//   drop      every request ends its connection without an answer (the caller: 65531)
//   overload  every request is answered "RPC Server Overload" (65533)
//   off       normal service

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct FaultMode {
    enum class Kind { Off, Slow, Refuse, Drop, Overload };

    Kind kind = Kind::Off;
    std::uint32_t delayMs = 0;

    // From the control arguments; nothing, with `error` set, for anything else.
    static std::optional<FaultMode> parse(const std::vector<std::string>& arguments,
                                          std::uint32_t defaultDelayMs, std::string& error);
    // "off", "slow 5000 ms", "refuse", ...
    std::string describe() const;
};
