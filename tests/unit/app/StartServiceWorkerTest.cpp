// The start dialog's worker: it runs the service's executable, pauses, announces its end and
// returns the exit code; or, in the two deliberate gaps, announces nothing.

#include "app/StartServiceWorker.h"

#include "AppTestApp.h"
#include "ScriptedExecutor.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/Event.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QObject>

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

namespace {

using namespace std::chrono_literals;

class Receiver : public QObject {
public:
    bool event(QEvent* event) override {
        if (PrivateMessageEvent::IsPrivateMessage(event->type())) {
            received.push_back(static_cast<PrivateMessageEvent*>(event)->Message());
            return true;
        }
        return QObject::event(event);
    }
    std::vector<int> received;
};

class StartServiceWorkerTest : public ::testing::Test {
protected:
    void SetUp() override {
        AppTestApp();
        trace.Clear();
    }

    std::shared_ptr<StartServiceWorker> Make(bool start) {
        StartServiceWorker::Setup setup;
        setup.executor = &executor;
        setup.serviceProgram = [this] { return program; };
        setup.pause = [this](std::chrono::milliseconds duration) {
            std::lock_guard<std::mutex> guard(pausesLock);
            pauses.push_back(duration);
        };
        return std::make_shared<StartServiceWorker>(start, setup, target);
    }

    // Runs a worker to its end and delivers what it posted.
    std::int32_t RunToEnd(const std::shared_ptr<StartServiceWorker>& worker) {
        EXPECT_TRUE(worker->start());
        EXPECT_TRUE(worker->WaitForEnd(10s));
        worker->shutdown();
        QCoreApplication::sendPostedEvents(&receiver);
        return worker->Result();
    }

    std::vector<std::u16string> Lines(std::uint32_t level) {
        return trace.StartingWith(level, u"");
    }

    ScriptedExecutor executor;
    std::optional<stdstr> program = stdstr(u"/usr/lib/quillgate/qgsasvc");
    std::mutex pausesLock;
    std::vector<std::chrono::milliseconds> pauses;
    Receiver receiver;
    std::shared_ptr<GuardedPostTarget> target = std::make_shared<GuardedPostTarget>(&receiver);
    TraceRecorder& trace = TraceRecorder::Instance();
};

} // namespace

TEST_F(StartServiceWorkerTest, ARunThatCouldBeMadeGivesTheExitCodeAfterThePause) {
    executor.code = 3;
    EXPECT_EQ(RunToEnd(Make(true)), 3);
    const auto calls = executor.Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].file, u"/usr/lib/quillgate/qgsasvc");
    EXPECT_EQ(calls[0].parameters, u"-Start");
    EXPECT_TRUE(calls[0].wait);
    EXPECT_TRUE(calls[0].withInfo);
    EXPECT_TRUE(calls[0].withExitCode);
    EXPECT_EQ(calls[0].show, IShellExecutor::SW_HIDE);
    EXPECT_EQ(pauses, std::vector<std::chrono::milliseconds>{5000ms});
    EXPECT_EQ(receiver.received, std::vector<int>{1025});
    EXPECT_EQ(
        Lines(TRACE_DEBUG),
        (std::vector<std::u16string>{
            u"CStartSvcDlg::StartServiceThread(): Calling "
            u"_Module.appShellExecute(/usr/lib/quillgate/qgsasvc, -Start)",
            u"CStartSvcDlg::StartServiceThread(): "
            u"_Module.appShellExecute(/usr/lib/quillgate/qgsasvc, -Start, true), returned 3"}));
    EXPECT_EQ(Lines(TRACE_INFO),
              std::vector<std::u16string>{u"CStartSvcDlg::StartServiceThread(): End"});
    EXPECT_TRUE(Lines(TRACE_ERROR).empty());
}

TEST_F(StartServiceWorkerTest, TheStopWorkerGivesTheStopWord) {
    RunToEnd(Make(false));
    const auto calls = executor.Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].parameters, u"-Stop");
}

TEST_F(StartServiceWorkerTest, ARunThatCouldNotBeMadeGivesOneWithoutAPause) {
    executor.result = false;
    EXPECT_EQ(RunToEnd(Make(true)), 1);
    EXPECT_TRUE(pauses.empty());
    EXPECT_EQ(receiver.received, std::vector<int>{1025});
    EXPECT_EQ(Lines(TRACE_ERROR),
              std::vector<std::u16string>{u"CStartSvcDlg::StartServiceThread(): "
                                          u"_Module.appShellExecute(/usr/lib/quillgate/qgsasvc, "
                                          u"-Start, true), failed"});
    EXPECT_EQ(trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End"), 1u);
}

TEST_F(StartServiceWorkerTest, WithoutTheProgramsPathNothingIsRunOrPosted) {
    program.reset();
    EXPECT_EQ(RunToEnd(Make(true)), 0);
    EXPECT_TRUE(executor.Calls().empty());
    EXPECT_TRUE(receiver.received.empty());
    EXPECT_EQ(Lines(TRACE_ERROR),
              std::vector<std::u16string>{
                  u"Faild to GetModuleFileName in CStartSvcDlg::StartServiceThread"});
    EXPECT_EQ(trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End"), 0u);
}

TEST_F(StartServiceWorkerTest, AfterTheFoundationsExceptionNothingIsPosted) {
    executor.behaviour = [](int*) -> bool {
        throw Corvane::BaseException(u"Test", 1, u"the executable vanished");
    };
    EXPECT_EQ(RunToEnd(Make(true)), 1);
    EXPECT_TRUE(receiver.received.empty());
    EXPECT_EQ(trace.Count(TRACE_ERROR, u"CStartSvcDlg::StartServiceThread(): Exception (the "
                                       u"executable vanished)"),
              1u);
    EXPECT_EQ(trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End"), 1u);
}

TEST_F(StartServiceWorkerTest, AfterAnyOtherExceptionNothingIsPosted) {
    executor.behaviour = [](int*) -> bool { throw std::runtime_error("unexpected"); };
    EXPECT_EQ(RunToEnd(Make(true)), 1);
    EXPECT_TRUE(receiver.received.empty());
    EXPECT_EQ(trace
                  .StartingWith(TRACE_ERROR, u"CStartSvcDlg::StartServiceThread: Unhandled "
                                             u"exception (0x")
                  .size(),
              1u);
    EXPECT_EQ(trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End"), 1u);
}

TEST_F(StartServiceWorkerTest, AWorkerLetGoOfRunsToItsEndByItself) {
    Corvane::Event release;
    std::atomic<bool> finished{false};
    executor.behaviour = [&](int* exitCode) {
        release.wait(10000);
        *exitCode = 0;
        return true;
    };
    StartServiceWorker::Setup setup;
    setup.executor = &executor;
    setup.serviceProgram = [] { return std::optional<stdstr>(u"/svc"); };
    setup.pause = [&](std::chrono::milliseconds) { finished = true; };
    {
        auto worker = std::make_shared<StartServiceWorker>(true, setup, target);
        ASSERT_TRUE(worker->start());
        worker->terminate();
    } // the owner's reference is gone; the thread still runs
    release.set();
    EXPECT_TRUE(TestSupport::WaitFor([&] { return finished.load(); }));
    EXPECT_TRUE(TestSupport::WaitFor(
        [&] { return trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End") == 1u; }));
}

TEST_F(StartServiceWorkerTest, APostAfterTheDialogWentIsDropped) {
    target->Clear();
    RunToEnd(Make(true));
    EXPECT_TRUE(receiver.received.empty());
}
