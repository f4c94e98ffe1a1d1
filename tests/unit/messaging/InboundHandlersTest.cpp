// InboundHandlers: each message id of the service reaches its handler and only its handler;
// what each one parses, posts, queues and stores; the out parameters; the trace lines.
#include "messaging/InboundHandlers.h"

#include "EventJournal.h"
#include "FakeRpcExt.h"
#include "InboundEnvelopes.h"
#include "RecordingSettings.h"
#include "RecordingWindowPort.h"
#include "ScriptedDialogs.h"
#include "ScriptedLauncher.h"
#include "ScriptedReboot.h"
#include "mainwindow/PluginCallbacks.h"
#include "messaging/CMsgHandler.h"
#include "messaging/ComponentFailureResponder.h"
#include "messaging/LspReinstaller.h"
#include "messaging/MainWindowPort.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

enumMSG_CONFIG_CHANGE_Message ServiceConfig() {
    enumMSG_CONFIG_CHANGE_Message config;
    config.SetProcessId(4711);
    config.SetFirstRun(0);
    config.SetFilterOn(1);
    config.SetAutoUpgrade(2);
    config.SetShowCloseWindow(3);
    config.SetUpgradePeriod(7);
    config.SetHistoryDays(45);
    config.SetConfigPath(u"/var/lib/velloran/quillgate");
    config.SetLanguage(u"1031");
    return config;
}

enumMSG_TRAY_ANIMATION_Message Animation(std::int32_t value) {
    enumMSG_TRAY_ANIMATION_Message animation;
    animation.SetAnimation(value);
    return animation;
}

class Handlers : public ::testing::Test {
protected:
    void SetUp() override {
        TraceRecorder::Instance().Clear();
        MainWindowPort::Install(&window);
        InboundHandlers::Attach(&queue, &settings);
        // Bound as the plug-in loader binds them.
        for (const std::uint32_t id : PluginCallbacks::RegistrationOrder)
            rpc.RegisterHandler(id, InboundHandlers::HandlerOf(id));
    }
    void TearDown() override {
        InboundHandlers::Attach(nullptr, nullptr);
        MainWindowPort::Install(nullptr);
    }

    std::int32_t Deliver(std::uint32_t id, const std::u16string& xml) {
        return rpc.Deliver(id, xml, &reply, &replyLength);
    }

    // What the queue holds, oldest first; it is emptied.
    std::vector<std::unique_ptr<IMessage>> Queued() {
        std::vector<std::unique_ptr<IMessage>> taken;
        while (auto msg = queue.Dequeue())
            taken.push_back(std::move(msg));
        return taken;
    }

    EventJournal journal;
    RecordingWindowPort window{journal};
    RecordingSettings settings{journal};
    ScriptedDialogs dialogs{journal};
    ScriptedLauncher launcher{journal};
    ScriptedReboot reboot{journal};
    LspReinstaller reinstaller{dialogs, launcher, reboot};
    ComponentFailureResponder responder{dialogs, reinstaller};
    // Never started: the tests read the queue themselves.
    CMsgHandler queue{window, responder};
    FakeRpcExt rpc;
    std::uint8_t replyByte = 0;
    std::uint8_t* reply = &replyByte;
    std::int32_t replyLength = 99;
};

TEST_F(Handlers, EveryIdOfTheContractHasAHandler) {
    ASSERT_EQ(rpc.registered.size(), 7u);
    for (const std::uint32_t id : PluginCallbacks::RegistrationOrder)
        EXPECT_NE(rpc.handlers[id], nullptr) << id;
}

TEST_F(Handlers, IdsWithoutAHandlerHaveNone) {
    for (const std::uint32_t id : {0u, 257u, 259u, 262u, 266u, 272u, 1023u})
        EXPECT_EQ(InboundHandlers::HandlerOf(id), nullptr) << id;
}

TEST_F(Handlers, TrayAnimationPostsItsSelectorAndNothingElse) {
    EXPECT_EQ(Deliver(256, InboundEnvelopes::Of(Animation(1))), 1);
    EXPECT_EQ(journal.Lines(), (Lines{"main post 1054 1 0"}));
    EXPECT_TRUE(Queued().empty());
}

