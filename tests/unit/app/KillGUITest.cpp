#include "app/KillGUI.h"

#include "app/PidfdProcessControl.h"
#include "app/ProcessControl.h"

#include "support/RunInChild.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

// A folder that stands for /proc: one sub-folder per process, with an "exe" link, a "comm"
// file or both, and optionally an "environ" file.
class FakeProc {
public:
    FakeProc() {
        std::string pattern = fs::temp_directory_path().string() + "/qg-proc-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("mkdtemp");
        m_root = pattern;
    }
    ~FakeProc() {
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }

    void AddExe(pid_t pid, const std::string& target) {
        fs::create_directories(Folder(pid));
        fs::create_symlink(target, Folder(pid) + "/exe");
    }
    void AddComm(pid_t pid, const std::string& name) {
        fs::create_directories(Folder(pid));
        std::ofstream(Folder(pid) + "/comm") << name << '\n';
    }
    void AddEnvironment(pid_t pid, const std::string& entries) {
        fs::create_directories(Folder(pid));
        std::ofstream(Folder(pid) + "/environ", std::ios::binary) << entries;
    }
    void AddOther(const std::string& name) { fs::create_directories(m_root + "/" + name); }

    const std::string& Root() const { return m_root; }

private:
    std::string Folder(pid_t pid) const { return m_root + "/" + std::to_string(pid); }

    std::string m_root;
};

// Records what the walk asks for; the answers are set per pid.
class RecordingControl : public ProcessControl {
public:
    int OpenProcess(pid_t pid, int& error) override {
        opened.push_back(pid);
        if (openErrors.count(pid)) {
            error = openErrors[pid];
            return -1;
        }
        return handleBase + static_cast<int>(opened.size());
    }
    bool TerminateProcess(int handle, pid_t pid, int& error) override {
        terminated.push_back({handle, pid});
        if (terminateErrors.count(pid)) {
            error = terminateErrors[pid];
            return false;
        }
        return true;
    }
    void CloseHandle(int handle) override { closed.push_back(handle); }

    std::vector<pid_t> opened;
    std::vector<std::pair<int, pid_t>> terminated;
    std::vector<int> closed;
    std::map<pid_t, int> openErrors;
    std::map<pid_t, int> terminateErrors;
    int handleBase = 6;
};

class KillGUITest : public ::testing::Test {
protected:
    void SetUp() override { TraceRecorder::Instance().Clear(); }

    std::vector<std::u16string> Debug() { return TraceRecorder::Instance().At(TRACE_DEBUG); }
    std::vector<std::u16string> Errors() { return TraceRecorder::Instance().At(TRACE_ERROR); }

    FakeProc proc;
    RecordingControl control;
};

TEST(KillGUIImage, TheNameIsComparedWithoutRegardToCase) {
    EXPECT_TRUE(KillGUI::IsProgramImage("quillgate"));
    EXPECT_TRUE(KillGUI::IsProgramImage("QuillGate"));
    EXPECT_TRUE(KillGUI::IsProgramImage("QUILLGATE"));
    EXPECT_FALSE(KillGUI::IsProgramImage("quillgate2"));
    EXPECT_FALSE(KillGUI::IsProgramImage("quillgate.exe"));
    EXPECT_FALSE(KillGUI::IsProgramImage("quillgat"));
    EXPECT_FALSE(KillGUI::IsProgramImage(""));
}

TEST_F(KillGUITest, EveryCopyIsEndedInAscendingOrderOfIds) {
    proc.AddExe(100, "/usr/lib/quillgate/quillgate");
    proc.AddExe(9, "/usr/bin/bash");
    proc.AddComm(30, "QUILLGATE");
    proc.AddExe(20, "/opt/QuillGate");
    proc.AddOther("self");
    proc.AddOther("sys");

    KillGUI(proc.Root(), control, "").Run();

    // 9 before 20 before 100: by number, not by the folder names' text.
    EXPECT_EQ(Debug(), (std::vector<std::u16string>{
                           u"Kill Quillgate GUI(): Process name is (bash)",
                           u"Kill Quillgate GUI(): Process name is (QuillGate)",
                           u"Kill Quillgate GUI(): Found Quillgate GUI process",
                           u"Kill Quillgate GUI(): Process name is (QUILLGATE)",
                           u"Kill Quillgate GUI(): Found Quillgate GUI process",
                           u"Kill Quillgate GUI(): Process name is (quillgate)",
                           u"Kill Quillgate GUI(): Found Quillgate GUI process",
                       }));
    EXPECT_EQ(control.opened, (std::vector<pid_t>{20, 30, 100}));
    ASSERT_EQ(control.terminated.size(), 3u);
    EXPECT_EQ(control.terminated[0], (std::pair<int, pid_t>{7, 20}));
    EXPECT_EQ(control.terminated[2], (std::pair<int, pid_t>{9, 100}));
    EXPECT_EQ(control.closed, (std::vector<int>{7, 8, 9}));
    EXPECT_TRUE(Errors().empty());
}

