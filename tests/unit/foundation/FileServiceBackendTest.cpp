#include "foundation/FileServiceBackend.h"

#include "foundation/ErrorKeys.h"
#include "foundation/ServiceManager.h"
#include "foundation/SystemPaths.h"

#include "support/RunInChild.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

const stdstr Service = u"VelloranQuillgateSvc";

// A process that holds the pid file as the service does (exclusive flock, "<pid>\n<state>\n")
// until the holder object ends; the lock is the kernel's, so it goes with the process.
class PidFileHolder {
public:
    PidFileHolder(const std::string& path, const std::string& text) {
        int ready[2];
        int release[2];
        if (::pipe(ready) != 0 || ::pipe(release) != 0)
            return;
        m_pid = ::fork();
        if (m_pid == 0) {
            ::close(ready[0]);
            ::close(release[1]);
            const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
            char answer = 'n';
            if (fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::ftruncate(fd, 0) == 0 &&
                ::pwrite(fd, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()))
                answer = 'y';
            [[maybe_unused]] const auto written = ::write(ready[1], &answer, 1);
            char ignored = 0;
            [[maybe_unused]] const auto read = ::read(release[0], &ignored, 1); // until released
            ::_exit(0);
        }
        ::close(ready[1]);
        ::close(release[0]);
        m_release = release[1];
        char answer = 'n';
        m_holding = ::read(ready[0], &answer, 1) == 1 && answer == 'y';
        ::close(ready[0]);
    }

    ~PidFileHolder() { end(); }

    bool holding() const { return m_holding; }

    // Ends the holder and waits for it, so that its lock is gone when this returns.
    void end() {
        if (m_release >= 0)
            ::close(m_release);
        m_release = -1;
        if (m_pid > 0) {
            int status = 0;
            while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
            }
        }
        m_pid = -1;
    }

private:
    pid_t m_pid = -1;
    int m_release = -1;
    bool m_holding = false;
};

struct Answers {
    bool exists;
    bool started;
    bool stopped;
};

class FileServiceBackendTest : public ::testing::Test {
protected:
    void SetUp() override { TraceRecorder::Instance().Clear(); }

    void installUnit() const {
        sandbox.writeFile("etc/systemd/system/VelloranQuillgateSvc.service",
                          "[Service]\nExecStart=/usr/lib/quillgate/qgsasvc --foreground\n");
    }
    std::string pidFile() const { return sandbox.file("run/VelloranQuillgateSvc.pid"); }

    static ServiceManager manager() {
        return ServiceManager(stdstr(), std::make_shared<FileServiceBackend>());
    }
    static Answers ask() {
        ServiceManager asked = manager();
        return {asked.ServiceExists(Service), asked.ServiceHasStarted(Service),
                asked.ServiceHasStopped(Service)};
    }
    static std::vector<std::u16string> errors() {
        return TraceRecorder::Instance().At(TRACE_ERROR);
    }

    TestSupport::SandboxRoot sandbox;
};

std::u16string Line(const char16_t* enquiry, const char16_t* step, int error) {
    return stringFmt(u"ServiceManager::%s(%s): %s failed, error (%s)", enquiry, Service, step,
                     GetOSErrorText(error));
}

TEST_F(FileServiceBackendTest, TheFilesAreThoseOfTheSandboxRoot) {
    EXPECT_EQ(FileServiceBackend::unitFilePath(SystemPaths::Root(), "VelloranQuillgateSvc"),
              sandbox.file("etc/systemd/system/VelloranQuillgateSvc.service"));
    EXPECT_EQ(FileServiceBackend::pidFilePath(SystemPaths::Root(), "VelloranQuillgateSvc"),
              sandbox.file("run/VelloranQuillgateSvc.pid"));
    EXPECT_EQ(FileServiceBackend::unitFilePath("", "x"), "/etc/systemd/system/x.service");
    EXPECT_EQ(FileServiceBackend::pidFilePath("", "x"), "/run/x.pid");
}

TEST_F(FileServiceBackendTest, AServiceWithoutUnitFileDoesNotExistAndTracesOneLineEach) {
    const Answers answers = ask();
    EXPECT_FALSE(answers.exists);
    EXPECT_FALSE(answers.started);
    EXPECT_TRUE(answers.stopped);
    EXPECT_EQ(errors(),
              (std::vector<std::u16string>{Line(u"ServiceExists", u"OpenService", ENOENT),
                                           Line(u"ServiceHasStarted", u"OpenService", ENOENT),
                                           Line(u"ServiceHasStopped", u"OpenService", ENOENT)}));
}

