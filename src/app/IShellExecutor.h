#pragma once
// Running the service's executable and, when asked, waiting for its exit code. The
// application object's appShellExecute is this operation; the start/stop dialog's worker
// calls it from its own thread.

#include "foundation/ShellOpenInfo.h"
#include "foundation/stdstr.h"

class IShellExecutor {
public:
    // The `show` values that callers pass; a program started here has no window to show, so
    // the value is carried for the callers' sake only.
    static constexpr int SW_HIDE = 0;
    static constexpr int SW_SHOWNORMAL = 1;

    // Runs `file` with `parameters` (split on blanks). With `wait`, blocks until it ends and
    // stores its exit code in `exitCode` (if given). `info` (if given) receives the started
    // process, or an empty record, whether the call worked or not. False when the program
    // could not be run or the user declined; the user has then been told, where a box is due.
    virtual bool appShellExecute(const stdstr& file, const stdstr& parameters, bool wait,
                                 ShellOpenInfo* info, int* exitCode, int show) = 0;

    virtual ~IShellExecutor() = default;

protected:
    IShellExecutor() = default;
    IShellExecutor(const IShellExecutor&) = default;
    IShellExecutor& operator=(const IShellExecutor&) = default;
};
