// The main window: its set-up in order, its controls at their places (and at 120 dots per
// inch), its timers, its frame, its outline and page sizes, and its end.

#include "MainDlgFixture.h"

#include "FakeLocalizer.h"
#include "TestPluginLibrary.h"
#include "foundation/TraceLevels.h"
#include "mainwindow/DialogUnits.h"
#include "mainwindow/MainDlgLayout.h"
#include "mainwindow/PluginCallbacks.h"
#include "mainwindow/PluginLoader.h"
#include "messaging/SendRpcMessage.h"
#include "messaging/enumMSG_PING_Message.h"
#include "toolkit/CLabel.h"
#include "toolkit/ColorRef.h"
#include "toolkit/DpiFontRule.h"
#include "toolkit/QuillgateGUIRes.h"
#include "toolkit/ResourceStore.h"
#include "toolkit/RoundRectRegion.h"

#include <QLabel>
#include <QMenu>
#include <QTimer>

#include <algorithm>
#include <map>

#include <unistd.h>

namespace {

using Picture = DibButtonLook::Picture;

std::string YesNo(bool value) {
    return value ? "yes" : "no";
}

bool Dressed(const CMainDlg& window) {
    const CDibButtonCtrl* status = window.Button(1000);
    return status != nullptr && !status->Picture(Picture::Normal).isNull();
}

std::string TimerIds(const CMainDlg& window) {
    std::string text;
    for (int id : window.Timers().ActiveIds())
        text += (text.empty() ? "" : ",") + std::to_string(id);
    return text.empty() ? "none" : text;
}

std::string Shown(const CMainDlg& window, int id) {
    const QWidget* control = window.findChild<QWidget*>(QString::number(id));
    return control == nullptr ? "missing" : (control->isHidden() ? "hidden" : "shown");
}

} // namespace

class CMainDlgTest : public MainDlgFixture {};

TEST_F(CMainDlgTest, TheTwentyStepsOfTheSetUpRunInOrder) {
    host.firstRun = 1;
    std::vector<std::string> seen;
    host.onWizard = [&](CMainDlg& window) {
        seen.push_back(
            "wizard pages=" +
            YesNo(window.StatusPage() && window.AddressListPage() && window.SettingsPage()) +
            " menu=" + YesNo(window.HelpMenu() != nullptr) + " dressed=" + YesNo(Dressed(window)) +
            " timers=" + TimerIds(window));
    };
    host.onSetUpTray = [&](CMainDlg& window) {
        seen.push_back("tray menu=" + YesNo(window.HelpMenu() != nullptr) + " frameless=" +
                       YesNo(window.windowFlags().testFlag(Qt::FramelessWindowHint)) +
                       " dressed=" + YesNo(Dressed(window)));
    };
    host.onIsAdministrator = [&] {
        CMainDlg& window = *host.mainWindow;
        seen.push_back("admin dressed=" + YesNo(Dressed(window)) + " hint=" + Shown(window, 1015) +
                       " icon=" + YesNo(!window.windowIcon().isNull()) +
                       " timers=" + TimerIds(window));
    };
    host.onSend = [&](const IMessage&) {
        CMainDlg& window = *host.mainWindow;
        seen.push_back("start 1017=" + Shown(window, 1017) + " 1016=" + Shown(window, 1016) +
                       " 1008=" + Shown(window, 1008) + " 1010=" + Shown(window, 1010) +
                       " timers=" + TimerIds(window) +
                       " checked1000=" + YesNo(window.Button(1000)->GetCheckState()));
    };

    Make();

    EXPECT_EQ(seen, (std::vector<std::string>{
                        "wizard pages=yes menu=no dressed=no timers=none",
                        "tray menu=yes frameless=yes dressed=no",
                        "admin dressed=yes hint=hidden icon=yes timers=none",
                        "start 1017=shown 1016=shown 1008=shown 1010=hidden timers=399,400,401 "
                        "checked1000=yes",
                    }));
    const std::string start = "Send GUI Start pid=" + std::to_string(getpid());
    EXPECT_TRUE(InOrder({"SetMainWindow", "plugin SetInfoSink set", "plugin GetPageCount",
                         "plugin SetConfigPath", "plugin InitGUI English (US)",
                         "plugin SetLanguage English (US)", "plugin Enabled",
                         "plugin SetPageMetrics", "plugin CreatePage", "plugin CreateListPage",
                         "plugin CreatePage", "RunFirstRunWizard", "SetFirstRun 0", "NotifyService",
                         "SetUpTray", "IsAdministrator", "page9 got 1030 0", start}));
    // 1030 is sent, 1031 posted: it arrives once the loop runs, after the message to the
    // service.
    EXPECT_EQ(log.IndexOf("page9 got 1031 0"), -1);
    ASSERT_TRUE(WaitForLine("page9 got 1031 0"));
    EXPECT_GT(log.IndexOf("page9 got 1031 0"), log.IndexOf(start));
    EXPECT_EQ(log.StartingWith("Send ").size(), 1u);
    EXPECT_EQ(host.mainWindow, dlg.get());
}

