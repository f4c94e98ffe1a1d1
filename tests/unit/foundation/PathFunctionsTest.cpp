#include "foundation/PathFunctions.h"

#include "support/SandboxRoot.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using TestSupport::SandboxRoot;

stdstr Wide(const std::string& text) {
    return stdstr::toTString(text);
}

// Sets or removes an environment variable for one test and puts the old value back.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::optional<std::string>& value) : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        if (value)
            ::setenv(name, value->c_str(), 1);
        else
            ::unsetenv(name);
    }
    ~ScopedEnv() {
        if (m_old)
            ::setenv(m_name.c_str(), m_old->c_str(), 1);
        else
            ::unsetenv(m_name.c_str());
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_old;
};

class ScopedWorkingDirectory {
public:
    explicit ScopedWorkingDirectory(const std::string& folder) {
        char buffer[PATH_MAX];
        if (::getcwd(buffer, sizeof buffer))
            m_old = buffer;
        EXPECT_EQ(::chdir(folder.c_str()), 0);
    }
    ~ScopedWorkingDirectory() {
        if (!m_old.empty()) {
            EXPECT_EQ(::chdir(m_old.c_str()), 0);
        }
    }
    ScopedWorkingDirectory(const ScopedWorkingDirectory&) = delete;
    ScopedWorkingDirectory& operator=(const ScopedWorkingDirectory&) = delete;

private:
    std::string m_old;
};

// A program that writes its process id and then each argument in brackets, one per line,
// to `log` (complete or not at all), and ends with `code`. It needs no PATH.
void WriteRecorder(const SandboxRoot& root, const std::string& relative, const std::string& log,
                   int code) {
    root.writeFile(relative, "#!/bin/sh\n"
                             "{ printf '%s\\n' \"$$\"; for a in \"$@\"; do printf '[%s]\\n' "
                             "\"$a\"; done; } > '" +
                                 log + ".part'\n/bin/mv '" + log + ".part' '" + log + "'\nexit " +
                                 std::to_string(code) + "\n");
    ASSERT_EQ(::chmod(root.file(relative).c_str(), 0755), 0);
}

// What a recorder with the process id `pid` writes for these arguments.
std::string Recorded(pid_t pid, const std::vector<std::string>& arguments) {
    std::string text = std::to_string(pid) + "\n";
    for (const std::string& argument : arguments)
        text += "[" + argument + "]\n";
    return text;
}

bool Exists(const std::string& path) {
    return std::filesystem::exists(path);
}

bool ProcessEntryExists(pid_t pid) {
    return Exists("/proc/" + std::to_string(pid));
}

// A sandbox with a recording opener that ends with `code`, named by QUILLGATE_OPENER.
struct OpenerSandbox {
    explicit OpenerSandbox(int code)
        : log(root.file("opener.log")), env("QUILLGATE_OPENER", root.file("bin/opener")) {
        WriteRecorder(root, "bin/opener", log, code);
    }
    SandboxRoot root;
    std::string log;
    ScopedEnv env;
};

} // namespace

TEST(AppendPathComponent, AFolderAndANameAreJoinedWithASlash) {
    EXPECT_EQ(AppendPathComponent(u"/usr/lib/quillgate", u"quillgate-update"),
              u"/usr/lib/quillgate/quillgate-update");
    EXPECT_EQ(AppendPathComponent(u"/opt", u"QGSaLangs"), u"/opt/QGSaLangs");
}

TEST(AppendPathComponent, TheRootAndAnEmptyFolderAreJoinedAsTheyStand) {
    EXPECT_EQ(AppendPathComponent(u"/", u"QGSaLangs"), u"/QGSaLangs");
    EXPECT_EQ(AppendPathComponent(u"", u"QGSaLangs"), u"QGSaLangs");
}

TEST(AppendPathComponent, AShortFolderStillGetsItsSeparator) {
    EXPECT_EQ(AppendPathComponent(u"/ab", u"c"), u"/ab/c");
}

TEST(AppendPathComponent, AFolderThatEndsWithASlashGetsNoSecondOne) {
    EXPECT_EQ(AppendPathComponent(u"/tmp/", u"x"), u"/tmp/x");
}

