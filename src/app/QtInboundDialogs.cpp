#include "app/QtInboundDialogs.h"

#include "foundation/Trace.h"
#include "mainwindow/IMessageBoxes.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

QtInboundDialogs::QtInboundDialogs(IMessageBoxes& boxes, std::function<QWidget*()> mainWindow)
    : m_boxes(boxes), m_mainWindow(std::move(mainWindow)) {}

int QtInboundDialogs::MessageBox(Owner owner, const stdstr& text, const stdstr& title,
                                 std::uint32_t type) {
    int answer = IMessageBoxes::IDOK;
    const auto show = [&] {
        QWidget* parent = owner == Owner::MainWindow ? m_mainWindow() : nullptr;
        answer = m_boxes.MessageBox(parent, text, title, type);
    };
    QCoreApplication* app = QCoreApplication::instance();
    if (app == nullptr || app->thread() == QThread::currentThread())
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