TEST_F(FileServiceBackendTest, AnInstalledServiceThatNeverRanIsStopped) {
    installUnit();
    const Answers answers = ask();
    EXPECT_TRUE(answers.exists);
    EXPECT_FALSE(answers.started);
    EXPECT_TRUE(answers.stopped);
    EXPECT_TRUE(errors().empty());
}

TEST_F(FileServiceBackendTest, AHeldPidFileSayingRunningIsARunningService) {
    installUnit();
    PidFileHolder holder(pidFile(), "4711\nrunning\n");
    ASSERT_TRUE(holder.holding());
    const Answers answers = ask();
    EXPECT_TRUE(answers.exists);
    EXPECT_TRUE(answers.started);
    EXPECT_FALSE(answers.stopped);
    EXPECT_TRUE(errors().empty());
}

TEST_F(FileServiceBackendTest, AHeldPidFileSayingStartingOrStoppingIsPending) {
    installUnit();
    for (const char* text : {"4711\nstarting\n", "4711\nstopping\n"}) {
        PidFileHolder holder(pidFile(), text);
        ASSERT_TRUE(holder.holding());
        const Answers answers = ask();
        EXPECT_TRUE(answers.exists) << text;
        EXPECT_FALSE(answers.started) << text;
        EXPECT_FALSE(answers.stopped) << text;
    }
    EXPECT_TRUE(errors().empty());
}

TEST_F(FileServiceBackendTest, AHeldPidFileWithoutAStateIsPending) {
    installUnit();
    // The service rewrites its text behind a truncation: a reader may meet it empty.
    for (const char* text : {"", "4711\n", "4711\nrunnin", "x711\nrunning\n", "4711running\n"}) {
        PidFileHolder holder(pidFile(), text);
        ASSERT_TRUE(holder.holding());
        EXPECT_FALSE(manager().ServiceHasStarted(Service)) << text;
        EXPECT_FALSE(manager().ServiceHasStopped(Service)) << text;
    }
}

TEST_F(FileServiceBackendTest, APidFileThatNobodyHoldsIsAStoppedServiceWhateverItSays) {
    installUnit();
    sandbox.writeFile("run/VelloranQuillgateSvc.pid", "4711\nrunning\n");
    const Answers answers = ask();
    EXPECT_TRUE(answers.exists);
    EXPECT_FALSE(answers.started);
    EXPECT_TRUE(answers.stopped);
}

TEST_F(FileServiceBackendTest, AServiceThatDiesCountsAsStoppedAtOnce) {
    installUnit();
    PidFileHolder holder(pidFile(), "4711\nrunning\n");
    ASSERT_TRUE(holder.holding());
    EXPECT_TRUE(manager().ServiceHasStarted(Service));
    holder.end();
    EXPECT_TRUE(manager().ServiceHasStopped(Service));
    EXPECT_FALSE(manager().ServiceHasStarted(Service));
}

TEST_F(FileServiceBackendTest, APidFileThatCannotBeReadIsAFailedStatusQuery) {
    installUnit();
    // A folder where the pid file should be: opening it for reading works, reading fails.
    std::filesystem::create_directories(pidFile());
    ServiceManager asked = manager();
    EXPECT_TRUE(asked.ServiceExists(Service));
    EXPECT_FALSE(asked.ServiceHasStarted(Service));
    EXPECT_TRUE(asked.ServiceHasStopped(Service));
    EXPECT_EQ(errors(), (std::vector<std::u16string>{
                            Line(u"ServiceHasStarted", u"QueryServiceStatus", EISDIR),
                            Line(u"ServiceHasStopped", u"QueryServiceStatus", EISDIR)}));
}

TEST_F(FileServiceBackendTest, APipeInThePlaceOfThePidFileDoesNotHangTheQuestion) {
    installUnit();
    ASSERT_EQ(::mkfifo(pidFile().c_str(), 0600), 0);
    EXPECT_FALSE(manager().ServiceHasStarted(Service));
    EXPECT_EQ(errors(), std::vector<std::u16string>{
                            Line(u"ServiceHasStarted", u"QueryServiceStatus", ESPIPE)});
}

