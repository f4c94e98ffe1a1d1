#pragma once
// Processes by pid file descriptor: a pidfd stands for the process handle, so that the
// signal reaches the process that was opened even if its pid is used again meanwhile. Another
// process is ended with SIGKILL, which like TerminateProcess gives it no say. The calling
// process ends itself with _exit(0): TerminateProcess on oneself runs no clean-up either.

#include "app/ProcessControl.h"

class PidfdProcessControl : public ProcessControl {
public:
    int OpenProcess(pid_t pid, int& error) override;
    bool TerminateProcess(int handle, pid_t pid, int& error) override;
    void CloseHandle(int handle) override;
};