TEST(ShellOpen, AnAddressGoesToTheOpenerAsItStandsAndExitCodeZeroIsSuccess) {
    OpenerSandbox sandbox(0);
    ShellOpenInfo info;
    int code = 77;
    const stdstr address = u"https://www.example.org/quillgate/support/?a=1&b=x y";
    EXPECT_TRUE(ShellOpen(address, u"", true, &info, &code));
    EXPECT_EQ(code, 0);
    EXPECT_GT(info.pid(), 0);
    EXPECT_TRUE(info.hasEnded());
    EXPECT_EQ(info.exitCode(), 0);
    EXPECT_EQ(info.command(),
              (std::vector<std::string>{sandbox.root.file("bin/opener"),
                                        "https://www.example.org/quillgate/support/?a=1&b=x y"}));
    EXPECT_EQ(SandboxRoot::readFile(sandbox.log),
              Recorded(info.pid(), {"https://www.example.org/quillgate/support/?a=1&b=x y"}));
}

TEST(ShellOpen, WhenWaitingAnOpenerExitCodeOtherThanZeroIsAFailureAndIsHandedBack) {
    for (const int exit : {2, 4}) {
        OpenerSandbox sandbox(exit);
        int code = 77;
        EXPECT_FALSE(ShellOpen(u"mailto:support@example.org", u"", true, nullptr, &code));
        EXPECT_EQ(code, exit);
        EXPECT_TRUE(Exists(sandbox.log));
    }
}

TEST(ShellOpen, WithoutWaitingTheResultIsTheStartAndTheOpenerIsReaped) {
    OpenerSandbox sandbox(4);
    ShellOpenInfo info;
    int code = 77;
    EXPECT_TRUE(ShellOpen(u"https://www.example.org/", u"", false, &info, &code));
    EXPECT_EQ(code, 77);
    ASSERT_GT(info.pid(), 0);
    ASSERT_TRUE(info.waitFor(10s));
    EXPECT_EQ(info.exitCode(), 4);
    EXPECT_EQ(SandboxRoot::readFile(sandbox.log),
              Recorded(info.pid(), {"https://www.example.org/"}));
    EXPECT_FALSE(ProcessEntryExists(info.pid()));
}

TEST(ShellOpen, WithoutWaitingOrAnInfoTheOpenerIsReapedAllTheSame) {
    OpenerSandbox sandbox(0);
    EXPECT_TRUE(ShellOpen(u"https://www.example.org/", u"", false, nullptr, nullptr));
    ASSERT_TRUE(TestSupport::WaitFor([&] { return Exists(sandbox.log); }));
    const pid_t pid = std::stoi(SandboxRoot::readFile(sandbox.log));
    EXPECT_TRUE(TestSupport::WaitFor([&] { return !ProcessEntryExists(pid); }));
}

TEST(ShellOpen, ADocumentGoesToTheOpenerWithAnAbsolutePathAndWithoutTheParameters) {
    OpenerSandbox sandbox(0);
    sandbox.root.writeFile("help files/eng-qghelp.html", "<html></html>");
    ScopedWorkingDirectory here(sandbox.root.path());
    ShellOpenInfo info;
    EXPECT_TRUE(ShellOpen(u"help files/eng-qghelp.html", u"-a -b", true, &info, nullptr));
    char cwd[PATH_MAX];
    ASSERT_NE(::getcwd(cwd, sizeof cwd), nullptr);
    EXPECT_EQ(SandboxRoot::readFile(sandbox.log),
              Recorded(info.pid(), {std::string(cwd) + "/help files/eng-qghelp.html"}));
}

TEST(ShellOpen, ADocumentWithTheExecuteBitIsOpenedAndNotRun) {
    OpenerSandbox sandbox(0);
    sandbox.root.writeFile("notes.txt", "just text\n");
    ASSERT_EQ(::chmod(sandbox.root.file("notes.txt").c_str(), 0755), 0);
    ShellOpenInfo info;
    EXPECT_TRUE(ShellOpen(Wide(sandbox.root.file("notes.txt")), u"", true, &info, nullptr));
    EXPECT_EQ(SandboxRoot::readFile(sandbox.log),
              Recorded(info.pid(), {sandbox.root.file("notes.txt")}));
}

TEST(ShellOpen, AMissingFileFailsWithoutStartingAnything) {
    OpenerSandbox sandbox(0);
    ShellOpenInfo info(12345, {"stale"});
    int code = 77;
    EXPECT_FALSE(ShellOpen(Wide(sandbox.root.file("eng-qghelp.html")), u"", true, &info, &code));
    EXPECT_EQ(info.pid(), -1);
    EXPECT_EQ(code, 77);
    EXPECT_FALSE(Exists(sandbox.log));
}