TEST_F(CMainDlgTest, WithoutAFirstRunTheWizardIsSkipped) {
    Make();
    EXPECT_EQ(log.IndexOf("RunFirstRunWizard"), -1);
    EXPECT_TRUE(log.StartingWith("SetFirstRun").empty());
    EXPECT_EQ(log.IndexOf("NotifyService"), -1);
}

TEST_F(CMainDlgTest, TheWindowHasTheDialogsSizeTitleAndNoFrame) {
    Make();
    const DialogUnits expectedUnits = DialogUnits::FromFont(QuillgateGUIRes::MakeFont(
        DpiFontRule::LogicalHeight(8, 96), 0, false, 0, QuillgateGUIRes::DialogFace()));
    EXPECT_EQ(dlg->Units(), expectedUnits);
    EXPECT_EQ(dlg->size(), QSize(expectedUnits.ToPixelsX(521), expectedUnits.ToPixelsY(276)));
    EXPECT_EQ(dlg->minimumSize(), dlg->size());
    EXPECT_EQ(dlg->windowTitle(), QStringLiteral("Quillgate"));
    EXPECT_TRUE(dlg->windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(CMainDlgTest, ControlsStandAtTheirPlacesAndButtonsTakeTheirPicturesSizes) {
    Make();
    const DialogUnits& units = dlg->Units();
    for (const auto& control : MainDlgLayout::Controls()) {
        const QWidget* widget = dlg->findChild<QWidget*>(QString::number(control.id));
        ASSERT_NE(widget, nullptr) << control.id;
        const QRect pixels = units.ToPixels(control.units);
        EXPECT_EQ(widget->pos(), pixels.topLeft()) << control.id;
        if (control.kind == MainDlgLayout::Kind::Button) {
            const auto* look = MainDlgLayout::LookOf(control.id);
            EXPECT_EQ(widget->size(), ResourceStore::BitmapSize(look->bitmaps[0])) << control.id;
        } else if (control.kind == MainDlgLayout::Kind::Picture) {
            EXPECT_EQ(widget->size(), ResourceStore::BitmapSize(201));
        } else {
            EXPECT_EQ(widget->size(), pixels.size()) << control.id;
        }
    }
}

TEST_F(CMainDlgTest, ButtonsAreDressedAsTheirFamilyAndGrouped) {
    Make();
    const auto same = [](const QPixmap& a, const QPixmap& b) { return a.toImage() == b.toImage(); };
    for (int id : {1000, 1001, 1002, 1003, 1010, 1017}) {
        const CDibButtonCtrl* button = dlg->Button(id);
        EXPECT_TRUE(same(button->Picture(Picture::Normal), ResourceStore::Bitmap(256))) << id;
        EXPECT_TRUE(same(button->Picture(Picture::Hover), ResourceStore::Bitmap(260))) << id;
        EXPECT_TRUE(same(button->Picture(Picture::FocusedPressed), ResourceStore::Bitmap(259)))
            << id;
        EXPECT_EQ(button->TextColour(DibButtonLook::TextColour::Hover), ColorRef::ToQColor(9909043))
            << id;
        EXPECT_FALSE(button->State().PushMode()) << id;
        EXPECT_FALSE(button->State().SoundOn()) << id;
    }
    // Grouped and unlatched, so the current section can be clicked again; 1002 and 1010 are
    // outside the group.
    for (int id : {1000, 1001, 1003, 1017})
        EXPECT_FALSE(dlg->Button(id)->State().Latched()) << id;
    EXPECT_TRUE(dlg->Button(1000)->GetCheckState());
    dlg->Command(1010);
    for (int id : {1000, 1001, 1003, 1017})
        EXPECT_FALSE(dlg->Button(id)->GetCheckState()) << id;

    const CDibButtonCtrl* help = dlg->Button(1009);
    EXPECT_TRUE(same(help->Picture(Picture::Normal), ResourceStore::Bitmap(263)));
    EXPECT_TRUE(same(help->Picture(Picture::Hover), ResourceStore::Bitmap(262)));
    EXPECT_EQ(help->TextColour(DibButtonLook::TextColour::Normal), ColorRef::ToQColor(0xFFFFFF));
    EXPECT_TRUE(help->State().PushMode());
    const CDibButtonCtrl* close = dlg->Button(1007);
    EXPECT_TRUE(same(close->Picture(Picture::Normal), ResourceStore::Bitmap(248)));
    EXPECT_TRUE(close->Picture(Picture::Focused).isNull());
}

TEST_F(CMainDlgTest, TheLanguageStepGivesEveryTextThroughTheTranslation) {
    FakeLocalizer localizer({{u"QGSA_141", u"Status"},
                             {u"QGSA_132", u"Address List"},
                             {u"QGSA_133", u"Advanced"},
                             {u"QGSA_134", u"Settings"},
                             {u"QGSA_142", u"About"},
                             {u"QGSA_138", u"Help"},
                             {u"QGSA_139", u"Brisk Update"},
                             {u"QGSA_137", u"Help and support"},
                             {u"QGSA_130", u"Minimize"},
                             {u"QGSA_131", u"Maximize"},
                             {u"QGSA_143", u"Restore"},
                             {u"QGSA_144", u"Close"},
                             {u"QGSA_248", u"Contents"},
                             {u"QGSA_249", u"Tech Support"},
                             {u"QGSA_250", u"Home Page"},
                             {u"QGSA_251", u"About Quillgate"}});
    Make();
    const std::vector<std::pair<int, QString>> captions = {
        {1000, "Status"}, {1001, "Address List"}, {1002, "Advanced"},     {1003, "Settings"},
        {1017, "About"},  {1009, "Help"},         {1008, "Brisk Update"},
    };
    for (const auto& [id, text] : captions)
        EXPECT_EQ(dlg->Button(id)->Caption(), text) << id;
    const std::vector<std::pair<int, QString>> tips = {
        {1005, "Minimize"}, {1006, "Maximize"},         {1011, "Restore"},
        {1007, "Close"},    {1009, "Help and support"},
    };
    for (const auto& [id, text] : tips)
        EXPECT_EQ(dlg->Button(id)->ToolTipText(), text) << id;

    QStringList items;
    QStringList names;
    for (const QAction* action : dlg->HelpMenu()->actions()) {
        items << action->text();
        names << action->objectName();
    }
    EXPECT_EQ(items, (QStringList{"Contents", "Tech Support", "Home Page", "About Quillgate"}));
    EXPECT_EQ(names, (QStringList{"32782", "32783", "32784", "32785"}));
}

TEST_F(CMainDlgTest, TheHintLabelStartsHiddenInItsColour) {
    Make();
    const CLabel* hint = dlg->HintLabel();
    ASSERT_NE(hint, nullptr);
    EXPECT_TRUE(hint->isHidden());
    EXPECT_TRUE(hint->IsTransparent());
    EXPECT_EQ(hint->LabelFont().family(), host.resources.GetNormalFont().family());
}

TEST_F(CMainDlgTest, TheSkinIsPaintedUnderTheControls) {
    MakeShown();
    const QImage window = dlg->grab().toImage();
    const QImage topLeft = ResourceStore::Bitmap(208, 1.0).toImage();
    const QImage topRight = ResourceStore::Bitmap(209, 1.0).toImage();
    ASSERT_FALSE(topLeft.isNull());
    ASSERT_FALSE(topRight.isNull());
    // Points of the two top corners that no control covers.
    EXPECT_EQ(window.pixelColor(40, 30), topLeft.pixelColor(40, 30));
    EXPECT_EQ(window.pixelColor(dlg->width() - topRight.width() + 20, 60),
              topRight.pixelColor(20, 60));
}

// ---- Large fonts ----

namespace {

// Each control of the top row, moved by the large-font layout: (right, up).
const std::map<int, std::pair<int, int>> TopRowMoves = {
    {1005, {16, 0}}, {1007, {17, 0}}, {1011, {17, 0}}, {1006, {18, 0}},
    {1009, {25, 7}}, {1008, {94, 7}}, {1016, {94, 8}},
};

} // namespace

TEST_F(CMainDlgTest, AtOneHundredTwentyDotsPerInchTheTopRowMovesByItsPixels) {
    SetDpi(120);
    Make();
    const DialogUnits& units = dlg->Units();
    for (const auto& control : MainDlgLayout::Controls()) {
        const QWidget* widget = dlg->findChild<QWidget*>(QString::number(control.id));
        const QPoint place = units.ToPixels(control.units).topLeft();
        const auto move = TopRowMoves.find(control.id);
        const QPoint expected = move == TopRowMoves.end()
                                    ? place
                                    : place + QPoint(move->second.first, -move->second.second);
        EXPECT_EQ(widget->pos(), expected) << control.id;
    }
    // The narrowing is undone when the buttons take their pictures' sizes.
    EXPECT_EQ(dlg->Button(1008)->size(), ResourceStore::BitmapSize(263));
}

TEST_F(CMainDlgTest, AtOtherScalesNothingMoves) {
    for (int dpi : {96, 144, 72}) {
        SetDpi(dpi);
        Make();
        const DialogUnits& units = dlg->Units();
        for (const auto& control : MainDlgLayout::Controls()) {
            const QWidget* widget = dlg->findChild<QWidget*>(QString::number(control.id));
            EXPECT_EQ(widget->pos(), units.ToPixels(control.units).topLeft())
                << control.id << " at " << dpi;
        }
        dlg.reset();
    }
}

// ---- Timers ----

TEST_F(CMainDlgTest, TheTimersRunWithTheirIdsAndPeriods) {
    Make();
    EXPECT_EQ(dlg->Timers().ActiveIds(), (std::vector<int>{399, 400, 401}));
    EXPECT_EQ(dlg->Timers().Period(399), 10000);
    EXPECT_EQ(dlg->Timers().Period(400), 60000);
    EXPECT_EQ(dlg->Timers().Period(401), 1000);
}

TEST_F(CMainDlgTest, AUserWhoIsNotAnAdministratorNeverGetsTheUpdateCheck) {
    host.administrator = false;
    Make();
    EXPECT_EQ(dlg->Timers().ActiveIds(), (std::vector<int>{399, 401}));
    // The service going away and coming back restarts the refresh, not the check.
    Send(WM_QG_RPC_STATUS, 1);
    Send(WM_QG_RPC_STATUS, 0);
    Send(WM_QG_REFRESH_STATUS, 0);
    ASSERT_TRUE(WaitForLine("Send PING"));
    EXPECT_FALSE(dlg->Timers().IsActive(400));
    EXPECT_EQ(log.IndexOf("CheckAutoUpdate"), -1);
}

TEST_F(CMainDlgTest, ThePingGoesToTheServiceEverySecondBeforeTheTraySeesTheTick) {
    std::vector<int> chainTicksAtPing;
    host.onSend = [&](const IMessage& msg) {
        if (msg.GetId() == enumMSG_PING_Message::Id)
            chainTicksAtPing.push_back(host.timerTicks[401]);
    };
    Make();
    ASSERT_TRUE(WaitFor([&] { return host.timerTicks[401] >= 1; }));
    ASSERT_FALSE(chainTicksAtPing.empty());
    EXPECT_EQ(chainTicksAtPing.front(), 0);
}

TEST_F(CMainDlgTest, TheRefreshTimerRefreshesTheStatusPage) {
    Make();
    // The same id again replaces the timer: a short period spares the test ten seconds.
    dlg->Timers().SetTimer(399, 5);
    EXPECT_TRUE(WaitForLine("page9 got 1032 0"));
}

TEST_F(CMainDlgTest, TheUpdateCheckTimerChecksAndStartsAgainWithAMinute) {
    Make();
    dlg->Timers().SetTimer(400, 5);
    ASSERT_TRUE(WaitForLine("CheckAutoUpdate"));
    EXPECT_EQ(dlg->Timers().Period(400), 60000);
}

TEST_F(CMainDlgTest, TheTraysTimerOnTheWindowReachesTheTray) {
    Make();
    dlg->Timers().SetTimer(1, 5);
    EXPECT_TRUE(WaitForLine("OnMainWindowTimer 1"));
}

// ---- Outline, page sizes, frame ----

TEST_F(CMainDlgTest, ASizeChangeResizesEveryPageAndRoundsTheOutline) {
    MakeShown();
    log.lines.clear();
    // Larger than the dialog, which is also its smallest size.
    const int w = dlg->width() + 100;
    const int h = dlg->height() + 50;
    const std::string size = " " + std::to_string(w) + " " + std::to_string(h);
    dlg->resize(w, h);
    ASSERT_TRUE(WaitForLine("plugin ResizePage 108" + size));
    EXPECT_EQ(
        log.StartingWith("plugin ResizePage"),
        (std::vector<std::string>{"plugin ResizePage 109" + size, "plugin ResizePage 100" + size,
                                  "plugin ResizePage 108" + size}));
    EXPECT_EQ(dlg->mask(), RoundRectRegion::Make(QSize(w + 2, h + 2), QSize(26, 26)));
}

TEST_F(CMainDlgTest, WhileHiddenInTheTrayThePagesKeepTheirSize) {
    MakeShown();
    log.lines.clear();
    dlg->hide();
    // The window stays alive while hidden: its ping still goes out.
    ASSERT_TRUE(WaitForLine("Send PING"));
    dlg->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dlg.get()));
    Pump();
    EXPECT_TRUE(log.StartingWith("plugin ResizePage").empty());
}

