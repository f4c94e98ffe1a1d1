#include "updater/UpdateCallRecord.h"

#include "foundation/SystemPaths.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

std::string UpdateCallRecord::path() {
    const char* chosen = std::getenv("QUILLGATE_UPDATE_RECORD");
    if (chosen && *chosen)
        return chosen;
    return SystemPaths::CommonDataFolder() + "/velloran/quillgate/update-calls.txt";
}

std::string UpdateCallRecord::line(const std::vector<std::string>& arguments) {
    std::string text;
    for (const std::string& argument : arguments) {
        if (!text.empty())
            text += ' ';
        text += '[';
        for (const char c : argument) {
            switch (c) {
            case '\\':
                text += "\\\\";
                break;
            case ']':
                text += "\\]";
                break;
            case '\n':
                text += "\\n";
                break;
            case '\r':
                text += "\\r";
                break;
            default:
                text += c;
            }
        }
        text += ']';
    }
    return text + "\n";
}

bool UpdateCallRecord::append(const std::string& file, const std::vector<std::string>& arguments,
                              std::string& error) {
    const auto slash = file.rfind('/');
    if (slash != std::string::npos && slash > 0)
        SystemPaths::MakeFolders(file.substr(0, slash));
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0) {
        error = "cannot open " + file + ": " + std::strerror(errno);
        return false;
    }
    const std::string text = line(arguments);
    ::flock(fd, LOCK_EX);
    const ssize_t written = ::write(fd, text.data(), text.size());
    const int code = errno;
    ::close(fd);
    if (written != static_cast<ssize_t>(text.size())) {
        error = "cannot write " + file + ": " + std::strerror(written < 0 ? code : EIO);
        return false;
    }
    return true;
}
