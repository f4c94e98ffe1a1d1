// Supervision's dialogs, run for real on the offscreen platform.

#include "app/StartSvcDlgRunner.h"

#include "AppTestApp.h"
#include "EnglishTexts.h"
#include "ScriptedExecutor.h"
#include "support/WaitFor.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <atomic>

namespace {

StartSvcDlgBase::Setup MakeSetup(ScriptedExecutor& executor) {
    StartSvcDlgBase::Setup setup;
    setup.worker.executor = &executor;
    setup.worker.serviceProgram = [] { return std::optional<stdstr>(u"/svc/qgsasvc"); };
    setup.worker.pause = [](std::chrono::milliseconds) {};
    setup.strings = EnglishText;
    return setup;
}

} // namespace

TEST(StartSvcDlgRunner, TheStartDialogRunsTheStartWordAndAnswersTheExitCode) {
    AppTestApp();
    ScriptedExecutor executor;
    executor.code = 9;
    StartSvcDlgRunner runner(MakeSetup(executor));
    EXPECT_EQ(runner.RunServiceDialog(true), 9);
    const auto calls = executor.Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].parameters, u"-Start");
}

TEST(StartSvcDlgRunner, TheStopDialogRunsTheStopWord) {
    AppTestApp();
    ScriptedExecutor executor;
    StartSvcDlgRunner runner(MakeSetup(executor));
    EXPECT_EQ(runner.RunServiceDialog(false), 0);
    const auto calls = executor.Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].parameters, u"-Stop");
}

TEST(StartSvcDlgRunner, TheDialogIsOwnedByTheActiveWindow) {
    AppTestApp();
    QDialog active;
    active.show();
    active.activateWindow();
    const bool activated = QTest::qWaitForWindowActive(&active);
    ScriptedExecutor executor;
    StartSvcDlgBase::Setup setup = MakeSetup(executor);
    QWidget* owner = nullptr;
    std::atomic<bool> seen{false};
    // The pause keeps the dialog up until the probe has seen it.
    setup.worker.pause = [&seen](std::chrono::milliseconds) {
        TestSupport::WaitFor([&seen] { return seen.load(); });
    };
    StartSvcDlgRunner runner(setup);
    QTimer probe;
    QObject::connect(&probe, &QTimer::timeout, [&] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QStringLiteral("306") && widget->isVisible()) {
                owner = widget->parentWidget();
                seen = true;
            }
        }
    });
    probe.start(1);
    runner.RunServiceDialog(true);
    probe.stop();
    ASSERT_TRUE(seen.load());
    if (!activated)
        GTEST_SKIP() << "the platform did not make the window active";
    EXPECT_EQ(owner, &active);
}
