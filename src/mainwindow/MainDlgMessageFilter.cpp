#include "mainwindow/MainDlgMessageFilter.h"

MainDlgMessageFilter::Action MainDlgMessageFilter::Decide(const Input& input) {
    if (!input.forMainWindow)
        return Action::Deliver;
    switch (input.event) {
    case Event::ReturnKeyDown:
        if (!input.hasFocus)
            return Action::Drop;
        // Already on its way to the focused control: sending it again would repeat it.
        return input.receiverHasFocus ? Action::Deliver : Action::SendToFocus;
    case Event::RightButtonUp:
        return input.receiverIsMainWindow ? Action::Deliver : Action::SendToMainWindow;
    case Event::Other:
        break;
    }
    return Action::Deliver;
}
