#include "app/GuiThreadMessageBoxes.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

GuiThreadMessageBoxes::GuiThreadMessageBoxes(IMessageBoxes& boxes) : m_boxes(boxes) {}

int GuiThreadMessageBoxes::MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                                      std::uint32_t type) {
    QCoreApplication* application = QCoreApplication::instance();
    if (application == nullptr || QThread::currentThread() == application->thread())
        return m_boxes.MessageBox(owner, text, caption, type);
    int answer = IDOK;
    QMetaObject::invokeMethod(
        application, [&] { answer = m_boxes.MessageBox(owner, text, caption, type); },
        Qt::BlockingQueuedConnection);
    return answer;
}
