#include "app/AppShellExecutor.h"

#include "app/ElevationCheck.h"
#include "foundation/ProcessSpawn.h"
#include "foundation/Trace.h"
#include "mainwindow/IMessageBoxes.h"
#include "resource.h"

#include <string>
#include <vector>

AppShellExecutor::AppShellExecutor(IMessageBoxes& boxes, StringLookup strings,
                                   std::function<bool()> elevate)
    : m_boxes(boxes), m_strings(std::move(strings)), m_elevate(std::move(elevate)) {}

std::function<bool()> AppShellExecutor::DefaultElevation() {
    return [] { return ElevationCheck::Applies(); };
}

bool AppShellExecutor::appShellExecute(const stdstr& file, const stdstr& parameters, bool wait,
                                       ShellOpenInfo* info, int* exitCode, int /*show*/) {
    const bool elevated = m_elevate && m_elevate();
    std::vector<std::string> command;
    if (elevated)
        command.emplace_back(ElevationProgram);
    command.push_back(stdstr::fromTString(file));
    for (std::string& word : Corvane::SplitOnBlanks(stdstr::fromTString(parameters)))
        command.push_back(std::move(word));

    ShellOpenInfo started;
    int error = 0;
    int code = 0;
    const pid_t pid =
        command[elevated ? 1 : 0].empty() ? -1 : Corvane::SpawnProcess(command, elevated);
    if (pid == -1) {
        error = command[elevated ? 1 : 0].empty() ? ENOENT : errno;
    } else {
        started = ShellOpenInfo(pid, command);
        if (wait) {
            code = started.waitUntilEnd();
            // Only pkexec answers these two: the program behind it never does.
            if (elevated && code == PromptDismissed)
                error = ErrorCancelled;
            else if (elevated && code == NotAuthorised)
                error = ErrorNotAuthorised;
        } else {
            started.reapInBackground();
        }
    }
    if (info)
        *info = started;
    if (error != 0) {
        ReportFailure(file, parameters, error);
        return false;
    }
    if (wait && exitCode)
        *exitCode = code;
    return true;
}

void AppShellExecutor::ReportFailure(const stdstr& file, const stdstr& parameters, int error) {
    static constexpr const char16_t* Format =
        u"VLTFWApp::appShellExecute(%s, %s): Failed with error (%d)";
    if (error == ErrorCancelled) {
        // The user's No at the prompt: nothing to tell.
        TraceFmt(TRACE_DEBUG, Format, file, parameters, error);
        return;
    }
    TraceFmt(TRACE_ERROR, Format, file, parameters, error);
    const stdstr call = stringFmt(u"ShellExecuteEx(%s)", file);
    const stdstr text = stringFmt(m_strings(IDS_RUN_FAILED).c_str(), call, error);
    m_boxes.MessageBox(nullptr, text, m_strings(IDS_ERROR_CAPTION), IMessageBoxes::MB_ICONHAND);
}
