#include "app/GuiThreadMessageBoxes.h"

#include "app/UnshownBoxAnswer.h"

#include <QApplication>
#include <QMetaObject>
#include <QThread>

GuiThreadMessageBoxes::GuiThreadMessageBoxes(IMessageBoxes& boxes) : m_boxes(boxes) {}

int GuiThreadMessageBoxes::MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                                      std::uint32_t type) {
    // A box needs the widgets' application: without it (a thread that outlives the program's
    // window system) nothing is shown.
    QApplication* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (application == nullptr)
        return UnshownBoxAnswer::For(type);
    if (QThread::currentThread() == application->thread())
        return m_boxes.MessageBox(owner, text, caption, type);
    // Stays as it is when the call is dropped unrun, which lets this thread go on: the loop
    // has ended and the window system is being taken down.
    int answer = UnshownBoxAnswer::For(type);
    QMetaObject::invokeMethod(
        application, [&] { answer = m_boxes.MessageBox(owner, text, caption, type); },
        Qt::BlockingQueuedConnection);
    return answer;
}
