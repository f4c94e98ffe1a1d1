#pragma once
// The inbound pump. The service's handlers run on the plug-in's threads, which must not wait
// for a user; three of the service's messages lead to modal dialogs or even to an installer,
// so their handlers only queue them here. The pump's thread takes them one by one, first in
// first out, and hands each to the main window with a send, which blocks the pump until the
// window has dealt with it: failures are shown strictly one at a time while the queue grows.
// Before the main window exists, the pump does the window's work itself, without an owner.
//
// The thread runs from the start of the program to its end. It waits on an exit event and a
// semaphore together (the exit event first), the semaphore counting the queued messages.

#include "foundation/CriticalSection.h"
#include "messaging/CountingSemaphore.h"
#include "messaging/PumpThread.h"
#include "messaging/WaitableEvent.h"

#include <cstdint>
#include <deque>
#include <memory>

class ComponentFailureResponder;
class IMessage;
class WindowPort;

class CMsgHandler {
public:
    // The semaphore's maximum: no other limit is put on the queue.
    static constexpr std::uint32_t MaximumQueued = 0x7fffffff;
    // WaitForSignals' answers: the index of the object that ended the wait, or a failure.
    static constexpr std::uint32_t WaitExit = 0;
    static constexpr std::uint32_t WaitMessage = 1;
    static constexpr std::uint32_t WaitFailed = 0xFFFFFFFF;

    // `mainWindow` answers isWindow() for as long as the main window exists; `responder` does
    // the window's work when it does not. Both outlive this object.
    CMsgHandler(WindowPort& mainWindow, ComponentFailureResponder& responder);
    // Ends the thread and waits for it, then frees what is still queued. A dialog open on the
    // thread (the no-window case) delays this until it is closed.
    virtual ~CMsgHandler();
    CMsgHandler(const CMsgHandler&) = delete;
    CMsgHandler& operator=(const CMsgHandler&) = delete;

    // Clears the exit event and starts the thread, letting go of an earlier one. False when
    // no thread came up.
    bool StartThread();
    // Sets the exit event: the thread ends before it takes the next message. Nothing in the
    // program calls this while it runs, because a dialog may be open on the thread.
    void RequestExit();
    // Appends `msg` and counts it, under the lock; the queue owns it from now on. Called on
    // the plug-in's threads.
    void Enqueue(std::unique_ptr<IMessage> msg);
    // The oldest entry, taken out under the lock; null when the queue is empty.
    std::unique_ptr<IMessage> Dequeue();

protected:
    // Waits without a time limit for the exit event or one count of the semaphore, tested in
    // that order, and answers WaitExit, WaitMessage (the count taken) or WaitFailed.
    virtual std::uint32_t WaitForSignals();
    // Sets the exit event and waits for the thread to end (not when called on the thread). A
    // derived class that overrides WaitForSignals calls this in its own destructor.
    void StopThread();

private:
    // The thread's body.
    std::uint32_t ManagerProc();
    // The pump's part for one message.
    void Deliver(const IMessage& msg);

    WindowPort& m_mainWindow;
    ComponentFailureResponder& m_responder;
    PumpThread m_thread;
    WaitableEvent m_exitEvent;
    CountingSemaphore m_semaphore{0, MaximumQueued};
    Corvane::CriticalSection m_lock;
    std::deque<std::unique_ptr<IMessage>> m_queue;
};
