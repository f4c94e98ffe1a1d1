#pragma once
// The operations of the control frames (the frame's code) and their names in the log.
// Their arguments travel as a list of texts (ControlArguments), parsed by the service.

#include <cstdint>
#include <string_view>

enum class ControlOperation : std::uint32_t {
    Emit = 1,              // <id> [field=value...]: send a call to every program
    Counts = 2,            // [spam=N] [examined=M]: set the mail counts
    SimulateFiltering = 3, // [messages=N] [spam=K]: animation on, counts rising, animation off
    Fault = 4,             // slow [ms] | refuse | drop | overload | off
    Status = 5,            // no arguments: a line about the service's state
};

// "emit", "counts", "simulate-filtering", "fault", "status"; "unknown" for other codes.
std::string_view NameOf(ControlOperation operation);
