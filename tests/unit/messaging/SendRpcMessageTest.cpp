// SendRpcMessage and SendRpcMessageWithReply: what goes to the RPC object, what each status
// gives, how replies are read and given back, and every trace line on the way.
#include "messaging/SendRpcMessage.h"

#include "EventJournal.h"
#include "FakeRpcExt.h"
#include "RecordingWindowPort.h"
#include "mainwindow/PluginPointers.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/CheckRpcStatus.h"
#include "messaging/MainWindowPort.h"
#include "messaging/TransportText.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

// The reply of the service as the RPC object hands it over: the envelope in UTF-8.
std::string ReplyBytes(const IMessage& msg) {
    CMessageEnvelope envelope;
    return TransportText::RequestBytes(envelope.Serialize(msg));
}

enumMSG_CONFIG_CHANGE_Message SampleConfig() {
    enumMSG_CONFIG_CHANGE_Message config;
    config.SetProcessId(3412);
    config.SetFirstRun(0);
    config.SetFilterOn(1);
    config.SetAutoUpgrade(1);
    config.SetShowCloseWindow(0);
    config.SetUpgradePeriod(5);
    config.SetHistoryDays(30);
    config.SetConfigPath(u"/var/lib/velloran/quillgate");
    config.SetLanguage(u"1033");
    return config;
}

class SendPath : public ::testing::Test {
protected:
    void SetUp() override {
        ServiceConnected = 1;
        m_pRPCExt = &rpc;
        MainWindowPort::Install(&window);
        TraceRecorder::Instance().Clear();
    }
    void TearDown() override {
        m_pRPCExt = nullptr;
        MainWindowPort::Install(nullptr);
        ServiceConnected = 1;
    }

    static Texts Errors() { return TraceRecorder::Instance().At(TRACE_ERROR); }

    FakeRpcExt rpc;
    EventJournal journal;
    RecordingWindowPort window{journal};
};

TEST_F(SendPath, WithoutTheRpcObjectTheMessageIsTracedAndLost) {
    m_pRPCExt = nullptr;
    EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_EQ(Errors(), (Texts{u"m_pRPCExt is null while attempt to send message 272."}));
    EXPECT_TRUE(rpc.requests.empty());
}

TEST_F(SendPath, WithReplyWithoutTheRpcObjectTracesNullInCapitals) {
    m_pRPCExt = nullptr;
    enumMSG_CONFIG_CHANGE_Message reply;
    EXPECT_FALSE(SendRpcMessageWithReply(enumMSG_GUI_START_Message(), reply));
    EXPECT_EQ(Errors(), (Texts{u"m_pRPCExt is NULL while attempt to send message 262."}));
}

TEST_F(SendPath, TheEnvelopeGoesAsUtf8WithoutTerminatorToSharedRPCServer) {
    const enumMSG_CONFIG_CHANGE_Message config = SampleConfig();
    EXPECT_TRUE(SendRpcMessage(config));
    ASSERT_EQ(rpc.requests.size(), 1u);
    const FakeRpcExt::Request& request = rpc.requests[0];
    EXPECT_EQ(request.server, u"SharedRPCServer");
    CMessageEnvelope envelope;
    const std::string expected = stdstr::fromTString(envelope.Serialize(config));
    EXPECT_EQ(request.data, expected);
    EXPECT_EQ(request.length, expected.size());
    EXPECT_EQ(request.data.rfind("<?xml version=\"1.0\"?>", 0), 0u);
    EXPECT_EQ(request.data.back(), '>');
}

