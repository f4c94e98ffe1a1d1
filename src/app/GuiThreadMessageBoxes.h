#pragma once
// Message boxes that may be asked for from any thread: a box asked for on another thread is
// shown on the GUI thread while the asking thread waits for the answer, as a Windows message
// box on a worker thread would block that worker. The start dialog's worker needs this when
// the service's executable cannot be run. Without the widgets' application nothing is shown
// and the box's way out is answered (UnshownBoxAnswer).

#include "mainwindow/IMessageBoxes.h"

class GuiThreadMessageBoxes : public IMessageBoxes {
public:
    // `boxes` shows the boxes on the GUI thread; it must outlive this object.
    explicit GuiThreadMessageBoxes(IMessageBoxes& boxes);

    int MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                   std::uint32_t type) override;

private:
    IMessageBoxes& m_boxes;
};
