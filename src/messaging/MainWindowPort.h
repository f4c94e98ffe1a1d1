#pragma once
// The process's way to its main window. The send path and the service's handlers reach the
// window from free functions (the plug-in calls handlers without any context), so the GUI
// installs its port here once; until then, and after it is taken back, the port is one to
// no window: it is no window, posts go nowhere and sends answer 0.

#include "messaging/WindowPort.h"

class MainWindowPort {
public:
    // The installed port, or the port to no window.
    static WindowPort& Get();
    // Installs `port` (null: back to no window). The port must stay alive while it is
    // installed; callers on other threads may be using it.
    static void Install(WindowPort* port);
};
