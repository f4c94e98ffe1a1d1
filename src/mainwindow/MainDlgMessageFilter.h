#pragma once
// The main window's look at every input event of the program before it is delivered, as
// the message loop's filter: inside the window, a Return key press goes to the control
// that has the focus, and a right button release goes to the main window itself. Anything
// else, and anything for another window, is delivered as usual.

class MainDlgMessageFilter {
public:
    enum class Event { ReturnKeyDown, RightButtonUp, Other };
    enum class Action {
        Deliver,          // let it go where it was going
        SendToFocus,      // deliver it to the focused control instead, and stop it here
        SendToMainWindow, // deliver it to the main window instead, and stop it here
        Drop,             // stop it here: it has nowhere to go
    };

    struct Input {
        Event event = Event::Other;
        // The receiver is the main window or one of its controls (not another window).
        bool forMainWindow = false;
        bool receiverIsMainWindow = false;
        // Whether a control of the main window has the focus, and whether it is the receiver.
        bool hasFocus = false;
        bool receiverHasFocus = false;
    };

    static Action Decide(const Input& input);
};
