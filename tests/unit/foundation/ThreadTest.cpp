#include "foundation/Thread.h"

#include "SyncTestEnvironment.h"
#include "SyncTestLog.h"

#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <unistd.h>

namespace {

using Corvane::Event;
using Corvane::Infinite;
using namespace std::chrono_literals;

const std::string TerminationLine =
    "Simulating Thread termination - threads cannot be terminated safely on windows";

// The usual worker: loops on waitForStop with its period until asked to stop.
class LoopingWorker : public Corvane::Thread {
public:
    explicit LoopingWorker(bool waitAtDestruction = true) : Thread(waitAtDestruction) {}
    ~LoopingWorker() override {
        stop();
        shutdown();
    }

    std::uint32_t run() override {
        runs.fetch_add(1);
        while (!waitForStop(period()))
            loops.fetch_add(1);
        return 0;
    }

    std::atomic<int> runs{0};
    std::atomic<int> loops{0};
};

// What a gated worker shares with the test; it outlives the worker object.
struct Gate {
    Event entered;  // run() has begun and holds its own reference
    Event stopSeen; // run() saw the stop event
    Event open;     // run() may return
    std::atomic<bool> done{false};
};

// A worker whose run() waits for the test's gate, and touches nothing of the object after
// it has taken its reference to the gate: the object may be gone by then.
class GatedWorker : public Corvane::Thread {
public:
    GatedWorker(bool waitAtDestruction, std::shared_ptr<Gate> gate, bool waitForStopFirst)
        : Thread(waitAtDestruction), m_gate(std::move(gate)), m_waitForStopFirst(waitForStopFirst) {
    }

