// The plug-in's RPC object, loaded by the program's LoadPlugin, against the real qgsasvc:
// requests and their replies, every status of the transport, the reply buffers, and the
// connection coming back with the service.
#include "PluginSandbox.h"

#include "mainwindow/PluginContract.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/TransportText.h"
#include "messaging/enumMSG_PING_Message.h"
#include "protocol/enumMSG_STATISTICS_Message.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

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

bool Contains(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

} // namespace

using PluginRpc = PluginSandbox;

TEST_F(PluginRpc, APingGetsItsReply) {
    start();
    loadPlugin();
    const Exchange exchange = request(enumMSG_PING_Message());
    EXPECT_EQ(exchange.status, RpcStatus::Success);
    ASSERT_TRUE(exchange.reply.has_value());
    enumMSG_PING_Message pong;
    CMessageEnvelope envelope;
    EXPECT_TRUE(envelope.ParseChecked(pong, exchange.reply->data(),
                                      static_cast<std::uint32_t>(exchange.reply->size())));
    EXPECT_TRUE(Contains(logLines(), inLine(272, "PING", "[]", "1")));
}

TEST_F(PluginRpc, TheStatisticsReplyCarriesTheServicesCounts) {
    start();
    control({"--counts", "spam=12", "examined=345"});
    loadPlugin();
    const Exchange exchange = request(enumMSG_STATISTICS_Message());
    ASSERT_EQ(exchange.status, RpcStatus::Success);
    ASSERT_TRUE(exchange.reply.has_value());
    enumMSG_STATISTICS_Message counts;
    CMessageEnvelope envelope;
    ASSERT_TRUE(envelope.ParseChecked(counts, exchange.reply->data(),
                                      static_cast<std::uint32_t>(exchange.reply->size())));
    EXPECT_EQ(counts.GetSpamCount(), 12);
    EXPECT_EQ(counts.GetExaminedCount(), 345);
}

TEST_F(PluginRpc, WithoutTheServiceARequestIsServerDownAndHasNoReply) {
    loadPlugin();
    const Exchange exchange = request(enumMSG_PING_Message());
    EXPECT_EQ(exchange.status, RpcStatus::ServerDown);
    EXPECT_FALSE(exchange.reply.has_value());
}

TEST_F(PluginRpc, AnotherServerNameIsAServerThatIsNotThere) {
    start();
    loadPlugin();
    CMessageEnvelope envelope;
    const std::string bytes =
        TransportText::RequestBytes(envelope.Serialize(enumMSG_PING_Message()));
    std::uint8_t* reply = nullptr;
    std::int32_t replyLength = -1;
    EXPECT_EQ(rpc().SendRequest(u"OtherServer", reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                static_cast<std::uint32_t>(bytes.size()), &reply, &replyLength),
              RpcStatus::ServerDown);
    EXPECT_EQ(reply, nullptr);
    EXPECT_EQ(replyLength, 0);
    // Nothing reached the service: its log has only its start.
    EXPECT_EQ(logLines().size(), 1u);
}

TEST_F(PluginRpc, AStoppedServiceIsServerDownAndAServiceThatReturnsIsReachedAgain) {
    start();
    loadPlugin();
    ASSERT_EQ(ping(), RpcStatus::Success);
    ASSERT_EQ(service({"-Stop"}).exitCode, 0);
    // The request that meets the connection's end on its way may see the broken connection
    // (65531); the service's absence is what every request after that sees.
    EXPECT_TRUE(TestSupport::WaitFor([&] { return ping() == RpcStatus::ServerDown; }));
    EXPECT_EQ(ping(), RpcStatus::ServerDown);
    start();
    EXPECT_EQ(ping(), RpcStatus::Success);
}

TEST_F(PluginRpc, ASlowServiceEndsInTimeOutAfterTheRpcObjectsWait) {
    start();
    loadPlugin();
    ASSERT_EQ(ping(), RpcStatus::Success);
    control({"--fault", "slow", "5000"});
    setTimeout(300ms);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(ping(), RpcStatus::TimeOut);
    const auto waited = std::chrono::steady_clock::now() - before;
    EXPECT_GE(waited, 300ms);
    EXPECT_LT(waited, 4000ms);
}

