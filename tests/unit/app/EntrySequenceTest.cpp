#include "app/EntrySequence.h"

#include "app/IEntrySteps.h"
#include "app/ShowMainWindowAtStart.h"
#include "foundation/BaseException.h"
#include "foundation/CorvaneBaseException.h"

#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

class FakeEntrySteps : public IEntrySteps {
public:
    void SetUpLogging() override { Step("SetUpLogging"); }
    void KillGUI() override { Step("KillGUI"); }
    void StartWindowSystem() override { Step("StartWindowSystem"); }
    std::int32_t Init() override { return Step("Init"), initResult; }
    bool LoadPlugin() override { return Step("LoadPlugin"), pluginLoads; }
    int Run() override { return Step("Run"), runResult; }
    void Term() override { Step("Term"); }
    void StopWindowSystem() override { Step("StopWindowSystem"); }
    void ShowExceptionBox(const stdstr& message) override { boxes.push_back(message); }

    std::vector<std::string> steps;
    std::vector<stdstr> boxes;
    std::map<std::string, std::function<void()>> throwAt;
    std::int32_t initResult = 0;
    bool pluginLoads = true;
    int runResult = 0;

private:
    void Step(const std::string& name) {
        steps.push_back(name);
        if (auto it = throwAt.find(name); it != throwAt.end())
            it->second();
    }
};

class EntrySequenceTest : public ::testing::Test {
protected:
    void SetUp() override {
        TraceRecorder::Instance().Clear();
        ShowMainWindowAtStart = 1;
    }
    void TearDown() override { ShowMainWindowAtStart = 1; }

    std::vector<std::u16string> Info() { return TraceRecorder::Instance().At(TRACE_INFO); }

    FakeEntrySteps steps;
    EntrySequence entry{steps};
};

const std::vector<std::u16string> StartAndStop = {
    u"Quillgate starting up... ",
    u"Quillgate start up completed. ",
    u"Quillgate shutdown...",
    u"Quillgate shutdown completed.",
};

TEST_F(EntrySequenceTest, ANormalStartRunsEveryStepAndGivesTheLoopsCode) {
    steps.runResult = 1;

    EXPECT_EQ(entry.Run(u""), 1);

    EXPECT_EQ(steps.steps,
              (std::vector<std::string>{"SetUpLogging", "StartWindowSystem", "Init", "LoadPlugin",
                                        "Run", "Term", "StopWindowSystem"}));
    EXPECT_EQ(Info(), StartAndStop);
    EXPECT_EQ(ShowMainWindowAtStart, 1);
}

TEST_F(EntrySequenceTest, TheQuietEndOfThePlugInGivesZero) {
    steps.runResult = 0;

    EXPECT_EQ(entry.Run(u"--anything"), 0);

    // The zero is the loop's own: the run was reached and the way down followed it.
    EXPECT_EQ(steps.steps,
              (std::vector<std::string>{"SetUpLogging", "StartWindowSystem", "Init", "LoadPlugin",
                                        "Run", "Term", "StopWindowSystem"}));
    EXPECT_EQ(Info(), StartAndStop);
}

TEST_F(EntrySequenceTest, WhateverTheLoopAnswersIsTheExitCode) {
    steps.runResult = 42;

    EXPECT_EQ(entry.Run(u"--anything"), 42);
    EXPECT_EQ(std::count(steps.steps.begin(), steps.steps.end(), "Run"), 1);
}

TEST_F(EntrySequenceTest, TheSilentWordHidesTheWindowAndStartsAsUsual) {
    EXPECT_EQ(entry.Run(u"/tmp/my-settings"), 0);

    EXPECT_EQ(ShowMainWindowAtStart, 0);
    EXPECT_EQ(steps.steps.size(), 7u);
    EXPECT_EQ(Info(), StartAndStop);
}