    std::uint32_t run() override {
        const std::shared_ptr<Gate> gate = m_gate;
        const bool waitForStopFirst = m_waitForStopFirst;
        gate->entered.set();
        if (waitForStopFirst) {
            waitForStop(Infinite);
            gate->stopSeen.set();
        }
        gate->open.wait(Infinite);
        gate->done.store(true);
        return 0;
    }

private:
    std::shared_ptr<Gate> m_gate;
    const bool m_waitForStopFirst;
};

TEST(Thread, NeverStartedIsNotRunning) {
    LoopingWorker worker;
    EXPECT_FALSE(worker.isRunning());
    EXPECT_EQ(worker.threadId(), 0);
    EXPECT_EQ(worker.period(), 500u);
}

TEST(Thread, NeverStartedWaitForStopReturnsFalseAtOnce) {
    LoopingWorker worker;
    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(worker.waitForStop(60000));
    EXPECT_FALSE(worker.waitForStop(Infinite));
    EXPECT_LT(std::chrono::steady_clock::now() - before, 5s);
}

TEST(Thread, NeverStartedStopDoesNothing) {
    LoopingWorker worker;
    SyncTestLog log;
    worker.stop();
    worker.stop(250);
    EXPECT_TRUE(log.messages().empty());
    EXPECT_FALSE(worker.isRunning());
    EXPECT_FALSE(worker.waitForStop(0));
    EXPECT_EQ(worker.period(), 250u);
}

TEST(Thread, NeverStartedShutdownWritesTheNoHandleLine) {
    LoopingWorker worker;
    SyncTestLog log;
    worker.shutdown();
    EXPECT_EQ(log.messages(), (std::vector<std::string>{"Thread::shutdown 0",
                                                        "Thread shutting down has no handle"}));
}

TEST(Thread, StartRunsTheBodyAndStopAndShutdownEndIt) {
    LoopingWorker worker;
    ASSERT_TRUE(worker.start());
    ASSERT_TRUE(TestSupport::WaitFor([&] { return worker.runs.load() == 1; }));
    ASSERT_TRUE(TestSupport::WaitFor([&] { return worker.threadId() != 0; }));
    const int id = worker.threadId();
    EXPECT_NE(id, static_cast<int>(::gettid()));
    EXPECT_TRUE(worker.isRunning());
    EXPECT_FALSE(worker.waitForStop(0));

    SyncTestLog log;
    worker.stop();
    EXPECT_TRUE(worker.waitForStop(0));
    worker.shutdown();
    EXPECT_EQ(log.messages(),
              (std::vector<std::string>{"Thread::stop " + std::to_string(id),
                                        "Thread::shutdown " + std::to_string(id),
                                        "Thread::shutdown " + std::to_string(id) + " - finished"}));
    EXPECT_FALSE(worker.isRunning());
    EXPECT_EQ(worker.threadId(), 0);
    EXPECT_EQ(worker.runs.load(), 1);
}

TEST(Thread, StopWithAPeriodStoresItFirst) {
    LoopingWorker worker;
    ASSERT_TRUE(worker.start());
    worker.stop(30);
    EXPECT_EQ(worker.period(), 30u);
    worker.shutdown();
    EXPECT_FALSE(worker.isRunning());
}

TEST(Thread, ShutdownDoesNotAskTheThreadToStop) {
    LoopingWorker worker;
    worker.stop(5); // a short period: the loop goes round often
    ASSERT_TRUE(worker.start());
    auto shutdown = std::async(std::launch::async, [&worker] { worker.shutdown(); });
    ASSERT_TRUE(TestSupport::WaitFor([&] { return worker.loops.load() >= 3; }));
    EXPECT_EQ(shutdown.wait_for(0s), std::future_status::timeout);
    EXPECT_TRUE(worker.isRunning());
    worker.stop();
    EXPECT_EQ(shutdown.wait_for(10s), std::future_status::ready);
    EXPECT_FALSE(worker.isRunning());
}

TEST(Thread, AFinishedObjectCanBeStartedAgain) {
    LoopingWorker worker;
    ASSERT_TRUE(worker.start());
    worker.stop();
    worker.shutdown();
    ASSERT_FALSE(worker.isRunning());
    // The events stay until the next start.
    EXPECT_TRUE(worker.waitForStop(0));

    ASSERT_TRUE(worker.start());
    EXPECT_FALSE(worker.waitForStop(0));
    ASSERT_TRUE(TestSupport::WaitFor([&] { return worker.runs.load() == 2; }));
    EXPECT_TRUE(worker.isRunning());
    worker.stop();
    worker.shutdown();
    EXPECT_FALSE(worker.isRunning());
}

TEST(Thread, WaitAtDestructionWaitsForTheThread) {
    auto gate = std::make_shared<Gate>();
    auto worker = std::make_unique<GatedWorker>(true, gate, true);
    ASSERT_TRUE(worker->start());
    ASSERT_TRUE(gate->entered.wait(10000));
    worker->stop();
    ASSERT_TRUE(gate->stopSeen.wait(10000));
    const std::string shutdownLine = "Thread::shutdown " + std::to_string(worker->threadId());

    SyncTestLog log;
    std::atomic<bool> doneWhenOpened{true};
    std::thread opener([&] {
        // The destructor is waiting once it has written its shutdown line.
        TestSupport::WaitFor([&] { return log.contains(shutdownLine); });
        doneWhenOpened.store(gate->done.load());
        gate->open.set();
    });
    worker.reset();
    EXPECT_TRUE(gate->done.load());
    opener.join();
    EXPECT_FALSE(doneWhenOpened.load());
    EXPECT_TRUE(log.contains(shutdownLine + " - finished"));
    EXPECT_FALSE(log.contains(TerminationLine));
}

TEST(Thread, WithoutWaitAtDestructionTheThreadRunsOnDetached) {
    auto gate = std::make_shared<Gate>();
    auto worker = std::make_unique<GatedWorker>(false, gate, false);
    ASSERT_TRUE(worker->start());
    ASSERT_TRUE(gate->entered.wait(10000));

    SyncTestLog log;
    auto destruction = std::async(std::launch::async, [&worker] { worker.reset(); });
    const bool returned = destruction.wait_for(10s) == std::future_status::ready;
    const bool doneMeanwhile = gate->done.load();
    if (!returned)
        gate->open.set(); // lets a destructor that waits for the thread come back
    ASSERT_TRUE(returned) << "the destructor waited for the thread";
    EXPECT_FALSE(doneMeanwhile);
    EXPECT_EQ(log.messages(), std::vector<std::string>{TerminationLine});

    gate->open.set();
    EXPECT_TRUE(TestSupport::WaitFor([&] { return gate->done.load(); }));
}

TEST(Thread, TerminateLetsGoOfTheThreadWithoutEndingIt) {
    auto gate = std::make_shared<Gate>();
    GatedWorker worker(true, gate, false);
    ASSERT_TRUE(worker.start());
    ASSERT_TRUE(gate->entered.wait(10000));
    SyncTestLog log;
    auto terminating = std::async(std::launch::async, [&worker] { worker.terminate(); });
    const bool returned = terminating.wait_for(10s) == std::future_status::ready;
    const bool doneMeanwhile = gate->done.load();
    if (!returned)
        gate->open.set(); // lets a terminate that waits for the thread come back
    ASSERT_TRUE(returned) << "terminate waited for the thread";
    EXPECT_FALSE(doneMeanwhile);
    EXPECT_EQ(worker.threadId(), 0);
    EXPECT_TRUE(worker.isRunning());
    worker.stop();
    EXPECT_EQ(log.messages(), (std::vector<std::string>{TerminationLine, "Thread::stop 0"}));

    // Shutdown still waits for the end of the let-go thread, through its finished event.
    SyncTestLog shutdownLog;
    auto shutdown = std::async(std::launch::async, [&worker] { worker.shutdown(); });
    EXPECT_EQ(shutdown.wait_for(50ms), std::future_status::timeout);
    gate->open.set();
    EXPECT_EQ(shutdown.wait_for(10s), std::future_status::ready);
    EXPECT_TRUE(gate->done.load());
    EXPECT_FALSE(worker.isRunning());
    EXPECT_EQ(shutdownLog.messages(),
              (std::vector<std::string>{"Thread::shutdown 0", "Thread::shutdown 0 - finished"}));
}

TEST(Thread, TheFinishedSignalComesAfterRunReturns) {
    auto gate = std::make_shared<Gate>();
    GatedWorker worker(true, gate, false);
    ASSERT_TRUE(worker.start());
    ASSERT_TRUE(gate->entered.wait(10000));
    EXPECT_TRUE(worker.isRunning());
    gate->open.set();
    ASSERT_TRUE(TestSupport::WaitFor([&] { return !worker.isRunning(); }));
    EXPECT_TRUE(gate->done.load());
    worker.shutdown();
}

TEST(Thread, ItsCriticalSectionIsFreeForTheDerivedClass) {
    LoopingWorker worker;
    ASSERT_TRUE(worker.start());
    ASSERT_TRUE(worker.lock(0));
    // The class takes it nowhere, so stopping and joining still work while it is held.
    worker.stop();
    worker.shutdown();
    EXPECT_FALSE(worker.isRunning());
    worker.unlock();
}

} // namespace
