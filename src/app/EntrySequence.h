#pragma once
// The process entry's order: logging, the command line, the window system, the three
// start-up steps (Init, LoadPlugin, Run), and the way down, with the trace lines between
// them and the exit codes that the shell sees:
//   0  a kill word was handled; Init failed (also when another copy runs); the main window
//      could not be made; or the plug-in ended the program quietly (message 1048);
//   1  the user chose Exit, or message 1059 ended the program;
//  -1  LoadPlugin failed, or the foundation's exception reached the entry (255 in the shell).
// Only the foundation's exception is caught here; anything else ends the process through
// the runtime's termination, as it always has.

#include "foundation/stdstr.h"

class IEntrySteps;

class EntrySequence {
public:
    static constexpr int ExitFailure = -1;

    explicit EntrySequence(IEntrySteps& steps);

    // Runs the entry for `commandLine` and returns the exit code.
    int Run(const stdstr& commandLine);

private:
    IEntrySteps& m_steps;
};
