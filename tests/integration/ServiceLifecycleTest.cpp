// qgsasvc's "-Start" and "-Stop" as the program and the file backend of the service state
// see them: exit codes, the pid file and its lock, the socket.
#include "ServiceSandbox.h"

#include "messaging/enumMSG_PING_Message.h"
#include "protocol/RpcSocketPath.h"
#include "protocol/RpcStatus.h"
#include "service/PidFile.h"
#include "service/ServicePaths.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <signal.h>

namespace {

// The daemon's parent is init, which may reap it late: a zombie is gone for this purpose.
bool ProcessGone(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    if (!stat)
        return true;
    std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
    const auto close = text.rfind(')');
    return close != std::string::npos && close + 2 < text.size() && text[close + 2] == 'Z';
}

} // namespace

using ServiceStart = ServiceSandbox;
using ServiceStop = ServiceSandbox;
using ServiceCommandLine = ServiceSandbox;

TEST_F(ServiceStart, ReturnsZeroOnceTheServiceAnswersOnItsSocket) {
    start();
    // No waiting: "-Start" has returned, so the first request must get through.
    RpcClient client;
    const RpcAnswer answer = send(client, enumMSG_PING_Message());
    EXPECT_EQ(answer.status, RpcStatus::Delivered);
    EXPECT_TRUE(std::filesystem::is_socket(sandbox.file("run/velloran/SharedRPCServer")));
    EXPECT_EQ(RpcSocketPath::Path(), sandbox.file("run/velloran/SharedRPCServer"));
}

TEST_F(ServiceStart, LeavesAPidFileLockedByTheRunningDaemonThatSaysRunning) {
    start();
    const PidFile::Observation seen =
        PidFile::observe(sandbox.file("run/VelloranQuillgateSvc.pid"));
    EXPECT_TRUE(seen.locked);
    ASSERT_TRUE(seen.state.has_value());
    EXPECT_EQ(*seen.state, PidFile::State::Running);
    ASSERT_GT(seen.pid, 0);
    EXPECT_NE(seen.pid, ::getpid());
    EXPECT_EQ(::kill(seen.pid, 0), 0);
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(ServicePaths::PidFile()),
              std::to_string(seen.pid) + "\nrunning\n");
    ASSERT_FALSE(logLines().empty());
    EXPECT_EQ(logLines().front(), "{\"dir\":\"service\",\"event\":\"started\",\"pid\":" +
                                      std::to_string(seen.pid) + "}");
}

TEST_F(ServiceStart, WhenRunningAlreadyReturnsZeroAndKeepsTheFirstService) {
    start();
    const pid_t first = servicePid();
    const TestSupport::ProgramResult again = service({"-Start"});
    EXPECT_EQ(again.exitCode, 0);
    EXPECT_EQ(again.out, "qgsasvc: running already (pid " + std::to_string(first) + ")\n");
    EXPECT_EQ(servicePid(), first);
}

TEST_F(ServiceStart, ReplacesASocketFileLeftBehindByADeadService) {
    sandbox.writeFile("run/velloran/SharedRPCServer", "stale");
    sandbox.writeFile("run/VelloranQuillgateSvc.pid", "99999\nrunning\n");
    start();
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Delivered);
}

TEST_F(ServiceStart, FailsWithAMessageForAnUnknownAllowedGroup) {
    sandbox.writeFile("etc/velloran/qgsasvc.conf", "AllowedGroup=no-such-group-qg\n");
    const TestSupport::ProgramResult started = service({"-Start"});
    EXPECT_EQ(started.exitCode, 1);
    EXPECT_EQ(started.err, "qgsasvc: cannot start: unknown group 'no-such-group-qg'\n");
    EXPECT_FALSE(serviceLocked());
    EXPECT_FALSE(std::filesystem::exists(sandbox.file("run/velloran/SharedRPCServer")));
}

TEST_F(ServiceStart, FailsWithAMessageForAWrongSettingsLine) {
    sandbox.writeFile("etc/velloran/qgsasvc.conf", "# limits\nMaxConnections=0\n");
    const TestSupport::ProgramResult started = service({"-Start"});
    EXPECT_EQ(started.exitCode, 1);
    EXPECT_EQ(started.err, "qgsasvc: cannot start: " + sandbox.file("etc/velloran/qgsasvc.conf") +
                               ":2: MaxConnections must be a number from 1 to 1024\n");
}

TEST_F(ServiceStop, ReturnsZeroWhenTheServiceIsGone) {
    start();
    const pid_t pid = servicePid();
    const TestSupport::ProgramResult stopped = service({"-Stop"});
    EXPECT_EQ(stopped.exitCode, 0) << stopped.err;
    EXPECT_EQ(stopped.err, "");
    EXPECT_FALSE(serviceLocked());
    EXPECT_FALSE(std::filesystem::exists(sandbox.file("run/velloran/SharedRPCServer")));
    EXPECT_TRUE(TestSupport::WaitFor([pid] { return ProcessGone(pid); }));
    ASSERT_FALSE(logLines().empty());
    EXPECT_EQ(logLines().back(),
              "{\"dir\":\"service\",\"event\":\"stopped\",\"pid\":" + std::to_string(pid) + "}");
}

TEST_F(ServiceStop, LeavesEvenAnOpenConnectionWithServerDown) {
    start();
    RpcClient client;
    ASSERT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    ASSERT_EQ(service({"-Stop"}).exitCode, 0);
    // The client sees its connection ended before it writes, tries a new one, finds nobody.
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::ServerDown);
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::ServerDown);
    RpcClient fresh;
    EXPECT_EQ(send(fresh, enumMSG_PING_Message()).status, RpcStatus::ServerDown);
}

TEST_F(ServiceStop, WhenNotRunningReturnsZero) {
    const TestSupport::ProgramResult stopped = service({"-Stop"});
    EXPECT_EQ(stopped.exitCode, 0);
    EXPECT_EQ(stopped.out, "qgsasvc: not running\n");
}

TEST_F(ServiceStop, IsFollowedByAStartThatWorks) {
    start();
    ASSERT_EQ(service({"-Stop"}).exitCode, 0);
    start();
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Delivered);
}

TEST_F(ServiceCommandLine, RefusesAnUnknownWordWithTheUsageAndCodeTwo) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{}, {"-start"}, {"-Start", "-Stop"}, {"Start"}}) {
        const TestSupport::ProgramResult result = service(words);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.err.rfind("usage: qgsasvc -Start | -Stop | --foreground\n", 0), 0u);
    }
    EXPECT_FALSE(serviceLocked());
}

TEST_F(ServiceCommandLine, ControlCommandsWithoutAServiceFailWithServerDown) {
    const TestSupport::ProgramResult result = service({"--status"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "qgsasvc: status: RPC Server Down (status 65535)\n");
}
