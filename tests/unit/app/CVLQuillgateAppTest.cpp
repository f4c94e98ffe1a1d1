#include "app/CVLQuillgateApp.h"

#include "app/ActivationListener.h"
#include "app/ActivationRequest.h"
#include "app/SandboxMessageBoxes.h"
#include "app/SingleInstanceCheck.h"
#include "foundation/Drive.h"
#include "localisation/QGEntString.h"
#include "mainwindow/CMainDlg.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "toolkit/DialogControl.h"
#include "toolkit/PrivateMessageEvent.h"

#include "AppTestApp.h"
#include "EnglishTranslation.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QMenu>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <memory>
#include <sstream>
#include <vector>

namespace {

// Every box of the object under test is recorded in the sandbox (see SandboxMessageBoxes).
class CVLQuillgateAppTest : public ::testing::Test {
protected:
    void SetUp() override {
        AppTestApp();
        TraceRecorder::Instance().Clear();
        ::setenv(SandboxMessageBoxes::LogVariable, boxFile.c_str(), 1);
        sandbox.writeFile("var/lib/velloran/quillgate/QGConfig.ini",
                          "[SYSTEM]\nFirstRun=0\nFilterOn=1\nHistoryDays=12\nLanguage=1036\n");
        app = std::make_unique<CVLQuillgateApp>();
    }
    void TearDown() override {
        if (window)
            window.reset();
        app.reset();
        ::unsetenv(SandboxMessageBoxes::LogVariable);
    }

