#pragma once
// How long SendRequest waits for the service, connecting and writing included, before it
// answers "RPC Time out" (65532). The host makes its sends on the GUI thread, a ping each
// second, so the wait is kept short. QGPLUGIN_RPC_TIMEOUT_MS overrides it (1 to 600000 ms);
// it is read for each request, so that a test can shorten the wait of one request.

#include <chrono>

class RpcTimeout {
public:
    static constexpr const char* Variable = "QGPLUGIN_RPC_TIMEOUT_MS";
    static constexpr std::chrono::milliseconds Default{3000};
    static constexpr std::chrono::milliseconds Longest{600000};

    // The time-out that applies now.
    static std::chrono::milliseconds Current();
    // The value of the variable's text: a whole number of milliseconds in range, else the
    // default.
    static std::chrono::milliseconds Parse(const char* text);
};
