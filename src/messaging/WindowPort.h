#pragma once
// A window as the Qt-free libraries see it: the three things that they may do to one. The
// GUI layer implements it over a guarded handle of the real window, so that a port can
// outlive its window and simply stop being one; tests implement it to record what a window
// was told. Numbers and parameters keep the meaning of the private window messages.

#include <cstdint>

class WindowPort {
public:
    // Queues `message` for the window's thread and returns at once (PostMessageW). False when
    // it could not be queued; a port to no window takes the call and does nothing.
    virtual bool post(int message, std::uintptr_t wParam, std::intptr_t lParam) = 0;
    // Delivers `message` and returns the window's answer once it has been handled
    // (SendMessageW): at once on the window's thread, blocking from any other. A port to no
    // window answers 0.
    virtual std::intptr_t send(int message, std::uintptr_t wParam, std::intptr_t lParam) = 0;
    // Whether the window exists now (IsWindow).
    virtual bool isWindow() = 0;

    virtual ~WindowPort() = default;

protected:
    WindowPort() = default;
    WindowPort(const WindowPort&) = default;
    WindowPort& operator=(const WindowPort&) = default;
};