    std::vector<std::string> Boxes() const {
        std::istringstream text(TestSupport::SandboxRoot::readFile(boxFile));
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

    // A main window that is registered but not set up: it handles the private messages.
    CMainDlg& Window() {
        window = std::make_unique<CMainDlg>(*app);
        app->SetMainWindow(window.get());
        return *window;
    }

    std::size_t Traced(std::uint32_t level, const std::u16string& text) {
        return TraceRecorder::Instance().Count(level, text);
    }

    TestSupport::SandboxRoot sandbox;
    std::string boxFile = sandbox.file("boxes.txt");
    std::unique_ptr<CVLQuillgateApp> app;
    std::unique_ptr<CMainDlg> window;
};

TEST_F(CVLQuillgateAppTest, TheSettingsAreReadWhenTheObjectIsMade) {
    EXPECT_EQ(app->GetSettings().GetHistoryDays(), 12);
    EXPECT_EQ(app->GetInfoValue(258, 0), 12);
    EXPECT_EQ(app->GetInfoValue(5, 0), 1);
    const auto* language = reinterpret_cast<const char16_t*>(app->GetInfoValue(260, 0));
    EXPECT_EQ(std::u16string(language), u"1036");
}

TEST_F(CVLQuillgateAppTest, ThePlugInsSetRequestsReachTheSettings) {
    app->SetInfoValue(256, 0);
    app->SetInfoValue(257, 9);
    const std::u16string path = u"/srv/quillgate";
    app->SetInfoValue(259, reinterpret_cast<std::intptr_t>(path.c_str()));

    EXPECT_EQ(app->GetSettings().GetAutoUpgrade(), 0);
    EXPECT_EQ(app->GetSettings().GetUpgradePeriod(), 9);
    EXPECT_EQ(app->GetSettings().GetConfigPath(), path);
}

TEST_F(CVLQuillgateAppTest, TheUpdateActionIsKept) {
    app->SetInfoValue(4, 3);
    EXPECT_EQ(app->UpdateAction(), 3);
    EXPECT_EQ(app->GetInfoValue(9, 0), 3);
}

TEST_F(CVLQuillgateAppTest, TheDriveTypeGivesTheAboutBoxesText) {
    Corvane::Drive drive;
    drive.type = Corvane::DRIVE_CDROM;
    EXPECT_EQ(app->DriveTypeText(drive), u"DVD/CD-RW Drive");
    drive.type = Corvane::DRIVE_RAMDISK;
    EXPECT_EQ(app->DriveTypeText(drive), u"RAM Disk");
    drive.type = Corvane::DRIVE_UNKNOWN;
    EXPECT_EQ(app->DriveTypeText(drive), u"Unknown");
}

TEST_F(CVLQuillgateAppTest, ABoxByIdShowsBothTranslatedTexts) {
    app->MessageBoxById(nullptr, 177, 129, 0x30);
    EXPECT_EQ(Boxes(), (std::vector<std::string>{"30|Quillgate|Removable Drive"}));
}

TEST_F(CVLQuillgateAppTest, TurningFilteringOffAsksAndANoChangesNothing) {
    Window();

    EXPECT_FALSE(app->SetFilterState(1));

    EXPECT_EQ(Boxes(),
              (std::vector<std::string>{
                  "10034|Quillgate|Are you sure you want to stop filtering spam emails?"}));
    EXPECT_EQ(app->GetSettings().GetFilterOn(), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(TraceRecorder::Instance()
                  .StartingWith(TRACE_DEBUG, u"CVLQuillgateApp::ShowFilterState")
                  .size(),
              0u);
}

TEST_F(CVLQuillgateAppTest, TurningFilteringOnAsksNothingAndTellsTheWindow) {
    Window();
    app->SetNumber(IInfoValueHost::Number::FilterOn, 0);

    EXPECT_TRUE(app->SetFilterState(0));

    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(app->GetSettings().GetFilterOn(), 1);
    // Posted, not sent: the window sees it when its events run.
    EXPECT_EQ(Traced(TRACE_DEBUG,
                     u"CVLQuillgateApp::ShowFilterState(1) - the tray icon is not built yet"),
              0u);
    QCoreApplication::processEvents();
    EXPECT_EQ(Traced(TRACE_DEBUG,
                     u"CVLQuillgateApp::ShowFilterState(1) - the tray icon is not built yet"),
              1u);
}

TEST_F(CVLQuillgateAppTest, TheTrayAnimationIsAskedForWithMessage1054) {
    Window();

    app->StartTrayAnimation();
    app->StopTrayAnimation();
    QCoreApplication::processEvents();

    EXPECT_EQ(TraceRecorder::Instance().StartingWith(TRACE_DEBUG, u"CVLQuillgateApp::AnimateTray"),
              (std::vector<std::u16string>{
                  u"CVLQuillgateApp::AnimateTray(1) - the tray icon is not built yet",
                  u"CVLQuillgateApp::AnimateTray(0) - the tray icon is not built yet"}));
}

TEST_F(CVLQuillgateAppTest, WithoutAWindowTheTrayAnimationGoesNowhere) {
    app->StartTrayAnimation();
    QCoreApplication::processEvents();
    EXPECT_TRUE(TraceRecorder::Instance()
                    .StartingWith(TRACE_DEBUG, u"CVLQuillgateApp::AnimateTray")
                    .empty());
    EXPECT_EQ(app->GetMainWindow(), nullptr);
}

TEST_F(CVLQuillgateAppTest, Message1059EndsTheLoopWithOne) {
    CMainDlg& dlg = Window();
    PrivateMessageEvent::Post(&dlg, WM_QG_EXIT);

    EXPECT_EQ(QApplication::exec(), 1);

    EXPECT_TRUE(app->IsExiting());
    EXPECT_TRUE(dlg.IsDestroyed());
    // The service is stopped at exit; in this sandbox it is not even installed, which is
    // shown, and the exit goes on.
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].rfind("0|Quillgate|Failed to find Velloran Quillgate Service", 0), 0u);
}

TEST_F(CVLQuillgateAppTest, Message1048EndsTheLoopWithZero) {
    CMainDlg& dlg = Window();
    PrivateMessageEvent::Post(&dlg, WM_QG_EXIT_QUIET);

    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(dlg.IsDestroyed());
}

TEST_F(CVLQuillgateAppTest, TheEndOfTheLoopComesBehindWhatIsQueuedAlready) {
    CMainDlg& dlg = Window();
    PrivateMessageEvent::Post(&dlg, WM_QG_EXIT);
    // Queued before the exit sequence runs; the window's own messages would be dropped by
    // then, since the sequence destroys the window.
    bool queuedRan = false;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { queuedRan = true; }, Qt::QueuedConnection);

