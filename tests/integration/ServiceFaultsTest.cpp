// The statuses that the program's send path must handle, as the real service produces them:
// refusal (credentials or the fault), time-out, a dropped connection, overload.
#include "ServiceSandbox.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/enumMSG_PING_Message.h"
#include "protocol/RpcStatus.h"
#include "protocol/enumMSG_STATISTICS_Message.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <unistd.h>
#include <vector>

namespace {

// A group that this process is not in.
gid_t ForeignGroup() {
    std::vector<gid_t> mine(static_cast<std::size_t>(::getgroups(0, nullptr)) + 1);
    mine.resize(static_cast<std::size_t>(::getgroups(static_cast<int>(mine.size()), mine.data())));
    mine.push_back(::getegid());
    mine.push_back(::getgid());
    gid_t candidate = 54321;
    while (std::find(mine.begin(), mine.end(), candidate) != mine.end())
        ++candidate;
    return candidate;
}

} // namespace

using ServiceFaults = ServiceSandbox;

TEST_F(ServiceFaults, APeerOutsideTheAllowedGroupGetsAccessDenied) {
    sandbox.writeFile("etc/velloran/qgsasvc.conf",
                      "AllowedGroup=" + std::to_string(ForeignGroup()) + "\n");
    start();
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::AccessDenied);
    // Refused again at every attempt, never served.
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::AccessDenied);
    const auto lines = logLines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1], inLine(272, "PING", "[]", "65534"));
    const TestSupport::ProgramResult status = service({"--status"});
    EXPECT_EQ(status.exitCode, 1);
    EXPECT_EQ(status.err, "qgsasvc: status: Access Denied (status 65534)\n");
}

TEST_F(ServiceFaults, APeerInTheAllowedGroupIsServed) {
    sandbox.writeFile("etc/velloran/qgsasvc.conf",
                      "AllowedGroup=" + std::to_string(::getegid()) + "\n");
    start();
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Delivered);
}

TEST_F(ServiceFaults, RefuseMakesRequestsEndWithAccessDeniedUntilItIsOff) {
    start();
    ASSERT_EQ(service({"--fault", "refuse"}).out, "fault refuse\n");
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::AccessDenied);
    ASSERT_EQ(service({"--fault", "off"}).out, "fault off\n");
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    const auto lines = logLines();
    EXPECT_NE(std::find(lines.begin(), lines.end(), inLine(272, "PING", "[]", "65534")),
              lines.end());
}

TEST_F(ServiceFaults, SlowWithAShortTimeOutGivesTimedOutAndTheLateReplyIsNotTakenForAnother) {
    start();
    ASSERT_EQ(service({"--fault", "slow", "400"}).exitCode, 0);
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message(), std::chrono::milliseconds(100)).status,
              RpcStatus::TimedOut);
    // The late PING reply comes while this request waits on the same connection: it must
    // be dropped, and this request's own reply taken.
    const RpcAnswer answer = send(client, enumMSG_STATISTICS_Message());
    ASSERT_EQ(answer.status, RpcStatus::Delivered);
    enumMSG_STATISTICS_Message counts;
    CMessageEnvelope envelope;
    EXPECT_TRUE(envelope.ParseChecked(counts, answer.payload.data(),
                                      static_cast<std::uint32_t>(answer.payload.size())));
}

TEST_F(ServiceFaults, DropEndsTheRequestWithSendFailedAndTheNextRequestReconnects) {
    start();
    ASSERT_EQ(service({"--fault", "drop"}).exitCode, 0);
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::SendFailed);
    EXPECT_FALSE(client.isConnected());
    const auto lines = logLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), inLine(272, "PING", "[]", "null"));
    ASSERT_EQ(service({"--fault", "off"}).exitCode, 0);
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Delivered);
}

TEST_F(ServiceFaults, OverloadGivesRpcServerOverload) {
    start();
    ASSERT_EQ(service({"--fault", "overload"}).exitCode, 0);
    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Overloaded);
}

TEST_F(ServiceFaults, AConnectionBeyondTheLimitGetsOverloadAndTheOthersAreServed) {
    sandbox.writeFile("etc/velloran/qgsasvc.conf", "MaxConnections=1\n");
    start();
    RpcClient first;
    ASSERT_EQ(send(first, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    RpcClient second;
    EXPECT_EQ(send(second, enumMSG_PING_Message()).status, RpcStatus::Overloaded);
    EXPECT_EQ(send(first, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    first.disconnect();
    // The slot is free once the service has seen the first connection end.
    EXPECT_TRUE(TestSupport::WaitFor(
        [&] { return send(second, enumMSG_PING_Message()).status == RpcStatus::Delivered; }));
}

TEST_F(ServiceFaults, AnUnknownFaultIsRefusedWithTheChoices) {
    start();
    const TestSupport::ProgramResult fault = service({"--fault", "melt"});
    EXPECT_EQ(fault.exitCode, 1);
    EXPECT_EQ(fault.err,
              "qgsasvc: fault: expected: slow [milliseconds] | refuse | drop | overload | off\n");
}
