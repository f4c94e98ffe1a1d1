#pragma once
// The base of every worker thread: a derived class implements run(), usually as a loop
// around waitForStop(ms), and its owner calls start(), later stop(), later shutdown().
// Underneath is a std::thread with two manual-reset events: "stop" (asked by the owner,
// looked at by run) and "finished" (set when run has returned). An object can be started
// again once its thread has finished; the events stay until the next start or destruction,
// so isRunning still answers after shutdown.
//
// The critical section this class derives from is free for the derived class's use; the
// class itself takes it nowhere. A derived class whose run() uses its own members must stop
// and shut down the thread in its own destructor: by the time this destructor waits, the
// derived part is gone.

#include "foundation/CriticalSection.h"
#include "foundation/Event.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>

namespace Corvane {

class Thread : public CriticalSection {
public:
    // `waitAtDestruction`: the destructor waits for the thread (shutdown); otherwise it
    // leaves it running detached (terminate).
    explicit Thread(bool waitAtDestruction);
    ~Thread() override;

    // True when the thread was created. Returns once the thread has begun (or after 50 ms
    // at most).
    virtual bool start();
    // Signals the stop event, if there is one.
    virtual void stop();
    // Stores the period, then stop().
    virtual void stop(std::uint32_t periodMs);
    // True while the finished event exists and is not set.
    virtual bool isRunning();
    // Waits on the stop event: true when it is set; false on time-out or when the thread
    // was never started.
    virtual bool waitForStop(std::uint32_t timeoutMs);
    // Does not end the thread (no thread can be ended safely from outside): lets go of it,
    // and it runs on detached.
    virtual void terminate();
    // The thread's body and result.
    virtual std::uint32_t run() = 0;
    // Waits without limit until run() has returned and lets go of the thread. It does not
    // ask the thread to stop: call stop() first.
    virtual void shutdown();

    // Milliseconds, 500 until stop(periodMs) says otherwise.
    std::uint32_t period() const { return m_period.load(); }
    // The kernel id of the thread while this object holds it (from start until shutdown or
    // terminate), 0 otherwise: the number that the debug-log lines give.
    int threadId() const;

private:
    // What the thread's body shares with the object, so that it stays valid if the object
    // is destroyed while the thread runs on.
    struct Launch {
        Event begun;
        std::atomic<int> kernelId{0};
    };

    int threadIdLocked() const;

    const bool m_waitAtDestruction;
    std::atomic<std::uint32_t> m_period{500};
    // Guards the fields below (not the public critical section, which belongs to the
    // derived class).
    mutable std::mutex m_state;
    std::thread m_thread;
    std::shared_ptr<Event> m_stopEvent;
    std::shared_ptr<Event> m_finishedEvent;
    std::shared_ptr<Launch> m_launch;
};

} // namespace Corvane
