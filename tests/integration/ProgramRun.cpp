#include "ProgramRun.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace TestSupport {

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         std::chrono::milliseconds deadline) {
    ProgramResult result;
    int out[2];
    int err[2];
    if (::pipe2(out, O_CLOEXEC) != 0)
        return result;
    if (::pipe2(err, O_CLOEXEC) != 0) {
        ::close(out[0]);
        ::close(out[1]);
        return result;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err[1], STDERR_FILENO);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int spawned =
        ::posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(out[1]);
    ::close(err[1]);
    if (spawned != 0) {
        ::close(out[0]);
        ::close(err[0]);
        return result;
    }

    const auto until = std::chrono::steady_clock::now() + deadline;
    pollfd streams[2] = {{out[0], POLLIN, 0}, {err[0], POLLIN, 0}};
    std::string* texts[2] = {&result.out, &result.err};
    int open = 2;
    bool late = false;
    while (open > 0) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            late = true;
            break;
        }
        const int ready = ::poll(streams, 2, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            continue;
        for (int i = 0; i < 2; ++i) {
            if (streams[i].fd < 0 || streams[i].revents == 0)
                continue;
            char buffer[4096];
            const ssize_t n = ::read(streams[i].fd, buffer, sizeof buffer);
            if (n > 0) {
                texts[i]->append(buffer, static_cast<std::size_t>(n));
            } else if (n == 0 || errno != EINTR) {
                ::close(streams[i].fd);
                streams[i].fd = -1;
                --open;
            }
        }
    }
    for (const pollfd& stream : streams) {
        if (stream.fd >= 0)
            ::close(stream.fd);
    }
    if (late)
        ::kill(pid, SIGKILL);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (late)
        return result;
    if (WIFEXITED(status))
        result.exitCode = WEXITSTATUS(status);
    else if (WIFSIGNALED(status))
        result.exitCode = 128 + WTERMSIG(status);
    return result;
}

} // namespace TestSupport
