// Supervision of the real reference service (qgsasvc) in a sandbox root: the start dialog
// runs the real executable on the offscreen platform, and the service's state is read by the
// file backend from its unit and pid files.

#include "ServiceSandbox.h"

#include "app/AppShellExecutor.h"
#include "app/GuiThreadMessageBoxes.h"
#include "app/ServiceManagerQueries.h"
#include "app/ServiceProgram.h"
#include "app/ServiceSupervisor.h"
#include "app/StartSvcDlgRunner.h"
#include "service/PidFile.h"
#include "service/ServicePaths.h"
#include "support/TraceRecorder.h"
#include "unit/app/AppTestApp.h"
#include "unit/app/EnglishTexts.h"
#include "unit/app/RecordingBoxes.h"
#include "unit/app/ScriptFiles.h"

#include <QLabel>
#include <QWidget>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <unistd.h>

namespace {

const stdstr StartingText =
    u"The Velloran Quillgate service has not been started.  Please wait while this service is "
    u"automatically started.  This may take a couple of minutes...";
const stdstr StoppingText = u"Please wait while attempting to stop Velloran Quillgate service...";
const stdstr NotFoundText = u"Failed to find Velloran Quillgate Service, please ensure you have "
                            u"installed Quillgate successfully.";
const stdstr StartFailedText = u"Failed to start Velloran Quillgate service, unable to run "
                               u"Quillgate, please contace your administrator.";

// Sees every start or stop dialog (dialog 306) that comes up, with its title and text.
class DialogWatcher : public QObject {
public:
    struct Seen {
        QString title;
        QString text;
    };

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == QStringLiteral("306")) {
            auto* dialog = static_cast<QWidget*>(watched);
            auto* text = dialog->findChild<QLabel*>(QStringLiteral("1018"));
            seen.push_back(Seen{dialog->windowTitle(), text ? text->text() : QString()});
        }
        return false;
    }

    std::vector<Seen> seen;
};

class ServiceSupervisionTest : public ServiceSandbox {
protected:
    void SetUp() override {
        QApplication& app = AppTestApp();
        app.installEventFilter(&watcher);
        trace.Clear();
        const char* program = std::getenv(ServiceProgram::OverrideVariable);
        if (program)
            m_savedProgram = program;
        UseServiceProgram(QGSASVC_PATH);
    }

    void TearDown() override {
        AppTestApp().removeEventFilter(&watcher);
        if (m_savedProgram)
            ::setenv(ServiceProgram::OverrideVariable, m_savedProgram->c_str(), 1);
        else
            ::unsetenv(ServiceProgram::OverrideVariable);
        ServiceSandbox::TearDown();
    }

    void Install() {
        sandbox.writeFile("etc/systemd/system/VelloranQuillgateSvc.service",
                          "[Unit]\nDescription=Velloran Quillgate filter service\n");
    }

    static void UseServiceProgram(const std::string& path) {
        ::setenv(ServiceProgram::OverrideVariable, path.c_str(), 1);
    }

    // Supervision as the application wires it, with a fast clock and the pause after a run
    // left out.
    bool EnsureRunning(bool showMainWindow, bool elevate = false) {
        AppShellExecutor executor(guiBoxes, EnglishText, [elevate] { return elevate; });
        StartSvcDlgRunner runner(DialogSetup(executor));
        ServiceSupervisor supervisor(
            Queries(), guiBoxes, runner, [showMainWindow] { return showMainWindow; }, FastSleep(),
            EnglishText);
        return supervisor.EnsureServiceRunning();
    }

    bool Stop() {
        AppShellExecutor executor(guiBoxes, EnglishText, [] { return false; });
        StartSvcDlgRunner runner(DialogSetup(executor));
        ServiceSupervisor supervisor(
            Queries(), guiBoxes, runner, [] { return true; }, FastSleep(), EnglishText);
        return supervisor.StopFilterService();
    }

    static bool ServiceRunning() {
        const PidFile::Observation seen = PidFile::observe(ServicePaths::PidFile());
        return seen.locked && seen.state == PidFile::State::Running;
    }

    void ExpectOneBox(const stdstr& text) {
        const auto shown = boxes.Boxes();
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(shown[0].text, text);
        EXPECT_EQ(shown[0].caption, u"Quillgate");
        EXPECT_EQ(shown[0].type, 0u);
    }

    RecordingBoxes boxes;
    GuiThreadMessageBoxes guiBoxes{boxes};
    DialogWatcher watcher;
    int waits = 0;
    TraceRecorder& trace = TraceRecorder::Instance();

private:
    static ServiceSupervisor::QueriesFactory Queries() {
        return [] { return std::make_unique<ServiceManagerQueries>(); };
    }

    SleepFunction FastSleep() {
        return [this](std::chrono::milliseconds) { ++waits; };
    }

    static StartSvcDlgBase::Setup DialogSetup(IShellExecutor& executor) {
        StartSvcDlgBase::Setup setup;
        setup.worker.executor = &executor;
        setup.worker.serviceProgram = ServiceProgram::Path;
        setup.worker.pause = [](std::chrono::milliseconds) {};
        setup.strings = EnglishText;
        return setup;
    }

    std::optional<std::string> m_savedProgram;
};

} // namespace

