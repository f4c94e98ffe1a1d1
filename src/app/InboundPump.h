#pragma once
// The inbound pump as the application object holds it: CMsgHandler with its stop made
// public. The pump's thread must end while the window system still exists, because a message
// that it delivers may need a box; the handler itself keeps the stop to itself, as nothing in
// the handler's own library may end the thread while it runs.

#include "messaging/CMsgHandler.h"

class InboundPump : public CMsgHandler {
public:
    using CMsgHandler::CMsgHandler;

    // Sets the exit event and waits for the thread to end (not when called on the thread).
    void Stop() { StopThread(); }
};
