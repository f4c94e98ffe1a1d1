#include "service/ServiceLauncher.h"

#include "foundation/SystemPaths.h"
#include "service/AccessPolicy.h"
#include "service/PidFile.h"
#include "service/ServiceDaemon.h"
#include "service/ServicePaths.h"
#include "service/ServiceSettings.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

// How often start and stop look at another process's progress. They wait for a process
// they do not own, which offers nothing to wait on but its pid file.
constexpr std::chrono::milliseconds Glance{20};

int Fail(const std::string& line) {
    std::fprintf(stderr, "qgsasvc: %s\n", line.c_str());
    return 1;
}

bool LoadSettings(ServiceSettings& settings, AccessPolicy& policy, std::string& error) {
    return ServiceSettings::load(ServicePaths::SettingsFile(), settings, error) &&
           AccessPolicy::fromGroup(settings.allowedGroup, policy, error);
}

// The daemon leaves the starter's working folder, so a relative sandbox root must be made
// absolute before it goes.
void AnchorRoot() {
    const std::string root = SystemPaths::Root();
    if (!root.empty() && root.front() != '/')
        ::setenv("QUILLGATE_ROOT", std::filesystem::absolute(root).c_str(), 1);
}

bool PrepareFolders(std::string& error) {
    if (!SystemPaths::MakeFolders(SystemPaths::RunFolder())) {
        error = "cannot create " + SystemPaths::RunFolder() + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

void Redirect(int fd, const std::string& path, int flags) {
    const int opened = ::open(path.c_str(), flags | O_CLOEXEC, 0644);
    if (opened >= 0) {
        ::dup2(opened, fd);
        ::close(opened);
    }
}

void Tell(int fd, const std::string& text) {
    [[maybe_unused]] const ssize_t n = ::write(fd, text.data(), text.size());
}

// The daemon's life, in the process that will be the daemon; `ready` is told "R" once it
// listens, or "E" and the reason.
int Serve(PidFile& pidFile, const ServiceSettings& settings, const AccessPolicy& policy,
          int ready) {
    ServiceDaemon daemon(settings, policy);
    std::string error;
    if (!daemon.prepare(error)) {
        if (ready >= 0)
            Tell(ready, "E" + error);
        else
            Fail("cannot start: " + error);
        return 1;
    }
    pidFile.write(::getpid(), PidFile::State::Running);
    if (ready >= 0) {
        Tell(ready, "R");
        ::close(ready);
    }
    return daemon.run([&pidFile] { pidFile.write(::getpid(), PidFile::State::Stopping); });
}

// Waits until nobody holds the pid file or its holder says "running"; what it saw last.
PidFile::Observation WaitWhilePending(const std::string& path, Clock::time_point deadline) {
    for (;;) {
        PidFile::Observation seen = PidFile::observe(path);
        if (!seen.locked || seen.state == PidFile::State::Running || Clock::now() >= deadline)
            return seen;
        std::this_thread::sleep_for(Glance);
    }
}

} // namespace

int ServiceLauncher::start() {
    AnchorRoot();
    ServiceSettings settings;
    AccessPolicy policy;
    std::string error;
    if (!LoadSettings(settings, policy, error) || !PrepareFolders(error))
        return Fail("cannot start: " + error);

    const std::string path = ServicePaths::PidFile();
    const auto deadline = Clock::now() + std::chrono::seconds(StartSeconds);
    PidFile pidFile(path);
    for (;;) {
        const PidFile::Observation seen = WaitWhilePending(path, deadline);
        if (seen.locked && seen.state == PidFile::State::Running) {
            std::printf("qgsasvc: running already (pid %d)\n", static_cast<int>(seen.pid));
            return 0;
        }
        if (seen.locked)
            return Fail("another service is starting or stopping and has not finished");
        if (pidFile.acquire(error))
            break;
        // Another start took the file between our look and our lock: see how it ends.
        if (Clock::now() >= deadline)
            return Fail("cannot start: " + error);
    }
    pidFile.write(::getpid(), PidFile::State::Starting);

    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0)
        return Fail(std::string("cannot start: ") + std::strerror(errno));
    const pid_t child = ::fork();
    if (child < 0)
        return Fail(std::string("cannot start: ") + std::strerror(errno));
    if (child == 0) {
        // A new session and a second fork: the daemon has no controlling terminal and can
        // never get one, and it is nobody's child but init's.
        ::close(pipe[0]);
        ::setsid();
        const pid_t daemon = ::fork();
        if (daemon != 0)
            ::_exit(daemon < 0 ? 1 : 0);
        ::umask(022);
        [[maybe_unused]] const int ignored = ::chdir("/");
        Redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
        Redirect(STDOUT_FILENO, "/dev/null", O_WRONLY);
        const std::string log = ServicePaths::DiagnosticLog();
        SystemPaths::MakeFolders(log.substr(0, log.rfind('/')));
        Redirect(STDERR_FILENO, log, O_WRONLY | O_CREAT | O_APPEND);
        return Serve(pidFile, settings, policy, pipe[1]);
    }
    ::close(pipe[1]);
    int childStatus = 0;
    while (::waitpid(child, &childStatus, 0) < 0 && errno == EINTR) {
    }

    std::string said;
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd waiting{pipe[0], POLLIN, 0};
        const int ready =
            ::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
        if (ready == 0) {
            ::close(pipe[0]);
            return Fail("the service did not listen within " + std::to_string(StartSeconds) +
                        " seconds");
        }
        if (ready < 0 && errno == EINTR)
            continue;
        char buffer[512];
        const ssize_t n = ::read(pipe[0], buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        said.append(buffer, static_cast<std::size_t>(n));
        if (said == "R")
            break;
    }
    ::close(pipe[0]);
    if (said == "R")
        return 0;
    if (!said.empty() && said.front() == 'E')
        return Fail("cannot start: " + said.substr(1));
    return Fail("the service ended while it was starting (see " + ServicePaths::DiagnosticLog() +
                ")");
}

