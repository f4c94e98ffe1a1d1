#include "foundation/ProcessSpawn.h"

#include <cerrno>
#include <csignal>
#include <spawn.h>

extern char** environ;

namespace Corvane {

std::vector<std::string> SplitOnBlanks(const std::string& text) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : text) {
        if (c == ' ' || c == '\t') {
            if (!word.empty())
                words.push_back(std::move(word));
            word.clear();
        } else {
            word.push_back(c);
        }
    }
    if (!word.empty())
        words.push_back(std::move(word));
    return words;
}

pid_t SpawnProcess(const std::vector<std::string>& command, bool searchPath) {
    if (command.empty()) {
        errno = EINVAL;
        return -1;
    }
    std::vector<char*> argv;
    argv.reserve(command.size() + 1);
    for (const std::string& word : command)
        argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);

    posix_spawnattr_t attributes;
    if (const int rc = ::posix_spawnattr_init(&attributes); rc != 0) {
        errno = rc;
        return -1;
    }
    // The parent may block signals or ignore SIGPIPE; the child starts as a fresh program.
    sigset_t none;
    sigemptyset(&none);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &defaults);
    ::posix_spawnattr_setflags(&attributes,
                               static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
    pid_t pid = -1;
    const int rc = searchPath
                       ? ::posix_spawnp(&pid, argv[0], nullptr, &attributes, argv.data(), environ)
                       : ::posix_spawn(&pid, argv[0], nullptr, &attributes, argv.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    if (rc != 0) {
        errno = rc;
        return -1;
    }
    return pid;
}

} // namespace Corvane
