#include "app/RunSequence.h"

#include "app/IRunSteps.h"
#include "app/ShowMainWindowAtStart.h"

#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class FakeRunSteps : public IRunSteps {
public:
    void AddMessageLoop() override { steps.push_back("AddMessageLoop"); }
    void RemoveMessageLoop() override { steps.push_back("RemoveMessageLoop"); }
    void DestroyMessageLoop() override { steps.push_back("DestroyMessageLoop"); }
    bool CreateMainWindow() override {
        steps.push_back("CreateMainWindow");
        return created;
    }
    void DestroyMainWindow() override { steps.push_back("DestroyMainWindow"); }
    void ShowMainWindow(bool visible) override { steps.push_back(visible ? "Show" : "Hide"); }
    void PostToMainWindow(int message, std::uintptr_t wParam, std::intptr_t lParam) override {
        steps.push_back("Post " + std::to_string(message) + " " + std::to_string(wParam) + " " +
                        std::to_string(lParam));
    }
    std::int32_t FilterOn() override { return filterOn; }
    int RunMessageLoop() override {
        steps.push_back("RunMessageLoop");
        return loopResult;
    }

    std::vector<std::string> steps;
    bool created = true;
    std::int32_t filterOn = 1;
    int loopResult = 0;
};

class RunSequenceTest : public ::testing::Test {
protected:
    void SetUp() override {
        TraceRecorder::Instance().Clear();
        ShowMainWindowAtStart = 1;
    }
    void TearDown() override { ShowMainWindowAtStart = 1; }

    void WriteMachineStore(const std::string& values) {
        sandbox.writeFile("var/lib/velloran/registry/machine.reg",
                          "Windows Registry Editor Version 5.00\r\n\r\n"
                          "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\Quillgate]\r\n" +
                              values);
    }

    std::vector<std::u16string> Debug() { return TraceRecorder::Instance().At(TRACE_DEBUG); }

    TestSupport::SandboxRoot sandbox;
    FakeRunSteps steps;
    RunSequence run{steps};
};

TEST_F(RunSequenceTest, HidePopupAbsentWithTheKeyPresentShowsTheSummaryFirst) {
    WriteMachineStore("\"iLang\"=dword:00000409\r\n");
    steps.loopResult = 1;

    EXPECT_EQ(run.Run(), 1);

    EXPECT_EQ(steps.steps, (std::vector<std::string>{"AddMessageLoop", "CreateMainWindow",
                                                     "Post 1041 0 0", "Show", "Post 1057 1 0",
                                                     "RunMessageLoop", "RemoveMessageLoop",
                                                     "DestroyMainWindow", "DestroyMessageLoop"}));
    EXPECT_EQ(Debug(), (std::vector<std::u16string>{
                           u"Run - start",
                           u"Run - CMainDlg creating...",
                           u"Run - CMainDlg created ok",
                           u"Show filtering summary",
                           u"Run - enter run loop",
                           u"Run - exit run loop",
                       }));
}

TEST_F(RunSequenceTest, WithoutTheKeyNoSummaryIsPosted) {
    steps.filterOn = 0;

    EXPECT_EQ(run.Run(), 0);

    EXPECT_EQ(steps.steps,
              (std::vector<std::string>{"AddMessageLoop", "CreateMainWindow", "Show",
                                        "Post 1057 0 0", "RunMessageLoop", "RemoveMessageLoop",
                                        "DestroyMainWindow", "DestroyMessageLoop"}));
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, u"Show filtering summary"), 0u);
}

TEST_F(RunSequenceTest, HidePopupZeroShowsTheSummary) {
    WriteMachineStore("\"HidePopup\"=dword:00000000\r\n");
    run.Run();
    EXPECT_EQ(steps.steps[2], "Post 1041 0 0");
}

TEST_F(RunSequenceTest, HidePopupSetHidesTheSummary) {
    WriteMachineStore("\"HidePopup\"=dword:00000001\r\n");
    run.Run();
    EXPECT_EQ(steps.steps[2], "Show");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_DEBUG, u"Show filtering summary"), 0u);
}

TEST_F(RunSequenceTest, AHidePopupThatIsNoNumberShowsTheSummary) {
    WriteMachineStore("\"HidePopup\"=\"1\"\r\n");
    run.Run();
    EXPECT_EQ(steps.steps[2], "Post 1041 0 0");
}

TEST_F(RunSequenceTest, ASilentStartHidesTheWindowAndStillShowsTheSummary) {
    WriteMachineStore("");
    ShowMainWindowAtStart = 0;

    run.Run();

    EXPECT_EQ(steps.steps[2], "Post 1041 0 0");
    EXPECT_EQ(steps.steps[3], "Hide");
}

TEST_F(RunSequenceTest, AWindowThatCannotBeMadeEndsWithZeroAndNoLoop) {
    WriteMachineStore("");
    steps.created = false;
    steps.loopResult = 1;

    EXPECT_EQ(run.Run(), 0);

    EXPECT_EQ(steps.steps, (std::vector<std::string>{"AddMessageLoop", "CreateMainWindow",
                                                     "DestroyMainWindow", "DestroyMessageLoop"}));
    EXPECT_EQ(Debug(), (std::vector<std::u16string>{u"Run - start", u"Run - CMainDlg creating...",
                                                    u"Run - create failed"}));
}

} // namespace
