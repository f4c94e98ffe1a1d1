// The service start and stop dialog on the offscreen platform: its look, its bar, its worker
// and the ways it ends.

#include "app/CStartSvcDlg.h"

#include "AppTestApp.h"
#include "EnglishTexts.h"
#include "ScriptedExecutor.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/Event.h"
#include "mainwindow/DialogUnits.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

namespace {

using namespace std::chrono_literals;

const stdstr StartingText =
    u"The Velloran Quillgate service has not been started.  Please wait while this service is "
    u"automatically started.  This may take a couple of minutes...";
const stdstr StoppingText = u"Please wait while attempting to stop Velloran Quillgate service...";

// A worker that could not be started.
class UnstartableWorker : public StartServiceWorker {
public:
    using StartServiceWorker::StartServiceWorker;
    bool start() override { return false; }
};

// A worker that announces its end and then takes its time to get there.
class SlowEndingWorker : public StartServiceWorker {
public:
    SlowEndingWorker(bool start, const Setup& setup, std::shared_ptr<GuardedPostTarget> target,
                     std::shared_ptr<Corvane::Event> release)
        : StartServiceWorker(start, setup, std::move(target)), m_release(std::move(release)) {}

protected:
    void PostFinished() override {
        StartServiceWorker::PostFinished();
        m_release->wait(20000);
    }

private:
    std::shared_ptr<Corvane::Event> m_release;
};

class CStartSvcDlgTest : public ::testing::Test {
protected:
    void SetUp() override {
        AppTestApp();
        trace.Clear();
        setup.worker.executor = &executor;
        setup.worker.serviceProgram = [] { return std::optional<stdstr>(u"/opt/qg/qgsasvc"); };
        setup.worker.pause = [this](std::chrono::milliseconds duration) {
            std::lock_guard<std::mutex> guard(lock);
            pauses.push_back(duration);
        };
        setup.strings = EnglishText;
        setup.timerPeriod = 2ms;
    }

    // Records every value of the dialog's bar, then runs it modally; a dialog still open
    // after 30 seconds is ended with -99, so that a hang fails the test instead.
    int Run(StartSvcDlgBase& dialog) {
        QObject::connect(dialog.Progress(), &QProgressBar::valueChanged, &dialog,
                         [this](int value) {
                             values.push_back(value);
                             if (value >= ServiceProgress::Limit)
                                 reachedLimit = true;
                         });
        QTimer::singleShot(30s, &dialog, [&dialog] { dialog.done(-99); });
        return dialog.DoModal(nullptr, 0);
    }

    // A pause that lasts until the bar has run up to its limit.
    void PauseUntilTheLimit() {
        setup.worker.pause = [this](std::chrono::milliseconds duration) {
            {
                std::lock_guard<std::mutex> guard(lock);
                pauses.push_back(duration);
            }
            TestSupport::WaitFor([this] { return reachedLimit.load(); });
        };
    }

    StartSvcDlgBase::Setup setup;
    ScriptedExecutor executor;
    std::mutex lock;
    std::vector<std::chrono::milliseconds> pauses;
    std::vector<int> values;
    std::atomic<bool> reachedLimit{false};
    TraceRecorder& trace = TraceRecorder::Instance();
};

} // namespace

TEST_F(CStartSvcDlgTest, TheBarClimbsTo114AndJumpsTo120WhenTheWorkerEnds) {
    executor.code = 0;
    PauseUntilTheLimit();
    CStartSvcDlg<true> dialog(setup);
    EXPECT_EQ(Run(dialog), 0);
    ASSERT_GE(values.size(), 3u);
    EXPECT_EQ(values.back(), 120);
    const int beforeEnd = values[values.size() - 2];
    EXPECT_EQ(beforeEnd, 114);
    for (std::size_t i = 1; i + 1 < values.size(); ++i)
        EXPECT_EQ(values[i], values[i - 1] + 2) << "at " << i;
    EXPECT_EQ(dialog.Progress()->minimum(), 0);
    EXPECT_EQ(dialog.Progress()->maximum(), 120);
    EXPECT_EQ(dialog.Progress()->value(), 120);
    EXPECT_EQ(pauses, std::vector<std::chrono::milliseconds>{5000ms});
}

