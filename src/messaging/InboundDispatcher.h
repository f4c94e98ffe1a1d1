#pragma once
// The main window's answer to private message 1060, by which the inbound pump hands it a
// component-failure message of the service. It runs on the GUI thread while the pump waits
// in its send, so failures are shown strictly one at a time. The message stays the pump's:
// it is read here, never deleted.

#include <cstdint>

class ComponentFailureResponder;
class IMessage;
class MainWindowView;
class WindowPort;

class InboundDispatcher {
public:
    // `window` is the main window and `self` its own port, through which the program is
    // ended (1059) once the user has seen the failure.
    InboundDispatcher(MainWindowView& window, WindowPort& self,
                      ComponentFailureResponder& responder);

    // Shows the window if it is hidden, tells the user, posts 1059 to the window; an id
    // other than the three is only traced. Answers 0.
    std::intptr_t DispatchInboundMessage(const IMessage& msg);

private:
    MainWindowView& m_window;
    WindowPort& m_self;
    ComponentFailureResponder& m_responder;
};
