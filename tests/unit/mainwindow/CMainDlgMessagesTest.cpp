// The main window's handlers: private messages, buttons, menus, section switches, hints and
// the look at the program's input before delivery.

#include "MainDlgFixture.h"

#include "FakeLocalizer.h"
#include "foundation/TraceLevels.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "toolkit/CLabel.h"
#include "toolkit/ColorRef.h"
#include "toolkit/PrivateMessages.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>

namespace {

// Writes down the key presses and right button releases that reach an object.
class InputRecorder : public QObject {
public:
    int returns = 0;
    int rightReleases = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Return)
            ++returns;
        if (event->type() == QEvent::MouseButtonRelease &&
            static_cast<QMouseEvent*>(event)->button() == Qt::RightButton)
            ++rightReleases;
        return false;
    }
};

PrivateMessageEvent::WParam Handle(const QObject* object) {
    return PrivateMessageEvent::Handle(object);
}

} // namespace

class CMainDlgMessagesTest : public MainDlgFixture {};

// ---- Sections ----

TEST_F(CMainDlgMessagesTest, ASwitchTellsThePageItsSizeBeforeShowingIt) {
    MakeShown();
    log.lines.clear();
    Click(ButtonById(1001));
    const std::string size =
        " " + std::to_string(dlg->width()) + " " + std::to_string(dlg->height());
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"plugin ResizePage 100" + size, "plugin ShowPage 100 1"}));
    EXPECT_EQ(dlg->Pages().CurrentKey(), 1);
    EXPECT_TRUE(ButtonById(1001)->GetCheckState());
    EXPECT_FALSE(ButtonById(1000)->GetCheckState());
    EXPECT_TRUE(dlg->AddressListPage()->isVisible());

    log.lines.clear();
    Click(ButtonById(1003));
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"plugin ResizePage 108" + size, "plugin ShowPage 108 1"}));
    log.lines.clear();
    Click(ButtonById(1000));
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"plugin ResizePage 109" + size, "plugin ShowPage 109 1"}));
    EXPECT_TRUE(dlg->StatusPage()->isVisible());
    EXPECT_FALSE(dlg->SettingsPage()->isVisible());
}

TEST_F(CMainDlgMessagesTest, ClickingTheCurrentSectionsButtonReselectsItWithoutASwitch) {
    MakeShown();
    Click(ButtonById(1001));
    log.lines.clear();

    Click(ButtonById(1001));

    EXPECT_TRUE(log.lines.empty());
    EXPECT_EQ(dlg->Pages().CurrentKey(), 1);
    EXPECT_TRUE(ButtonById(1001)->GetCheckState());
    EXPECT_FALSE(ButtonById(1000)->GetCheckState());
}

TEST_F(CMainDlgMessagesTest, TheWindowOpensOnTheStatusPageSoItsButtonSwitchesNothing) {
    MakeShown();
    EXPECT_EQ(dlg->Pages().CurrentKey(), 0);
    EXPECT_TRUE(dlg->StatusPage()->isVisible());
    EXPECT_FALSE(dlg->SettingsPage()->isVisible());
    log.lines.clear();

    Click(ButtonById(1000));

    EXPECT_TRUE(log.lines.empty());
    EXPECT_TRUE(ButtonById(1000)->GetCheckState());
}

TEST_F(CMainDlgMessagesTest, ASectionWhosePageWasNotMadeOnlySelectsItsButton) {
    plugin.failingPages = {0};
    MakeShown();
    EXPECT_EQ(dlg->AddressListPage(), nullptr);
    log.lines.clear();
    Click(ButtonById(1001));
    EXPECT_TRUE(log.lines.empty());
    EXPECT_TRUE(ButtonById(1001)->GetCheckState());
}

TEST_F(CMainDlgMessagesTest, AboutSelectsItsButtonAndShowsTheAboutBox) {
    MakeShown();
    Click(ButtonById(1017));
    EXPECT_EQ(log.StartingWith("ShowAbout").size(), 1u);
    EXPECT_TRUE(ButtonById(1017)->GetCheckState());
    EXPECT_FALSE(ButtonById(1000)->GetCheckState());
    EXPECT_TRUE(log.StartingWith("plugin ShowPage").empty());
}