    EXPECT_EQ(QApplication::exec(), 1);
    EXPECT_TRUE(queuedRan);
}

TEST_F(CVLQuillgateAppTest, WithoutTheServiceInitShowsWhyAndFails) {
    ILocalizer* translator = QGEntString::m_pLocalizer.load();

    EXPECT_EQ(app->Init(), CVLQuillgateApp::E_FAIL);

    QGEntString::m_pLocalizer.store(translator);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_NE(Boxes()[0].find("Failed to find Velloran Quillgate Service"), std::string::npos);
    EXPECT_EQ(Traced(TRACE_DEBUG, u"Init - start"), 1u);
    EXPECT_EQ(Traced(TRACE_DEBUG, u"Init - ended"), 0u);
    EXPECT_FALSE(app->GetExePath().empty());
    EXPECT_EQ(app->GetExeFolder() + u"/" +
                  stdstr(app->GetExePath().substr(app->GetExeFolder().size() + 1)),
              app->GetExePath());
    app->Term();
}

TEST_F(CVLQuillgateAppTest, TheFirstCopysWindowCanBeRaisedByASecondCopy) {
    ASSERT_TRUE(app->CheckSingleInstance());
    ASSERT_TRUE(app->IsFirstCopy());
    CMainDlg& dlg = Window();
    dlg.setWindowTitle(SingleInstanceCheck::MainWindowTitle());
    ASSERT_FALSE(dlg.isVisible());

    auto answer = std::async(std::launch::async, [] {
        return ActivationRequest::AskFirstCopy(SingleInstanceCheck::MainWindowTitle(),
                                               "raise-token",
                                               ActivationListener::DefaultSocketPath());
    });
    TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return answer.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
    });

    EXPECT_EQ(answer.get(), ActivationRequest::Answer::Shown);
    EXPECT_TRUE(dlg.isVisible());
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("raise-token"));
    EXPECT_EQ(Traced(TRACE_DEBUG, u"CVLQuillgateApp::ShowForSecondCopy - main window shown"), 1u);
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(CVLQuillgateAppTest, ADestroyedWindowIsNotRaised) {
    ASSERT_TRUE(app->CheckSingleInstance());
    CMainDlg& dlg = Window();
    dlg.setWindowTitle(SingleInstanceCheck::MainWindowTitle());
    dlg.DestroyWindow();

    auto answer = std::async(std::launch::async, [] {
        return ActivationRequest::AskFirstCopy(SingleInstanceCheck::MainWindowTitle(), QByteArray(),
                                               ActivationListener::DefaultSocketPath());
    });
    TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return answer.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
    });

    EXPECT_EQ(answer.get(), ActivationRequest::Answer::NoWindow);
    EXPECT_FALSE(dlg.isVisible());
}

TEST_F(CVLQuillgateAppTest, OnlyAWindowWithTheUntranslatedTitleIsRaised) {
    ASSERT_TRUE(app->CheckSingleInstance());
    CMainDlg& dlg = Window();
    // What a second copy asks for is string 128 as the table has it, whatever the language.
    ASSERT_FALSE(SingleInstanceCheck::MainWindowTitle().isEmpty());
    dlg.setWindowTitle(SingleInstanceCheck::MainWindowTitle() + QStringLiteral(" (fr)"));

    auto answer = std::async(std::launch::async, [] {
        return ActivationRequest::AskFirstCopy(SingleInstanceCheck::MainWindowTitle(), QByteArray(),
                                               ActivationListener::DefaultSocketPath());
    });
    TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return answer.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
    });

    EXPECT_EQ(answer.get(), ActivationRequest::Answer::NoWindow);
    EXPECT_FALSE(dlg.isVisible());
}

