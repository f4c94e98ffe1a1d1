#pragma once
// The control client inside qgsasvc: "--emit", "--counts", "--simulate-filtering",
// "--fault" and "--status" send their arguments to the running service over its socket and
// print its answer. Exit code 0 when the service carried the operation out, 1 otherwise
// (with the reason on standard error).

#include "service/ControlOperation.h"

#include <string>
#include <vector>

class ControlCommand {
public:
    static int run(ControlOperation operation, const std::vector<std::string>& arguments);
    // The send path's word for a status ("RPC Server Down", ...), or "status N".
    static std::string describeStatus(std::uint32_t status);
};
