#include "messaging/CMsgHandler.h"

#include "foundation/SyncLock.h"
#include "foundation/Trace.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/ComponentFailureResponder.h"
#include "messaging/IMessage.h"
#include "messaging/WindowPort.h"

#include <cerrno>
#include <poll.h>

CMsgHandler::CMsgHandler(WindowPort& mainWindow, ComponentFailureResponder& responder)
    : m_mainWindow(mainWindow), m_responder(responder), m_thread([this] { return ManagerProc(); }) {
}

CMsgHandler::~CMsgHandler() {
    StopThread();
}

bool CMsgHandler::StartThread() {
    // Without its two objects the thread's wait could only fail, and each replacement with
    // it: no thread is better than an endless chain of them.
    if (!m_exitEvent.valid() || !m_semaphore.valid())
        return false;
    m_exitEvent.reset();
    return m_thread.start();
}

void CMsgHandler::RequestExit() {
    m_exitEvent.set();
}

void CMsgHandler::Enqueue(std::unique_ptr<IMessage> msg) {
    SyncLock guard(m_lock);
    m_queue.push_back(std::move(msg));
    // At the maximum the message stays queued without its count, as a full semaphore leaves
    // it; it is taken with the next count.
    m_semaphore.release(1);
}

std::unique_ptr<IMessage> CMsgHandler::Dequeue() {
    SyncLock guard(m_lock);
    if (m_queue.empty())
        return nullptr;
    std::unique_ptr<IMessage> oldest = std::move(m_queue.front());
    m_queue.pop_front();
    return oldest;
}

std::uint32_t CMsgHandler::WaitForSignals() {
    pollfd handles[2] = {{m_exitEvent.handle(), POLLIN, 0}, {m_semaphore.handle(), POLLIN, 0}};
    for (;;) {
        const int ready = ::poll(handles, 2, -1);
        if (ready == -1) {
            if (errno == EINTR)
                continue;
            return WaitFailed;
        }
        if ((handles[0].revents & POLLIN) != 0)
            return WaitExit;
        if (((handles[0].revents | handles[1].revents) & (POLLERR | POLLNVAL | POLLHUP)) != 0)
            return WaitFailed;
        // Readable is not yet taken: the count goes to whoever reads it first.
        if ((handles[1].revents & POLLIN) != 0 && m_semaphore.tryAcquire())
            return WaitMessage;
    }
}

void CMsgHandler::StopThread() {
    RequestExit();
    m_thread.waitForEnd();
}

std::uint32_t CMsgHandler::ManagerProc() {
    for (;;) {
        const std::uint32_t result = WaitForSignals();
        if (result == WaitExit) {
            TraceMsg(TRACE_DEBUG, u"CMsgHandler::ManagerProc get exit event");
            return 0;
        }
        if (result != WaitMessage) {
            TraceFmt(TRACE_ERROR, u"WaitForMultipleObjects return %d in CMsgHandler::ManagerProc",
                     static_cast<std::int32_t>(result));
            // A thread whose wait fails is replaced by a fresh one; this one ends.
            StartThread();
            return 0;
        }
        try {
            std::unique_ptr<IMessage> msg = Dequeue();
            if (msg == nullptr)
                TraceMsg(TRACE_ERROR, u"Got nothing in CMsgHandler::ManagerProc");
            else
                Deliver(*msg);
        } catch (...) {
            // The message in hand is freed all the same: the window had it only for the
            // length of the send, which is over.
            TraceMsg(TRACE_ERROR, u"Exception in CMsgHandler::ManagerProc");
        }
    }
}

void CMsgHandler::Deliver(const IMessage& msg) {
    const bool window = m_mainWindow.isWindow();
    if (!ComponentFailureResponder::IsComponentFailure(msg.GetId())) {
        TraceFmt(TRACE_DEBUG, u"Not handled message id %d", msg.GetId());
        return;
    }
    if (window) {
        m_mainWindow.send(WM_QG_SERVICE_MESSAGE, reinterpret_cast<std::uintptr_t>(&msg), 0);
        return;
    }
    m_responder.Respond(msg, InboundDialogs::Owner::None);
    // Posted to the handle of a window that is not there, which has no effect; kept so that
    // the two paths stay the same.
    m_mainWindow.post(WM_QG_EXIT, 0, 0);
}
