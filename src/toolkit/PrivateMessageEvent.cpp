#include "toolkit/PrivateMessageEvent.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <memory>

PrivateMessageEvent::PrivateMessageEvent(int message, WParam wParam, LParam lParam)
    : QEvent(static_cast<QEvent::Type>(message)), m_wParam(wParam), m_lParam(lParam) {}

PrivateMessageEvent::Result PrivateMessageEvent::Send(QObject* target, int message, WParam wParam,
                                                      LParam lParam) {
    if (target == nullptr)
        return 0;
    if (target->thread() == QThread::currentThread()) {
        PrivateMessageEvent event(message, wParam, lParam);
        QCoreApplication::sendEvent(target, &event);
        return event.GetResult();
    }
    // From another thread the caller waits, as a cross-thread send does; the guard keeps a
    // target that died in the meantime from being touched.
    Result result = 0;
    const QPointer<QObject> guard(target);
    QMetaObject::invokeMethod(
        target,
        [&result, &guard, message, wParam, lParam] {
            if (guard.isNull())
                return;
            PrivateMessageEvent event(message, wParam, lParam);
            QCoreApplication::sendEvent(guard.data(), &event);
            result = event.GetResult();
        },
        Qt::BlockingQueuedConnection);
    return result;
}

bool PrivateMessageEvent::Post(QObject* target, int message, WParam wParam, LParam lParam) {
    if (target == nullptr)
        return false;
    QCoreApplication::postEvent(
        target, std::make_unique<PrivateMessageEvent>(message, wParam, lParam).release());
    return true;
}
