// The whole program in a sandbox root: start-up to the loop, the plug-in, the service's part,
// a second copy, and the ways out with their exit codes.
#include "ProgramSandbox.h"

#include <filesystem>

namespace {

namespace fs = std::filesystem;

class StartUp : public ProgramSandbox {
protected:
    void RequirePlugin() {
        if (!HavePlugin())
            GTEST_SKIP() << "the reference plug-in (target QGPlugin) is not part of this build";
    }

    // Starts the service and a first copy, and waits until its main window runs its loop.
    pid_t StartFirstCopy(const std::vector<std::string>& arguments = {}) {
        start();
        InstallProgram();
        const pid_t first = StartProgram(arguments);
        EXPECT_GT(first, 0);
        EXPECT_TRUE(WaitForTrace("Debug: Run - enter run loop")) << Diagnostics();
        return first;
    }

    std::string Diagnostics() const {
        std::string text = "trace log:\n";
        for (const std::string& line : TraceLines())
            text += "  " + line + "\n";
        text += "boxes:\n";
        for (const std::string& line : BoxLines())
            text += "  " + line + "\n";
        return text;
    }

    bool ServiceLogHas(const std::string& part) const {
        for (const std::string& line : logLines()) {
            if (line.find(part) != std::string::npos)
                return true;
        }
        return false;
    }
};

TEST_F(StartUp, ANormalStartReachesTheLoopAndTellsTheServiceThatTheGuiIsUp) {
    RequirePlugin();
    const pid_t first = StartFirstCopy();

    EXPECT_EQ(CountTrace("Info: Quillgate starting up... "), 1u);
    EXPECT_EQ(CountTrace("Info: Quillgate start up completed. "), 1u);
    EXPECT_EQ(CountTrace("Debug: Init - ended"), 1u);
    EXPECT_EQ(CountTrace("Debug: Run - CMainDlg created ok"), 1u);
    EXPECT_TRUE(TestSupport::WaitFor([&] {
        return ServiceLogHas("\"pid\":" + std::to_string(first)) &&
               ServiceLogHas("\"name\":\"GUI Start\",\"fields\":[" + std::to_string(first) + "]");
    })) << Diagnostics();
    EXPECT_TRUE(IsRunning(first));
    EXPECT_TRUE(BoxLines().empty()) << Diagnostics();
}

TEST_F(StartUp, TheMachineStoresLanguageHoldsFromTheStartWhenTheSettingsNameNone) {
    RequirePlugin();
    // 1031 is German. The settings are read while the program's statics are made, before
    // its entry runs.
    WriteMachineStore(LogLevelDebug, "\"iLang\"=dword:00000407\r\n");
    sandbox.writeFile("var/lib/velloran/quillgate/QGConfig.ini",
                      "[SYSTEM]\nFirstRun=1\nFilterOn=1\nHistoryDays=30\n");
    const std::string journal = sandbox.file("plugin-journal.txt");
    start();
    InstallProgram();
    const pid_t first = StartProgram({}, {{"QGPLUGIN_JOURNAL", journal}});
    ASSERT_GT(first, 0);
    ASSERT_TRUE(WaitForTrace("Debug: Run - enter run loop")) << Diagnostics();

    // The first thing the program tells the service carries the language id...
    EXPECT_TRUE(TestSupport::WaitFor([&] {
        for (const std::string& line : logLines()) {
            if (line.find("\"dir\":\"in\",\"pid\":" + std::to_string(first)) != std::string::npos &&
                line.find("\"name\":\"Config change\"") != std::string::npos &&
                line.find(",\"1031\"]") != std::string::npos)
                return true;
        }
        return false;
    })) << Diagnostics();
    // ...and the plug-in's pages are made in that language.
    const std::string calls = TestSupport::SandboxRoot::readFile(journal);
    EXPECT_NE(calls.find("InitGUI \"German\" -> 0\n"), std::string::npos) << calls;
    EXPECT_TRUE(BoxLines().empty()) << Diagnostics();
}

TEST_F(StartUp, TheSummaryIsAskedForUnlessTheMachineStoreHidesIt) {
    RequirePlugin();
    StartFirstCopy();
    // The key is there (the store has it) and HidePopup is absent.
    EXPECT_EQ(CountTrace("Debug: Show filtering summary"), 1u);
}

TEST_F(StartUp, HidePopupHidesTheSummary) {
    RequirePlugin();
    WriteMachineStore(LogLevelDebug, "\"HidePopup\"=dword:00000001\r\n");
    StartFirstCopy();
    EXPECT_EQ(CountTrace("Debug: Show filtering summary"), 0u);
}

TEST_F(StartUp, Message265FromTheServiceEndsTheProgramWithOne) {
    RequirePlugin();
    const pid_t first = StartFirstCopy();

    const TestSupport::ProgramResult emitted = service({"--emit", "265"});
    ASSERT_EQ(emitted.exitCode, 0) << emitted.err;

    EXPECT_EQ(WaitForExit(first), 1) << Diagnostics();
    EXPECT_EQ(CountTrace("Debug: Run - exit run loop"), 1u);
    EXPECT_EQ(CountTrace("Info: Quillgate shutdown completed."), 1u);
    // Leaving the program stops the service too.
    EXPECT_TRUE(TestSupport::WaitFor([&] { return !serviceLocked(); })) << Diagnostics();
}

TEST_F(StartUp, ASecondCopyLeavesWithZeroAndTheFirstShowsItsWindow) {
    RequirePlugin();
    const pid_t first = StartFirstCopy({"-s"});

    const pid_t second = StartProgram({}, {{"XDG_ACTIVATION_TOKEN", "second-copy"}});

    EXPECT_EQ(WaitForExit(second), 0) << Diagnostics();
    EXPECT_TRUE(WaitForTrace("Debug: CVLQuillgateApp::ShowForSecondCopy - main window shown"))
        << Diagnostics();
    EXPECT_EQ(CountTrace("Info: Quillgate start up failed. "), 1u);
    EXPECT_EQ(CountTrace("Debug: Cannot find VLQuillgate window"), 0u);
    EXPECT_TRUE(IsRunning(first));
    // The first copy still serves: the service can end it.
    ASSERT_EQ(service({"--emit", "265"}).exitCode, 0);
    EXPECT_EQ(WaitForExit(first), 1);
}

TEST_F(StartUp, AMissingPlugInEndsWith255AndSaysWhy) {
    if (!HavePlugin())
        GTEST_SKIP() << "without the reference plug-in every start fails this way; the test "
                        "needs a build where it can also succeed";
    start();
    InstallProgram(false);

    const pid_t program = StartProgram({});

    EXPECT_EQ(WaitForExit(program), 255) << Diagnostics();
    const auto boxes = BoxLines();
    ASSERT_EQ(boxes.size(), 1u) << Diagnostics();
    EXPECT_EQ(boxes[0].rfind("0||LoadDll##libQGPlugin_d.so##", 0), 0u) << boxes[0];
    EXPECT_EQ(CountTrace("Info: Quillgate start up completed. "), 0u);
    EXPECT_EQ(CountTrace("Info: Quillgate shutdown completed."), 1u);
}

TEST_F(StartUp, WithoutTheServiceInstalledTheStartEndsWithZeroAfterABox) {
    InstallProgram(false);
    fs::remove(sandbox.file("etc/systemd/system/VelloranQuillgateSvc.service"));

    const pid_t program = StartProgram({});

    EXPECT_EQ(WaitForExit(program), 0) << Diagnostics();
    const auto boxes = BoxLines();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0], "0|Quillgate|Failed to find Velloran Quillgate Service, please ensure "
                        "you have installed Quillgate successfully.");
    EXPECT_EQ(CountTrace("Info: Quillgate start up failed. "), 1u);
}

TEST_F(StartUp, AConfigFolderThatCannotBeMadeEndsTheStartWithZeroAndNoBox) {
    start();
    InstallProgram(false);
    // A file where the user's configuration folder's parent should be.
    fs::remove_all(sandbox.file("home/.config"));
    sandbox.writeFile("home/.config", "not a folder");

    const pid_t program = StartProgram({});

    EXPECT_EQ(WaitForExit(program), 0) << Diagnostics();
    EXPECT_TRUE(BoxLines().empty()) << Diagnostics();
    EXPECT_EQ(CountTrace("Info: Quillgate Configuration folder = " +
                         sandbox.file("home/.config/Quillgate")),
              1u);
    EXPECT_EQ(CountTrace("Info: Quillgate start up failed. "), 1u);
    EXPECT_EQ(CountTrace("Debug: Load Registry and other configs"), 0u);
}

} // namespace