TEST_F(CMainDlgTest, ADoubleClickOnTheTopBandDoesNothing) {
    MakeShown();
    const QRect before = dlg->geometry();
    const Qt::WindowStates state = dlg->windowState();
    log.lines.clear();
    // As the window system delivers a double click: press, release, double click, release.
    const QPoint band(400, 20);
    QTest::mouseClick(dlg.get(), Qt::LeftButton, Qt::NoModifier, band);
    QTest::mouseDClick(dlg.get(), Qt::LeftButton, Qt::NoModifier, band);
    QTest::mouseRelease(dlg.get(), Qt::LeftButton, Qt::NoModifier, band);
    Pump();
    EXPECT_EQ(dlg->LastFrameGesture().code, MainDlgHitTest::Code::Caption);
    EXPECT_FALSE(dlg->isMaximized());
    EXPECT_EQ(dlg->windowState(), state);
    EXPECT_EQ(dlg->geometry(), before);
    EXPECT_TRUE(log.lines.empty());
}

namespace {

// Chooses the entry of the system menu whose text holds `word` once the menu is open, and
// notes what the menu offered.
void ChooseFromSystemMenu(const QString& word, QStringList& offered) {
    QTimer::singleShot(0, [word, &offered] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr || menu->objectName() != QStringLiteral("systemMenu"))
            return;
        QAction* choice = nullptr;
        for (QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            QString text = action->text();
            text.remove(QLatin1Char('&'));
            offered << text + (action->isEnabled() ? QString() : QStringLiteral(" (off)"));
            if (text.contains(word))
                choice = action;
        }
        if (choice == nullptr) {
            menu->close();
            return;
        }
        // As a user chooses: the entry made current, then Return.
        menu->setActiveAction(choice);
        QTest::keyClick(menu, Qt::Key_Return);
    });
}

} // namespace