TEST_F(FileServiceBackendTest, AUserWithoutTheRightToLookIsAnsweredAsForAMissingService) {
    installUnit();
    EXPECT_EQ(TestSupport::RunInChild([this] {
                  ::chmod(sandbox.file("etc/systemd/system").c_str(), 0);
                  // The superuser may look anywhere: the question is put as nobody.
                  if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
                      return 1;
                  TraceRecorder::Instance().Clear();
                  const Answers answers = ask();
                  if (answers.exists || answers.started || !answers.stopped)
                      return 2;
                  return errors() ==
                                 std::vector<std::u16string>{
                                     Line(u"ServiceExists", u"OpenService", EACCES),
                                     Line(u"ServiceHasStarted", u"OpenService", EACCES),
                                     Line(u"ServiceHasStopped", u"OpenService", EACCES)}
                             ? 0
                             : 3;
              }),
              0);
}

TEST_F(FileServiceBackendTest, AnotherMachineCannotBeAskedThroughFiles) {
    installUnit();
    ServiceManager asked(u"filter-host", std::make_shared<FileServiceBackend>());
    EXPECT_FALSE(asked.ServiceExists(Service));
    EXPECT_EQ(errors(), std::vector<std::u16string>{
                            Line(u"ServiceExists", u"OpenServiceManager", EOPNOTSUPP)});
}

TEST_F(FileServiceBackendTest, ANameThatCouldLeaveTheFoldersIsNoService) {
    sandbox.writeFile("etc/systemd/x.service", "");
    ServiceManager asked = manager();
    EXPECT_FALSE(asked.ServiceExists(u"../x"));
    EXPECT_FALSE(asked.ServiceExists(u""));
    EXPECT_EQ(errors(), (std::vector<std::u16string>{
                            u"ServiceManager::ServiceExists(../x): OpenService failed, error (" +
                                GetOSErrorText(EINVAL) + u")",
                            u"ServiceManager::ServiceExists(): OpenService failed, error (" +
                                GetOSErrorText(EINVAL) + u")"}));
}

// The reference service writes the pid file that this backend reads; the two must agree.
std::string QgsasvcPath() {
    if (const char* given = std::getenv("QGSASVC_PATH"); given && *given)
        return given;
    char self[PATH_MAX] = {};
    const ssize_t n = ::readlink("/proc/self/exe", self, sizeof self - 1);
    if (n <= 0)
        return {};
    // <build>/tests/unit/foundation/<test> -> <build>/reference/service/qgsasvc
    std::filesystem::path build = std::filesystem::path(std::string(self, n)).parent_path();
    for (int up = 0; up < 3; ++up)
        build = build.parent_path();
    return (build / "reference/service/qgsasvc").string();
}

int RunToEnd(const std::string& program, const std::string& argument) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::execl(program.c_str(), program.c_str(), argument.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(FileServiceBackendTest, TheReferenceServiceIsSeenStartedAndStopped) {
    const std::string qgsasvc = QgsasvcPath();
    if (::access(qgsasvc.c_str(), X_OK) != 0)
        GTEST_SKIP() << "qgsasvc is not built at " << qgsasvc << " (set QGSASVC_PATH)";
    installUnit();
    EXPECT_TRUE(manager().ServiceHasStopped(Service));
    ASSERT_EQ(RunToEnd(qgsasvc, "-Start"), 0);
    // "-Start" returns once the service runs.
    EXPECT_TRUE(manager().ServiceHasStarted(Service));
    EXPECT_FALSE(manager().ServiceHasStopped(Service));
    EXPECT_EQ(RunToEnd(qgsasvc, "-Stop"), 0);
    // "-Stop" returns once the lock is released.
    EXPECT_TRUE(manager().ServiceHasStopped(Service));
    EXPECT_FALSE(manager().ServiceHasStarted(Service));
    EXPECT_TRUE(errors().empty());
    // Whatever happened above, no daemon outlives the sandbox.
    if (!manager().ServiceHasStopped(Service)) {
        RunToEnd(qgsasvc, "-Stop");
        TestSupport::WaitFor([] { return manager().ServiceHasStopped(Service); });
    }
}

} // namespace

namespace {

using State = ServiceBackend::State;

TEST(FileServiceBackendState, TheTextIsReadAsTheServiceReadsIt) {
    EXPECT_EQ(FileServiceBackend::stateOf(false, "1\nrunning\n"), State::Stopped);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "1\nrunning\n"), State::Running);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "1\nrunning"), State::Running);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "1\nrunning\nmore"), State::Running);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "\nrunning\n"), State::Running);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "1\nstarting\n"), State::Pending);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "1\nstopping\n"), State::Pending);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "1\nRunning\n"), State::Pending);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "99999999\nrunning\n"), State::Pending);
    EXPECT_EQ(FileServiceBackend::stateOf(true, "-1\nrunning\n"), State::Pending);
}

} // namespace
