#pragma once
// What Run does to the main window and the message loop, one operation per step, in the
// order in which RunSequence calls them. The application object implements them over the
// main dialog and the toolkit's event loop; tests implement them to see the order of the
// posts, the show state and the ending.

#include <cstdint>

class IRunSteps {
public:
    // Makes the message loop and registers it with the application object, so that the
    // main window can find it while it is made.
    virtual void AddMessageLoop() = 0;
    virtual void RemoveMessageLoop() = 0;
    virtual void DestroyMessageLoop() = 0;
    // Makes the main window; its set-up (pages, first run, the first message to the
    // service) runs inside. False when there is no window afterwards.
    virtual bool CreateMainWindow() = 0;
    virtual void DestroyMainWindow() = 0;
    virtual void ShowMainWindow(bool visible) = 0;
    virtual void PostToMainWindow(int message, std::uintptr_t wParam, std::intptr_t lParam) = 0;
    // The setting FilterOn.
    virtual std::int32_t FilterOn() = 0;
    // Runs the loop until the program is told to quit; the code it was told.
    virtual int RunMessageLoop() = 0;

    virtual ~IRunSteps() = default;

protected:
    IRunSteps() = default;
    IRunSteps(const IRunSteps&) = default;
    IRunSteps& operator=(const IRunSteps&) = default;
};
