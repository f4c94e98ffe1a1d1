#include "app/QtInboundDialogs.h"

#include "app/UnshownBoxAnswer.h"
#include "foundation/Trace.h"
#include "mainwindow/IMessageBoxes.h"

#include <QApplication>
#include <QMetaObject>
#include <QThread>

QtInboundDialogs::QtInboundDialogs(IMessageBoxes& boxes, std::function<QWidget*()> mainWindow)
    : m_boxes(boxes), m_mainWindow(std::move(mainWindow)) {}

int QtInboundDialogs::MessageBox(Owner owner, const stdstr& text, const stdstr& title,
                                 std::uint32_t type) {
    // The pump's thread may outlive the window system; a box without the widgets'
    // application cannot be made, so it is answered unshown. The same answer stands when the
    // call is dropped unrun while the window system is taken down.
    int answer = UnshownBoxAnswer::For(type);
    QApplication* app = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (app == nullptr)
        return answer;
    const auto show = [&] {
        QWidget* parent = owner == Owner::MainWindow ? m_mainWindow() : nullptr;
        answer = m_boxes.MessageBox(parent, text, title, type);
    };
    if (app->thread() == QThread::currentThread())
        show();
    else
        QMetaObject::invokeMethod(app, show, Qt::BlockingQueuedConnection);
    return answer;
}

int QtInboundDialogs::ReinstallPrompt() {
    TraceMsg(TRACE_DEBUG,
             u"QtInboundDialogs::ReinstallPrompt - the reinstall prompt is not built yet");
    return ReinstallCancel;
}
