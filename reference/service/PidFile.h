#pragma once
// The service's pid file, the file backend's view of the service: the service holds an
// exclusive flock on it for its whole life, and its text is the pid and the state, one per
// line ("1234\nrunning\n"). A reader that can take a shared lock knows that no service runs,
// whatever the text says; while the lock is held, "starting" and "stopping" mean pending.
// The kernel drops the lock when the holder dies, so a crash never leaves a stale "running".

#include <optional>
#include <string>
#include <sys/types.h>

class PidFile {
public:
    enum class State { Starting, Running, Stopping };

    // What a reader sees without taking part.
    struct Observation {
        bool locked = false; // a live process holds the file
        pid_t pid = 0;       // 0 when the text has none
        std::optional<State> state;
    };

    explicit PidFile(std::string path);
    ~PidFile();
    PidFile(const PidFile&) = delete;
    PidFile& operator=(const PidFile&) = delete;

    // Opens (creating) the file and takes the exclusive lock without waiting. False with
    // `error` set when another process holds it or the file cannot be opened.
    bool acquire(std::string& error);
    // Replaces the text; only while the lock is held.
    bool write(pid_t pid, State state);
    bool held() const { return m_fd >= 0; }

    // Reads the file as another process sees it. A missing file is "not locked".
    static Observation observe(const std::string& path);
    static const char* nameOf(State state);

private:
    std::string m_path;
    int m_fd = -1;
};