TEST_F(ServiceSupervisionTest, ANormalStartWithTheServiceStoppedShowsTheStartDialogAndStartsIt) {
    Install();
    ASSERT_FALSE(ServiceRunning());
    EXPECT_TRUE(EnsureRunning(true));
    EXPECT_TRUE(ServiceRunning());
    ASSERT_EQ(watcher.seen.size(), 1u);
    EXPECT_EQ(watcher.seen[0].title, QStringLiteral("Quillgate"));
    EXPECT_EQ(watcher.seen[0].text, QString::fromStdU16String(StartingText));
    EXPECT_EQ(waits, 0);
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_EQ(trace.Count(TRACE_DEBUG,
                          u"CStartSvcDlg::StartServiceThread(): Calling _Module.appShellExecute(" +
                              stdstr::toTString(QGSASVC_PATH) + u", -Start)"),
              1u);
    EXPECT_EQ(trace.Count(TRACE_DEBUG,
                          u"CStartSvcDlg::OnStartServiceFinished(): Starting thread returned (0)"),
              1u);
}

TEST_F(ServiceSupervisionTest, ARunningServiceIsLeftAlone) {
    Install();
    start();
    const pid_t pid = servicePid();
    EXPECT_TRUE(EnsureRunning(true));
    EXPECT_TRUE(watcher.seen.empty());
    EXPECT_EQ(servicePid(), pid);
}

TEST_F(ServiceSupervisionTest, ASilentStartWaitsAndThenStartsTheService) {
    Install();
    EXPECT_TRUE(EnsureRunning(false));
    EXPECT_EQ(waits, 91);
    EXPECT_EQ(trace.Count(TRACE_INFO, u"Wait Service to start"), 91u);
    EXPECT_EQ(watcher.seen.size(), 1u);
    EXPECT_TRUE(ServiceRunning());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisionTest, AServiceStillStartingCountsAsGoodEnough) {
    Install();
    PidFile starting(ServicePaths::PidFile());
    std::string error;
    ASSERT_TRUE(starting.acquire(error)) << error;
    ASSERT_TRUE(starting.write(::getpid(), PidFile::State::Starting));
    EXPECT_TRUE(EnsureRunning(true));
    EXPECT_TRUE(watcher.seen.empty());
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_EQ(waits, 0);
}

TEST_F(ServiceSupervisionTest, AServiceThatIsNotInstalledShowsString254) {
    EXPECT_FALSE(EnsureRunning(true));
    ExpectOneBox(NotFoundText);
    EXPECT_TRUE(watcher.seen.empty());
    EXPECT_FALSE(ServiceRunning());
}

TEST_F(ServiceSupervisionTest, AStartThatFailsShowsString255) {
    Install();
    UseServiceProgram(WriteScript(sandbox, "bin/failing-qgsasvc", "exit 1\n"));
    EXPECT_FALSE(EnsureRunning(true));
    EXPECT_EQ(watcher.seen.size(), 1u);
    ExpectOneBox(StartFailedText);
    EXPECT_FALSE(ServiceRunning());
    EXPECT_EQ(trace.Count(TRACE_DEBUG,
                          u"CStartSvcDlg::OnStartServiceFinished(): Starting thread returned (1)"),
              1u);
}

TEST_F(ServiceSupervisionTest, AnExecutableThatCannotBeRunShowsItsBoxAndThenString255) {
    Install();
    const std::string missing = sandbox.file("bin/no-such-qgsasvc");
    UseServiceProgram(missing);
    EXPECT_FALSE(EnsureRunning(true));
    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].text,
              u"Failed to run ShellExecuteEx(" + stdstr::toTString(missing) + u"), error 2.");
    EXPECT_EQ(shown[0].caption, u"Quillgate Error");
    // Asked for on the dialog's worker, shown on the GUI thread.
    EXPECT_EQ(shown[0].thread, AppTestApp().thread());
    EXPECT_EQ(shown[1].text, StartFailedText);
}

TEST_F(ServiceSupervisionTest, ADeclinedElevationShowsNoBoxOfItsOwnAndThenString255) {
    Install();
    const std::string record = sandbox.file("pkexec-args");
    WriteFakePkexec(sandbox, 126, record);
    const PathFront path(sandbox.file("bin"));
    EXPECT_FALSE(EnsureRunning(true, true));
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(record), std::string(QGSASVC_PATH) + "\n-Start\n");
    ExpectOneBox(StartFailedText);
    EXPECT_FALSE(ServiceRunning());
    EXPECT_EQ(trace.Count(TRACE_DEBUG, u"VLTFWApp::appShellExecute(" +
                                           stdstr::toTString(QGSASVC_PATH) +
                                           u", -Start): Failed with error (" +
                                           stdstr::toTString(std::to_string(ECANCELED)) + u")"),
              1u);
}

TEST_F(ServiceSupervisionTest, AnAcceptedElevationStartsTheServiceThroughPkexec) {
    Install();
    const std::string record = sandbox.file("pkexec-args");
    WriteFakePkexec(sandbox, -1, record);
    const PathFront path(sandbox.file("bin"));
    EXPECT_TRUE(EnsureRunning(true, true));
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(record), std::string(QGSASVC_PATH) + "\n-Start\n");
    EXPECT_TRUE(ServiceRunning());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisionTest, ExitStopsTheRunningServiceWithTheStopDialog) {
    Install();
    start();
    ASSERT_TRUE(ServiceRunning());
    EXPECT_TRUE(Stop());
    ASSERT_EQ(watcher.seen.size(), 1u);
    EXPECT_EQ(watcher.seen[0].text, QString::fromStdU16String(StoppingText));
    EXPECT_FALSE(serviceLocked());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(ServiceSupervisionTest, ExitWithTheServiceAlreadyStoppedShowsNoDialog) {
    Install();
    EXPECT_TRUE(Stop());
    EXPECT_TRUE(watcher.seen.empty());
    EXPECT_TRUE(boxes.Boxes().empty());
}
