#pragma once
// The main window's look at every input event of the program before it is delivered, as
// the message loop's filter: inside the window, a Return key press goes to the control
// that has the focus, and a copy of a right button release goes to the main window itself
// while the control under the pointer still has the original. Anything else, and anything
// for another window, is delivered as usual.

class MainDlgMessageFilter {
public:
    enum class Event { ReturnKeyDown, RightButtonUp, Other };
    enum class Action {
        Deliver,          // let it go where it was going
        SendToFocus,      // deliver it to the focused control instead, and stop it here
        CopyToMainWindow, // send a copy to the main window, then let the original go on
        Drop,             // stop it here: it has nowhere to go, or has already arrived
    };

    struct Input {
        Event event = Event::Other;
        // The receiver is the main window or one of its controls (not another window).
        bool forMainWindow = false;
        bool receiverIsMainWindow = false;
        // Whether a control of the main window has the focus, whether it is the receiver, and
        // whether the receiver holds it: a key the focused control ignored travels up through
        // its parents, so there it is already on its way from the focus.
        bool hasFocus = false;
        bool receiverHasFocus = false;
        bool receiverContainsFocus = false;
        // This release is one the main window already had a copy of, passed on to a parent
        // because the control under the pointer ignored it.
        bool alreadyCopied = false;
    };

    static Action Decide(const Input& input);
};
