#include "foundation/SmallTextFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace SmallTextFile {

bool read(const std::string& path, std::string& text, std::size_t maxBytes) {
    text.clear();
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        return false;
    char buffer[4096];
    while (text.size() < maxBytes) {
        const std::size_t wanted = std::min(sizeof buffer, maxBytes - text.size());
        const ssize_t n = ::read(fd, buffer, wanted);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            const int error = errno;
            ::close(fd);
            errno = error;
            return false;
        }
        if (n == 0)
            break;
        text.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(fd);
    return true;
}

} // namespace SmallTextFile
