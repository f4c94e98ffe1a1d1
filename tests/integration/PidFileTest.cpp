// PidFile: what another process learns from the service's pid file, the file backend of the
// service state.
#include "service/PidFile.h"

#include "support/RunInChild.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

TEST(PidFile, ThatDoesNotExistIsNotLocked) {
    TestSupport::SandboxRoot sandbox;
    const PidFile::Observation seen = PidFile::observe(sandbox.file("run/none.pid"));
    EXPECT_FALSE(seen.locked);
    EXPECT_EQ(seen.pid, 0);
    EXPECT_FALSE(seen.state.has_value());
}

TEST(PidFile, HeldByAnotherProcessIsLockedAndTellsItsPidAndState) {
    TestSupport::SandboxRoot sandbox;
    const std::string path = sandbox.file("run/service.pid");
    int ready[2];
    int release[2];
    ASSERT_EQ(::pipe(ready), 0);
    ASSERT_EQ(::pipe(release), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        PidFile file(path);
        std::string error;
        const bool held = file.acquire(error) && file.write(4321, PidFile::State::Starting);
        char byte = held ? 'y' : 'n';
        [[maybe_unused]] ssize_t n = ::write(ready[1], &byte, 1);
        n = ::read(release[0], &byte, 1);
        ::_exit(0);
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    ASSERT_EQ(byte, 'y');
    const PidFile::Observation seen = PidFile::observe(path);
    EXPECT_TRUE(seen.locked);
    EXPECT_EQ(seen.pid, 4321);
    ASSERT_TRUE(seen.state.has_value());
    EXPECT_EQ(*seen.state, PidFile::State::Starting);
    PidFile second(path);
    std::string error;
    EXPECT_FALSE(second.acquire(error));
    EXPECT_EQ(error, "another service holds " + path);

    ASSERT_EQ(::write(release[1], "x", 1), 1);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    // The holder is gone: the text stays, the lock does not.
    const PidFile::Observation after = PidFile::observe(path);
    EXPECT_FALSE(after.locked);
    EXPECT_EQ(after.pid, 4321);
    EXPECT_TRUE(second.acquire(error)) << error;
    for (const int fd : {ready[0], ready[1], release[0], release[1]})
        ::close(fd);
}

TEST(PidFile, WritesThePidAndTheStateOnTwoLines) {
    TestSupport::SandboxRoot sandbox;
    const std::string path = sandbox.file("run/service.pid");
    PidFile file(path);
    std::string error;
    ASSERT_TRUE(file.acquire(error)) << error;
    ASSERT_TRUE(file.write(77, PidFile::State::Running));
    ASSERT_TRUE(file.write(78, PidFile::State::Stopping));
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(path), "78\nstopping\n");
    EXPECT_STREQ(PidFile::nameOf(PidFile::State::Starting), "starting");
}

TEST(PidFile, WithATextThatIsNotAPidTellsNone) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("run/service.pid", "12ab\nrunning\n");
    EXPECT_EQ(PidFile::observe(sandbox.file("run/service.pid")).pid, 0);
    sandbox.writeFile("run/service.pid", "12\nsleeping\n");
    const PidFile::Observation seen = PidFile::observe(sandbox.file("run/service.pid"));
    EXPECT_EQ(seen.pid, 12);
    EXPECT_FALSE(seen.state.has_value());
}
