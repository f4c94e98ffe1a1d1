#pragma once
// appShellExecute on Linux: runs a program with posix_spawn and, when asked, waits for it
// with waitpid. Where elevation applies (see ElevationCheck) the program is run as
// "pkexec <file> <parameters>", so that polkit asks for an administrator; pkexec answers the
// program's own exit code, 126 when the user dismissed the prompt and 127 when the user is not
// authorised or no agent could ask. 126 is the user's No: traced at TRACE_DEBUG and shown to
// nobody. Every other failure (the program or pkexec cannot be run, 127) is traced at
// TRACE_ERROR and shown in a box, caption string 257, text string 258.
//
// Errors are errno values: the spawn's own, ECANCELED for the dismissed prompt, EACCES for a
// refused authorisation. The service's executable never exits with 126 or 127 itself, so the
// two codes can only come from pkexec. Without `wait`, an elevated run cannot learn of a No:
// the program is then started and left to run.
//
// The box may be asked for on the start dialog's worker thread; the message boxes given must
// cope with that (GuiThreadMessageBoxes does).

#include "app/IShellExecutor.h"
#include "app/SupervisionTypes.h"

#include <cerrno>
#include <functional>

class IMessageBoxes;

class AppShellExecutor : public IShellExecutor {
public:
    // The program that asks for elevation, looked up in PATH.
    static constexpr const char* ElevationProgram = "pkexec";
    // pkexec's own exit codes.
    static constexpr int PromptDismissed = 126;
    static constexpr int NotAuthorised = 127;
    // The errors that stand for them.
    static constexpr int ErrorCancelled = ECANCELED;
    static constexpr int ErrorNotAuthorised = EACCES;

    // `elevate` decides at each call whether pkexec is used.
    explicit AppShellExecutor(IMessageBoxes& boxes, StringLookup strings = TranslatedString,
                              std::function<bool()> elevate = DefaultElevation());

    bool appShellExecute(const stdstr& file, const stdstr& parameters, bool wait,
                         ShellOpenInfo* info, int* exitCode, int show) override;

    static std::function<bool()> DefaultElevation();

private:
    // Traces the failure and shows the box where one is due.
    void ReportFailure(const stdstr& file, const stdstr& parameters, int error);

    IMessageBoxes& m_boxes;
    StringLookup m_strings;
    std::function<bool()> m_elevate;
};
