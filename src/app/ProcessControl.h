#pragma once
// Opening and ending another process by its id, as KillGUI does it. Behind an interface so
// that the failure paths can be shown without a process that refuses to die; the program
// uses PidfdProcessControl.

#include <sys/types.h>

class ProcessControl {
public:
    // A handle of the process (OpenProcess), or -1 with `error` set to the errno.
    virtual int OpenProcess(pid_t pid, int& error) = 0;
    // Ends the process of `handle` (TerminateProcess with exit code 0). Ending the calling
    // process itself does not return. False with `error` set when it could not be ended.
    virtual bool TerminateProcess(int handle, pid_t pid, int& error) = 0;
    virtual void CloseHandle(int handle) = 0;

    virtual ~ProcessControl() = default;

protected:
    ProcessControl() = default;
    ProcessControl(const ProcessControl&) = default;
    ProcessControl& operator=(const ProcessControl&) = default;
};
