// Running the service's executable, directly or through pkexec, and what a failure shows.

#include "app/AppShellExecutor.h"

#include "EnglishTexts.h"
#include "RecordingBoxes.h"
#include "ScriptFiles.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

namespace {

class AppShellExecutorTest : public ::testing::Test {
protected:
    void SetUp() override { trace.Clear(); }

    AppShellExecutor Make(bool elevate) {
        return AppShellExecutor(boxes, EnglishText, [elevate] { return elevate; });
    }

    stdstr Path(const std::string& path) { return stdstr::toTString(path); }

    TestSupport::SandboxRoot root;
    RecordingBoxes boxes;
    TraceRecorder& trace = TraceRecorder::Instance();
};

} // namespace

TEST_F(AppShellExecutorTest, ARunThatIsWaitedForGivesTheProgramsExitCode) {
    const std::string program = WriteScript(root, "svc", "exit 7\n");
    int exitCode = -1;
    ShellOpenInfo info;
    EXPECT_TRUE(Make(false).appShellExecute(Path(program), u"-Start", true, &info, &exitCode,
                                            IShellExecutor::SW_HIDE));
    EXPECT_EQ(exitCode, 7);
    EXPECT_GT(info.pid(), 0);
    EXPECT_EQ(info.command(), (std::vector<std::string>{program, "-Start"}));
    EXPECT_TRUE(info.hasEnded());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(AppShellExecutorTest, AnExitCodeOfZeroIsSuccessLikeAnyOther) {
    const std::string program = WriteScript(root, "svc", "exit 0\n");
    int exitCode = -1;
    EXPECT_TRUE(Make(false).appShellExecute(Path(program), u"-Stop", true, nullptr, &exitCode, 0));
    EXPECT_EQ(exitCode, 0);
}

TEST_F(AppShellExecutorTest, TheParametersAreSplitOnBlanks) {
    const std::string record = root.file("args");
    const std::string program =
        WriteScript(root, "svc", "for a in \"$@\"; do echo \"$a\" >> '" + record + "'; done\n");
    EXPECT_TRUE(Make(false).appShellExecute(Path(program), u" -Start \t extra ", true, nullptr,
                                            nullptr, 0));
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(record), "-Start\nextra\n");
}

TEST_F(AppShellExecutorTest, WithoutWaitingTheProgramIsStartedAndLeftToRun) {
    const std::string marker = root.file("ran");
    const std::string program = WriteScript(root, "svc", "echo done > '" + marker + "'\nexit 3\n");
    int exitCode = -1;
    ShellOpenInfo info;
    EXPECT_TRUE(Make(false).appShellExecute(Path(program), u"-Start", false, &info, &exitCode, 0));
    EXPECT_EQ(exitCode, -1);
    ASSERT_GT(info.pid(), 0);
    EXPECT_TRUE(info.waitFor(std::chrono::seconds(10)));
    EXPECT_EQ(info.exitCode(), 3);
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(marker), "done\n");
}

TEST_F(AppShellExecutorTest, AProgramThatIsNotThereShowsString258WithTheErrorAndCaption257) {
    const std::string program = root.file("missing/qgsasvc");
    // A record of an earlier run is replaced by an empty one.
    ShellOpenInfo info;
    const std::string earlier = WriteScript(root, "earlier", "exit 0\n");
    ASSERT_TRUE(Make(false).appShellExecute(Path(earlier), u"", true, &info, nullptr, 0));
    ASSERT_GT(info.pid(), 0);
    int exitCode = -1;
    EXPECT_FALSE(Make(false).appShellExecute(Path(program), u"-Start", true, &info, &exitCode, 0));
    EXPECT_EQ(info.pid(), -1);
    EXPECT_EQ(exitCode, -1);
    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, u"Failed to run ShellExecuteEx(" + Path(program) + u"), error 2.");
    EXPECT_EQ(shown[0].caption, u"Quillgate Error");
    EXPECT_EQ(shown[0].type, IMessageBoxes::MB_ICONHAND);
    EXPECT_EQ(shown[0].owner, nullptr);
    EXPECT_EQ(trace.Count(TRACE_ERROR, u"VLTFWApp::appShellExecute(" + Path(program) +
                                           u", -Start): Failed with error (2)"),
              1u);
}

TEST_F(AppShellExecutorTest, AFileThatCannotBeExecutedShowsItsError) {
    root.writeFile("svc", "#!/bin/sh\nexit 0\n"); // no execute permission
    const std::string program = root.file("svc");
    EXPECT_FALSE(Make(false).appShellExecute(Path(program), u"-Start", true, nullptr, nullptr, 0));
    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, u"Failed to run ShellExecuteEx(" + Path(program) + u"), error " +
                                 stdstr::toTString(std::to_string(EACCES)) + u".");
}