TEST_F(CStartSvcDlgTest, TheResultIsTheExitCodeOfTheExecutable) {
    executor.code = 5;
    CStartSvcDlg<true> dialog(setup);
    EXPECT_EQ(Run(dialog), 5);
    EXPECT_EQ(trace.Count(TRACE_DEBUG,
                          u"CStartSvcDlg::OnStartServiceFinished(): Starting thread returned (5)"),
              1u);
    EXPECT_EQ(trace.Count(TRACE_ERROR, u"CStartSvcDlg::OnStartServiceFinished(): m_hThread "
                                       u"Failed to close down properly"),
              0u);
}

TEST_F(CStartSvcDlgTest, AnExecutableThatCouldNotBeRunEndsTheDialogWithOne) {
    executor.result = false;
    CStartSvcDlg<true> dialog(setup);
    EXPECT_EQ(Run(dialog), 1);
    EXPECT_TRUE(pauses.empty());
}

TEST_F(CStartSvcDlgTest, TheStartDialogShowsString256AndRunsTheStartWord) {
    CStartSvcDlg<true> dialog(setup);
    Run(dialog);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Quillgate"));
    EXPECT_EQ(dialog.Text()->text(), QString::fromStdU16String(StartingText));
    const auto calls = executor.Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].file, u"/opt/qg/qgsasvc");
    EXPECT_EQ(calls[0].parameters, u"-Start");
}

TEST_F(CStartSvcDlgTest, TheStopDialogShowsString260AndRunsTheStopWord) {
    CStartSvcDlg<false> dialog(setup);
    Run(dialog);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Quillgate"));
    EXPECT_EQ(dialog.Text()->text(), QString::fromStdU16String(StoppingText));
    const auto calls = executor.Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].parameters, u"-Stop");
    // The finish line names the start in both variants.
    EXPECT_EQ(trace.Count(TRACE_DEBUG,
                          u"CStartSvcDlg::OnStartServiceFinished(): Starting thread returned (0)"),
              1u);
}

TEST_F(CStartSvcDlgTest, TheControlsStandWhereTheTemplatePutsThem) {
    CStartSvcDlg<true> dialog(setup);
    const DialogUnits units = DialogUnits::FromFont(dialog.font());
    EXPECT_EQ(dialog.objectName(), QStringLiteral("306"));
    EXPECT_EQ(dialog.size(), QSize(units.ToPixelsX(289), units.ToPixelsY(74)));
    EXPECT_EQ(dialog.Text()->objectName(), QStringLiteral("1018"));
    EXPECT_EQ(dialog.Text()->geometry(), units.ToPixels(QRect(7, 3, 275, 39)));
    EXPECT_EQ(dialog.Progress()->objectName(), QStringLiteral("1019"));
    EXPECT_EQ(dialog.Progress()->geometry(), units.ToPixels(QRect(7, 51, 275, 14)));
    EXPECT_EQ(dialog.font().pointSize(), 8);
}

TEST_F(CStartSvcDlgTest, TheDialogIsWhiteTopmostAndCentred) {
    CStartSvcDlg<true> dialog(setup);
    QPoint centre;
    QPoint screenCentre;
    bool visible = false;
    setup.worker.pause = [](std::chrono::milliseconds) {};
    QObject::connect(dialog.Progress(), &QProgressBar::valueChanged, &dialog, [&](int) {
        if (visible)
            return;
        visible = dialog.isVisible();
        centre = dialog.geometry().center();
        screenCentre = dialog.screen()->availableGeometry().center();
    });
    Run(dialog);
    EXPECT_TRUE(visible);
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(dialog.palette().color(QPalette::Window), QColor(Qt::white));
    EXPECT_LE((centre - screenCentre).manhattanLength(), 2);
}

