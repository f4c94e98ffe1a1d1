// The kill words and the program's own options, with the real program in a sandbox root.
#include "ProgramSandbox.h"

#include "foundation/ApplicationFinder.h"

#include <filesystem>

namespace {

namespace fs = std::filesystem;

class KillWords : public ProgramSandbox {
protected:
    // A process named "quillgate" that waits to be ended: a copy of sleep under that name.
    pid_t StartNamedSleeper(const std::string& folder, const std::string& root) {
        fs::create_directories(folder);
        const std::string file = folder + "/quillgate";
        fs::copy_file("/bin/sleep", file, fs::copy_options::overwrite_existing);
        return StartProgram({"1000"}, {{"QUILLGATE_ROOT", root}}, file);
    }
};

TEST_F(KillWords, EachKillWordEndsTheProgramWithZero) {
    InstallProgram(false);
    for (const char* word : {"-u", "/u", "-U", "/U", "--uninstall"}) {
        const TestSupport::ProgramResult result = TestSupport::RunProgram(Program(), {word});
        EXPECT_EQ(result.exitCode, 0) << word << "\n" << result.err;
    }
    EXPECT_EQ(CountTrace("Warn: Got shut down GUI command, shut down it"), 5u);
    // Nothing else is brought up.
    EXPECT_EQ(CountTrace("Info: Quillgate starting up... "), 0u);
    EXPECT_TRUE(BoxLines().empty());
}

TEST_F(KillWords, TheCallerEndsItselfWhenTheWalkReachesIt) {
    InstallProgram(false);
    EXPECT_EQ(TestSupport::RunProgram(Program(), {"-u"}).exitCode, 0);
    // It found itself (copies under other roots are left alone), and the walk never says
    // that it found nobody.
    EXPECT_EQ(CountTrace("Debug: Kill Quillgate GUI(): Found Quillgate GUI process"), 1u);
    EXPECT_GE(CountTrace("Debug: Kill Quillgate GUI(): Process name is (quillgate)"), 1u);
    EXPECT_EQ(CountTrace("Error: KillGUI cannot find Quillgate GUI instance"), 0u);
}

TEST_F(KillWords, ACopyUnderTheSameRootIsEndedAndOneUnderAnotherIsNot) {
    InstallProgram(false);
    const pid_t here = StartNamedSleeper(sandbox.file("opt/sleeper"), sandbox.path());
    const pid_t elsewhere =
        StartNamedSleeper(sandbox.file("opt/other"), sandbox.file("other-root"));
    ASSERT_GT(here, 0);
    ASSERT_GT(elsewhere, 0);
    // Both run under their name before the kill word comes.
    ASSERT_TRUE(TestSupport::WaitFor([&] {
        return fs::read_symlink("/proc/" + std::to_string(here) + "/exe").filename() ==
                   "quillgate" &&
               fs::read_symlink("/proc/" + std::to_string(elsewhere) + "/exe").filename() ==
                   "quillgate";
    }));

    EXPECT_EQ(TestSupport::RunProgram(Program(), {"-u"}).exitCode, 0);

    EXPECT_EQ(WaitForExit(here), 128 + SIGKILL);
    EXPECT_TRUE(IsRunning(elsewhere));
    EXPECT_EQ(CountTrace("Debug: Kill Quillgate GUI(): Process (" + std::to_string(elsewhere) +
                         ") runs under another sandbox root, left alone"),
              1u);
}

TEST_F(KillWords, ASilentStartWordWinsOverAKillWord) {
    InstallProgram(false);
    // No service is installed, so the silent start ends at once, quietly.
    fs::remove(sandbox.file("etc/systemd/system/VelloranQuillgateSvc.service"));
    const TestSupport::ProgramResult result = TestSupport::RunProgram(Program(), {"-s", "-u"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(CountTrace("Warn: Got shut down GUI command, shut down it"), 0u);
    EXPECT_EQ(CountTrace("Info: Quillgate starting up... "), 1u);
    EXPECT_EQ(CountTrace("Info: Quillgate start up failed. "), 1u);
}

TEST_F(KillWords, ALogLevelOfZeroGivesASilentProgram) {
    InstallProgram(false);
    WriteMachineStore("00000000", "");
    EXPECT_EQ(TestSupport::RunProgram(Program(), {"-u"}).exitCode, 0);
    EXPECT_FALSE(TraceFileExists());
}

TEST_F(KillWords, WithoutTheLogKeyOnlyErrorsAndWarningsAreWritten) {
    InstallProgram(false);
    fs::remove(sandbox.file("var/lib/velloran/registry/machine.reg"));
    EXPECT_EQ(TestSupport::RunProgram(Program(), {"-u"}).exitCode, 0);
    EXPECT_EQ(TraceLines(),
              (std::vector<std::string>{"Warn: Got shut down GUI command, shut down it"}));
}

TEST_F(KillWords, VersionShowsTheProgramFilesVersion) {
    InstallProgram(false);
    const std::string version =
        stdstr::fromTString(GetFileVersionText(stdstr::toTString(Program())));
    ASSERT_FALSE(version.empty()) << "the build writes a version note into every program";

    const TestSupport::ProgramResult result = TestSupport::RunProgram(Program(), {"--version"});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "quillgate " + version + "\n");
    EXPECT_FALSE(TraceFileExists());
}

TEST_F(KillWords, HelpNamesTheWordsAndStartsNothing) {
    InstallProgram(false);
    const TestSupport::ProgramResult result = TestSupport::RunProgram(Program(), {"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.rfind("Usage: quillgate [-s | -u]\n", 0), 0u);
    EXPECT_NE(result.out.find("  --version  show the program's version and leave\n"),
              std::string::npos);
    EXPECT_FALSE(TraceFileExists());
}

} // namespace
