#include "app/PidfdProcessControl.h"

#include <cerrno>
#include <csignal>
#include <sys/syscall.h>
#include <unistd.h>

int PidfdProcessControl::OpenProcess(pid_t pid, int& error) {
    const long fd = ::syscall(SYS_pidfd_open, pid, 0);
    if (fd < 0) {
        error = errno;
        return -1;
    }
    return static_cast<int>(fd);
}

bool PidfdProcessControl::TerminateProcess(int handle, pid_t pid, int& error) {
    if (pid == ::getpid())
        ::_exit(0);
    if (::syscall(SYS_pidfd_send_signal, handle, SIGKILL, nullptr, 0) != 0) {
        error = errno;
        return false;
    }
    return true;
}

void PidfdProcessControl::CloseHandle(int handle) {
    if (handle >= 0)
        ::close(handle);
}