TEST_F(Handlers, ANegativeSelectorKeepsItsSign) {
    Deliver(256, InboundEnvelopes::Of(Animation(-1)));
    EXPECT_EQ(journal.Lines(),
              (Lines{"main post 1054 " + std::to_string(~std::uintptr_t{0}) + " 0"}));
}

TEST_F(Handlers, FailedToLoadLspIsQueuedAndNothingElse) {
    EXPECT_EQ(Deliver(260, InboundEnvelopes::Of(InboundEnvelopes::FailedToLoad(u"QGLsp.so"))), 1);
    EXPECT_TRUE(journal.Lines().empty());
    const auto queued = Queued();
    ASSERT_EQ(queued.size(), 1u);
    const auto* failed = dynamic_cast<const enumMSG_FAILED_TO_LOAD_LSP_Message*>(queued[0].get());
    ASSERT_NE(failed, nullptr);
    EXPECT_EQ(failed->GetComponentName(), u"QGLsp.so");
}

TEST_F(Handlers, Id261ChangesNothingAndLeavesTheOutParameters) {
    EXPECT_EQ(Deliver(261, u"<VLID>261</VLID>"), 1);
    EXPECT_TRUE(journal.Lines().empty());
    EXPECT_TRUE(Queued().empty());
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
    EXPECT_EQ(reply, &replyByte);
    EXPECT_EQ(replyLength, 99);
}

TEST_F(Handlers, LspErrorIsQueuedAndNothingElse) {
    EXPECT_EQ(Deliver(263, InboundEnvelopes::Of(enumMSG_LSP_ERROR_Message())), 1);
    EXPECT_TRUE(journal.Lines().empty());
    const auto queued = Queued();
    ASSERT_EQ(queued.size(), 1u);
    EXPECT_NE(dynamic_cast<const enumMSG_LSP_ERROR_Message*>(queued[0].get()), nullptr);
}

TEST_F(Handlers, ReinstallLspIsQueuedWithItsThreeFields) {
    EXPECT_EQ(Deliver(264, InboundEnvelopes::Of(InboundEnvelopes::Reinstall(
                               u"lspinstall", u"--repair \u00E9", u"/opt/velloran"))),
              1);
    EXPECT_TRUE(journal.Lines().empty());
    const auto queued = Queued();
    ASSERT_EQ(queued.size(), 1u);
    const auto* reinstall = dynamic_cast<const enumMSG_REINSTALL_LSP_Message*>(queued[0].get());
    ASSERT_NE(reinstall, nullptr);
    EXPECT_EQ(reinstall->GetFile(), u"lspinstall");
    EXPECT_EQ(reinstall->GetParameters(), u"--repair \u00E9");
    EXPECT_EQ(reinstall->GetFolder(), u"/opt/velloran");
}

TEST_F(Handlers, Id265PostsTheExitWithoutLookingAtTheData) {
    EXPECT_EQ(rpc.handlers[265](nullptr, 12345, &reply, &replyLength), 1);
    EXPECT_EQ(journal.Lines(), (Lines{"main post 1059 0 0"}));
    EXPECT_TRUE(Queued().empty());
    EXPECT_EQ(reply, &replyByte);
    EXPECT_EQ(replyLength, 99);
}

TEST_F(Handlers, ConfigChangeStoresTheSettingsInOrderThenPosts1061) {
    EXPECT_EQ(Deliver(258, InboundEnvelopes::Of(ServiceConfig())), 1);
    // The sender's process id is stored nowhere.
    EXPECT_EQ(journal.Lines(),
              (Lines{"set AutoUpgrade 2", "set ConfigPath /var/lib/velloran/quillgate",
                     "set Language 1031", "set FilterOn 1", "set FirstRun 0", "set HistoryDays 45",
                     "set ShowCloseWindow 3", "set UpgradePeriod 7", "main post 1061 0 0"}));
    EXPECT_TRUE(Queued().empty());
}

TEST_F(Handlers, ConfigChangeIsTracedAtItsStartAndItsEnd) {
    Deliver(258, InboundEnvelopes::Of(ServiceConfig()));
    EXPECT_EQ(TraceRecorder::Instance().At(TRACE_DEBUG),
              (std::vector<std::u16string>{u"CVLQuillgateApp::handleConfigChange",
                                           u"CVLQuillgateApp::handleConfigChange"}));
    EXPECT_EQ(TraceRecorder::Instance().Lines().size(), 2u);
}

