#pragma once
// The reference plug-in of the build folder, loaded by the program's own LoadPlugin into
// this test process, beside the real qgsasvc in a sandbox root. Each test loads it afresh
// (so that the RPC object takes the test's socket), with handlers that record every call
// (InboundRecorder); the fixture drops the handlers, unloads the library and checks that it
// left the process before the service is stopped.

#include "BoxRecorder.h"
#include "InboundRecorder.h"
#include "ServiceSandbox.h"

#include "mainwindow/RpcContract.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class IMessage;

class PluginSandbox : public ServiceSandbox {
protected:
    void SetUp() override;
    void TearDown() override;

    // The program's LoadPlugin with the plug-in of the build folder and recording handlers.
    void loadPlugin();
    IRPCExt& rpc() const;

    struct Exchange {
        std::uint32_t status = 0;
        // The reply's bytes, given back to the RPC object already.
        std::optional<std::string> reply;
    };
    // One request through the RPC object, as the program's send path makes it.
    Exchange request(const IMessage& message);
    std::uint32_t ping();
    // SendRequest's time-out for the requests that follow.
    static void setTimeout(std::chrono::milliseconds timeout);
    // qgsasvc's control command, expected to succeed; its output.
    std::string control(const std::vector<std::string>& arguments);

    // Whether the plug-in's library is in this process now.
    static bool pluginLoaded();
    static std::string pluginPath() { return QGPLUGIN_PATH; }

    BoxRecorder boxes;
};