TEST_F(AppShellExecutorTest, ElevationRunsTheProgramThroughPkexec) {
    const std::string record = root.file("pkexec-args");
    WriteFakePkexec(root, -1, record);
    const PathFront path(root.file("bin"));
    const std::string program = WriteScript(root, "svc", "exit 4\n");
    int exitCode = -1;
    ShellOpenInfo info;
    EXPECT_TRUE(Make(true).appShellExecute(Path(program), u"-Start", true, &info, &exitCode, 0));
    EXPECT_EQ(exitCode, 4);
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(record), program + "\n-Start\n");
    EXPECT_EQ(info.command(), (std::vector<std::string>{"pkexec", program, "-Start"}));
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(AppShellExecutorTest, ADismissedPromptIsTracedAndShowsNothing) {
    const std::string record = root.file("pkexec-args");
    WriteFakePkexec(root, 126, record);
    const PathFront path(root.file("bin"));
    const std::string program = WriteScript(root, "svc", "exit 0\n");
    int exitCode = -1;
    ShellOpenInfo info;
    EXPECT_FALSE(Make(true).appShellExecute(Path(program), u"-Start", true, &info, &exitCode, 0));
    EXPECT_EQ(exitCode, -1);
    EXPECT_GT(info.pid(), 0);
    EXPECT_TRUE(boxes.Boxes().empty());
    const stdstr line = u"VLTFWApp::appShellExecute(" + Path(program) +
                        u", -Start): Failed with error (" +
                        stdstr::toTString(std::to_string(ECANCELED)) + u")";
    EXPECT_EQ(trace.Count(TRACE_DEBUG, line), 1u);
    EXPECT_EQ(trace.Count(TRACE_ERROR, line), 0u);
}

TEST_F(AppShellExecutorTest, ARefusedAuthorisationShowsTheBox) {
    WriteFakePkexec(root, 127, root.file("pkexec-args"));
    const PathFront path(root.file("bin"));
    const std::string program = WriteScript(root, "svc", "exit 0\n");
    EXPECT_FALSE(Make(true).appShellExecute(Path(program), u"-Stop", true, nullptr, nullptr, 0));
    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    const stdstr error = stdstr::toTString(std::to_string(EACCES));
    EXPECT_EQ(shown[0].text,
              u"Failed to run ShellExecuteEx(" + Path(program) + u"), error " + error + u".");
    EXPECT_EQ(trace.Count(TRACE_ERROR, u"VLTFWApp::appShellExecute(" + Path(program) +
                                           u", -Stop): Failed with error (" + error + u")"),
              1u);
}

TEST_F(AppShellExecutorTest, WithoutPkexecElevationFailsWithABox) {
    root.writeFile("empty/.keep", "");
    const char* saved = std::getenv("PATH");
    const std::string savedPath = saved ? saved : "";
    ::setenv("PATH", root.file("empty").c_str(), 1);
    const std::string program = WriteScript(root, "svc", "exit 0\n");
    const bool result =
        Make(true).appShellExecute(Path(program), u"-Start", true, nullptr, nullptr, 0);
    ::setenv("PATH", savedPath.c_str(), 1);
    EXPECT_FALSE(result);
    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, u"Failed to run ShellExecuteEx(" + Path(program) + u"), error 2.");
}

TEST_F(AppShellExecutorTest, WithoutElevationNoPromptIsShown) {
    const std::string record = root.file("pkexec-args");
    WriteFakePkexec(root, 126, record);
    const PathFront path(root.file("bin"));
    const std::string program = WriteScript(root, "svc", "exit 0\n");
    int exitCode = -1;
    EXPECT_TRUE(Make(false).appShellExecute(Path(program), u"-Start", true, nullptr, &exitCode, 0));
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(record), "");
}

TEST_F(AppShellExecutorTest, TheProgramsOwn126IsItsExitCodeWithoutElevation) {
    const std::string program = WriteScript(root, "svc", "exit 126\n");
    int exitCode = -1;
    EXPECT_TRUE(Make(false).appShellExecute(Path(program), u"", true, nullptr, &exitCode, 0));
    EXPECT_EQ(exitCode, 126);
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(AppShellExecutorTest, TheElevationIsDecidedAtEachCall) {
    const std::string record = root.file("pkexec-args");
    WriteFakePkexec(root, -1, record);
    const PathFront path(root.file("bin"));
    const std::string program = WriteScript(root, "svc", "exit 0\n");
    bool elevate = false;
    AppShellExecutor executor(boxes, EnglishText, [&elevate] { return elevate; });
    EXPECT_TRUE(executor.appShellExecute(Path(program), u"-Start", true, nullptr, nullptr, 0));
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(record), "");
    elevate = true;
    EXPECT_TRUE(executor.appShellExecute(Path(program), u"-Start", true, nullptr, nullptr, 0));
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(record), program + "\n-Start\n");
}

TEST_F(AppShellExecutorTest, InASandboxRootTheDefaultRunsDirectly) {
    // The fixture's sandbox sets QUILLGATE_ROOT.
    EXPECT_FALSE(AppShellExecutor::DefaultElevation()());
}