TEST_F(CMainDlgTest, ARightClickOnTheTopBandOpensTheSystemMenuAndItsCommandIsPosted) {
    MakeShown();
    log.lines.clear();
    QStringList offered;
    ChooseFromSystemMenu(QStringLiteral("Close"), offered);
    QTest::mouseClick(dlg.get(), Qt::RightButton, Qt::NoModifier, QPoint(400, 20));

    EXPECT_EQ(offered, (QStringList{QStringLiteral("Restore (off)"), QStringLiteral("Minimize"),
                                    QStringLiteral("Maximize"), QStringLiteral("Close")}));
    // Posted, not run inside the menu.
    EXPECT_TRUE(log.StartingWith("HideToTray").empty());
    const std::function<bool()> hidden = [&] {
        Pump();
        return !log.StartingWith("HideToTray").empty();
    };
    ASSERT_TRUE(TestSupport::WaitFor(hidden));
}

TEST_F(CMainDlgTest, MaximiseFromTheSystemMenuSwapsTheMaximiseAndRestoreButtons) {
    MakeShown();
    QStringList offered;
    ChooseFromSystemMenu(QStringLiteral("Maximize"), offered);
    QTest::mouseClick(dlg.get(), Qt::RightButton, Qt::NoModifier, QPoint(400, 20));
    const std::function<bool()> swapped = [&] {
        Pump();
        return ButtonById(MainDlgLayout::RestoreButton)->isVisible();
    };
    ASSERT_TRUE(TestSupport::WaitFor(swapped));
    EXPECT_FALSE(ButtonById(MainDlgLayout::MaximiseButton)->isVisible());
}

