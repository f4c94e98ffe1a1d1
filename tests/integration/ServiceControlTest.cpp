// qgsasvc's control commands as tests and the demo use them: calls with chosen fields to
// every program, counts, played-back filtering.
#include "ServiceSandbox.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/EnvelopeIds.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"
#include "protocol/RpcPayload.h"
#include "protocol/RpcStatus.h"
#include "protocol/enumMSG_STATISTICS_Message.h"
#include "service/FieldMessage.h"

#include <gtest/gtest.h>

namespace {

// The next call, parsed into `message`; fails the test when none comes.
template <class Message>
void NextCall(RpcClient& client, std::uint32_t id, Message& message) {
    const auto call = client.waitForInbound(std::chrono::seconds(10));
    ASSERT_TRUE(call.has_value());
    ASSERT_EQ(call->code, id);
    CMessageEnvelope envelope;
    const stdstr xml = RpcPayload::TextOfInbound(call->payload);
    ASSERT_EQ(ReadMessageId(xml), static_cast<std::int32_t>(id));
    envelope.Parse(message, xml);
}

} // namespace

class ServiceControl : public ServiceSandbox {
protected:
    void SetUp() override {
        start();
        ASSERT_EQ(send(program, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    }

    RpcClient program;
};

TEST_F(ServiceControl, EmitSendsATrayAnimationCallToTheProgram) {
    const TestSupport::ProgramResult emitted = service({"--emit", "256", "animation=1"});
    EXPECT_EQ(emitted.exitCode, 0) << emitted.err;
    EXPECT_EQ(emitted.out, "sent 256 (Tray Animation) to 1 program\n");
    enumMSG_TRAY_ANIMATION_Message animation;
    NextCall(program, 256, animation);
    EXPECT_EQ(animation.GetAnimation(), 1);
    const auto lines = logLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2],
              "{\"dir\":\"out\",\"id\":256,\"name\":\"Tray Animation\",\"fields\":[1],\"to\":1}");
    EXPECT_EQ(lines.back().rfind("{\"dir\":\"control\",", 0), 0u);
    EXPECT_NE(lines.back().find(",\"op\":\"emit\",\"args\":[\"256\",\"animation=1\"],\"result\":0,"
                                "\"text\":\"sent 256 (Tray Animation) to 1 program\"}"),
              std::string::npos);
}

TEST_F(ServiceControl, EmitCarriesTextFieldsUnchanged) {
    ASSERT_EQ(service({"--emit", "0x108", "file=/opt/q g/install.sh", "parameters=--lsp <&>",
                       "folder=/tmp"})
                  .exitCode,
              0);
    ASSERT_EQ(service({"--emit", "260", "name=libqglsp-\xC3\xA9.so"}).exitCode, 0);
    enumMSG_REINSTALL_LSP_Message reinstall;
    NextCall(program, 264, reinstall);
    EXPECT_EQ(reinstall.GetFile(), u"/opt/q g/install.sh");
    EXPECT_EQ(reinstall.GetParameters(), u"--lsp <&>");
    EXPECT_EQ(reinstall.GetFolder(), u"/tmp");
    enumMSG_FAILED_TO_LOAD_LSP_Message failed;
    NextCall(program, 260, failed);
    EXPECT_EQ(failed.GetComponentName(), u"libqglsp-\u00E9.so");
}

TEST_F(ServiceControl, EmitSendsTheCallsWithoutAClass) {
    for (const char* id : {"261", "263", "265"}) {
        const TestSupport::ProgramResult emitted = service({"--emit", id});
        EXPECT_EQ(emitted.exitCode, 0) << emitted.err;
    }
    for (const std::uint32_t id : {261u, 263u, 265u}) {
        const auto call = program.waitForInbound(std::chrono::seconds(10));
        ASSERT_TRUE(call.has_value());
        EXPECT_EQ(call->code, id);
    }
}

TEST_F(ServiceControl, EmitAddsAnyFieldsToAnyId) {
    ASSERT_EQ(service({"--emit", "265", "int=-4", "str=two words"}).exitCode, 0);
    FieldMessage fields(265, u"", std::vector<FieldType>{FieldType::Integer, FieldType::Text});
    NextCall(program, 265, fields);
    ASSERT_EQ(fields.values().size(), 2u);
    EXPECT_EQ(std::get<std::int32_t>(fields.values()[0]), -4);
    EXPECT_EQ(std::get<stdstr>(fields.values()[1]), u"two words");
}

