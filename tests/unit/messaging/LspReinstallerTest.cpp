// LspReinstaller: the prompt, the installer, the outcome boxes, the restart and their traces,
// in their order.
#include "messaging/LspReinstaller.h"

#include "EnglishLocalizerEnvironment.h"
#include "EventJournal.h"
#include "ScriptedDialogs.h"
#include "ScriptedLauncher.h"
#include "ScriptedReboot.h"
#include "UserTexts.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const auto* const g_localizer =
    ::testing::AddGlobalTestEnvironment(std::make_unique<EnglishLocalizerEnvironment>().release());

using Lines = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

const std::string Launch = "launch [/opt/velloran/setup] [--repair] [/opt/velloran]";
const std::string RebootQuestion = std::string("box none [") + UserTexts::Reinstalled + "] [] 4";

class Reinstall : public ::testing::Test {
protected:
    void SetUp() override { TraceRecorder::Instance().Clear(); }

    void Run() {
        reinstaller.RunLspReinstall(u"/opt/velloran/setup", u"--repair", u"/opt/velloran");
    }

    EventJournal journal;
    ScriptedDialogs dialogs{journal};
    ScriptedLauncher launcher{journal};
    ScriptedReboot reboot{journal};
    LspReinstaller reinstaller{dialogs, launcher, reboot};
};

TEST_F(Reinstall, AnyAnswerButAllowEndsBeforeTheInstaller) {
    for (const int answer : {0, 2, 6, 7, -1}) {
        journal.Clear();
        dialogs.promptAnswers = {answer};
        Run();
        EXPECT_EQ(journal.Lines(), (Lines{"prompt"})) << answer;
    }
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(Reinstall, AnInstallerThatCannotStartEndsItSilently) {
    launcher.exitCode = std::nullopt;
    Run();
    EXPECT_EQ(journal.Lines(), (Lines{"prompt", Launch}));
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(Reinstall, ExitCodeZeroAndNoDoesNotRestart) {
    dialogs.boxAnswers = {InboundDialogs::IDNO};
    Run();
    EXPECT_EQ(journal.Lines(), (Lines{"prompt", Launch, RebootQuestion}));
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(Reinstall, ExitCodeZeroAndYesRestarts) {
    dialogs.boxAnswers = {InboundDialogs::IDYES};
    Run();
    EXPECT_EQ(journal.Lines(), (Lines{"prompt", Launch, RebootQuestion, "reboot"}));
    EXPECT_TRUE(TraceRecorder::Instance().Lines().empty());
}

TEST_F(Reinstall, AFailedRestartIsTracedThenShown) {
    dialogs.boxAnswers = {InboundDialogs::IDYES};
    reboot.accepted = false;
    std::vector<std::size_t> errorsAtEachBox;
    dialogs.onBox = [&] {
        errorsAtEachBox.push_back(TraceRecorder::Instance().At(TRACE_ERROR).size());
    };
    Run();
    EXPECT_EQ(journal.Lines(), (Lines{"prompt", Launch, RebootQuestion, "reboot",
                                      "box none [" + EventJournal::Narrow(UserTexts::RebootFailed) +
                                          "] [Quillgate] 0"}));
    EXPECT_EQ(TraceRecorder::Instance().At(TRACE_ERROR), (Texts{UserTexts::RebootFailed}));
    // The trace line is written before its box is shown.
    EXPECT_EQ(errorsAtEachBox, (std::vector<std::size_t>{0, 1}));
}

TEST_F(Reinstall, AnyOtherExitCodeIsShownThenTraced) {
    for (const std::uint32_t code : {1u, 3010u, 0xFFFFFFFFu}) {
        journal.Clear();
        TraceRecorder::Instance().Clear();
        launcher.exitCode = code;
        std::vector<std::size_t> errorsAtEachBox;
        dialogs.onBox = [&] {
            errorsAtEachBox.push_back(TraceRecorder::Instance().At(TRACE_ERROR).size());
        };
        Run();
        EXPECT_EQ(journal.Lines(),
                  (Lines{"prompt", Launch,
                         "box none [" + EventJournal::Narrow(UserTexts::ReinstallFailed) +
                             "] [Quillgate] 0"}))
            << code;
        EXPECT_EQ(TraceRecorder::Instance().At(TRACE_ERROR), (Texts{UserTexts::ReinstallFailed}));
        // The box comes first, the trace line after it.
        EXPECT_EQ(errorsAtEachBox, (std::vector<std::size_t>{0})) << code;
    }
}

} // namespace
