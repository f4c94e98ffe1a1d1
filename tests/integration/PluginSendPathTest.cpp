// The program's send path (SendRpcMessage, SendRpcMessageWithReply and the status check)
// over the reference plug-in and the real qgsasvc: the service going away and coming back as
// the main window is told of it, the trace of each transport failure, and replies.
#include "PluginSandbox.h"
#include "RecordingWindowPort.h"

#include "foundation/TraceLevels.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/CheckRpcStatus.h"
#include "messaging/SendRpcMessage.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "protocol/enumMSG_STATISTICS_Message.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace std::chrono_literals;
using Message = RecordingWindowPort::Message;

class PluginSendPath : public PluginSandbox {
protected:
    void SetUp() override {
        PluginSandbox::SetUp();
        ServiceConnected = 1;
        TraceRecorder::Instance().Clear();
    }
    void TearDown() override {
        ServiceConnected = 1;
        PluginSandbox::TearDown();
    }

    static bool Ping() { return SendRpcMessage(enumMSG_PING_Message()); }
    static std::size_t Traced(const char16_t* words) {
        return TraceRecorder::Instance().Count(TRACE_ERROR, words);
    }

    RecordingWindowPort window;
};

} // namespace

TEST_F(PluginSendPath, APingThatGetsThroughTellsTheWindowNothing) {
    start();
    loadPlugin();
    EXPECT_TRUE(Ping());
    EXPECT_TRUE(window.Messages().empty());
    EXPECT_EQ(ServiceConnected.load(), 1);
}

TEST_F(PluginSendPath, AStoppedServiceIsReportedOnceAndItsReturnOnce) {
    start();
    loadPlugin();
    ASSERT_TRUE(Ping());
    ASSERT_EQ(service({"-Stop"}).exitCode, 0);

    // Pings as the timer makes them, until one finds the service gone.
    ASSERT_TRUE(TestSupport::WaitFor([] {
        Ping();
        return ServiceConnected.load() == 0;
    }));
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(Ping());
    EXPECT_EQ(window.Messages(), (std::vector<Message>{{true, WM_QG_RPC_STATUS, 1, 0}}));
    // One trace for each ping that found it gone, and no further message to the window.
    EXPECT_GE(Traced(u"RPC Server Down"), 4u);

    start();
    EXPECT_TRUE(Ping());
    EXPECT_EQ(ServiceConnected.load(), 1);
    EXPECT_EQ(window.Messages(), (std::vector<Message>{{true, WM_QG_RPC_STATUS, 1, 0},
                                                       {true, WM_QG_RPC_STATUS, 0, 0},
                                                       {true, WM_QG_REFRESH_STATUS, 0, 0}}));
    EXPECT_TRUE(Ping());
    EXPECT_EQ(window.Messages().size(), 3u);
}

TEST_F(PluginSendPath, AServiceThatWasNeverThereIsReportedGoneAtTheFirstPing) {
    loadPlugin();
    EXPECT_FALSE(Ping());
    EXPECT_FALSE(Ping());
    EXPECT_EQ(ServiceConnected.load(), 0);
    EXPECT_EQ(window.Messages(), (std::vector<Message>{{true, WM_QG_RPC_STATUS, 1, 0}}));
    EXPECT_EQ(Traced(u"RPC Server Down"), 2u);
}

TEST_F(PluginSendPath, EachTransportFailureIsTracedWithItsWordsAndLeavesTheServiceConnected) {
    start();
    loadPlugin();
    ASSERT_TRUE(Ping());

    control({"--fault", "refuse"});
    EXPECT_FALSE(Ping());
    EXPECT_EQ(Traced(u"Access Denied"), 1u);

    control({"--fault", "overload"});
    EXPECT_FALSE(Ping());
    EXPECT_EQ(Traced(u"RPC Server Overload"), 1u);

    control({"--fault", "drop"});
    EXPECT_FALSE(Ping());
    EXPECT_EQ(Traced(u"Send message exception"), 1u);

    control({"--fault", "slow", "5000"});
    setTimeout(200ms);
    EXPECT_FALSE(Ping());
    EXPECT_EQ(Traced(u"RPC Time out"), 1u);

    EXPECT_EQ(ServiceConnected.load(), 1);
    EXPECT_TRUE(window.Messages().empty());
}

TEST_F(PluginSendPath, AReplyOfTheExpectedIdFillsTheReply) {
    start();
    control({"--counts", "spam=3", "examined=12"});
    loadPlugin();
    enumMSG_STATISTICS_Message counts;
    EXPECT_TRUE(SendRpcMessageWithReply(enumMSG_STATISTICS_Message(), counts));
    EXPECT_EQ(counts.GetSpamCount(), 3);
    EXPECT_EQ(counts.GetExaminedCount(), 12);
    EXPECT_TRUE(TraceRecorder::Instance().At(TRACE_ERROR).empty());
}

TEST_F(PluginSendPath, AReplyOfAnotherIdIsTheGhostLine) {
    start();
    loadPlugin();
    // The service answers a PING with a PING, not with the Config change asked for.
    enumMSG_CONFIG_CHANGE_Message expected;
    expected.SetHistoryDays(17);
    EXPECT_FALSE(SendRpcMessageWithReply(enumMSG_PING_Message(), expected));
    EXPECT_EQ(Traced(u"Failed to ghost message when send message 272."), 1u);
    EXPECT_EQ(expected.GetHistoryDays(), 17);
}

TEST_F(PluginSendPath, ALateReplyToAnAbandonedRequestNeverReachesTheSendPath) {
    start();
    loadPlugin();
    ASSERT_TRUE(Ping());
    control({"--fault", "slow", "600"});
    setTimeout(150ms);
    EXPECT_FALSE(Ping());
    EXPECT_EQ(Traced(u"RPC Time out"), 1u);
    // This request waits while the abandoned PING's reply arrives: it gets its own reply,
    // so there is no ghost line.
    setTimeout(10s);
    enumMSG_STATISTICS_Message counts;
    EXPECT_TRUE(SendRpcMessageWithReply(enumMSG_STATISTICS_Message(), counts));
    EXPECT_TRUE(
        TraceRecorder::Instance().StartingWith(TRACE_ERROR, u"Failed to ghost message").empty());
}