TEST_F(CStartSvcDlgTest, TheUserCannotCloseTheDialog) {
    Corvane::Event release;
    executor.behaviour = [&release](int* exitCode) {
        release.wait(20000);
        *exitCode = 6;
        return true;
    };
    CStartSvcDlg<true> dialog(setup);
    bool stillOpen = false;
    QTimer::singleShot(20ms, &dialog, [&] {
        QCloseEvent close;
        QCoreApplication::sendEvent(&dialog, &close);
        static_cast<QDialog&>(dialog).reject();
        stillOpen = dialog.isVisible();
        release.set();
    });
    EXPECT_EQ(Run(dialog), 6);
    EXPECT_TRUE(stillOpen);
}

TEST_F(CStartSvcDlgTest, AWorkerThatCannotBeStartedEndsTheDialogWithZeroUnseen) {
    setup.makeWorker = [](bool start, const StartServiceWorker::Setup& workerSetup,
                          std::shared_ptr<GuardedPostTarget> target) {
        return std::make_shared<UnstartableWorker>(start, workerSetup, std::move(target));
    };
    CStartSvcDlg<true> dialog(setup);
    EXPECT_EQ(Run(dialog), 0);
    EXPECT_FALSE(dialog.isVisible());
    // Set to the start of its range, and never run.
    EXPECT_EQ(values, std::vector<int>{0});
    EXPECT_TRUE(executor.Calls().empty());
    EXPECT_EQ(trace.Count(TRACE_DEBUG, u"CStartSvcDlg::OnInitDialog - Failed to create thread."),
              1u);
}

TEST_F(CStartSvcDlgTest, AWorkerThatDoesNotEndWithinTwoSecondsIsLetGoAndTheResultIsMinusOne) {
    auto release = std::make_shared<Corvane::Event>();
    executor.code = 0;
    setup.threadWait = 50ms;
    setup.makeWorker = [release](bool start, const StartServiceWorker::Setup& workerSetup,
                                 std::shared_ptr<GuardedPostTarget> target) {
        return std::make_shared<SlowEndingWorker>(start, workerSetup, std::move(target), release);
    };
    {
        CStartSvcDlg<true> dialog(setup);
        EXPECT_EQ(Run(dialog), -1);
        EXPECT_EQ(dialog.Progress()->value(), 120);
    }
    EXPECT_EQ(trace.Count(TRACE_ERROR, u"CStartSvcDlg::OnStartServiceFinished(): m_hThread "
                                       u"Failed to close down properly"),
              1u);
    EXPECT_TRUE(trace.StartingWith(TRACE_DEBUG, u"CStartSvcDlg::OnStartServiceFinished(): Starting")
                    .empty());
    // The worker was let go, not ended: it finishes by itself once it may.
    EXPECT_EQ(trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End"), 0u);
    release->set();
    EXPECT_TRUE(TestSupport::WaitFor([this] {
        return trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End") == 1u;
    }));
}

TEST_F(CStartSvcDlgTest, AfterAnExceptionTheDialogStaysOpenWithItsBarAtTheLimit) {
    executor.behaviour = [](int*) -> bool { throw Corvane::BaseException(u"Test", 1, u"broken"); };
    CStartSvcDlg<true> dialog(setup);
    bool openAfterWorkerEnded = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &dialog, [&] {
        const bool workerEnded =
            trace.Count(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End") == 1u;
        if (!workerEnded || !reachedLimit)
            return;
        poll.stop();
        // Give a finish message, had there been one, every chance to arrive.
        QTimer::singleShot(200ms, &dialog, [&] {
            openAfterWorkerEnded = dialog.isVisible();
            dialog.done(42); // ended from outside
        });
    });
    poll.start(5ms);
    EXPECT_EQ(Run(dialog), 42);
    EXPECT_TRUE(openAfterWorkerEnded);
    EXPECT_EQ(dialog.Progress()->value(), 114);
    EXPECT_EQ(trace.Count(TRACE_ERROR, u"CStartSvcDlg::StartServiceThread(): Exception (broken)"),
              1u);
}
