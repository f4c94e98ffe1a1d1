#include "messaging/MainWindowPort.h"

#include <atomic>

namespace {

// The main window's handle before the window exists: IsWindow says no, PostMessageW and
// SendMessageW to it have no effect.
class NoWindowPort : public WindowPort {
public:
    bool post(int, std::uintptr_t, std::intptr_t) override { return false; }
    std::intptr_t send(int, std::uintptr_t, std::intptr_t) override { return 0; }
    bool isWindow() override { return false; }
};

NoWindowPort g_noWindow;
// Read on the plug-in's threads and the pump's as well as the GUI thread.
std::atomic<WindowPort*> g_installed{nullptr};

} // namespace

WindowPort& MainWindowPort::Get() {
    WindowPort* port = g_installed.load(std::memory_order_acquire);
    return port != nullptr ? *port : g_noWindow;
}

void MainWindowPort::Install(WindowPort* port) {
    g_installed.store(port, std::memory_order_release);
}