TEST_F(SendPath, StatusOneIsSuccessWithoutATrace) {
    rpc.statuses = {1};
    EXPECT_TRUE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(SendPath, StatusZeroIsFalseWithoutTraceOrException) {
    rpc.statuses = {0};
    bool result = true;
    EXPECT_NO_THROW(result = SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_FALSE(result);
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(SendPath, StatusZeroAfterAnOutageMarksTheServiceBack) {
    ServiceConnected = 0;
    rpc.statuses = {0};
    EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_EQ(ServiceConnected.load(), 1);
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 0 0", "main send 1058 0 0"}));
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(SendPath, ServiceDownIsReportedOnce) {
    rpc.statuses = {65535, 65535, 65535};
    EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 1 0"}));
    EXPECT_EQ(ServiceConnected.load(), 0);
    EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    // One trace per ping, no further window message.
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 1 0"}));
    EXPECT_EQ(Errors(), (Texts{u"RPC Server Down", u"RPC Server Down", u"RPC Server Down"}));
    EXPECT_EQ(ServiceConnected.load(), 0);
}

TEST_F(SendPath, ServiceBackIsReportedOnceWhateverTheMessage) {
    rpc.statuses = {65535, 1, 1};
    SendRpcMessage(enumMSG_PING_Message());
    journal.Clear();
    enumMSG_FILTER_CHANGE_Message filter;
    filter.SetFilterState(1);
    EXPECT_TRUE(SendRpcMessage(filter));
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 0 0", "main send 1058 0 0"}));
    EXPECT_EQ(ServiceConnected.load(), 1);
    EXPECT_TRUE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 0 0", "main send 1058 0 0"}));
}

TEST_F(SendPath, ErrorStatusesAreTracedWithTheirWordsAndLoseTheMessage) {
    rpc.statuses = {65531, 65532, 65533, 65534};
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_EQ(Errors(), (Texts{u"Send message exception", u"RPC Time out", u"RPC Server Overload",
                               u"Access Denied"}));
    EXPECT_TRUE(journal.Lines().empty());
    EXPECT_EQ(ServiceConnected.load(), 1);
}

TEST_F(SendPath, ServerDownWhileDisconnectedIsTracedWithoutAWindowMessage) {
    ServiceConnected = 0;
    rpc.statuses = {65535};
    EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_EQ(Errors(), (Texts{u"RPC Server Down"}));
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(SendPath, AReplyToAOneWaySendIsFreedUnread) {
    // Not even an envelope: nothing may read it.
    rpc.nextReply = std::string("\xFF\xFE not a message", 16);
    EXPECT_TRUE(SendRpcMessage(enumMSG_PING_Message()));
    ASSERT_EQ(rpc.freed.size(), 1u);
    EXPECT_EQ(rpc.freed[0].buffer, rpc.lastReplyBuffer);
    EXPECT_EQ(rpc.freed[0].length, 16);
    EXPECT_EQ(rpc.Outstanding(), 0u);
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(SendPath, AReplyOfLengthZeroIsNotGivenBack) {
    rpc.nextReply = std::string("x");
    rpc.replyLengthOverride = 0;
    EXPECT_TRUE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_TRUE(rpc.freed.empty());
}

TEST_F(SendPath, AnErrorStatusLeavesTheReplyUntouched) {
    rpc.nextReply = ReplyBytes(enumMSG_PING_Message());
    rpc.statuses = {65532};
    EXPECT_FALSE(SendRpcMessage(enumMSG_PING_Message()));
    EXPECT_TRUE(rpc.freed.empty());
}

TEST_F(SendPath, ATransportExceptionLeavesTheSend) {
    rpc.onSendRequest = [] { throw std::runtime_error("transport"); };
    EXPECT_THROW(SendRpcMessage(enumMSG_PING_Message()), std::runtime_error);
    enumMSG_PING_Message reply;
    EXPECT_THROW(SendRpcMessageWithReply(enumMSG_PING_Message(), reply), std::runtime_error);
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(SendPath, AReplyOfTheExpectedIdFillsTheReply) {
    const enumMSG_CONFIG_CHANGE_Message answer = SampleConfig();
    rpc.nextReply = ReplyBytes(answer);
    enumMSG_CONFIG_CHANGE_Message reply;
    EXPECT_TRUE(SendRpcMessageWithReply(enumMSG_CONFIG_CHANGE_Message(), reply));
    EXPECT_EQ(reply.GetProcessId(), 3412);
    EXPECT_EQ(reply.GetHistoryDays(), 30);
    EXPECT_EQ(reply.GetConfigPath(), u"/var/lib/velloran/quillgate");
    EXPECT_EQ(reply.GetLanguage(), u"1033");
    ASSERT_EQ(rpc.freed.size(), 1u);
    EXPECT_EQ(rpc.freed[0].buffer, rpc.lastReplyBuffer);
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(SendPath, AFilledReplyWithAStatusOtherThanOneIsStillFalse) {
    rpc.nextReply = ReplyBytes(SampleConfig());
    rpc.statuses = {0};
    enumMSG_CONFIG_CHANGE_Message reply;
    EXPECT_FALSE(SendRpcMessageWithReply(enumMSG_CONFIG_CHANGE_Message(), reply));
    EXPECT_EQ(reply.GetProcessId(), 3412);
    EXPECT_EQ(rpc.freed.size(), 1u);
}

TEST_F(SendPath, AReplyOfTheWrongIdIsTracedAsAGhostAndLeavesTheReplyAlone) {
    rpc.nextReply = ReplyBytes(enumMSG_PING_Message());
    enumMSG_CONFIG_CHANGE_Message reply;
    reply.SetHistoryDays(77);
    reply.SetLanguage(u"as built");
    EXPECT_FALSE(SendRpcMessageWithReply(SampleConfig(), reply));
    EXPECT_EQ(Errors(), (Texts{u"Failed to ghost message when send message 258."}));
    EXPECT_EQ(reply.GetHistoryDays(), 77);
    EXPECT_EQ(reply.GetLanguage(), u"as built");
    EXPECT_EQ(reply.GetProcessId(), 0);
    EXPECT_EQ(rpc.freed.size(), 1u);
    EXPECT_EQ(rpc.Outstanding(), 0u);
}

TEST_F(SendPath, TheGhostLineNamesTheSentMessageNotTheReply) {
    rpc.nextReply = ReplyBytes(enumMSG_PING_Message());
    enumMSG_CONFIG_CHANGE_Message reply;
    EXPECT_FALSE(SendRpcMessageWithReply(enumMSG_GUI_START_Message(), reply));
    EXPECT_EQ(Errors(), (Texts{u"Failed to ghost message when send message 262."}));
}

TEST_F(SendPath, NoReplyWhereOneIsWantedIsFalseWithoutATrace) {
    enumMSG_CONFIG_CHANGE_Message reply;
    reply.SetHistoryDays(9);
    EXPECT_FALSE(SendRpcMessageWithReply(enumMSG_CONFIG_CHANGE_Message(), reply));
    EXPECT_EQ(reply.GetHistoryDays(), 9);
    EXPECT_TRUE(rpc.freed.empty());
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(SendPath, AnEmptyReplyWhereOneIsWantedIsFalseWithNothingToFree) {
    rpc.nextReply = std::string("<VLID>258</VLID>");
    rpc.replyLengthOverride = 0;
    enumMSG_CONFIG_CHANGE_Message reply;
    EXPECT_FALSE(SendRpcMessageWithReply(enumMSG_CONFIG_CHANGE_Message(), reply));
    EXPECT_TRUE(rpc.freed.empty());
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(SendPath, WithReplyAnErrorStatusIsTracedAndTheReplyIsNotTouched) {
    rpc.nextReply = ReplyBytes(SampleConfig());
    rpc.statuses = {65535};
    enumMSG_CONFIG_CHANGE_Message reply;
    EXPECT_FALSE(SendRpcMessageWithReply(enumMSG_CONFIG_CHANGE_Message(), reply));
    EXPECT_EQ(reply.GetProcessId(), 0);
    EXPECT_TRUE(rpc.freed.empty());
    EXPECT_EQ(Errors(), (Texts{u"RPC Server Down"}));
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 1 0"}));
}

TEST_F(SendPath, WithReplyTheServiceComingBackIsReportedToo) {
    ServiceConnected = 0;
    rpc.nextReply = ReplyBytes(SampleConfig());
    enumMSG_CONFIG_CHANGE_Message reply;
    EXPECT_TRUE(SendRpcMessageWithReply(enumMSG_CONFIG_CHANGE_Message(), reply));
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 0 0", "main send 1058 0 0"}));
}

} // namespace