TEST_F(EntrySequenceTest, AKillWordEndsAllCopiesAndNothingElse) {
    EXPECT_EQ(entry.Run(u"-u"), 0);

    EXPECT_EQ(steps.steps, (std::vector<std::string>{"SetUpLogging", "KillGUI"}));
    const auto lines = TraceRecorder::Instance().Lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].label, TraceLabel(TRACE_WARN));
    EXPECT_EQ(lines[0].text, u"Got shut down GUI command, shut down it");
}

TEST_F(EntrySequenceTest, SilentAndKillTogetherIsASilentStart) {
    EXPECT_EQ(entry.Run(u"-s -u"), 0);

    EXPECT_EQ(ShowMainWindowAtStart, 0);
    EXPECT_EQ(std::count(steps.steps.begin(), steps.steps.end(), "KillGUI"), 0);
    EXPECT_EQ(steps.steps.size(), 7u);
}

TEST_F(EntrySequenceTest, AFailedInitEndsWithZeroAfterTheWayDown) {
    steps.initResult = static_cast<std::int32_t>(0x80004005u);

    EXPECT_EQ(entry.Run(u""), 0);

    EXPECT_EQ(steps.steps, (std::vector<std::string>{"SetUpLogging", "StartWindowSystem", "Init",
                                                     "Term", "StopWindowSystem"}));
    EXPECT_EQ(Info(), (std::vector<std::u16string>{
                          u"Quillgate starting up... ",
                          u"Quillgate start up failed. ",
                          u"Quillgate shutdown...",
                          u"Quillgate shutdown completed.",
                      }));
}

TEST_F(EntrySequenceTest, APlugInThatDoesNotLoadEndsWithMinusOne) {
    steps.pluginLoads = false;

    EXPECT_EQ(entry.Run(u""), -1);

    EXPECT_EQ(steps.steps, (std::vector<std::string>{"SetUpLogging", "StartWindowSystem", "Init",
                                                     "LoadPlugin", "Term", "StopWindowSystem"}));
    EXPECT_EQ(Info(), (std::vector<std::u16string>{
                          u"Quillgate starting up... ",
                          u"Quillgate shutdown...",
                          u"Quillgate shutdown completed.",
                      }));
}

TEST_F(EntrySequenceTest, TheFoundationsExceptionIsShownAndEndsAtOnceWithMinusOne) {
    steps.throwAt["Run"] = [] { throw Corvane::BaseException(u"MainDlg", 3, u"Window broken", 1); };

    EXPECT_EQ(entry.Run(u""), -1);

    EXPECT_EQ(steps.boxes, (std::vector<stdstr>{u"Window broken"}));
    // Neither Term nor the window system's end.
    EXPECT_EQ(steps.steps.back(), "Run");
    EXPECT_EQ(Info(), (std::vector<std::u16string>{u"Quillgate starting up... ",
                                                   u"Quillgate start up completed. "}));
}

TEST_F(EntrySequenceTest, TheFoundationsExceptionFromTermIsCaughtToo) {
    steps.throwAt["Term"] = [] { throw Corvane::BaseException(u"App", 3, u"late", 1); };

    EXPECT_EQ(entry.Run(u""), -1);

    EXPECT_EQ(steps.boxes, (std::vector<stdstr>{u"late"}));
}

TEST_F(EntrySequenceTest, TheApplicationsExceptionIsNotCaughtHere) {
    steps.throwAt["Run"] = [] {
        throw BaseException(u"MainDlg", 3, 1, u"CMainDlg::Run", u"%s", u"broken");
    };

    EXPECT_THROW(entry.Run(u""), BaseException);
    EXPECT_TRUE(steps.boxes.empty());
}

TEST_F(EntrySequenceTest, TheLogSetUpStandsOutsideTheCatchClause) {
    steps.throwAt["SetUpLogging"] = [] { throw Corvane::BaseException(u"Trace", 3, u"x", 1); };

    EXPECT_THROW(entry.Run(u""), Corvane::BaseException);
    EXPECT_TRUE(steps.boxes.empty());
}

} // namespace
