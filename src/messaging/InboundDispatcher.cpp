#include "messaging/InboundDispatcher.h"

#include "foundation/Trace.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/ComponentFailureResponder.h"
#include "messaging/IMessage.h"
#include "messaging/MainWindowView.h"
#include "messaging/WindowPort.h"

InboundDispatcher::InboundDispatcher(MainWindowView& window, WindowPort& self,
                                     ComponentFailureResponder& responder)
    : m_window(window), m_self(self), m_responder(responder) {}

std::intptr_t InboundDispatcher::DispatchInboundMessage(const IMessage& msg) {
    if (!m_window.isVisible())
        m_window.show();
    // A failed component means that the program stops once the user has seen why; after a
    // reinstall it stops as well, whatever the outcome.
    if (m_responder.Respond(msg, InboundDialogs::Owner::MainWindow))
        m_self.post(WM_QG_EXIT, 0, 0);
    else
        TraceFmt(TRACE_DEBUG, u"Not handled message id %d", msg.GetId());
    return 0;
}
