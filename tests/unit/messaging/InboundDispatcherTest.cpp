// InboundDispatcher: the main window's handling of 1060, from showing the window to the exit
// message, for each of the three failures and for an id it does not handle.
#include "messaging/InboundDispatcher.h"

#include "CountedMessage.h"
#include "EnglishLocalizerEnvironment.h"
#include "EventJournal.h"
#include "InboundEnvelopes.h"
#include "RecordingView.h"
#include "RecordingWindowPort.h"
#include "ScriptedDialogs.h"
#include "ScriptedLauncher.h"
#include "ScriptedReboot.h"
#include "UserTexts.h"
#include "messaging/ComponentFailureResponder.h"
#include "messaging/LspReinstaller.h"
#include "messaging/ShellInstallerLauncher.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const auto* const g_localizer =
    ::testing::AddGlobalTestEnvironment(std::make_unique<EnglishLocalizerEnvironment>().release());

using Lines = std::vector<std::string>;

class Dispatch : public ::testing::Test {
protected:
    void SetUp() override { TraceRecorder::Instance().Clear(); }

    EventJournal journal;
    RecordingView view{journal};
    RecordingWindowPort self{journal, "self"};
    ScriptedDialogs dialogs{journal};
    ScriptedLauncher launcher{journal};
    ScriptedReboot reboot{journal};
    LspReinstaller reinstaller{dialogs, launcher, reboot};
    ComponentFailureResponder responder{dialogs, reinstaller};
    InboundDispatcher dispatcher{view, self, responder};
};

TEST_F(Dispatch, AHiddenWindowIsShownBeforeTheFailureIsTold) {
    EXPECT_EQ(dispatcher.DispatchInboundMessage(InboundEnvelopes::FailedToLoad(u"QGLsp.so")), 0);
    EXPECT_EQ(journal.Lines(),
              (Lines{"show", "box main [" + UserTexts::CannotLoad("QGLsp.so") + "] [Quillgate] 16",
                     "self post 1059 0 0"}));
}

TEST_F(Dispatch, AVisibleWindowIsNotShownAgain) {
    view.visible = true;
    dispatcher.DispatchInboundMessage(enumMSG_LSP_ERROR_Message());
    EXPECT_EQ(journal.Lines(),
              (Lines{std::string("box main [") + UserTexts::LspError + "] [Quillgate] 16",
                     "self post 1059 0 0"}));
}

TEST_F(Dispatch, AReinstallRunsAndTheProgramEndsWithoutRebootOnNo) {
    view.visible = true;
    dialogs.boxAnswers = {InboundDialogs::IDNO};
    EXPECT_EQ(dispatcher.DispatchInboundMessage(InboundEnvelopes::Reinstall(
                  u"/opt/velloran/setup", u"/repair", u"/opt/velloran")),
              0);
    EXPECT_EQ(journal.Lines(),
              (Lines{"prompt", "launch [/opt/velloran/setup] [/repair] [/opt/velloran]",
                     std::string("box none [") + UserTexts::Reinstalled + "] [] 4",
                     "self post 1059 0 0"}));
}

TEST_F(Dispatch, CancelInTheReinstallPromptLaunchesNothingAndStillEnds) {
    view.visible = true;
    dialogs.promptAnswers = {InboundDialogs::ReinstallCancel};
    dispatcher.DispatchInboundMessage(InboundEnvelopes::Reinstall(u"/opt/setup", u"", u""));
    EXPECT_EQ(journal.Lines(), (Lines{"prompt", "self post 1059 0 0"}));
}

TEST_F(Dispatch, AnInstallerReturningNonZeroShowsString234AndEnds) {
    view.visible = true;
    launcher.exitCode = 1603;
    dispatcher.DispatchInboundMessage(InboundEnvelopes::Reinstall(u"/opt/setup", u"", u""));
    EXPECT_EQ(
        journal.Lines(),
        (Lines{"prompt", "launch [/opt/setup] [] []",
               "box none [" + EventJournal::Narrow(UserTexts::ReinstallFailed) + "] [Quillgate] 0",
               "self post 1059 0 0"}));
    EXPECT_EQ(TraceRecorder::Instance().At(TRACE_ERROR),
              (std::vector<std::u16string>{UserTexts::ReinstallFailed}));
}

TEST_F(Dispatch, AnEmptyInstallerNameFailsSilentlyAndStillEnds) {
    // The real launcher: an empty name cannot be started.
    ShellInstallerLauncher shell;
    LspReinstaller realReinstaller(dialogs, shell, reboot);
    ComponentFailureResponder realResponder(dialogs, realReinstaller);
    InboundDispatcher realDispatcher(view, self, realResponder);
    view.visible = true;
    realDispatcher.DispatchInboundMessage(InboundEnvelopes::Reinstall(u"", u"-q", u"/opt"));
    EXPECT_EQ(journal.Lines(), (Lines{"prompt", "self post 1059 0 0"}));
    EXPECT_TRUE(TraceRecorder::Instance().At(TRACE_ERROR).empty());
}

TEST_F(Dispatch, AnIdItDoesNotHandleIsTracedAndNotEnded) {
    CountedMessage other(272);
    view.visible = true;
    EXPECT_EQ(dispatcher.DispatchInboundMessage(other), 0);
    EXPECT_TRUE(journal.Lines().empty());
    EXPECT_EQ(TraceRecorder::Instance().At(TRACE_DEBUG),
              (std::vector<std::u16string>{u"Not handled message id 272"}));
}

TEST_F(Dispatch, AnIdItDoesNotHandleStillBringsTheWindowUp) {
    CountedMessage other(256);
    dispatcher.DispatchInboundMessage(other);
    EXPECT_EQ(journal.Lines(), (Lines{"show"}));
}

} // namespace