TEST_F(PluginRpc, TheLateReplyOfAnAbandonedRequestIsNotTakenForTheNextOne) {
    start();
    loadPlugin();
    ASSERT_EQ(ping(), RpcStatus::Success);
    control({"--fault", "slow", "600"});
    setTimeout(150ms);
    EXPECT_EQ(ping(), RpcStatus::TimeOut);
    // The abandoned PING's reply comes while this request waits for its own.
    setTimeout(10s);
    const Exchange exchange = request(enumMSG_STATISTICS_Message());
    ASSERT_EQ(exchange.status, RpcStatus::Success);
    ASSERT_TRUE(exchange.reply.has_value());
    enumMSG_STATISTICS_Message counts;
    CMessageEnvelope envelope;
    EXPECT_TRUE(envelope.ParseChecked(counts, exchange.reply->data(),
                                      static_cast<std::uint32_t>(exchange.reply->size())));
}

TEST_F(PluginRpc, ARefusalOfTheServiceIsAccessDenied) {
    start();
    loadPlugin();
    control({"--fault", "refuse"});
    const Exchange exchange = request(enumMSG_PING_Message());
    EXPECT_EQ(exchange.status, RpcStatus::AccessDenied);
    EXPECT_FALSE(exchange.reply.has_value());
    control({"--fault", "off"});
    EXPECT_EQ(ping(), RpcStatus::Success);
}

TEST_F(PluginRpc, APeerOutsideTheAllowedGroupIsAccessDenied) {
    sandbox.writeFile("etc/velloran/qgsasvc.conf",
                      "AllowedGroup=" + std::to_string(ForeignGroup()) + "\n");
    start();
    loadPlugin();
    EXPECT_EQ(ping(), RpcStatus::AccessDenied);
    EXPECT_EQ(ping(), RpcStatus::AccessDenied);
    EXPECT_TRUE(Contains(logLines(), inLine(272, "PING", "[]", "65534")));
}

TEST_F(PluginRpc, AnOverloadedServiceIsServerOverload) {
    start();
    loadPlugin();
    control({"--fault", "overload"});
    EXPECT_EQ(ping(), RpcStatus::ServerOverload);
    control({"--fault", "off"});
    EXPECT_EQ(ping(), RpcStatus::Success);
}

TEST_F(PluginRpc, AConnectionDroppedAfterTheRequestIsSendMessageException) {
    start();
    loadPlugin();
    ASSERT_EQ(ping(), RpcStatus::Success);
    control({"--fault", "drop"});
    EXPECT_EQ(ping(), RpcStatus::SendException);
    EXPECT_EQ(logLines().back(), inLine(272, "PING", "[]", "null"));
    control({"--fault", "off"});
    // The next request goes out on a new connection.
    EXPECT_EQ(ping(), RpcStatus::Success);
}

TEST_F(PluginRpc, AReplyBufferIsGivenBackOnceAndForeignPointersAreRefused) {
    start();
    loadPlugin();
    CMessageEnvelope envelope;
    const std::string bytes =
        TransportText::RequestBytes(envelope.Serialize(enumMSG_PING_Message()));
    std::uint8_t* reply = nullptr;
    std::int32_t replyLength = 0;
    ASSERT_EQ(rpc().SendRequest(RpcServerName, reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                static_cast<std::uint32_t>(bytes.size()), &reply, &replyLength),
              RpcStatus::Success);
    ASSERT_NE(reply, nullptr);
    ASSERT_GT(replyLength, 0);
    // The reply is text that a 0 byte ends.
    EXPECT_EQ(reply[replyLength], 0);
    std::uint8_t* kept = reply;
    std::int32_t keptLength = replyLength;
    EXPECT_EQ(rpc().FreeBuffer(&reply, &replyLength), 0);
    EXPECT_EQ(reply, nullptr);
    EXPECT_EQ(replyLength, 0);
    EXPECT_EQ(rpc().FreeBuffer(&kept, &keptLength), E_FAIL);
    std::uint8_t foreign[8] = {};
    std::uint8_t* foreignPointer = foreign;
    std::int32_t foreignLength = 8;
    EXPECT_EQ(rpc().FreeBuffer(&foreignPointer, &foreignLength), E_FAIL);
    EXPECT_EQ(foreignPointer, foreign);
}
