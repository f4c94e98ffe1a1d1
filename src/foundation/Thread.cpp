#include "foundation/Thread.h"

#include "foundation/DebugLog.h"

#include <system_error>
#include <unistd.h>

namespace Corvane {
namespace {
// How long start() waits at most for the new thread to begin.
constexpr std::uint32_t BeginWaitMs = 50;
} // namespace

Thread::Thread(bool waitAtDestruction) : m_waitAtDestruction(waitAtDestruction) {}

Thread::~Thread() {
    if (m_waitAtDestruction)
        shutdown();
    else
        terminate();
    std::lock_guard<std::mutex> guard(m_state);
    // A safety net: a std::thread destroyed while joinable would end the process.
    if (m_thread.joinable())
        m_thread.detach();
    m_stopEvent.reset();
    m_finishedEvent.reset();
}

bool Thread::start() {
    auto stopEvent = std::make_shared<Event>();
    auto finished = std::make_shared<Event>();
    auto launch = std::make_shared<Launch>();
    std::unique_lock<std::mutex> guard(m_state);
    m_stopEvent = stopEvent;
    m_finishedEvent = finished;
    // A thread of an earlier start runs on detached, as its closed handle would let it.
    if (m_thread.joinable())
        m_thread.detach();
    m_launch = launch;
    try {
        // The body keeps its own reference to the finished event: the signal must remain
        // possible when the object has been destroyed meanwhile.
        m_thread = std::thread([this, finished, launch] {
            launch->kernelId.store(static_cast<int>(::gettid()));
            launch->begun.set();
            run();
            finished->set();
        });
    } catch (const std::system_error&) {
        // No thread: start answers false.
    }
    const bool created = m_thread.joinable();
    guard.unlock();
    // Callers go on as if the thread were under way; waiting for its first step instead of
    // a fixed pause costs nothing when it begins at once, and the bound keeps start() from
    // hanging on a busy machine.
    if (created)
        launch->begun.wait(BeginWaitMs);
    return created;
}

void Thread::stop() {
    std::shared_ptr<Event> stopEvent;
    int id = 0;
    {
        std::lock_guard<std::mutex> guard(m_state);
        stopEvent = m_stopEvent;
        id = threadIdLocked();
    }
    if (!stopEvent)
        return;
    if (stopEvent->set())
        DebugLogPrintf("Thread::stop %d\n", id);
    else
        DebugLogPrintf("Thread::stop %d Failed\n", id);
}

void Thread::stop(std::uint32_t periodMs) {
    m_period.store(periodMs);
    stop();
}

bool Thread::isRunning() {
    std::shared_ptr<Event> finished;
    {
        std::lock_guard<std::mutex> guard(m_state);
        finished = m_finishedEvent;
    }
    return finished && !finished->isSet();
}

bool Thread::waitForStop(std::uint32_t timeoutMs) {
    std::shared_ptr<Event> stopEvent;
    {
        std::lock_guard<std::mutex> guard(m_state);
        stopEvent = m_stopEvent;
    }
    return stopEvent && stopEvent->wait(timeoutMs);
}

void Thread::terminate() {
    DebugLogPrintf(
        "Simulating Thread termination - threads cannot be terminated safely on windows\n");
    std::lock_guard<std::mutex> guard(m_state);
    if (m_thread.joinable())
        m_thread.detach();
}

void Thread::shutdown() {
    std::shared_ptr<Event> finished;
    int id = 0;
    {
        std::lock_guard<std::mutex> guard(m_state);
        finished = m_finishedEvent;
        id = threadIdLocked();
    }
    DebugLogPrintf("Thread::shutdown %d\n", id);
    if (!finished) {
        DebugLogPrintf("Thread shutting down has no handle\n");
        return;
    }
    finished->wait(Infinite);
    DebugLogPrintf("Thread::shutdown %d - finished\n", id);
    std::thread ended;
    {
        std::lock_guard<std::mutex> guard(m_state);
        ended = std::move(m_thread);
    }
    if (!ended.joinable())
        return;
    // run() has returned; what is left of the body is to leave, so the join is short.
    if (ended.get_id() == std::this_thread::get_id())
        ended.detach();
    else
        ended.join();
}

int Thread::threadId() const {
    std::lock_guard<std::mutex> guard(m_state);
    return threadIdLocked();
}

int Thread::threadIdLocked() const {
    return m_thread.joinable() && m_launch ? m_launch->kernelId.load() : 0;
}

} // namespace Corvane
