#pragma once
// A WindowPort over a Qt window, for the libraries that have no window system: posts and
// sends become PrivateMessageEvents to the window. The port watches the window: once the
// window is destroyed it is a port to no window (posts are refused, sends answer 0), so it
// may outlive the window and be used from any thread.

#include "messaging/WindowPort.h"

#include <QMetaObject>

#include <mutex>

class QObject;

class WidgetWindowPort : public WindowPort {
public:
    explicit WidgetWindowPort(QObject* window = nullptr);
    ~WidgetWindowPort() override;
    WidgetWindowPort(const WidgetWindowPort&) = delete;
    WidgetWindowPort& operator=(const WidgetWindowPort&) = delete;

    // Points the port at `window` (null: no window). Called on the window's thread.
    void SetWindow(QObject* window);

    bool post(int message, std::uintptr_t wParam, std::intptr_t lParam) override;
    std::intptr_t send(int message, std::uintptr_t wParam, std::intptr_t lParam) override;
    bool isWindow() override;

private:
    void Forget();

    std::mutex m_lock;
    QObject* m_window = nullptr;
    QMetaObject::Connection m_watch;
};