int ServiceLauncher::stop() {
    const std::string path = ServicePaths::PidFile();
    const auto deadline = Clock::now() + std::chrono::seconds(StopSeconds);
    const PidFile::Observation seen = WaitWhilePending(path, deadline);
    if (!seen.locked) {
        std::printf("qgsasvc: not running\n");
        return 0;
    }
    if (seen.pid <= 0)
        return Fail("cannot stop: " + path + " names no process");
    if (::kill(seen.pid, SIGTERM) != 0 && errno != ESRCH) {
        return Fail("cannot stop the service (pid " + std::to_string(seen.pid) +
                    "): " + std::strerror(errno));
    }
    auto gone = [&path](Clock::time_point until) {
        for (;;) {
            if (!PidFile::observe(path).locked)
                return true;
            if (Clock::now() >= until)
                return false;
            std::this_thread::sleep_for(Glance);
        }
    };
    if (gone(deadline))
        return 0;
    std::fprintf(stderr, "qgsasvc: the service (pid %d) did not end on SIGTERM; killing it\n",
                 static_cast<int>(seen.pid));
    ::kill(seen.pid, SIGKILL);
    if (gone(Clock::now() + std::chrono::seconds(5)))
        return 0;
    return Fail("the service (pid " + std::to_string(seen.pid) + ") did not stop");
}

int ServiceLauncher::foreground() {
    ServiceSettings settings;
    AccessPolicy policy;
    std::string error;
    if (!LoadSettings(settings, policy, error) || !PrepareFolders(error))
        return Fail("cannot start: " + error);
    PidFile pidFile(ServicePaths::PidFile());
    if (!pidFile.acquire(error))
        return Fail("cannot start: " + error);
    pidFile.write(::getpid(), PidFile::State::Starting);
    return Serve(pidFile, settings, policy, -1);
}
