#pragma once
// What ShellOpen started: the process, what it was given to run, and a way to wait for its
// end with a time limit (the updater launcher waits in steps so that it can be stopped).
// Copies share one record of the process, so a copy handed to a caller learns of the end
// as well. The process is always reaped by this class, never left as a zombie.

#include <chrono>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

class ShellOpenInfo {
public:
    // Nothing started: pid() is -1 and waiting ends at once.
    ShellOpenInfo() = default;

    // Takes charge of a started child. Call exactly one of waitUntilEnd() and
    // reapInBackground() on it afterwards.
    ShellOpenInfo(pid_t pid, std::vector<std::string> command);

    // The process started, -1 when none was.
    pid_t pid() const;
    // The program and its arguments as they were given to the process.
    const std::vector<std::string>& command() const;

    // Waits on this thread for the process to end and returns its exit code.
    int waitUntilEnd();
    // Lets a thread of its own wait for the end, so that nobody has to.
    void reapInBackground();

    // True once the process has ended (and when none was started).
    bool hasEnded() const;
    // Waits at most `timeout` for the end; true once it has ended.
    bool waitFor(std::chrono::milliseconds timeout) const;
    // The exit code once the process has ended: its status, or 128 plus the number of the
    // signal that ended it, as shells report it; -1 before the end, when nothing was
    // started, or when the status could not be had.
    int exitCode() const;

private:
    struct Process;
    std::shared_ptr<Process> m_process;
};