TEST_F(CMainDlgMessagesTest, SetCodeEightActsAsTheAddressListButton) {
    MakeShown();
    Click(ButtonById(1000));
    log.lines.clear();
    Send(WM_QG_SET_INFO, 8, 0);
    EXPECT_EQ(log.StartingWith("plugin ShowPage"),
              std::vector<std::string>{"plugin ShowPage 100 1"});
    EXPECT_TRUE(log.StartingWith("host Command").empty());
    EXPECT_TRUE(ButtonById(1001)->GetCheckState());
}

TEST_F(CMainDlgMessagesTest, TheSetAndGetRequestsAnswerThroughTheSettings) {
    Make();
    host.numbers[IInfoValueHost::Number::FilterOn] = 0;
    EXPECT_EQ(Send(WM_QG_GET_INFO, 5, 0), 0);
    host.numbers[IInfoValueHost::Number::FilterOn] = 1;
    EXPECT_EQ(Send(WM_QG_GET_INFO, 5, 0), 1);
    Send(WM_QG_SET_INFO, 261, 0);
    EXPECT_EQ(log.lines.back(), "NotifyService");
    EXPECT_EQ(Send(WM_QG_SET_INFO, 7, 1), 1);
    EXPECT_EQ(log.lines.back(), "SetFilterState 1");
}

// ---- Window buttons and menus ----

TEST_F(CMainDlgMessagesTest, MaximiseAndRestoreSwapTheirButtons) {
    MakeShown();
    Click(ButtonById(1006));
    EXPECT_TRUE(WaitFor([&] { return dlg->isMaximized(); }));
    EXPECT_FALSE(ButtonById(1011)->isHidden());
    EXPECT_TRUE(ButtonById(1006)->isHidden());
    Click(ButtonById(1011));
    EXPECT_TRUE(WaitFor([&] { return !dlg->isMaximized(); }));
    EXPECT_FALSE(ButtonById(1006)->isHidden());
    EXPECT_TRUE(ButtonById(1011)->isHidden());
}

TEST_F(CMainDlgMessagesTest, MinimiseCloseAndUpdateButtons) {
    MakeShown();
    Click(ButtonById(1007));
    EXPECT_EQ(log.lines.back(), "HideToTray");
    Click(ButtonById(1008));
    EXPECT_EQ(log.lines.back(), "RunFreshUpdate 0");
    Click(ButtonById(1005));
    EXPECT_TRUE(WaitFor([&] { return dlg->isMinimized(); }));
}

TEST_F(CMainDlgMessagesTest, ClosingTheWindowHidesItToTheTrayAndNeverEndsTheProgram) {
    MakeShown();
    log.lines.clear();
    dlg->close();
    EXPECT_EQ(log.lines, std::vector<std::string>{"HideToTray"});
    EXPECT_TRUE(dlg->isVisible());
}

TEST_F(CMainDlgMessagesTest, TheHelpButtonOpensTheMenuAtItsLowerLeft) {
    MakeShown();
    QMenu* menu = dlg->HelpMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->isVisible());
    Click(ButtonById(1009));
    ASSERT_TRUE(WaitFor([&] { return menu->isVisible(); }));
    const CDibButtonCtrl* help = ButtonById(1009);
    EXPECT_EQ(dlg->HelpMenuAnchor(), help->mapToGlobal(QPoint(0, help->height())));
    // Below the button there is room: only a screen edge moves the menu, and only sideways.
    EXPECT_EQ(menu->y(), dlg->HelpMenuAnchor().y());
    EXPECT_LE(menu->x(), dlg->HelpMenuAnchor().x());
    menu->close();
}

TEST_F(CMainDlgMessagesTest, TheHelpMenusItemsReachTheirCommands) {
    Make();
    const std::vector<std::pair<QString, std::string>> items = {
        {"32782", "OpenHelpContents"},
        {"32783", "OpenSupportPage"},
        {"32784", "OpenHomePage"},
        {"32785", "ShowAbout"},
    };
    for (const auto& [name, call] : items) {
        auto* action = dlg->HelpMenu()->findChild<QAction*>(name);
        if (action == nullptr) {
            for (QAction* candidate : dlg->HelpMenu()->actions()) {
                if (candidate->objectName() == name)
                    action = candidate;
            }
        }
        ASSERT_NE(action, nullptr) << name.toStdString();
        action->trigger();
        EXPECT_EQ(log.lines.back(), call);
    }
    Send(WM_QG_HELP);
    EXPECT_EQ(log.lines.back(), "OpenHelpContents");
}

