#include "mainwindow/MainDlgMessageFilter.h"

MainDlgMessageFilter::Action MainDlgMessageFilter::Decide(const Input& input) {
    if (!input.forMainWindow)
        return Action::Deliver;
    switch (input.event) {
    case Event::ReturnKeyDown:
        if (!input.hasFocus)
            return Action::Drop;
        // Already at the focused control, or passed up from it because it ignored the key:
        // sending it to the focus again would repeat it, and would come back up without end.
        if (input.receiverHasFocus || input.receiverContainsFocus)
            return Action::Deliver;
        return Action::SendToFocus;
    case Event::RightButtonUp:
        if (input.alreadyCopied)
            // The main window had its copy: a parent control may see the release passed up,
            // the main window must not have it twice.
            return input.receiverIsMainWindow ? Action::Drop : Action::Deliver;
        return input.receiverIsMainWindow ? Action::Deliver : Action::CopyToMainWindow;
    case Event::Other:
        break;
    }
    return Action::Deliver;
}
