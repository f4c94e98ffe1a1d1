// The mutex with a name, shared by processes through its lock file in the run folder.
#include "foundation/Mutex.h"

#include "foundation/Event.h"
#include "foundation/SecurityObject.h"
#include "foundation/SystemPaths.h"

#include "SyncTestEnvironment.h"
#include "SyncTestLog.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Corvane::Infinite;
using Corvane::Mutex;
using namespace std::chrono_literals;

// A forked child that runs `body` and ends with its result; the two sides talk through a
// pipe each way, one byte per message.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<int(ChildProcess&)>& body) {
        int up[2];
        int down[2];
        if (::pipe2(up, O_CLOEXEC) != 0 || ::pipe2(down, O_CLOEXEC) != 0)
            return;
        m_pid = ::fork();
        if (m_pid == 0) {
            ::close(up[0]);
            ::close(down[1]);
            m_write = up[1];
            m_read = down[0];
            ::_exit(body(*this));
        }
        ::close(up[1]);
        ::close(down[0]);
        m_read = up[0];
        m_write = down[1];
    }
    ~ChildProcess() {
        if (m_pid > 0)
            kill();
        ::close(m_read);
        ::close(m_write);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool started() const { return m_pid > 0; }
    void send(char message) { [[maybe_unused]] auto n = ::write(m_write, &message, 1); }
    // The next message, or 0 when the other side has gone or the deadline passed.
    char receive(std::chrono::milliseconds deadline = 30s) {
        pollfd wanted{m_read, POLLIN, 0};
        if (::poll(&wanted, 1, static_cast<int>(deadline.count())) != 1)
            return 0;
        char message = 0;
        return ::read(m_read, &message, 1) == 1 ? message : 0;
    }
    // The child's exit code, or -1 when it did not exit by itself.
    int wait() {
        int status = 0;
        if (m_pid <= 0 || ::waitpid(m_pid, &status, 0) != m_pid)
            return -1;
        m_pid = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void kill() {
        if (m_pid <= 0)
            return;
        ::kill(m_pid, SIGKILL);
        wait();
    }

private:
    pid_t m_pid = -1;
    int m_read = -1;
    int m_write = -1;
};

std::string TestName() {
    return std::string("QGTest_") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
}

std::string RunFile(const std::string& name) {
    return SyncTestEnvironment::Root().file("run/" + name + ".lock");
}

mode_t ModeOf(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 ? (st.st_mode & 07777) : 0;
}

bool LockedFromAnotherThread(Mutex& mutex, std::uint32_t timeoutMs = 0) {
    return std::async(std::launch::async,
                      [&mutex, timeoutMs] {
                          const bool locked = mutex.lock(timeoutMs);
                          if (locked)
                              mutex.unlock();
                          return locked;
                      })
        .get();
}

// Puts the process's security object back however the test ends.
class SecurityObjectRemoved {
public:
    SecurityObjectRemoved() : m_saved(Corvane::g_securityObject.exchange(nullptr)) {}
    ~SecurityObjectRemoved() { Corvane::g_securityObject.store(m_saved); }
    SecurityObjectRemoved(const SecurityObjectRemoved&) = delete;
    SecurityObjectRemoved& operator=(const SecurityObjectRemoved&) = delete;

private:
    Corvane::SecurityObject* m_saved;
};

TEST(NamedMutex, TheFirstObjectCreatesTheLockFileForEveryUser) {
    const std::string name = TestName();
    SyncTestLog log;
    const mode_t umask = ::umask(077);
    Mutex mutex(name.c_str());
    ::umask(umask);
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Created " + name + " Mutex"});
    EXPECT_FALSE(mutex.alreadyExisted());
    EXPECT_EQ(mutex.lastError(), 0u);
    EXPECT_EQ(mutex.name(), name);
    EXPECT_GE(mutex.handle(), 0);
    EXPECT_EQ(Mutex::LockFilePath(name), RunFile(name));
    EXPECT_TRUE(std::filesystem::is_regular_file(RunFile(name)));
    EXPECT_EQ(ModeOf(RunFile(name)), 0666u);
}

TEST(NamedMutex, AStaleLockFileDoesNotMakeItExist) {
    const std::string name = TestName();
    SyncTestEnvironment::Root().writeFile("run/" + name + ".lock", "left behind");
    SyncTestLog log;
    Mutex mutex(name.c_str());
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Created " + name + " Mutex"});
    EXPECT_FALSE(mutex.alreadyExisted());
    EXPECT_EQ(mutex.lastError(), 0u);
    EXPECT_TRUE(mutex.lock(0));
    mutex.unlock();
}

TEST(NamedMutex, ASecondObjectOfTheProcessOpensIt) {
    const std::string name = TestName();
    Mutex first(name.c_str());
    SyncTestLog log;
    Mutex second(name.c_str());
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Opened " + name + " Mutex"});
    EXPECT_TRUE(second.alreadyExisted());
    EXPECT_EQ(second.lastError(), Corvane::ErrorAlreadyExists);
    EXPECT_FALSE(first.alreadyExisted());
}

TEST(NamedMutex, TheCreatorKeepsTheNameUntilTheProcessCleansUp) {
    const std::string name = TestName();
    std::make_unique<Mutex>(name.c_str()).reset();
    EXPECT_TRUE(Mutex(name.c_str()).alreadyExisted());

    SyncTestLog log;
    Mutex::CleanupNamedMutexHandles();
    EXPECT_EQ(log.messages(),
              (std::vector<std::string>{"Mutex::CleanupNamedMutexHandles",
                                        "Mutex::CleanupNamedMutexHandles - Finished"}));
    EXPECT_FALSE(Mutex(name.c_str()).alreadyExisted());
}

TEST(NamedMutex, AnObjectThatOpenedTheNameDoesNotKeepIt) {
    const std::string name = TestName();
    auto creator = std::make_unique<Mutex>(name.c_str());
    Mutex::CleanupNamedMutexHandles();
    auto opener = std::make_unique<Mutex>(name.c_str());
    ASSERT_TRUE(opener->alreadyExisted());
    creator.reset();
    EXPECT_TRUE(Mutex(name.c_str()).alreadyExisted()); // the opener still has it
    opener.reset();
    EXPECT_FALSE(Mutex(name.c_str()).alreadyExisted());
}

TEST(NamedMutex, LockAndUnlockAreLoggedWithTheName) {
    const std::string name = TestName();
    Mutex mutex(name.c_str());
    SyncTestLog log;
    ASSERT_TRUE(mutex.lock(0));
    ASSERT_TRUE(mutex.lock(Infinite));
    mutex.unlock();
    mutex.unlock();
    EXPECT_EQ(log.messages(),
              (std::vector<std::string>{"Locked Mutex " + name, "Locked Mutex " + name,
                                        "Unlocked Mutex " + name, "Unlocked Mutex " + name}));
}

TEST(NamedMutex, ThreadsOfOneProcessExcludeEachOther) {
    const std::string name = TestName();
    Mutex mutex(name.c_str());
    Mutex other(name.c_str());
    ASSERT_TRUE(mutex.lock(0));
    ASSERT_TRUE(mutex.lock(0));
    EXPECT_FALSE(LockedFromAnotherThread(mutex));
    EXPECT_FALSE(LockedFromAnotherThread(other, 20));
    mutex.unlock();
    EXPECT_FALSE(LockedFromAnotherThread(mutex));
    mutex.unlock();
    EXPECT_TRUE(LockedFromAnotherThread(mutex));
    EXPECT_TRUE(LockedFromAnotherThread(other));
}

TEST(NamedMutex, UnlockByAThreadThatDoesNotOwnItKeepsOtherProcessesOut) {
    const std::string name = TestName();
    Mutex mine(name.c_str());
    ASSERT_TRUE(mine.lock(0));
    std::async(std::launch::async, [&mine] { mine.unlock(); }).get();
    ChildProcess whileHeld([&name](ChildProcess&) { return Mutex(name.c_str()).lock(0) ? 1 : 0; });
    ASSERT_TRUE(whileHeld.started());
    EXPECT_EQ(whileHeld.wait(), 0);
    mine.unlock();
    ChildProcess afterwards([&name](ChildProcess&) { return Mutex(name.c_str()).lock(0) ? 0 : 1; });
    ASSERT_TRUE(afterwards.started());
    EXPECT_EQ(afterwards.wait(), 0);
}

TEST(NamedMutex, TheOwnerMayDestroyItWhileLocked) {
    const std::string name = TestName();
    auto owner = std::make_unique<Mutex>(name.c_str()); // its file stays open in the registry
    ASSERT_TRUE(owner->lock(0));
    ASSERT_TRUE(owner->lock(0));
    owner.reset();
    Mutex later(name.c_str());
    ASSERT_TRUE(later.alreadyExisted());
    EXPECT_TRUE(LockedFromAnotherThread(later));
}

TEST(NamedMutex, ASecondProcessSeesItExistAndTheFirstDoesNot) {
    const std::string name = TestName();
    Mutex mine(name.c_str());
    EXPECT_FALSE(mine.alreadyExisted());
    ChildProcess child([&name](ChildProcess&) {
        Mutex theirs(name.c_str());
        return theirs.alreadyExisted() && theirs.lastError() == 183 ? 0 : 1;
    });
    ASSERT_TRUE(child.started());
    EXPECT_EQ(child.wait(), 0);
}

TEST(NamedMutex, TheProcessThatCameFirstReportsFalse) {
    const std::string name = TestName();
    ChildProcess child([&name](ChildProcess& parent) {
        Mutex theirs(name.c_str());
        parent.send(theirs.alreadyExisted() ? 'T' : 'F');
        return parent.receive() == 'q' ? 0 : 1;
    });
    ASSERT_TRUE(child.started());
    EXPECT_EQ(child.receive(), 'F');
    SyncTestLog log;
    Mutex mine(name.c_str());
    EXPECT_TRUE(mine.alreadyExisted());
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Opened " + name + " Mutex"});
    child.send('q');
    EXPECT_EQ(child.wait(), 0);
}

TEST(NamedMutex, ProcessesTakeTurns) {
    const std::string name = TestName();
    ChildProcess child([&name](ChildProcess& parent) {
        Mutex theirs(name.c_str());
        if (!theirs.lock(Infinite))
            return 1;
        parent.send('L');
        if (parent.receive() != 'u')
            return 2;
        theirs.unlock();
        parent.send('U');
        if (parent.receive() != 't')
            return 3;
        parent.send(theirs.lock(0) ? 'Y' : 'N');
        if (parent.receive() != 't')
            return 4;
        parent.send(theirs.lock(0) ? 'Y' : 'N');
        return 0;
    });
    ASSERT_TRUE(child.started());
    ASSERT_EQ(child.receive(), 'L');
    Mutex mine(name.c_str());
    EXPECT_FALSE(mine.lock(0));
    child.send('u');
    ASSERT_EQ(child.receive(), 'U');
    ASSERT_TRUE(mine.lock(0));
    child.send('t');
    EXPECT_EQ(child.receive(), 'N');
    mine.unlock();
    child.send('t');
    EXPECT_EQ(child.receive(), 'Y');
    EXPECT_EQ(child.wait(), 0);
}

TEST(NamedMutex, AProcessHoldingItKeepsOthersOutUntilItIsKilled) {
    const std::string name = TestName();
    ChildProcess child([&name](ChildProcess& parent) {
        Mutex theirs(name.c_str());
        if (!theirs.lock(Infinite))
            return 1;
        parent.send('L');
        parent.receive(); // until killed
        return 0;
    });
    ASSERT_TRUE(child.started());
    ASSERT_EQ(child.receive(), 'L');
    {
        SyncTestLog log;
        Mutex mine(name.c_str());
        EXPECT_TRUE(mine.alreadyExisted());
        EXPECT_FALSE(mine.lock(0));
        EXPECT_FALSE(mine.lock(50));
        EXPECT_EQ(log.count("Mutex Lock Timeout or Fail " + name), 2u);
    }
    child.kill();
    SyncTestLog log;
    Mutex next(name.c_str());
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Created " + name + " Mutex"});
    EXPECT_FALSE(next.alreadyExisted());
    EXPECT_TRUE(next.lock(0));
    next.unlock();
}

// A Windows waiter would get WAIT_ABANDONED here and fail; on Linux the kernel drops the
// dead holder's lock and the waiter simply has it.
TEST(NamedMutex, AWaiterGetsItWhenTheHolderIsKilled) {
    const std::string name = TestName();
    ChildProcess child([&name](ChildProcess& parent) {
        Mutex theirs(name.c_str());
        if (!theirs.lock(Infinite))
            return 1;
        parent.send('L');
        parent.receive(); // until killed
        return 0;
    });
    ASSERT_TRUE(child.started());
    ASSERT_EQ(child.receive(), 'L');
    Mutex mine(name.c_str());
    std::promise<bool> gotIt;
    auto got = gotIt.get_future();
    Corvane::Event done;
    std::thread waiter([&] {
        const bool locked = mine.lock(Infinite);
        gotIt.set_value(locked);
        done.wait(Infinite);
        if (locked)
            mine.unlock();
    });
    EXPECT_EQ(got.wait_for(50ms), std::future_status::timeout);
    child.kill();
    EXPECT_EQ(got.wait_for(10s), std::future_status::ready);
    EXPECT_TRUE(got.get());
    done.set();
    waiter.join();
}

TEST(NamedMutex, ALimitedWaitEndsWhenTheOtherProcessUnlocks) {
    const std::string name = TestName();
    ChildProcess child([&name](ChildProcess& parent) {
        Mutex theirs(name.c_str());
        if (!theirs.lock(Infinite))
            return 1;
        parent.send('L');
        if (parent.receive() != 'u')
            return 2;
        theirs.unlock();
        return parent.receive() == 'q' ? 0 : 3;
    });
    ASSERT_TRUE(child.started());
    ASSERT_EQ(child.receive(), 'L');
    Mutex mine(name.c_str());
    auto waiter = std::async(std::launch::async, [&mine] {
        const bool locked = mine.lock(20000);
        if (locked)
            mine.unlock();
        return locked;
    });
    EXPECT_EQ(waiter.wait_for(50ms), std::future_status::timeout);
    child.send('u');
    EXPECT_EQ(waiter.wait_for(10s), std::future_status::ready);
    EXPECT_TRUE(waiter.get());
    child.send('q');
    EXPECT_EQ(child.wait(), 0);
}

// Without the guard around the existence test, two processes could both take the name for
// new: the window is short, so many rounds are run, each released at once through one pipe.
TEST(NamedMutex, ProcessesStartingTogetherSeeExactlyOneCreator) {
    constexpr int Rounds = 20;
    constexpr int Children = 12;
    for (int round = 0; round < Rounds; ++round) {
        const std::string name = TestName() + std::to_string(round);
        int start[2];
        ASSERT_EQ(::pipe2(start, O_CLOEXEC), 0);
        std::vector<std::unique_ptr<ChildProcess>> children;
        for (int i = 0; i < Children; ++i) {
            children.push_back(std::make_unique<ChildProcess>([&](ChildProcess& parent) {
                ::close(start[1]);
                char ignored;
                if (::read(start[0], &ignored, 1) != 0) // the parent's close starts everybody
                    return 1;
                Mutex theirs(name.c_str());
                parent.send(theirs.alreadyExisted() ? 'T' : 'F');
                return parent.receive() == 'q' ? 0 : 2;
            }));
            ASSERT_TRUE(children.back()->started());
        }
        ::close(start[0]);
        ::close(start[1]);
        int creators = 0;
        int openers = 0;
        for (auto& child : children) {
            const char answer = child->receive();
            creators += answer == 'F';
            openers += answer == 'T';
        }
        EXPECT_EQ(creators, 1) << "round " << round;
        EXPECT_EQ(openers, Children - 1) << "round " << round;
        for (auto& child : children)
            child->send('q');
        for (auto& child : children)
            EXPECT_EQ(child->wait(), 0);
    }
}

TEST(NamedMutex, ALockPathThatCannotBeOpenedIsLoggedAndCreationFails) {
    const std::string name = TestName();
    std::filesystem::create_directories(RunFile(name));
    SyncTestLog log;
    Mutex mutex(name.c_str());
    EXPECT_EQ(log.messages(),
              (std::vector<std::string>{
                  "Open Mutex " + name + " Failed with error " + std::to_string(EISDIR) +
                      ". This is OK we will create it",
                  "Mutex: Create " + name + " Mutex Error- " + std::to_string(EEXIST)}));
    EXPECT_EQ(mutex.lastError(), static_cast<std::uint32_t>(EEXIST));
    EXPECT_FALSE(mutex.alreadyExisted());
    EXPECT_EQ(mutex.name(), name);
    EXPECT_EQ(mutex.handle(), -1);
    EXPECT_TRUE(mutex.clearDacl());

    SyncTestLog locking;
    EXPECT_FALSE(mutex.lock(0));
    EXPECT_FALSE(mutex.lock(Infinite));
    mutex.unlock();
    EXPECT_EQ(locking.messages(), (std::vector<std::string>{"Mutex Lock Timeout or Fail " + name,
                                                            "Mutex Lock Timeout or Fail " + name}));
}

TEST(NamedMutex, ClearDaclGivesTheFileToEveryUser) {
    const std::string name = TestName();
    Mutex mutex(name.c_str());
    ASSERT_EQ(::chmod(RunFile(name).c_str(), 0600), 0);
    EXPECT_TRUE(mutex.clearDacl());
    EXPECT_EQ(ModeOf(RunFile(name)), 0666u);
}

TEST(NamedMutex, ClearDaclLeavesAnotherUsersFileAlone) {
    const std::string name = TestName();
    Mutex mutex(name.c_str());
    ASSERT_EQ(::chmod(RunFile(name).c_str(), 0640), 0);
    if (::chown(RunFile(name).c_str(), 65534, 65534) != 0)
        GTEST_SKIP() << "giving the file away needs root";
    EXPECT_TRUE(mutex.clearDacl());
    EXPECT_EQ(ModeOf(RunFile(name)), 0640u);
}

TEST(NamedMutex, TheRunFolderIsMadeWhenMissing) {
    const std::string name = TestName();
    std::filesystem::remove_all(SyncTestEnvironment::Root().file("run"));
    Mutex mutex(name.c_str());
    EXPECT_GE(mutex.handle(), 0);
    EXPECT_TRUE(std::filesystem::is_regular_file(RunFile(name)));
}

TEST(NamedMutex, ItsDescriptorIsClosedOnExec) {
    const std::string name = TestName();
    Mutex mutex(name.c_str());
    ASSERT_GE(mutex.handle(), 0);
    EXPECT_NE(::fcntl(mutex.handle(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(NamedMutex, WithoutTheSecurityObjectTheFileIsItsCreatorsAndNothingIsKept) {
    const std::string name = TestName();
    {
        SecurityObjectRemoved removed;
        SyncTestLog log;
        auto first = std::make_unique<Mutex>(name.c_str());
        Mutex second(name.c_str());
        // Made as a Windows mutex without security attributes: the existing object is
        // simply returned and nothing records that it existed.
        EXPECT_EQ(log.messages(), (std::vector<std::string>{"Mutex: Created " + name + " Mutex",
                                                            "Mutex: Created " + name + " Mutex"}));
        EXPECT_FALSE(second.alreadyExisted());
        EXPECT_EQ(ModeOf(RunFile(name)), 0600u);
        first.reset();
    }
    EXPECT_FALSE(Mutex(name.c_str()).alreadyExisted());
}

TEST(NamedMutex, WithoutTheSecurityObjectNoOpenIsTriedOrLogged) {
    const std::string name = TestName();
    std::filesystem::create_directories(RunFile(name));
    SecurityObjectRemoved removed;
    SyncTestLog log;
    Mutex mutex(name.c_str());
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Create " + name + " Mutex Error- " +
                                                       std::to_string(EEXIST)});
    EXPECT_EQ(mutex.lastError(), static_cast<std::uint32_t>(EEXIST));
}

} // namespace
