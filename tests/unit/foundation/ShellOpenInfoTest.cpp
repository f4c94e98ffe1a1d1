#include "foundation/ShellOpenInfo.h"

#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

// A child that ends with `code` at once.
pid_t ChildExiting(int code) {
    const pid_t pid = ::fork();
    if (pid == 0)
        ::_exit(code);
    return pid;
}

// A child that waits until the returned descriptor is closed, then ends with `code`.
pid_t ChildWaitingForClose(int code, int& writeEnd) {
    int fds[2];
    if (::pipe(fds) != 0)
        return -1;
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(fds[1]);
        char c;
        while (::read(fds[0], &c, 1) > 0) {
        }
        ::_exit(code);
    }
    ::close(fds[0]);
    writeEnd = fds[1];
    return pid;
}

bool ProcessEntryExists(pid_t pid) {
    return std::filesystem::exists("/proc/" + std::to_string(pid));
}

} // namespace

TEST(ShellOpenInfo, AnInfoOfNothingStartedHasNoProcessAndDoesNotBlock) {
    const ShellOpenInfo info;
    EXPECT_EQ(info.pid(), -1);
    EXPECT_TRUE(info.command().empty());
    EXPECT_TRUE(info.hasEnded());
    EXPECT_TRUE(info.waitFor(0ms));
    EXPECT_EQ(info.exitCode(), -1);
}

TEST(ShellOpenInfo, WaitUntilEndGivesTheExitCodeAndReapsTheChild) {
    const pid_t pid = ChildExiting(5);
    ASSERT_GT(pid, 0);
    ShellOpenInfo info(pid, {"/bin/child", "-x"});
    EXPECT_EQ(info.pid(), pid);
    EXPECT_EQ(info.command(), (std::vector<std::string>{"/bin/child", "-x"}));
    EXPECT_EQ(info.waitUntilEnd(), 5);
    EXPECT_TRUE(info.hasEnded());
    EXPECT_EQ(info.exitCode(), 5);
    EXPECT_FALSE(ProcessEntryExists(pid));
}

TEST(ShellOpenInfo, AChildEndedByASignalReportsOneHundredTwentyEightPlusItsNumber) {
    const pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        ::kill(::getpid(), SIGKILL);
        ::_exit(1);
    }
    ShellOpenInfo info(pid, {"child"});
    EXPECT_EQ(info.waitUntilEnd(), 128 + SIGKILL);
}

TEST(ShellOpenInfo, ABackgroundReaperTellsEveryCopyOfTheEnd) {
    int writeEnd = -1;
    const pid_t pid = ChildWaitingForClose(3, writeEnd);
    ASSERT_GT(pid, 0);
    ShellOpenInfo info(pid, {"child"});
    const ShellOpenInfo copy = info;
    info.reapInBackground();

    EXPECT_FALSE(copy.waitFor(1ms));
    EXPECT_FALSE(copy.hasEnded());
    EXPECT_EQ(copy.exitCode(), -1);

    ::close(writeEnd);
    EXPECT_TRUE(copy.waitFor(10s));
    EXPECT_TRUE(info.hasEnded());
    EXPECT_EQ(copy.exitCode(), 3);
    EXPECT_EQ(info.exitCode(), 3);
    // Reaped: not even a zombie is left.
    EXPECT_TRUE(TestSupport::WaitFor([&] { return !ProcessEntryExists(pid); }));
}

TEST(ShellOpenInfo, TheBackgroundReaperWorksWithoutAnyCopyLeft) {
    int writeEnd = -1;
    const pid_t pid = ChildWaitingForClose(0, writeEnd);
    ASSERT_GT(pid, 0);
    {
        ShellOpenInfo info(pid, {"child"});
        info.reapInBackground();
    }
    ::close(writeEnd);
    EXPECT_TRUE(TestSupport::WaitFor([&] { return !ProcessEntryExists(pid); }));
}
