#pragma once
// The pieces of the process entry that reach beyond it, one operation per step, in the order
// in which EntrySequence calls them. ProgramEntry implements them for the program; tests
// implement them to see the order, the exit codes and the one catch clause.

#include "foundation/stdstr.h"

#include <cstdint>

class IEntrySteps {
public:
    // The trace log, from the machine store's values.
    virtual void SetUpLogging() = 0;
    // Ends every running copy of the program (this one included, when its turn comes).
    virtual void KillGUI() = 0;
    // Brings up the window system: the application object of the toolkit, which stands for
    // COM, the control-hosting classes and the common controls of the Windows start.
    virtual void StartWindowSystem() = 0;
    // The application object's Init; 0 for success.
    virtual std::int32_t Init() = 0;
    virtual bool LoadPlugin() = 0;
    // Creates the main window and runs the loop; the loop's exit code.
    virtual int Run() = 0;
    virtual void Term() = 0;
    // Takes the window system down again (CoUninitialize's place).
    virtual void StopWindowSystem() = 0;
    // A box with no owner, string 129 as caption, no icon.
    virtual void ShowExceptionBox(const stdstr& message) = 0;

    virtual ~IEntrySteps() = default;

protected:
    IEntrySteps() = default;
    IEntrySteps(const IEntrySteps&) = default;
    IEntrySteps& operator=(const IEntrySteps&) = default;
};