TEST_F(ServiceControl, EmitOfAConfigChangeStartsFromTheStoredSettings) {
    ASSERT_EQ(service({"--emit", "258", "FilterOn=0", "Language=1031"}).exitCode, 0);
    enumMSG_CONFIG_CHANGE_Message change;
    NextCall(program, 258, change);
    EXPECT_EQ(change.GetProcessId(), servicePid());
    EXPECT_EQ(change.GetFirstRun(), 1);
    EXPECT_EQ(change.GetFilterOn(), 0);
    EXPECT_EQ(change.GetUpgradePeriod(), 5);
    EXPECT_EQ(change.GetHistoryDays(), 30);
    EXPECT_EQ(change.GetLanguage(), u"1031");
    // An emitted change is a call only: the file stays as it was.
    EXPECT_EQ(configText(), "");
}

TEST_F(ServiceControl, EmitRefusesAFieldTheMessageDoesNotHave) {
    const TestSupport::ProgramResult emitted = service({"--emit", "256", "speed=3"});
    EXPECT_EQ(emitted.exitCode, 1);
    EXPECT_EQ(emitted.err, "qgsasvc: emit: message 256 has no field 'speed' (its fields: "
                           "animation; int=N and str=T add elements)\n");
    EXPECT_EQ(service({"--emit", "1024"}).exitCode, 1);
    EXPECT_EQ(service({"--emit", "256", "animation=on"}).err,
              "qgsasvc: emit: field 'animation' takes a 32-bit integer, not 'on'\n");
    EXPECT_FALSE(program.waitForInbound(std::chrono::milliseconds(0)).has_value());
}

TEST_F(ServiceControl, ControlClientsAreNotSentTheCalls) {
    ASSERT_EQ(service({"--status"}).exitCode, 0);
    const TestSupport::ProgramResult emitted = service({"--emit", "263"});
    EXPECT_EQ(emitted.out, "sent 263 (LSP Error) to 1 program\n");
}

TEST_F(ServiceControl, SimulatedFilteringAnimatesTheTrayAndRaisesTheCounts) {
    ASSERT_EQ(service({"--counts", "spam=1", "examined=2"}).exitCode, 0);
    const TestSupport::ProgramResult simulated =
        service({"--simulate-filtering", "messages=3", "spam=1"});
    EXPECT_EQ(simulated.exitCode, 0) << simulated.err;
    EXPECT_EQ(simulated.out, "filtered 3 messages, 1 spam; counts now spam=2 examined=5\n");
    enumMSG_TRAY_ANIMATION_Message on;
    NextCall(program, 256, on);
    EXPECT_EQ(on.GetAnimation(), 1);
    enumMSG_TRAY_ANIMATION_Message off;
    NextCall(program, 256, off);
    EXPECT_EQ(off.GetAnimation(), 0);

    const RpcAnswer answer = send(program, enumMSG_STATISTICS_Message());
    ASSERT_EQ(answer.status, RpcStatus::Delivered);
    enumMSG_STATISTICS_Message counts;
    CMessageEnvelope envelope;
    ASSERT_TRUE(envelope.ParseChecked(counts, answer.payload.data(),
                                      static_cast<std::uint32_t>(answer.payload.size())));
    EXPECT_EQ(counts.GetSpamCount(), 2);
    EXPECT_EQ(counts.GetExaminedCount(), 5);
}

TEST_F(ServiceControl, CountsRefuseWhatIsNotACount) {
    const TestSupport::ProgramResult counts = service({"--counts", "ham=3"});
    EXPECT_EQ(counts.exitCode, 1);
    EXPECT_EQ(counts.err, "qgsasvc: counts: expected spam=N and/or examined=M, not 'ham=3'\n");
}

TEST_F(ServiceControl, StatusTellsThePidTheProgramsAndTheFault) {
    ASSERT_EQ(service({"--fault", "slow", "250"}).out, "fault slow 250 ms\n");
    EXPECT_EQ(service({"--status"}).out, "pid=" + std::to_string(servicePid()) +
                                             " programs=1 fault=slow 250 ms spam=0 examined=0 "
                                             "filter=-1 gui=0 simulation=idle\n");
}
