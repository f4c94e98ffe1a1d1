#include "app/AppShellExecutor.h"

#include "app/ElevationCheck.h"
#include "foundation/Trace.h"
#include "mainwindow/IMessageBoxes.h"
#include "resource.h"

#include <csignal>
#include <spawn.h>
#include <string>
#include <vector>

extern char** environ;

namespace {

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

// Starts `command`, its first word looked up in PATH when `searchPath` is set and taken as a
// path otherwise, with the signal state that a freshly started program expects. The child's
// id, or -1 with errno set.
pid_t Spawn(const std::vector<std::string>& command, bool searchPath) {
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

} // namespace

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
    for (std::string& word : SplitOnBlanks(stdstr::fromTString(parameters)))
        command.push_back(std::move(word));

    ShellOpenInfo started;
    int error = 0;
    int code = 0;
    const pid_t pid = command[elevated ? 1 : 0].empty() ? -1 : Spawn(command, elevated);
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
