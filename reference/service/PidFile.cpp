#include "service/PidFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

PidFile::PidFile(std::string path) : m_path(std::move(path)) {}

PidFile::~PidFile() {
    // Closing this descriptor does not drop the lock while a forked copy of it lives: the
    // lock belongs to the open file description, which the daemon shares.
    if (m_fd >= 0)
        ::close(m_fd);
}

bool PidFile::acquire(std::string& error) {
    const int fd = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        error = "cannot open " + m_path + ": " + std::strerror(errno);
        return false;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int code = errno;
        ::close(fd);
        error = code == EWOULDBLOCK ? "another service holds " + m_path
                                    : "cannot lock " + m_path + ": " + std::strerror(code);
        return false;
    }
    m_fd = fd;
    return true;
}

bool PidFile::write(pid_t pid, State state) {
    if (m_fd < 0)
        return false;
    const std::string text = std::to_string(pid) + "\n" + nameOf(state) + "\n";
    // Readers take no lock, so the text is replaced in one write behind a truncation; a
    // reader that comes in between sees an empty file, which reads as "no state yet".
    if (::ftruncate(m_fd, 0) != 0)
        return false;
    return ::pwrite(m_fd, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
}

PidFile::Observation PidFile::observe(const std::string& path) {
    Observation seen;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return seen;
    if (::flock(fd, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        seen.locked = true;
    char buffer[64] = {};
    const ssize_t n = ::pread(fd, buffer, sizeof buffer - 1, 0);
    ::close(fd);
    if (n <= 0)
        return seen;
    const std::string_view text(buffer, static_cast<std::size_t>(n));
    const auto lineEnd = text.find('\n');
    if (lineEnd == std::string_view::npos)
        return seen;
    pid_t pid = 0;
    for (const char c : text.substr(0, lineEnd)) {
        if (c < '0' || c > '9' || pid > 4194304)
            return seen;
        pid = pid * 10 + (c - '0');
    }
    seen.pid = pid;
    std::string_view rest = text.substr(lineEnd + 1);
    rest = rest.substr(0, rest.find('\n'));
    for (const State state : {State::Starting, State::Running, State::Stopping}) {
        if (rest == nameOf(state))
            seen.state = state;
    }
    return seen;
}

const char* PidFile::nameOf(State state) {
    switch (state) {
    case State::Starting:
        return "starting";
    case State::Running:
        return "running";
    case State::Stopping:
        return "stopping";
    }
    return "";
}