TEST_F(CMainDlgTest, ARightClickInsideTheWindowOpensNoSystemMenu) {
    MakeShown();
    QStringList offered;
    ChooseFromSystemMenu(QStringLiteral("Close"), offered);
    QTest::mouseClick(dlg.get(), Qt::RightButton, Qt::NoModifier, QPoint(400, 300));
    Pump();
    EXPECT_TRUE(offered.isEmpty());
    EXPECT_TRUE(log.StartingWith("HideToTray").empty());
}

TEST_F(CMainDlgTest, ARightClickOnAButtonOfTheTopBandOpensNoSystemMenu) {
    MakeShown();
    QStringList offered;
    ChooseFromSystemMenu(QStringLiteral("no such entry"), offered);
    CDibButtonCtrl* minimise = ButtonById(MainDlgLayout::MinimiseButton);
    QTest::mouseClick(minimise, Qt::RightButton, Qt::NoModifier, minimise->rect().center());
    Pump();
    EXPECT_TRUE(offered.isEmpty());
}

TEST_F(CMainDlgTest, APressOnTheFrameStartsAMoveOrAResizeOfThatEdge) {
    MakeShown();
    const int w = dlg->width();
    const int h = dlg->height();
    const std::vector<std::pair<QPoint, MainDlgHitTest::Code>> presses = {
        {QPoint(400, 20), MainDlgHitTest::Code::Caption},
        {QPoint(1, 200), MainDlgHitTest::Code::Left},
        {QPoint(w - 2, 200), MainDlgHitTest::Code::Right},
        {QPoint(400, 2), MainDlgHitTest::Code::Top},
        {QPoint(400, h - 2), MainDlgHitTest::Code::Bottom},
        {QPoint(w - 10, h - 10), MainDlgHitTest::Code::BottomRight},
        {QPoint(10, h - 10), MainDlgHitTest::Code::BottomLeft},
    };
    for (const auto& [point, code] : presses) {
        QTest::mousePress(dlg.get(), Qt::LeftButton, Qt::NoModifier, point);
        QTest::mouseRelease(dlg.get(), Qt::LeftButton, Qt::NoModifier, point);
        EXPECT_EQ(dlg->LastFrameGesture().code, code) << point.x() << "," << point.y();
    }
    EXPECT_EQ(log.IndexOf("OpenHomePage"), -1);
}

