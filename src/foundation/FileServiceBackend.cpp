#include "foundation/FileServiceBackend.h"

#include "foundation/SystemPaths.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Unit names are file names here: a name that could leave the folders is no service.
bool IsPlainName(const std::string& service) {
    return !service.empty() && service.find('/') == std::string::npos &&
           service.find('\0') == std::string::npos;
}

class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return m_fd; }

private:
    int m_fd;
};

} // namespace

std::string FileServiceBackend::unitFolder(const std::string& root) {
    return root + "/etc/systemd/system";
}

std::string FileServiceBackend::pidFolder(const std::string& root) {
    return root + "/run";
}

std::string FileServiceBackend::unitFilePath(const std::string& root, const std::string& service) {
    return unitFolder(root) + "/" + service + ".service";
}

std::string FileServiceBackend::pidFilePath(const std::string& root, const std::string& service) {
    return pidFolder(root) + "/" + service + ".pid";
}

ServiceBackend::State FileServiceBackend::stateOf(bool locked, const std::string& text) {
    if (!locked)
        return State::Stopped;
    // The service's own reading of its text: the pid line must be a number, the state is the
    // whole second line. A text that has none (it is being rewritten) is still a live service.
    const std::string_view view(text);
    const auto lineEnd = view.find('\n');
    if (lineEnd == std::string_view::npos)
        return State::Pending;
    long pid = 0;
    for (const char c : view.substr(0, lineEnd)) {
        if (c < '0' || c > '9' || pid > 4194304)
            return State::Pending;
        pid = pid * 10 + (c - '0');
    }
    std::string_view state = view.substr(lineEnd + 1);
    state = state.substr(0, state.find('\n'));
    return state == "running" ? State::Running : State::Pending;
}

ServiceBackend::Answer FileServiceBackend::ask(const std::string& machine,
                                               const std::string& service, bool withStatus) {
    // Files tell about this machine only.
    if (!machine.empty())
        return Answer::failure(Step::Manager, EOPNOTSUPP);
    if (!IsPlainName(service))
        return Answer::failure(Step::Service, EINVAL);

    const std::string root = SystemPaths::Root();
    struct stat st {};
    if (::stat(unitFilePath(root, service).c_str(), &st) != 0)
        return Answer::failure(Step::Service, errno);
    if (!withStatus)
        return Answer{};

    // Not waiting: something other than a file in the pid file's place must not hang us.
    const Descriptor file(
        ::open(pidFilePath(root, service).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (file.get() < 0) {
        // A service that never ran has no pid file: that is a stopped service, not a failure.
        if (errno == ENOENT)
            return Answer{};
        return Answer::failure(Step::Status, errno);
    }
    // The lock is tried before the text is read: read first, a "running" left by a service
    // that just ended could be taken as the word of a new one that took the lock in between.
    // Read after a held lock, the text is at least as new as that holder. A lock we get
    // ourselves is given back at once, so that a starting service is not kept waiting.
    bool locked = false;
    if (::flock(file.get(), LOCK_SH | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK)
            return Answer::failure(Step::Status, errno);
        locked = true;
    } else {
        ::flock(file.get(), LOCK_UN);
    }
    char buffer[64] = {};
    const ssize_t n = ::pread(file.get(), buffer, sizeof buffer - 1, 0);
    if (n < 0)
        return Answer::failure(Step::Status, errno);
    Answer answer;
    answer.state = stateOf(locked, std::string(buffer, static_cast<std::size_t>(n)));
    return answer;
}