TEST_F(Handlers, ConfigChangeWithoutSettingsStillTellsTheWindow) {
    InboundHandlers::Attach(&queue, nullptr);
    Deliver(258, InboundEnvelopes::Of(ServiceConfig()));
    EXPECT_EQ(journal.Lines(), (Lines{"main post 1061 0 0"}));
}

TEST_F(Handlers, TheHandlersThatParseReplyWithNothing) {
    for (const std::uint32_t id : {256u, 258u, 260u, 263u, 264u}) {
        std::uint8_t byte = 0;
        std::uint8_t* out = &byte;
        std::int32_t outLength = 99;
        EXPECT_EQ(rpc.Deliver(id, u"", &out, &outLength), 1) << id;
        EXPECT_EQ(out, nullptr) << id;
        EXPECT_EQ(outLength, 0) << id;
    }
}

TEST_F(Handlers, TheRoutedIdDecidesTheClassNotTheTextsVlid) {
    // A Reinstall envelope delivered as 260 is read as a Failed to load: its first field is
    // taken as the component's name.
    Deliver(260, InboundEnvelopes::Of(InboundEnvelopes::Reinstall(u"setup", u"-x", u"/tmp")));
    const auto queued = Queued();
    ASSERT_EQ(queued.size(), 1u);
    const auto* failed = dynamic_cast<const enumMSG_FAILED_TO_LOAD_LSP_Message*>(queued[0].get());
    ASSERT_NE(failed, nullptr);
    EXPECT_EQ(failed->GetComponentName(), u"setup");
}

TEST_F(Handlers, AnUnparsableTextStillQueuesAMessageOfEmptyFields) {
    Deliver(264, u"no envelope at all");
    const auto queued = Queued();
    ASSERT_EQ(queued.size(), 1u);
    const auto* reinstall = dynamic_cast<const enumMSG_REINSTALL_LSP_Message*>(queued[0].get());
    ASSERT_NE(reinstall, nullptr);
    EXPECT_TRUE(reinstall->GetFile().empty());
    EXPECT_TRUE(reinstall->GetParameters().empty());
    EXPECT_TRUE(reinstall->GetFolder().empty());
}

TEST_F(Handlers, AnUnparsableAnimationPostsZero) {
    Deliver(256, u"<VLVS>");
    EXPECT_EQ(journal.Lines(), (Lines{"main post 1054 0 0"}));
}

TEST_F(Handlers, AnOddByteLengthDropsTheLastByte) {
    const std::string bytes = InboundEnvelopes::Utf16Bytes(
                                  InboundEnvelopes::Of(InboundEnvelopes::FailedToLoad(u"odd.so"))) +
                              "X";
    rpc.handlers[260](reinterpret_cast<const std::uint8_t*>(bytes.data()),
                      static_cast<std::uint32_t>(bytes.size()), &reply, &replyLength);
    const auto queued = Queued();
    ASSERT_EQ(queued.size(), 1u);
    EXPECT_EQ(
        dynamic_cast<const enumMSG_FAILED_TO_LOAD_LSP_Message&>(*queued[0]).GetComponentName(),
        u"odd.so");
}

TEST_F(Handlers, WithoutAQueueTheQueuedMessagesAreDropped) {
    InboundHandlers::Attach(nullptr, &settings);
    EXPECT_EQ(Deliver(260, InboundEnvelopes::Of(InboundEnvelopes::FailedToLoad(u"x"))), 1);
    EXPECT_EQ(Deliver(263, InboundEnvelopes::Of(enumMSG_LSP_ERROR_Message())), 1);
    EXPECT_TRUE(Queued().empty());
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(Handlers, HandlersMayBeCalledOnAnyThread) {
    std::thread plugin([this] {
        Deliver(256, InboundEnvelopes::Of(Animation(0)));
        Deliver(263, InboundEnvelopes::Of(enumMSG_LSP_ERROR_Message()));
    });
    plugin.join();
    EXPECT_EQ(journal.Lines(), (Lines{"main post 1054 0 0"}));
    EXPECT_EQ(Queued().size(), 1u);
}

} // namespace