TEST_F(CMainDlgMessagesTest, FilterCommandsAskTheApplicationAndRefreshTheStatusPage) {
    Make();
    ASSERT_TRUE(WaitForLine("page9 got 1031 0"));
    log.lines.clear();
    dlg->Command(CMainDlg::CommandFilterOn);
    EXPECT_EQ(log.lines, std::vector<std::string>{"SetFilterState 0"});
    ASSERT_TRUE(WaitForLine("page9 got 1032 0"));
    // Answering no leaves the filter alone, yet the page still looks again.
    host.filterStateAnswer = false;
    log.lines.clear();
    dlg->Command(CMainDlg::CommandFilterOff);
    EXPECT_EQ(log.lines, std::vector<std::string>{"SetFilterState 1"});
    EXPECT_TRUE(WaitForLine("page9 got 1032 0"));
}

TEST_F(CMainDlgMessagesTest, OpenFromTheTrayShowsTheWindow) {
    Make();
    EXPECT_FALSE(dlg->isVisible());
    dlg->Command(CMainDlg::CommandOpen);
    EXPECT_TRUE(dlg->isVisible());
}

TEST_F(CMainDlgMessagesTest, ExitFromTheTrayHidesRemovesTheIconAndExits) {
    MakeShown();
    log.lines.clear();
    dlg->Command(CMainDlg::CommandExit);
    EXPECT_FALSE(dlg->isVisible());
    EXPECT_EQ(log.lines, (std::vector<std::string>{"RemoveTrayIcon", "ExitProgram 1"}));
}

// ---- Private messages ----

TEST_F(CMainDlgMessagesTest, MessagesOfTheApplicationAndThePlugin) {
    Make();
    log.lines.clear();
    Send(WM_QG_RUN_UPDATE, 2);
    Send(WM_QG_TRAY_ANIMATE, 1);
    Send(WM_QG_TRAY_ANIMATE, 0);
    Send(WM_QG_TRAY_ANIMATE, 7);
    Send(WM_QG_FILTER_STATE, 0);
    Send(WM_QG_SHOW_SUMMARY);
    Send(WM_QG_EXIT_QUIET);
    Send(WM_QG_EXIT);
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"RunFreshUpdate 2", "AnimateTray start", "AnimateTray stop",
                                        "AnimateTray stop", "ShowFilterState 0", "ShowSummary",
                                        "ExitProgram 0", "ExitProgram 1"}));
}