TEST_F(CMainDlgTest, TheHomePageAreaShowsAHandAndOpensTheHomePage) {
    MakeShown();
    const int h = dlg->height();
    QTest::mouseMove(dlg.get(), QPoint(20, h - 30));
    EXPECT_TRUE(WaitFor([&] { return dlg->cursor().shape() == Qt::PointingHandCursor; }));
    QTest::mouseMove(dlg.get(), QPoint(400, 300));
    EXPECT_TRUE(WaitFor([&] { return dlg->cursor().shape() == Qt::ArrowCursor; }));
    QTest::mouseMove(dlg.get(), QPoint(1, 300));
    EXPECT_TRUE(WaitFor([&] { return dlg->cursor().shape() == Qt::SizeHorCursor; }));

    QTest::mouseClick(dlg.get(), Qt::LeftButton, Qt::NoModifier, QPoint(20, h - 60));
    EXPECT_EQ(log.IndexOf("OpenHomePage"), -1);
    QTest::mouseClick(dlg.get(), Qt::LeftButton, Qt::NoModifier, QPoint(20, h - 30));
    EXPECT_EQ(log.StartingWith("OpenHomePage").size(), 1u);
    // Inside the area but in the bottom left corner's square: that press resizes.
    QTest::mouseClick(dlg.get(), Qt::LeftButton, Qt::NoModifier, QPoint(10, h - 14));
    EXPECT_EQ(log.StartingWith("OpenHomePage").size(), 1u);
    EXPECT_EQ(dlg->LastFrameGesture().code, MainDlgHitTest::Code::BottomLeft);
}

// ---- The end ----

