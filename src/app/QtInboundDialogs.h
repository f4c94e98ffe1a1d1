#pragma once
// The boxes that the service's component-failure messages lead to, shown through the
// program's message boxes. The inbound pump calls them from its own thread when there is no
// main window yet; the box is then shown on the GUI thread while the pump waits for it, as a
// modal box of that thread would make it wait. Without the widgets' application (the pump's
// thread may outlive it) nothing is shown and the box's way out is answered.

#include "messaging/InboundDialogs.h"

#include <functional>

class IMessageBoxes;
class QWidget;

class QtInboundDialogs : public InboundDialogs {
public:
    // `boxes` must outlive the object; `mainWindow` answers the main window, null while
    // there is none (asked on the GUI thread).
    QtInboundDialogs(IMessageBoxes& boxes, std::function<QWidget*()> mainWindow);

    int MessageBox(Owner owner, const stdstr& text, const stdstr& title,
                   std::uint32_t type) override;
    // The reinstall prompt (CReInstallDlg) is not built yet: this traces that and answers
    // ReinstallCancel, so that nothing is launched.
    int ReinstallPrompt() override;

private:
    IMessageBoxes& m_boxes;
    std::function<QWidget*()> m_mainWindow;
};