TEST_F(CMainDlgMessagesTest, MessagesQueuedBeforeTheWindowIsDestroyedDoNothing) {
    Make();
    Pump();
    log.lines.clear();
    ASSERT_TRUE(PrivateMessageEvent::Post(dlg.get(), WM_QG_RUN_UPDATE, 2));
    ASSERT_TRUE(PrivateMessageEvent::Post(dlg.get(), WM_QG_TRAY_ANIMATE, 1));
    dlg->DestroyWindow();
    Pump();
    EXPECT_TRUE(log.lines.empty());
    // Nor does a message sent afterwards, nor a command.
    EXPECT_EQ(Send(WM_QG_TRAY_ANIMATE, 1), 0);
    dlg->Command(CMainDlg::CommandExit);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(CMainDlgMessagesTest, TheWizardsAndLaunchersNoticesEndInTheDefaultHandling) {
    Make();
    Pump();
    log.lines.clear();
    for (int message : {1035, 1036, 1043})
        EXPECT_EQ(Send(message, 1, 1), 0) << message;
    Pump();
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(CMainDlgMessagesTest, TheServiceBackRefreshesTheStatusPageInOrder) {
    Make();
    ASSERT_TRUE(WaitForLine("page9 got 1031 0"));
    log.lines.clear();
    Send(WM_QG_REFRESH_STATUS, 0);
    ASSERT_TRUE(WaitForLine("page9 got 1032 0"));
    EXPECT_EQ(log.lines, (std::vector<std::string>{"page9 got 1030 0", "page9 got 1031 0",
                                                   "page9 got 1032 0"}));
}

TEST_F(CMainDlgMessagesTest, TheServiceBackWithAnotherWordOnlyShowsTheControls) {
    Make();
    ASSERT_TRUE(WaitForLine("page9 got 1031 0"));
    log.lines.clear();
    ButtonById(1017)->hide();
    Send(WM_QG_REFRESH_STATUS, 1);
    Pump();
    EXPECT_TRUE(log.lines.empty());
    EXPECT_FALSE(ButtonById(1017)->isHidden());
}

TEST_F(CMainDlgMessagesTest, TheServiceBackWhileMarkedGoneOnlyMarksItConnected) {
    Make();
    ASSERT_TRUE(WaitForLine("page9 got 1031 0"));
    log.lines.clear();
    ServiceConnected.store(0);
    Send(WM_QG_REFRESH_STATUS, 0);
    Pump();
    EXPECT_EQ(ServiceConnected.load(), 1);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(CMainDlgMessagesTest, AConfigurationChangeReachesTheTrayAndBothPages) {
    Make();
    ASSERT_TRUE(WaitForLine("page9 got 1031 0"));
    host.numbers[IInfoValueHost::Number::FilterOn] = 0;
    log.lines.clear();
    Send(WM_QG_CONFIG_CHANGED);
    ASSERT_TRUE(WaitForLine("ShowFilterState 0"));
    EXPECT_TRUE(WaitForLine("page8 got 1061 0"));
    EXPECT_EQ(log.StartingWith("page9"), std::vector<std::string>{"page9 got 1032 0"});
}

TEST_F(CMainDlgMessagesTest, TheServiceGoneGreysTheWindowAndBringsTheStatusPageForward) {
    MakeShown();
    Click(ButtonById(1003));
    log.lines.clear();
    TraceRecorder::Instance().Clear();

    Send(WM_QG_RPC_STATUS, 1);

    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_FUNC, u"CMainDlg::OnRpcserverStatus(1)"), 1u);
    EXPECT_FALSE(dlg->Timers().IsActive(399));
    EXPECT_TRUE(InOrder({"page9 got 1062 1",
                         "plugin ResizePage 109 " + std::to_string(dlg->width()) + " " +
                             std::to_string(dlg->height()),
                         "plugin ShowPage 109 1"}));
    EXPECT_EQ(dlg->Pages().CurrentKey(), 0);
    EXPECT_TRUE(ButtonById(1000)->GetCheckState());
    for (int id : {1017, 1000, 1001, 1002, 1003, 1010, 1015, 1016, 1009, 1008}) {
        const QWidget* control = dlg->findChild<QWidget*>(QString::number(id));
        EXPECT_FALSE(control->isEnabled()) << id;
    }
    EXPECT_FALSE(dlg->StatusPage()->isEnabled());
    // The window's own top row stays usable.
    for (int id : {1005, 1006, 1007})
        EXPECT_TRUE(ButtonById(id)->isEnabled()) << id;
    EXPECT_FALSE(ButtonById(1017)->isHidden());
    EXPECT_TRUE(ButtonById(1010)->isHidden());

    log.lines.clear();
    Send(WM_QG_RPC_STATUS, 0);
    EXPECT_EQ(dlg->Timers().Period(399), 10000);
    EXPECT_EQ(log.lines.front(), "page9 got 1062 0");
    EXPECT_TRUE(log.StartingWith("plugin ShowPage").empty());
    for (int id : {1017, 1000, 1001, 1003, 1015, 1016, 1009, 1008}) {
        const QWidget* control = dlg->findChild<QWidget*>(QString::number(id));
        EXPECT_TRUE(control->isEnabled()) << id;
    }
    EXPECT_TRUE(dlg->StatusPage()->isEnabled());
    EXPECT_TRUE(WaitForLine("page9 got 1032 0"));
}

TEST_F(CMainDlgMessagesTest, AComponentFailureIsShownOnTheWindowAndEndsTheProgram) {
    Make();
    ASSERT_FALSE(dlg->isVisible());
    enumMSG_LSP_ERROR_Message failure;
    EXPECT_EQ(Send(WM_QG_SERVICE_MESSAGE, reinterpret_cast<PrivateMessageEvent::WParam>(&failure)),
              0);
    EXPECT_TRUE(dlg->isVisible());
    EXPECT_EQ(log.StartingWith("failure box main ").size(), 1u);
    EXPECT_TRUE(WaitForLine("ExitProgram 1"));
}

TEST_F(CMainDlgMessagesTest, ALanguageChangeTranslatesAgainAndTellsThePlugin) {
    Make();
    {
        FakeLocalizer german({{u"QGSA_141", u"Zustand"}, {u"QGSA_248", u"Inhalt"}});
        Send(WM_QG_LANGUAGE, 1031);
        EXPECT_EQ(ButtonById(1000)->Caption(), "Zustand");
        EXPECT_EQ(dlg->HelpMenu()->actions().front()->text(), "Inhalt");
    }
    EXPECT_TRUE(InOrder({"SelectLanguage German", "plugin SetLanguage German"}));
    // 1002 is hidden and stays so; 1000 is shown again after its new caption.
    EXPECT_TRUE(ButtonById(1002)->isHidden());
    EXPECT_FALSE(ButtonById(1000)->isHidden());
}

// ---- Hints ----

TEST_F(CMainDlgMessagesTest, EnteringASectionButtonShowsItsHint) {
    FakeLocalizer texts({{u"QGSA_145", u"status hint"},
                         {u"QGSA_146", u"address list hint"},
                         {u"QGSA_147", u"settings hint"}});
    Make();
    CLabel* hint = dlg->HintLabel();

    Send(WM_QG_BUTTON_ENTER, Handle(ButtonById(1000)));
    EXPECT_FALSE(hint->isHidden());
    EXPECT_EQ(hint->Text(), "status hint");
    ASSERT_FALSE(hint->CurrentPlan().runs.empty());
    EXPECT_EQ(hint->CurrentPlan().runs.front().colour, ColorRef::ToQColor(0xC59B9B));
    EXPECT_FALSE(hint->CurrentPlan().fill.has_value());

    Send(WM_QG_BUTTON_ENTER, Handle(ButtonById(1001)));
    EXPECT_EQ(hint->Text(), "address list hint");
    Send(WM_QG_BUTTON_ENTER, Handle(ButtonById(1003)));
    EXPECT_EQ(hint->Text(), "settings hint");
    // Another button leaves it as it is.
    Send(WM_QG_BUTTON_ENTER, Handle(ButtonById(1009)));
    EXPECT_FALSE(hint->isHidden());
    EXPECT_EQ(hint->Text(), "settings hint");
    // About hides it.
    Send(WM_QG_BUTTON_ENTER, Handle(ButtonById(1017)));
    EXPECT_TRUE(hint->isHidden());
    EXPECT_EQ(hint->Text(), "settings hint");
}

TEST_F(CMainDlgMessagesTest, EnteringWithANumberThatIsNoButtonOfTheWindowChangesNothing) {
    FakeLocalizer texts(std::map<std::u16string, std::u16string>{{u"QGSA_145", u"status hint"}});
    Make();
    CLabel* hint = dlg->HintLabel();
    Send(WM_QG_BUTTON_ENTER, Handle(ButtonById(1000)));
    ASSERT_EQ(hint->Text(), "status hint");

    // Numbers no button of the window has: never followed, the hint stays as it was.
    QObject stranger;
    for (const PrivateMessageEvent::WParam bogus :
         {PrivateMessageEvent::WParam{0}, PrivateMessageEvent::WParam{1},
          PrivateMessageEvent::WParam{0xDEADBEEF}, Handle(&stranger), Handle(dlg.get()),
          Handle(ButtonById(1000)) + 1}) {
        Send(WM_QG_BUTTON_ENTER, bogus);
        EXPECT_FALSE(hint->isHidden()) << bogus;
        EXPECT_EQ(hint->Text(), "status hint") << bogus;
    }
}

TEST_F(CMainDlgMessagesTest, LeavingAButtonHidesTheHintAndLeavesOneBlank) {
    Make();
    Send(WM_QG_BUTTON_ENTER, Handle(ButtonById(1000)));
    Send(WM_QG_BUTTON_LEAVE, Handle(ButtonById(1000)));
    EXPECT_TRUE(dlg->HintLabel()->isHidden());
    EXPECT_EQ(dlg->HintLabel()->Text(), " ");
}

TEST_F(CMainDlgMessagesTest, ThePointerOverAButtonBringsItsHint) {
    FakeLocalizer texts(
        std::map<std::u16string, std::u16string>{{u"QGSA_146", u"address list hint"}});
    MakeShown();
    CDibButtonCtrl* button = ButtonById(1001);
    QTest::mouseMove(button, button->rect().center());
    EXPECT_TRUE(WaitFor([&] { return !dlg->HintLabel()->isHidden(); }));
    EXPECT_EQ(dlg->HintLabel()->Text(), "address list hint");
}

// ---- The look at the input ----

TEST_F(CMainDlgMessagesTest, ReturnGoesToTheFocusedControl) {
    MakeShown();
    dlg->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dlg.get()));
    CDibButtonCtrl* settings = ButtonById(1003);
    CDibButtonCtrl* status = ButtonById(1000);
    settings->setFocus();
    ASSERT_TRUE(WaitFor([&] { return QApplication::focusWidget() == settings; }));
    InputRecorder atButton;
    InputRecorder atOther;
    settings->installEventFilter(&atButton);
    status->installEventFilter(&atOther);

    // Meant for a control without the focus: the focused one has it instead.
    QKeyEvent toOther(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(status, &toOther);
    EXPECT_EQ(atButton.returns, 1);
    EXPECT_EQ(atOther.returns, 0);

    QKeyEvent toButton(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(settings, &toButton);
    EXPECT_EQ(atButton.returns, 2);
}

namespace {

// A page that, like most, has no use for Return and lets it go on to its parent.
class PageIgnoringReturn : public QWidget {
public:
    using QWidget::QWidget;
    int returns = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return)
            ++returns;
        event->ignore();
    }
};

} // namespace