TEST_F(CMainDlgTest, TheDestructorLetsGoInOrderAndTracesItsThreeLines) {
    host.onSetUpTray = [](CMainDlg& window) {
        window.TrayIcons().on = ResourceStore::Icon(237);
        window.TrayIcons().off = ResourceStore::Icon(239);
        window.TrayIcons().frames = {ResourceStore::Icon(228), ResourceStore::Icon(237)};
    };
    Make();
    CMainDlg* window = dlg.get();
    const QPointer<QMenu> menu = window->HelpMenu();
    const QPointer<QWidget> status = window->StatusPage();
    ASSERT_FALSE(window->TrayIcons().on.isNull());
    TraceRecorder::Instance().Clear();
    std::vector<std::u16string> linesAtStop;
    bool releasedAtStop = false;
    host.onStopUpdateThread = [&] {
        linesAtStop = TraceRecorder::Instance().StartingWith(TRACE_DEBUG, u"~CMainDlg");
        releasedAtStop = menu.isNull() && status.isNull() && window->TrayIcons().on.isNull() &&
                         window->TrayIcons().off.isNull() && window->TrayIcons().frames.isEmpty();
    };

    dlg.reset();

    EXPECT_EQ(linesAtStop,
              (std::vector<std::u16string>{u"~CMainDlg - GDI resources",
                                           u"~CMainDlg - Stopping brisk update thread"}));
    EXPECT_TRUE(releasedAtStop);
    EXPECT_EQ(TraceRecorder::Instance().StartingWith(TRACE_DEBUG, u"~CMainDlg"),
              (std::vector<std::u16string>{u"~CMainDlg - GDI resources",
                                           u"~CMainDlg - Stopping brisk update thread",
                                           u"~CMainDlg - completed"}));
    EXPECT_EQ(log.StartingWith("StopUpdateThread"),
              std::vector<std::string>{"StopUpdateThread 3000"});
}

TEST_F(CMainDlgTest, DestroyWindowStopsTimersAndDestroysThePages) {
    MakeShown();
    const QPointer<QWidget> status = dlg->StatusPage();
    dlg->DestroyWindow();
    EXPECT_TRUE(dlg->IsDestroyed());
    EXPECT_TRUE(dlg->Timers().ActiveIds().empty());
    EXPECT_TRUE(status.isNull());
    EXPECT_FALSE(dlg->isVisible());
}

// ---- With the test plug-in library ----

namespace {

// The real send path to the library's RPC object.
class SendingHost : public RecordingMainWindowHost {
public:
    using RecordingMainWindowHost::RecordingMainWindowHost;
    bool SendRpcMessage(const IMessage& msg) override { return ::SendRpcMessage(msg); }
};

} // namespace

TEST(CMainDlgWithPluginLibrary, TheLibrarysPagesAreMadeTheServiceIsGreetedAndTheLibraryFreed) {
    MainWindowTestApp();
    TestPlugins::ResetPluginGlobals();
    const std::string path = TestPlugins::PathOf("complete");
    RecordingMessageBoxes boxes;
    PluginLoader loader(boxes, PluginCallbacks(), path);
    ASSERT_TRUE(loader.LoadPlugin());
    CallLog log;
    SendingHost host(log);
    auto window = std::make_unique<CMainDlg>(host);
    window->setObjectName("mainWindow");
    {
        TestPlugins::Library library(path);
        library.Reset();
        ASSERT_TRUE(window->Create());
        const auto journal = library.Journal();
        ASSERT_GE(journal.size(), 4u);
        EXPECT_EQ(journal.front(), "SetInfoSink ref=1");
        EXPECT_NE(std::find(journal.begin(), journal.end(),
                            "CreatePage record=9 parent=mainWindow show=1"),
                  journal.end());
        EXPECT_EQ(journal[journal.size() - 2], "CreatePage record=8 parent=mainWindow show=1");
        EXPECT_EQ(journal.back().rfind("SendRequest SharedRPCServer ", 0), 0u);
    }
    EXPECT_EQ(window->StatusPage()->objectName(), "page9");
    EXPECT_EQ(window->AddressListPage()->objectName(), "page0");
    EXPECT_EQ(window->SettingsPage()->objectName(), "page8");
    EXPECT_EQ(window->PageIdOf(1000), 109u);

    window.reset();

    EXPECT_FALSE(TestPlugins::IsLoaded(path));
    TestPlugins::ResetPluginGlobals();
}