TEST_F(KillGUITest, TheExecutablesNameWinsOverTheCommandName) {
    proc.AddExe(40, "/usr/bin/quillgate");
    proc.AddComm(40, "renamed");
    proc.AddExe(41, "/usr/bin/other");
    proc.AddComm(41, "quillgate");

    KillGUI(proc.Root(), control, "").Run();

    EXPECT_EQ(control.opened, (std::vector<pid_t>{40}));
}

TEST_F(KillGUITest, AnExecutableReplacedOnDiskStillCounts) {
    proc.AddExe(50, "/usr/lib/quillgate/quillgate (deleted)");

    KillGUI(proc.Root(), control, "").Run();

    EXPECT_EQ(control.opened, (std::vector<pid_t>{50}));
    EXPECT_EQ(Debug().front(), u"Kill Quillgate GUI(): Process name is (quillgate)");
}

TEST_F(KillGUITest, WithoutAnyCopyTheWalkSaysSo) {
    proc.AddExe(5, "/usr/bin/bash");

    KillGUI(proc.Root(), control, "").Run();

    EXPECT_TRUE(control.opened.empty());
    EXPECT_EQ(Errors(),
              (std::vector<std::u16string>{u"KillGUI cannot find Quillgate GUI instance"}));
}

TEST_F(KillGUITest, AProcessThatCannotBeOpenedIsTracedAndPassedOver) {
    proc.AddExe(20, "/usr/bin/quillgate");
    control.openErrors[20] = ESRCH;

    KillGUI(proc.Root(), control, "").Run();

    EXPECT_EQ(Errors(), (std::vector<std::u16string>{
                            u"Kill Quillgate GUI(): OpenProcess(20) failed, error (3)",
                            u"KillGUI cannot find Quillgate GUI instance",
                        }));
    EXPECT_TRUE(control.terminated.empty());
    EXPECT_TRUE(control.closed.empty());
}

TEST_F(KillGUITest, AProcessThatCannotBeEndedIsTracedWithItsHandle) {
    proc.AddExe(20, "/usr/bin/quillgate");
    proc.AddExe(21, "/usr/bin/quillgate");
    control.terminateErrors[20] = EPERM;
    control.handleBase = 30;

    KillGUI(proc.Root(), control, "").Run();

    // The second one was ended, so the walk found a copy.
    EXPECT_EQ(Errors(), (std::vector<std::u16string>{
                            u"Kill Quillgate GUI(): TerminateProcess(0x1f) failed, error (1)",
                        }));
    EXPECT_EQ(control.closed, (std::vector<int>{31, 32}));
}

TEST_F(KillGUITest, AProcFolderThatCannotBeReadEndsTheWalkAtOnce) {
    KillGUI(proc.Root() + "/missing", control, "").Run();

    EXPECT_EQ(Errors(), (std::vector<std::u16string>{
                            u"KillQuillgate GUI(): CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS) "
                            u"failed, error (2)",
                            u"KillGUI cannot find Quillgate GUI instance",
                        }));
    EXPECT_TRUE(Debug().empty());
}

TEST_F(KillGUITest, AProcessWithoutAnyNameIsPassedOver) {
    proc.AddOther("12");
    proc.AddExe(13, "/usr/bin/quillgate");

    KillGUI(proc.Root(), control, "").Run();

    EXPECT_EQ(Debug().front(), u"Kill Quillgate GUI(): Process name is (quillgate)");
    EXPECT_EQ(control.opened, (std::vector<pid_t>{13}));
}

TEST_F(KillGUITest, InASandboxOnlyTheCopiesOfTheSameRootAreEnded) {
    proc.AddExe(20, "/usr/bin/quillgate");
    proc.AddEnvironment(20, std::string("HOME=/root\0QUILLGATE_ROOT=/tmp/a\0", 34));
    proc.AddExe(21, "/usr/bin/quillgate");
    proc.AddEnvironment(21, std::string("QUILLGATE_ROOT=/tmp/ab\0", 23));
    proc.AddExe(22, "/usr/bin/quillgate");

    KillGUI(proc.Root(), control, "/tmp/a").Run();

    // Each is opened before its root is read; only the one of the same root is ended, and
    // the handles of the others are closed again.
    EXPECT_EQ(control.opened, (std::vector<pid_t>{20, 21, 22}));
    ASSERT_EQ(control.terminated.size(), 1u);
    EXPECT_EQ(control.terminated[0].second, 20);
    EXPECT_EQ(control.closed, (std::vector<int>{7, 8, 9}));
    const auto lines = Debug();
    EXPECT_NE(std::find(lines.begin(), lines.end(),
                        u"Kill Quillgate GUI(): Process (21) runs under another sandbox root, "
                        u"left alone"),
              lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(),
                        u"Kill Quillgate GUI(): Process (22) runs under another sandbox root, "
                        u"left alone"),
              lines.end());
}

