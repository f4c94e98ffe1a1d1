#include "mainwindow/WidgetWindowPort.h"

#include "toolkit/PrivateMessageEvent.h"

#include <QObject>
#include <QPointer>

WidgetWindowPort::WidgetWindowPort(QObject* window) {
    SetWindow(window);
}

WidgetWindowPort::~WidgetWindowPort() {
    Forget();
}

void WidgetWindowPort::SetWindow(QObject* window) {
    Forget();
    if (window == nullptr)
        return;
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_window = window;
    }
    // Direct: the window's destruction clears the pointer before the object is gone, so no
    // post from another thread can reach it afterwards.
    m_watch = QObject::connect(
        window, &QObject::destroyed, window,
        [this] {
            const std::lock_guard<std::mutex> guard(m_lock);
            m_window = nullptr;
        },
        Qt::DirectConnection);
}

void WidgetWindowPort::Forget() {
    QObject::disconnect(m_watch);
    const std::lock_guard<std::mutex> guard(m_lock);
    m_window = nullptr;
}

bool WidgetWindowPort::post(int message, std::uintptr_t wParam, std::intptr_t lParam) {
    const std::lock_guard<std::mutex> guard(m_lock);
    if (m_window == nullptr)
        return false;
    return PrivateMessageEvent::Post(m_window, message, wParam, lParam);
}

std::intptr_t WidgetWindowPort::send(int message, std::uintptr_t wParam, std::intptr_t lParam) {
    QPointer<QObject> window;
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        window = m_window;
    }
    // Not under the lock: a send from another thread waits for the window's thread, which
    // may itself be about to take the lock.
    if (window.isNull())
        return 0;
    return PrivateMessageEvent::Send(window.data(), message, wParam, lParam);
}

bool WidgetWindowPort::isWindow() {
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_window != nullptr;
}
