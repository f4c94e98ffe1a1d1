#include "support/RunInChild.h"

#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace TestSupport {

int RunInChild(const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t pid = ::fork();
    if (pid < 0)
        return -1;
    if (pid == 0) {
        int code = 1;
        try {
            code = body();
        } catch (...) {
            code = 99;
        }
        std::fflush(nullptr);
        std::_Exit(code);
    }
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        return 128 + WTERMSIG(status);
    return -1;
}

} // namespace TestSupport
