#pragma once
// A sandbox root with the real qgsasvc in it: tests start it with "-Start" and talk to it
// over its socket; the fixture stops it at the end, killing it if it does not stop, so that
// no daemon outlives its test or its folder.

#include "ProgramRun.h"
#include "support/SandboxRoot.h"
#include "support/WaitFor.h"

#include "messaging/IMessage.h"
#include "protocol/RpcClient.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

class ServiceSandbox : public ::testing::Test {
protected:
    void TearDown() override;

    // qgsasvc with `arguments`, to its end.
    TestSupport::ProgramResult service(const std::vector<std::string>& arguments);
    // "-Start", expected to succeed.
    void start();
    // The pid that the pid file names.
    pid_t servicePid() const;
    bool serviceLocked() const;

    std::string configText() const;
    std::vector<std::string> logLines() const;
    std::string diagnostics() const;
    // The message log's line for a request of this test process.
    static std::string inLine(int id, const std::string& name, const std::string& fields,
                              const std::string& reply);

    static RpcAnswer send(RpcClient& client, const IMessage& message,
                          std::chrono::milliseconds timeout = std::chrono::seconds(10));

    TestSupport::SandboxRoot sandbox;
};
