#include "foundation/ShellOpenInfo.h"

#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <sys/wait.h>
#include <system_error>
#include <thread>

struct ShellOpenInfo::Process {
    pid_t pid = -1;
    std::vector<std::string> command;
    std::mutex mutex;
    std::condition_variable ended;
    bool hasEnded = false;
    int exitCode = -1;
};

namespace {

int ExitCodeOf(int status) {
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        return 128 + WTERMSIG(status);
    return -1;
}

// Blocks until `pid` has ended and has been reaped; -1 when its status is lost (for
// instance when SIGCHLD is ignored and the kernel reaped it already).
int Reap(pid_t pid) {
    int status = 0;
    pid_t rc;
    do {
        rc = ::waitpid(pid, &status, 0);
    } while (rc == -1 && errno == EINTR);
    return rc == pid ? ExitCodeOf(status) : -1;
}

} // namespace

ShellOpenInfo::ShellOpenInfo(pid_t pid, std::vector<std::string> command)
    : m_process(std::make_shared<Process>()) {
    m_process->pid = pid;
    m_process->command = std::move(command);
}

pid_t ShellOpenInfo::pid() const {
    return m_process ? m_process->pid : -1;
}

const std::vector<std::string>& ShellOpenInfo::command() const {
    static const std::vector<std::string> none;
    return m_process ? m_process->command : none;
}

int ShellOpenInfo::waitUntilEnd() {
    if (!m_process)
        return -1;
    const int code = Reap(m_process->pid);
    {
        std::lock_guard lock(m_process->mutex);
        m_process->exitCode = code;
        m_process->hasEnded = true;
    }
    m_process->ended.notify_all();
    return code;
}

void ShellOpenInfo::reapInBackground() {
    if (!m_process)
        return;
    try {
        std::thread([process = m_process] {
            const int code = Reap(process->pid);
            {
                std::lock_guard lock(process->mutex);
                process->exitCode = code;
                process->hasEnded = true;
            }
            process->ended.notify_all();
        }).detach();
    } catch (const std::system_error&) {
        // No thread to be had: the child stays a zombie until this process ends, which is
        // still better than blocking the caller until the opened program is closed.
    }
}

bool ShellOpenInfo::hasEnded() const {
    if (!m_process)
        return true;
    std::lock_guard lock(m_process->mutex);
    return m_process->hasEnded;
}

bool ShellOpenInfo::waitFor(std::chrono::milliseconds timeout) const {
    if (!m_process)
        return true;
    std::unique_lock lock(m_process->mutex);
    return m_process->ended.wait_for(lock, timeout, [this] { return m_process->hasEnded; });
}

int ShellOpenInfo::exitCode() const {
    if (!m_process)
        return -1;
    std::lock_guard lock(m_process->mutex);
    return m_process->exitCode;
}
