#include "Journal.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <mutex>
#include <string>

namespace {

const char* JournalPath() {
    const char* path = std::getenv(Journal::Variable);
    return path != nullptr && *path != '\0' ? path : nullptr;
}

} // namespace

bool Journal::Enabled() {
    return JournalPath() != nullptr;
}

void Journal::Append(std::string_view line) {
    // Lines from the GUI thread and the plug-in's own threads never interleave.
    static std::mutex lock;
    const std::lock_guard guard(lock);
    const char* path = JournalPath();
    if (path == nullptr)
        return;
    // Opened for each line: a test may name another file between two calls, and nothing is
    // left buffered in the process if it dies.
    const int fd = ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0)
        return;
    std::string text(line);
    text.push_back('\n');
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n < 0)
            break;
        done += static_cast<std::size_t>(n);
    }
    ::close(fd);
}