// The service's "traffic layer failed" message, which tells when the pump has taken it.
class WatchedLspError : public enumMSG_LSP_ERROR_Message {
public:
    explicit WatchedLspError(std::atomic<bool>& taken) : m_taken(taken) {}
    std::uint32_t GetId() const override {
        m_taken = true;
        return Id;
    }

private:
    std::atomic<bool>& m_taken;
};

TEST_F(CVLQuillgateAppTest, ThePumpEndsWithTheWindowSystemAndABoxItWaitsForIsNotShown) {
    std::atomic<bool> taken{false};
    ASSERT_TRUE(app->GetMsgHandler().StartThread());
    // No main window: the pump asks this thread for the box and waits; this thread runs no
    // loop, as after the program's loop has ended.
    app->GetMsgHandler().Enqueue(std::make_unique<WatchedLspError>(taken));
    ASSERT_TRUE(TestSupport::WaitFor([&] { return taken.load(); }));

    app->ReleaseWindowSystemParts();

    EXPECT_EQ(Traced(TRACE_DEBUG, u"CMsgHandler::ManagerProc get exit event"), 1u);
    // Nothing is shown now, nor later when events are run again.
    QCoreApplication::processEvents();
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(CVLQuillgateAppTest, WithoutTheInstanceCheckNobodyListens) {
    Window();
    EXPECT_FALSE(app->IsFirstCopy());
    EXPECT_EQ(ActivationRequest::AskFirstCopy(SingleInstanceCheck::MainWindowTitle(), QByteArray(),
                                              ActivationListener::DefaultSocketPath(), 500),
              ActivationRequest::Answer::NoAnswer);
}

TEST_F(CVLQuillgateAppTest, AControlIsGrownAndMovedByItsNumber) {
    QWidget dialog;
    dialog.move(100, 200);
    auto* control = new QWidget(&dialog);
    DialogControl::SetId(control, 1005);
    control->setGeometry(10, 20, 30, 40);

    CVLQuillgateApp::ResizeControl(&dialog, 1005, 4, 6);
    EXPECT_EQ(control->geometry(), QRect(10, 20, 36, 44));

    CVLQuillgateApp::MoveControl(&dialog, 1005, 3, 7, true);
    EXPECT_EQ(control->pos(), QPoint(17, 17));

    // Without the conversion the screen position is taken as the client position.
    const QPoint screen = control->mapToGlobal(QPoint(0, 0));
    CVLQuillgateApp::MoveControl(&dialog, 1005, 3, 7, false);
    EXPECT_EQ(control->pos(), screen + QPoint(7, -3));

    // A number that no control has changes nothing.
    CVLQuillgateApp::MoveControl(&dialog, 9999, 3, 7, true);
    CVLQuillgateApp::ResizeControl(&dialog, 9999, 3, 7);
    EXPECT_EQ(control->pos(), screen + QPoint(7, -3));
}

TEST_F(CVLQuillgateAppTest, TheLaterWorkSaysItIsNotBuilt) {
    CMainDlg& dlg = Window();
    app->ShowAbout(dlg);
    app->OpenHomePage();
    app->RunFreshUpdate(2);

    EXPECT_EQ(Traced(TRACE_DEBUG, u"CVLQuillgateApp::ShowAbout (About box) - not built yet"), 1u);
    EXPECT_EQ(Traced(TRACE_DEBUG, u"CVLQuillgateApp::OpenHomePage (QGUrls) - not built yet"), 1u);
    EXPECT_EQ(Traced(TRACE_DEBUG, u"CVLQuillgateApp::RunFreshUpdate(2) - the update launcher "
                                  u"is not built yet"),
              1u);
    EXPECT_TRUE(Boxes().empty());
}

} // namespace
