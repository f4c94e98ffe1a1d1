#include "foundation/PathFunctions.h"

#include "foundation/ProcessSpawn.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* DefaultOpener = "xdg-open";
constexpr const char* OpenerVariable = "QUILLGATE_OPENER";

std::string Opener() {
    const char* opener = std::getenv(OpenerVariable);
    return opener && *opener ? std::string(opener) : std::string(DefaultOpener);
}

// "scheme:rest", the scheme being a letter followed by letters, digits, '+', '-' or '.'.
bool LooksLikeAddress(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos || colon == 0)
        return false;
    auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    if (!isLetter(text[0]))
        return false;
    for (std::size_t i = 1; i < colon; ++i) {
        const char c = text[i];
        if (!isLetter(c) && !(c >= '0' && c <= '9') && c != '+' && c != '-' && c != '.')
            return false;
    }
    return true;
}

std::string WorkingDirectory() {
    char buffer[PATH_MAX];
    return ::getcwd(buffer, sizeof buffer) ? std::string(buffer) : std::string();
}

// A program is what the kernel can run: an executable regular file that is an ELF binary or
// starts with "#!". A document that merely has the execute bit (as on some mounted
// volumes) is opened, not run.
bool IsProgram(const std::string& path, const struct stat& st) {
    if (!S_ISREG(st.st_mode) || ::access(path.c_str(), X_OK) != 0)
        return false;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd == -1)
        return true; // runnable but not readable: certainly not a document we could open
    unsigned char head[4] = {};
    const ssize_t got = ::read(fd, head, sizeof head);
    ::close(fd);
    if (got >= 4 && head[0] == 0x7F && head[1] == 'E' && head[2] == 'L' && head[3] == 'F')
        return true;
    return got >= 2 && head[0] == '#' && head[1] == '!';
}

} // namespace

stdstr AppendPathComponent(const stdstr& folder, const stdstr& name) {
    // The separator is left out where the folder already ends in one (the root, a temporary
    // folder) or where there is no folder; this is the purpose the drive-root length test
    // served on Windows, where "C:\\" is the only folder shorter than four characters.
    if (folder.empty() || folder.back() == u'/')
        return folder + name;
    return folder + u"/" + name;
}

bool ShellOpen(const stdstr& file, const stdstr& parameters, bool wait, ShellOpenInfo* info,
               int* exitCode) {
    if (info)
        *info = ShellOpenInfo();
    if (file.empty()) {
        errno = ENOENT;
        return false;
    }
    // The conversion ends the name at its first NUL, which may leave nothing.
    const std::string target = stdstr::fromTString(file);
    if (target.empty()) {
        errno = ENOENT;
        return false;
    }

    // A local file is given to the opener with an absolute path, since the opener does not
    // necessarily resolve names the way this process does.
    std::string local;
    struct stat st {};
    if (target.front() == '/')
        local = target;
    else if (::stat(target.c_str(), &st) == 0 || !LooksLikeAddress(target))
        local = WorkingDirectory() + "/" + target;

    std::vector<std::string> command;
    bool runsOpener = true;
    if (local.empty()) {
        command = {Opener(), target};
    } else {
        // What does not exist cannot be opened: say so now rather than through an opener
        // that nobody waits for.
        if (::stat(local.c_str(), &st) != 0)
            return false;
        if (IsProgram(local, st)) {
            runsOpener = false;
            command.push_back(local);
            for (std::string& word : Corvane::SplitOnBlanks(stdstr::fromTString(parameters)))
                command.push_back(std::move(word));
        } else {
            command = {Opener(), local};
        }
    }

    const pid_t pid = Corvane::SpawnProcess(command, true);
    if (pid == -1)
        return false;
    ShellOpenInfo started(pid, std::move(command));
    bool result = true;
    if (wait) {
        const int code = started.waitUntilEnd();
        if (exitCode)
            *exitCode = code;
        if (runsOpener)
            result = code == 0;
    } else {
        started.reapInBackground();
    }
    if (info)
        *info = started;
    return result;
}
