#pragma once
// Run: makes the main window, decides whether it is shown, queues the two messages that
// give the first moments their look (the filtering summary unless the machine store hides
// it, then the tray icon's true state), runs the loop and takes everything down again in a
// fixed order. Both messages are posted, not sent: the loop handles them, summary first.

#include <cstdint>

class IRunSteps;

class RunSequence {
public:
    // The machine store's key and value that can hide the summary at start.
    static constexpr const char16_t* PopupKey = u"SOFTWARE\\Velloran\\Quillgate";
    static constexpr const char16_t* HidePopupValue = u"HidePopup";

    explicit RunSequence(IRunSteps& steps);

    // The loop's exit code; 0 when the main window could not be made.
    int Run();

private:
    IRunSteps& m_steps;
};