TEST_F(KillGUITest, SlashesAtTheEndOfEitherRootDoNotCount) {
    proc.AddExe(20, "/usr/bin/quillgate");
    proc.AddEnvironment(20, std::string("QUILLGATE_ROOT=/tmp/a//\0", 24));
    proc.AddExe(21, "/usr/bin/quillgate");
    proc.AddEnvironment(21, std::string("QUILLGATE_ROOT=/tmp/a\0", 22));
    proc.AddExe(22, "/usr/bin/quillgate");
    proc.AddEnvironment(22, std::string("QUILLGATE_ROOT=/tmp/a/b/\0", 25));

    KillGUI(proc.Root(), control, "/tmp/a/").Run();

    ASSERT_EQ(control.terminated.size(), 2u);
    EXPECT_EQ(control.terminated[0].second, 20);
    EXPECT_EQ(control.terminated[1].second, 21);
    EXPECT_EQ(KillGUI::WithoutTrailingSlashes("/tmp/a///"), "/tmp/a");
    EXPECT_EQ(KillGUI::WithoutTrailingSlashes("/tmp/a"), "/tmp/a");
}

// The snapshot saw a Quillgate; by the time its handle is open the id belongs to another
// program (the proc folder tells the name anew). It must not be ended.
class ReusingControl : public RecordingControl {
public:
    explicit ReusingControl(FakeProc& proc) : m_proc(proc) {}
    int OpenProcess(pid_t pid, int& error) override {
        const int handle = RecordingControl::OpenProcess(pid, error);
        if (pid == 20) {
            fs::remove(m_proc.Root() + "/20/exe");
            fs::create_symlink("/usr/bin/bash", m_proc.Root() + "/20/exe");
        }
        return handle;
    }

private:
    FakeProc& m_proc;
};

TEST_F(KillGUITest, AnIdTakenByAnotherProgramBeforeTheHandleIsOpenIsLeftAlone) {
    proc.AddExe(20, "/usr/bin/quillgate");
    proc.AddExe(21, "/usr/bin/quillgate");
    ReusingControl reusing(proc);

    KillGUI(proc.Root(), reusing, "").Run();

    EXPECT_EQ(reusing.opened, (std::vector<pid_t>{20, 21}));
    ASSERT_EQ(reusing.terminated.size(), 1u);
    EXPECT_EQ(reusing.terminated[0].second, 21);
    EXPECT_EQ(reusing.closed, (std::vector<int>{7, 8}));
    const auto lines = Debug();
    EXPECT_NE(std::find(lines.begin(), lines.end(),
                        u"Kill Quillgate GUI(): Process (20) is no longer Quillgate, left alone"),
              lines.end());
}

// A process that waits to be ended.
pid_t StartSleeper() {
    const pid_t pid = ::fork();
    if (pid == 0) {
        for (;;)
            ::pause();
    }
    return pid;
}

bool IsAlive(pid_t pid) {
    return ::kill(pid, 0) == 0;
}

TEST(KillGUIProcesses, OthersAreKilledAndTheCallerEndsItselfBeforeTheRest) {
    FakeProc proc;
    // Made before the child that runs the walk, so its id is lower.
    const pid_t before = StartSleeper();
    ASSERT_GT(before, 0);
    const std::string pidFile = proc.Root() + "/after.pid";

    const int code = TestSupport::RunInChild([&] {
        const pid_t after = StartSleeper();
        std::ofstream(pidFile) << after;
        if (after < ::getpid() || before > ::getpid())
            return 3; // the ids wrapped round; the walk's order could not be shown
        proc.AddExe(before, "/usr/bin/quillgate");
        proc.AddExe(::getpid(), "/usr/bin/quillgate");
        proc.AddExe(after, "/usr/bin/quillgate");
        PidfdProcessControl control;
        KillGUI(proc.Root(), control, "").Run();
        return 7; // not reached: the walk ends this process with 0
    });
    EXPECT_EQ(code, 0);

    int status = 0;
    ASSERT_EQ(::waitpid(before, &status, 0), before);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);

    std::ifstream file(pidFile);
    pid_t after = 0;
    file >> after;
    ASSERT_GT(after, 0);
    // Behind the caller's own entry: never reached.
    EXPECT_TRUE(IsAlive(after));
    ::kill(after, SIGKILL);
}

TEST(KillGUIProcesses, AProcessThatIsGoneCannotBeOpened) {
    const pid_t gone = StartSleeper();
    ASSERT_GT(gone, 0);
    ::kill(gone, SIGKILL);
    int status = 0;
    ::waitpid(gone, &status, 0);

    PidfdProcessControl control;
    int error = 0;
    EXPECT_EQ(control.OpenProcess(gone, error), -1);
    EXPECT_EQ(error, ESRCH);
}

} // namespace
