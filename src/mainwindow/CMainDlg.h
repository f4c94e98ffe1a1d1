#pragma once
// The program's one top-level window: a frameless window with a rounded outline, a column
// of section buttons on the left, a row of buttons at the top right, and a page area that
// the plug-in fills with its Status, Address list and Settings pages. Everything that
// happens to the program reaches it, as private messages (PrivateMessageEvent), commands of
// its buttons and menus, and its timers, and each is offered to the entries of its message
// map (MainDlgMessageMap) in the map's order. It stays usable while hidden in the tray: its
// timers run and its messages arrive.
//
// What it needs of the application comes through IMainWindowHost; the plug-in is reached
// through the objects of PluginPointers.h. See IMainWindowHost.h for how the application
// creates, shows and destroys it.

#include "mainwindow/DialogUnits.h"
#include "mainwindow/HostInfoSink.h"
#include "mainwindow/IPageHost.h"
#include "mainwindow/InfoValues.h"
#include "mainwindow/MainDlgHitTest.h"
#include "mainwindow/MainDlgInfoValueHost.h"
#include "mainwindow/MainDlgMessageMap.h"
#include "mainwindow/MainDlgTrayIcons.h"
#include "mainwindow/MainDlgView.h"
#include "mainwindow/WidgetWindowPort.h"
#include "mainwindow/WindowTimers.h"
#include "messaging/InboundDispatcher.h"
#include "toolkit/CDibRadioButtonCtrl.h"
#include "toolkit/COffscreenDraw.h"
#include "toolkit/DialogPages.h"
#include "toolkit/PaintBkgnd.h"

#include <QPointer>
#include <QWidget>

#include <array>
#include <map>
#include <memory>

class CDialogPage;
class CDibButtonCtrl;
class CLabel;
class IMainWindowHost;
class QLabel;
class QMenu;