TEST_F(CMainDlgMessagesTest, AReturnTheFocusedFieldIgnoresReachesItOnceAndGoesNoFurtherRound) {
    MakeShown();
    dlg->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dlg.get()));
    auto* page = new PageIgnoringReturn(dlg.get());
    auto* field = new QLineEdit(page);
    page->show();
    field->setFocus();
    ASSERT_TRUE(WaitFor([&] { return QApplication::focusWidget() == field; }));
    InputRecorder atField;
    InputRecorder atWindow;
    field->installEventFilter(&atField);
    dlg->installEventFilter(&atWindow);

    // A line edit ignores Return, so Qt hands it to the page and then to the window.
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(atField.returns, 1);
    EXPECT_EQ(page->returns, 1);
    EXPECT_EQ(atWindow.returns, 1);

    // The same when it starts at the page, on its way round the focused field.
    QKeyEvent toPage(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(page, &toPage);
    EXPECT_EQ(atField.returns, 1);
    EXPECT_EQ(page->returns, 2);
}

TEST_F(CMainDlgMessagesTest, ARightButtonReleaseOnAControlAlsoGoesToTheMainWindow) {
    MakeShown();
    CDibButtonCtrl* status = ButtonById(1000);
    InputRecorder atButton;
    InputRecorder atWindow;
    status->installEventFilter(&atButton);
    dlg->installEventFilter(&atWindow);
    const QPointF local = status->rect().center();
    QMouseEvent release(QEvent::MouseButtonRelease, local, status->mapToGlobal(local),
                        Qt::RightButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(status, &release);
    EXPECT_EQ(atButton.rightReleases, 1);
    EXPECT_EQ(atWindow.rightReleases, 1);

    // Another window's input is not the main window's business.
    QWidget other;
    InputRecorder atOther;
    other.installEventFilter(&atOther);
    QMouseEvent elsewhere(QEvent::MouseButtonRelease, QPointF(1, 1), QPointF(1, 1), Qt::RightButton,
                          Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&other, &elsewhere);
    EXPECT_EQ(atOther.rightReleases, 1);
    EXPECT_EQ(atWindow.rightReleases, 1);
}

TEST_F(CMainDlgMessagesTest, AnIgnoredRightButtonReleasePassedUpMakesNoMoreCopies) {
    MakeShown();
    // Plain widgets ignore releases, so Qt passes one up from the inner to the outer and on
    // to the window.
    auto* outer = new QWidget(dlg.get());
    auto* inner = new QWidget(outer);
    outer->setGeometry(0, 0, 100, 100);
    inner->setGeometry(0, 0, 50, 50);
    outer->show();
    InputRecorder atInner;
    InputRecorder atOuter;
    InputRecorder atWindow;
    inner->installEventFilter(&atInner);
    outer->installEventFilter(&atOuter);
    dlg->installEventFilter(&atWindow);

    for (int round = 1; round <= 2; ++round) {
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(5, 5),
                            inner->mapToGlobal(QPointF(5, 5)), Qt::RightButton, Qt::NoButton,
                            Qt::NoModifier);
        release.setTimestamp(static_cast<quint64>(1000 * round));
        QCoreApplication::sendEvent(inner, &release);
        EXPECT_EQ(atInner.rightReleases, round);
        EXPECT_EQ(atOuter.rightReleases, round);
        EXPECT_EQ(atWindow.rightReleases, round);
    }
}