TEST(ShellOpen, AnEmptyNameFails) {
    OpenerSandbox sandbox(0);
    EXPECT_FALSE(ShellOpen(u"", u"", true, nullptr, nullptr));
    EXPECT_FALSE(Exists(sandbox.log));
}

// The name is taken as a terminated string, so a leading NUL leaves nothing to open; in
// particular not the working folder.
TEST(ShellOpen, ANameThatStartsWithANulFails) {
    OpenerSandbox sandbox(0);
    ScopedWorkingDirectory inRoot(sandbox.root.path());
    EXPECT_FALSE(ShellOpen(stdstr(u"\0notes.txt", 10), u"", true, nullptr, nullptr));
    EXPECT_FALSE(Exists(sandbox.log));
}

TEST(ShellOpen, AnOpenerThatCannotBeStartedIsAFailure) {
    SandboxRoot root;
    ScopedEnv opener("QUILLGATE_OPENER", root.file("bin/no-such-opener"));
    ShellOpenInfo info;
    EXPECT_FALSE(ShellOpen(u"https://www.example.org/", u"", false, &info, nullptr));
    EXPECT_EQ(info.pid(), -1);
}

TEST(ShellOpen, WithoutAnOpenerNamedTheDesktopsXdgOpenIsLookedUpInThePath) {
    SandboxRoot root;
    WriteRecorder(root, "bin/xdg-open", root.file("xdg.log"), 0);
    ScopedEnv opener("QUILLGATE_OPENER", std::nullopt);
    ScopedEnv path("PATH", root.file("bin"));
    ShellOpenInfo info;
    EXPECT_TRUE(ShellOpen(u"https://www.example.org/", u"", true, &info, nullptr));
    EXPECT_EQ(info.command().front(), "xdg-open");
    EXPECT_EQ(SandboxRoot::readFile(root.file("xdg.log")),
              Recorded(info.pid(), {"https://www.example.org/"}));
}

TEST(ShellOpen, AProgramIsRunItselfWithItsParametersSplitOnBlanks) {
    OpenerSandbox sandbox(0);
    WriteRecorder(sandbox.root, "lib/quillgate-update", sandbox.root.file("update.log"), 3);
    ShellOpenInfo info;
    int code = 77;
    const stdstr parameters =
        u"/product=QG  /EXES=quillgate /version=4.0.1.2\t/code=a\u00E9 /LANG=1033 ";
    // The program's own exit code is the program's business: the start succeeded.
    EXPECT_TRUE(
        ShellOpen(Wide(sandbox.root.file("lib/quillgate-update")), parameters, true, &info, &code));
    EXPECT_EQ(code, 3);
    const std::vector<std::string> arguments = {
        "/product=QG", "/EXES=quillgate", "/version=4.0.1.2", "/code=a\xC3\xA9", "/LANG=1033"};
    EXPECT_EQ(SandboxRoot::readFile(sandbox.root.file("update.log")),
              Recorded(info.pid(), arguments));
    std::vector<std::string> command = {sandbox.root.file("lib/quillgate-update")};
    command.insert(command.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(info.command(), command);
    EXPECT_FALSE(Exists(sandbox.log));
}

TEST(ShellOpen, AProgramStartedWithoutWaitingCanBeWaitedForThroughTheInfo) {
    OpenerSandbox sandbox(0);
    WriteRecorder(sandbox.root, "lib/quillgate-update", sandbox.root.file("update.log"), 0);
    ShellOpenInfo info;
    EXPECT_TRUE(
        ShellOpen(Wide(sandbox.root.file("lib/quillgate-update")), u"", false, &info, nullptr));
    ASSERT_TRUE(info.waitFor(10s));
    EXPECT_EQ(info.exitCode(), 0);
    EXPECT_EQ(SandboxRoot::readFile(sandbox.root.file("update.log")), Recorded(info.pid(), {}));
    EXPECT_FALSE(Exists(sandbox.log));
}

TEST(ShellOpen, AProgramEndedByASignalIsReportedAsShellsDo) {
    OpenerSandbox sandbox(0);
    sandbox.root.writeFile("lib/crash", "#!/bin/sh\nkill -TERM $$\n");
    ASSERT_EQ(::chmod(sandbox.root.file("lib/crash").c_str(), 0755), 0);
    int code = 77;
    EXPECT_TRUE(ShellOpen(Wide(sandbox.root.file("lib/crash")), u"", true, nullptr, &code));
    EXPECT_EQ(code, 128 + 15);
}