class CMainDlg : public QWidget,
                 public COffscreenDraw<CMainDlg>,
                 public HostInfoSink,
                 private IPageHost,
                 private MainDlgMessageMap::Target {
public:
    // The window's timers: the Status page's refresh, the update check, the ping.
    static constexpr int RefreshTimer = 399;
    static constexpr int RefreshPeriod = 10000;
    static constexpr int UpdateCheckTimer = 400;
    static constexpr int UpdateCheckPeriod = 60000;
    static constexpr int PingTimer = 401;
    static constexpr int PingPeriod = 1000;

    // Menu commands.
    static constexpr int CommandHelpContents = 32782;
    static constexpr int CommandTechSupport = 32783;
    static constexpr int CommandHomePage = 32784;
    static constexpr int CommandAbout = 32785;
    static constexpr int CommandFilterOn = 32787;
    static constexpr int CommandFilterOff = 32788;
    static constexpr int CommandOpen = 32789;
    static constexpr int CommandExit = 32790;

    // How long the destructor lets the update launcher's thread take to stop.
    static constexpr std::uint32_t UpdateThreadStopWait = 3000;

    explicit CMainDlg(IMainWindowHost& host);
    ~CMainDlg() override;
    CMainDlg(const CMainDlg&) = delete;
    CMainDlg& operator=(const CMainDlg&) = delete;

    // Makes the controls of the dialog and runs its set-up (OnInitDialog), as creating the
    // modeless dialog does. True when the window exists. Call once.
    bool Create();

    // The window's end in the exit sequence (DestroyWindow): its timers stop, it stops
    // looking at the program's input, the plug-in's pages are destroyed and it hides. The
    // object itself stays until its owner deletes it. Called again, it does nothing.
    void DestroyWindow();
    bool IsDestroyed() const { return m_destroyed; }

    // A WM_COMMAND with notification 0: a button, a menu item or the tray's menu.
    void Command(int id);

    // The window's timers by id (also the tray's animation timer, id 1).
    WindowTimers& Timers() { return m_timers; }
    const WindowTimers& Timers() const { return m_timers; }
    // The tray's icons that the window holds.
    MainDlgTrayIcons& TrayIcons() { return m_trayIcons; }

    // The plug-in's pages (null when a page wasn't made) and the page stack.
    QWidget* StatusPage() const { return m_statusPage.data(); }
    QWidget* AddressListPage() const { return m_addressListPage.data(); }
    QWidget* SettingsPage() const { return m_settingsPage.data(); }
    const DialogPages& Pages() const { return m_pages; }
    // The plug-in's page id of a section button; 0 when its page wasn't made.
    PluginPageId PageIdOf(int buttonId) const;

    // The control with this id, or null.
    CDibButtonCtrl* Button(int id) const;
    CLabel* HintLabel() const { return m_hintLabel; }
    QLabel* UpdatePicture() const { return m_updatePicture; }
    QMenu* HelpMenu() const;
    // Where the help menu opens: the help button's lower left corner, on the screen. The
    // menu moves from there only where the screen ends.
    QPoint HelpMenuAnchor() const;
    // The dialog font's base units that placed the controls.
    const DialogUnits& Units() const { return m_units; }

    // What the last left press outside the client part of the window started.
    struct FrameGesture {
        MainDlgHitTest::Code code = MainDlgHitTest::Code::Client;
        // Whether the window system took the move or resize over.
        bool bySystem = false;
    };
    const FrameGesture& LastFrameGesture() const { return m_lastGesture; }

    // COffscreenDraw: the skin under the controls.
    void DoPaint(QPainter& painter);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    using WParam = MainDlgMessageMap::WParam;
    using LParam = MainDlgMessageMap::LParam;
    using Result = MainDlgMessageMap::Result;

    // IPageHost
    QWidget* PageParent() override { return this; }
    IInfoSink* InfoSink() override { return this; }
    stdstr ConfigPath() override;
    stdstr LanguageSetting() override;
    void SetPageField(PageField field, QWidget* page) override;
    void AddPage(int index, QWidget* page) override;
    void SelectPage(int index) override;
    void MapButtonToPage(int buttonId, PluginPageId page) override;

    // MainDlgMessageMap::Target
    bool OnMessage(MainDlgMessageMap::Handler handler, int message, WParam wParam, LParam lParam,
                   Result& result) override;
    std::optional<Result> Dispatch(int message, WParam wParam = 0, LParam lParam = 0);

    // Set-up.
    void CreateControls();
    int OnInitDialog();
    void ApplyHighDpiLayout();
    void CreateHelpMenu();
    void DressButtons();
    void RunLanguageStep();
    void ShowInitialControls();

    // Handlers.
    void OnSize(int cx, int cy);
    bool OnTimer(int id);
    void OnWindowButton(int id);
    void OnMenuCommand(int id);
    void OnSectionButton(int id);
    void SwitchSection(int pageIndex, int buttonId);
    void SelectSectionButton(int buttonId);
    void OpenHelpMenu();
    // The window's system menu at `global`, for a right click outside the client part; the
    // chosen command is posted, as the window system posts its system commands.
    void OpenSystemMenu(const QPoint& global);
    void OnSystemCommand(int command);
    void OnButtonEnter(WParam button);
    void OnButtonLeave();
    void OnLanguage(WParam languageId);
    void OnRefreshStatus(WParam wParam);
    void OnConfigChanged();
    void OnRpcserverStatus(WParam wParam);
    Result OnServiceMessage(WParam message);
    void OpenFromTray();
    void ExitFromTray();

    // Window frame.
    MainDlgHitTest::Code HitTestAt(const QPoint& globalPos) const;
    void StartFrameGesture(MainDlgHitTest::Code code, const QPointF& globalPos);
    void UpdateCursor(const QPoint& localPos);

    void SetControlVisible(int id, bool visible);
    void SetControlEnabled(int id, bool enabled);
    QWidget* Control(int id) const;
    bool PostToStatusPage(int message, WParam wParam = 0);

    IMainWindowHost& m_host;
    DialogUnits m_units;
    std::map<int, CDibButtonCtrl*> m_buttons;
    CLabel* m_hintLabel = nullptr;
    QLabel* m_updatePicture = nullptr;
    QPointer<QMenu> m_helpMenu;
    MainDlgTrayIcons m_trayIcons;
    std::array<std::unique_ptr<CDialogPage>, 3> m_pageRecords;
    DialogPages m_pages;
    CDibRadioButtonCtrl m_group;
    QPointer<QWidget> m_statusPage;
    QPointer<QWidget> m_addressListPage;
    QPointer<QWidget> m_settingsPage;
    std::map<int, PluginPageId> m_pageMap;
    PaintBkgnd m_skin;
    WindowTimers m_timers;
    MainDlgInfoValueHost m_infoHost;
    InfoValues m_infoValues;
    WidgetWindowPort m_selfPort;
    MainDlgView m_view;
    InboundDispatcher m_inbound;
    FrameGesture m_lastGesture;
    bool m_created = false;
    bool m_destroyed = false;
    bool m_filtering = false;
    // The right button release the main window last had a copy of, and the control it has
    // reached since: when a control ignores a release, Qt hands a new event with the same
    // time to each parent in turn, and those must not make more copies.
    QPointer<QWidget> m_copiedReleaseAt;
    quint64 m_copiedReleaseTime = 0;
    // Moving by hand where the window system does not move the window for us.
    bool m_movingByHand = false;
    QPoint m_moveOffset;
};
