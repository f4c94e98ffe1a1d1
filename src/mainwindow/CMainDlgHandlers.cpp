#include "mainwindow/CMainDlg.h"

#include "foundation/Trace.h"
#include "localisation/LanguageTable.h"
#include "localisation/QGEntString.h"
#include "mainwindow/IMainWindowHost.h"
#include "mainwindow/MainDlgLayout.h"
#include "mainwindow/MainDlgSections.h"
#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginPointers.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/CheckRpcStatus.h"
#include "messaging/IMessage.h"
#include "messaging/enumMSG_PING_Message.h"
#include "toolkit/CDibButtonCtrl.h"
#include "toolkit/CLabel.h"
#include "toolkit/DialogControl.h"
#include "toolkit/PrivateMessageEvent.h"
#include "toolkit/RoundRectRegion.h"

#include <QCoreApplication>
#include <QMenu>

// The main window's handlers: what each entry of its message map does.

namespace {

using Handler = MainDlgMessageMap::Handler;
using Map = MainDlgMessageMap;
using Layout = MainDlgLayout;

} // namespace

bool CMainDlg::OnMessage(Handler handler, int message, WParam wParam, LParam lParam,
                         Result& result) {
    static_cast<void>(message);
    switch (handler) {
    case Handler::HitTest: {
        const QPoint global(Map::SignedLow(lParam), Map::SignedHigh(lParam));
        result = static_cast<Result>(HitTestAt(global));
        return true;
    }
    case Handler::SwallowCaptionDoubleClick:
        return true;
    case Handler::WindowShape:
        OnSize(Map::UnsignedLow(lParam), Map::UnsignedHigh(lParam));
        return false;
    case Handler::RunUpdate:
        m_host.RunFreshUpdate(static_cast<std::int32_t>(wParam));
        return true;
    case Handler::TrayAnimate:
        m_host.AnimateTray(wParam == 1);
        return true;
    case Handler::RefreshStatus:
        OnRefreshStatus(wParam);
        return true;
    case Handler::Close:
        m_host.HideToTray(*this);
        return true;
    case Handler::ExitQuiet:
        m_host.ExitProgram(0);
        return true;
    case Handler::ServiceMessage:
        result = OnServiceMessage(wParam);
        return true;
    case Handler::ConfigChanged:
        OnConfigChanged();
        return true;
    case Handler::ButtonEnter:
        OnButtonEnter(wParam);
        return true;
    case Handler::ButtonLeave:
        OnButtonLeave();
        return true;
    case Handler::SetInfo:
        result = m_infoValues.SetInfoValue(static_cast<std::int32_t>(wParam), lParam);
        return true;
    case Handler::GetInfo:
        result = m_infoValues.GetInfoValue(static_cast<std::int32_t>(wParam), lParam);
        return true;
    case Handler::Help:
        m_host.OpenHelpContents();
        return true;
    case Handler::Timers:
        // Left unhandled, so that the tray's handler further down sees the tick too.
        return OnTimer(static_cast<int>(wParam));
    case Handler::Language:
        OnLanguage(wParam);
        return true;
    case Handler::ShowSummary:
        m_host.ShowSummary(*this);
        return false;
    case Handler::FilterState:
        m_host.ShowFilterState(static_cast<std::int32_t>(wParam));
        return true;
    case Handler::Exit:
        m_host.ExitProgram(1);
        return true;
    case Handler::RpcStatus:
        OnRpcserverStatus(wParam);
        return true;
    case Handler::WindowButtons:
        OnWindowButton(Map::CommandId(wParam));
        return true;
    case Handler::MenuCommands:
        OnMenuCommand(Map::CommandId(wParam));
        return true;
    case Handler::SectionButtons:
        OnSectionButton(Map::CommandId(wParam));
        return true;
    case Handler::HandCursor: {
        const QPoint local(Map::SignedLow(lParam), Map::SignedHigh(lParam));
        if (!Layout::HomePageArea(size()).contains(local))
            return false;
        setCursor(Qt::PointingHandCursor);
        result = 1;
        return true;
    }
    case Handler::HomePageClick: {
        const QPoint local(Map::SignedLow(lParam), Map::SignedHigh(lParam));
        if (Layout::HomePageArea(size()).contains(local))
            m_host.OpenHomePage();
        return false;
    }
    case Handler::ChainTray:
        m_host.OnMainWindowTimer(static_cast<int>(wParam));
        return false;
    case Handler::SystemMenu:
        OpenSystemMenu(QPoint(Map::SignedLow(lParam), Map::SignedHigh(lParam)));
        return false;
    // The window system's own messages that Qt answers itself: the frame's size and
    // activation, the colours (given to the controls when they are made), the end of the
    // session (Qt's session management), the smallest size (set once with setMinimumSize),
    // painting (paintEvent) and reflection to controls.
    case Handler::InitDialog:
    case Handler::NcCalcSize:
    case Handler::NcActivate:
    case Handler::Colours:
    case Handler::QueryEndSession:
    case Handler::EndSession:
    case Handler::ChainDialogResize:
    case Handler::ChainOffscreenDraw:
    case Handler::ReflectNotifications:
        return false;
    }
    return false;
}

void CMainDlg::OnSize(int cx, int cy) {
    if (m_pPlugin != nullptr) {
        for (const auto& [button, page] : m_pageMap)
            m_pPlugin->ResizePage(page, cx, cy);
    }
    setMask(RoundRectRegion::Make(Layout::RegionSize(QSize(cx, cy)),
                                  QSize(Layout::CornerEllipse, Layout::CornerEllipse)));
}

bool CMainDlg::OnTimer(int id) {
    switch (id) {
    case RefreshTimer:
        PostToStatusPage(WM_QG_PAGE_REFRESH);
        break;
    case UpdateCheckTimer:
        m_timers.KillTimer(UpdateCheckTimer);
        m_host.CheckAutoUpdate();
        m_timers.SetTimer(UpdateCheckTimer, UpdateCheckPeriod);
        break;
    case PingTimer: {
        // How a service that went away is noticed: the send path sees its status.
        const enumMSG_PING_Message ping;
        m_host.SendRpcMessage(ping);
        break;
    }
    default:
        break;
    }
    return false;
}

void CMainDlg::OnWindowButton(int id) {
    switch (id) {
    case Layout::CloseButton:
        m_host.HideToTray(*this);
        break;
    case Layout::MinimiseButton:
        showMinimized();
        break;
    case Layout::MaximiseButton:
        if (isMaximized())
            showNormal();
        else
            showMaximized();
        SetControlVisible(Layout::RestoreButton, true);
        SetControlVisible(Layout::MaximiseButton, false);
        break;
    case Layout::RestoreButton:
        showNormal();
        SetControlVisible(Layout::MaximiseButton, true);
        SetControlVisible(Layout::RestoreButton, false);
        break;
    case Layout::HelpButton:
        OpenHelpMenu();
        break;
    case Layout::UpdateButton:
        m_host.RunFreshUpdate(0);
        break;
    default:
        break;
    }
}

namespace {

// The system commands of the window's menu, with the window system's numbers.
constexpr int SystemCommandRestore = 0xF120;
constexpr int SystemCommandMinimise = 0xF020;
constexpr int SystemCommandMaximise = 0xF030;
constexpr int SystemCommandClose = 0xF060;

} // namespace

void CMainDlg::OpenSystemMenu(const QPoint& global) {
    // The window manager's own menu cannot be opened for a frameless window, so the window
    // offers the same commands itself. Its texts are those of Qt's own window menu, which
    // Qt's translations cover, as the system's translations cover the system menu.
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("systemMenu"));
    const bool normal = !isMaximized() && !isMinimized();
    const auto add = [&menu](const char* text, int command, bool enabled) {
        QAction* action = menu.addAction(QCoreApplication::translate("QMdiSubWindow", text));
        action->setData(command);
        action->setEnabled(enabled);
        return action;
    };
    add("&Restore", SystemCommandRestore, !normal);
    add("Mi&nimize", SystemCommandMinimise, !isMinimized());
    add("Ma&ximize", SystemCommandMaximise, !isMaximized());
    menu.addSeparator();
    menu.setDefaultAction(add("&Close", SystemCommandClose, true));
    const QAction* chosen = menu.exec(global);
    setFocus();
    if (chosen == nullptr)
        return;
    const int command = chosen->data().toInt();
    QMetaObject::invokeMethod(
        this, [this, command] { OnSystemCommand(command); }, Qt::QueuedConnection);
}

void CMainDlg::OnSystemCommand(int command) {
    if (m_destroyed)
        return;
    // The same ways as the window's own buttons, so that the maximise and restore buttons
    // keep showing the one that applies.
    switch (command) {
    case SystemCommandRestore:
        OnWindowButton(Layout::RestoreButton);
        break;
    case SystemCommandMinimise:
        OnWindowButton(Layout::MinimiseButton);
        break;
    case SystemCommandMaximise:
        if (!isMaximized())
            OnWindowButton(Layout::MaximiseButton);
        break;
    case SystemCommandClose:
        close();
        break;
    default:
        break;
    }
}

QMenu* CMainDlg::HelpMenu() const {
    return m_helpMenu.data();
}

QPoint CMainDlg::HelpMenuAnchor() const {
    const CDibButtonCtrl* button = Button(Layout::HelpButton);
    if (button == nullptr)
        return QPoint();
    return button->mapToGlobal(QPoint(0, button->height()));
}

void CMainDlg::OpenHelpMenu() {
    if (m_helpMenu == nullptr || Button(Layout::HelpButton) == nullptr)
        return;
    m_helpMenu->popup(HelpMenuAnchor());
}

void CMainDlg::OnMenuCommand(int id) {
    switch (id) {
    case CommandAbout:
        m_host.ShowAbout(*this);
        break;
    case CommandHelpContents:
        m_host.OpenHelpContents();
        break;
    case CommandTechSupport:
        m_host.OpenSupportPage();
        break;
    case CommandHomePage:
        m_host.OpenHomePage();
        break;
    case CommandExit:
        ExitFromTray();
        break;
    case CommandOpen:
        OpenFromTray();
        break;
    case CommandFilterOn:
        m_host.SetFilterState(0);
        PostToStatusPage(WM_QG_PAGE_REFRESH);
        break;
    case CommandFilterOff:
        // Asks first; whatever the answer, the Status page looks again.
        m_host.SetFilterState(1);
        PostToStatusPage(WM_QG_PAGE_REFRESH);
        break;
    default:
        break;
    }
}

void CMainDlg::OpenFromTray() {
    if (!isVisible())
        show();
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    else
        raise();
    activateWindow();
}

void CMainDlg::ExitFromTray() {
    hide();
    m_host.RemoveTrayIcon();
    m_host.ExitProgram(1);
}

void CMainDlg::OnSectionButton(int id) {
    const MainDlgSections::Section section = MainDlgSections::SectionFor(id);
    switch (section.action) {
    case MainDlgSections::Action::ShowPage:
        SwitchSection(section.pageIndex, id);
        break;
    case MainDlgSections::Action::About:
        SelectSectionButton(id);
        m_host.ShowAbout(*this);
        break;
    case MainDlgSections::Action::SelectOnly:
        m_group.SelectButton(Button(id));
        break;
    case MainDlgSections::Action::RunUpdate:
        m_host.RunFreshUpdate(0);
        break;
    case MainDlgSections::Action::Nothing:
        break;
    }
}

void CMainDlg::SwitchSection(int pageIndex, int buttonId) {
    // The page learns its size before it is shown.
    if (m_pages.GetCurrentPage() != nullptr && m_pages.CurrentKey() != pageIndex &&
        m_pages.ShowPage(pageIndex) == DialogPages::ResultOk && m_pPlugin != nullptr) {
        const PluginPageId page = PageIdOf(buttonId);
        m_pPlugin->ResizePage(page, width(), height());
        m_pPlugin->ShowPage(page, 1);
    }
    SelectSectionButton(buttonId);
}

void CMainDlg::SelectSectionButton(int buttonId) {
    CDibButtonCtrl* button = Button(buttonId);
    m_group.SelectButton(button);
    if (button != nullptr) {
        button->setFocus();
        button->update();
    }
}

void CMainDlg::OnButtonEnter(WParam buttonHandle) {
    // Any page can send this with any number: only a button of this window is looked at,
    // and the number is compared, never followed, until it is known to be one.
    const QWidget* button = nullptr;
    for (const auto& [id, candidate] : m_buttons) {
        if (candidate != nullptr && PrivateMessageEvent::Handle(candidate) == buttonHandle) {
            button = candidate;
            break;
        }
    }
    if (button == nullptr)
        return;
    const MainDlgSections::Hint hint = MainDlgSections::HintFor(DialogControl::Id(button));
    if (m_hintLabel == nullptr)
        return;
    switch (hint.action) {
    case MainDlgSections::HintAction::Show:
        m_hintLabel->SetText(static_cast<const stdstr&>(QGEntString(hint.stringId)));
        m_hintLabel->show();
        break;
    case MainDlgSections::HintAction::Hide:
        m_hintLabel->hide();
        break;
    case MainDlgSections::HintAction::Leave:
        break;
    }
}

void CMainDlg::OnButtonLeave() {
    if (m_hintLabel == nullptr)
        return;
    m_hintLabel->hide();
    m_hintLabel->SetText(QString::fromUtf16(MainDlgSections::LeaveText));
}

void CMainDlg::OnLanguage(WParam languageId) {
    const stdstr name = LanguageTable::NameFromId(static_cast<std::uint32_t>(languageId));
    m_host.SelectLanguage(name);
    RunLanguageStep();
    if (m_pPlugin != nullptr)
        m_pPlugin->SetLanguage(name.c_str());
}

void CMainDlg::OnRefreshStatus(WParam wParam) {
    if (ServiceConnected.load() == 0) {
        ServiceConnected.store(1);
        return;
    }
    ShowInitialControls();
    if (wParam == 0) {
        PostToStatusPage(WM_QG_PAGE_INIT);
        PostToStatusPage(WM_QG_PAGE_SHOW);
        PostToStatusPage(WM_QG_PAGE_REFRESH);
    }
}

void CMainDlg::OnConfigChanged() {
    const std::int32_t filterOn = m_host.GetNumber(IInfoValueHost::Number::FilterOn);
    PrivateMessageEvent::Post(this, WM_QG_FILTER_STATE,
                              static_cast<WParam>(static_cast<std::intptr_t>(filterOn)));
    PostToStatusPage(WM_QG_PAGE_REFRESH);
    PrivateMessageEvent::Post(m_settingsPage.data(), WM_QG_CONFIG_CHANGED);
}

void CMainDlg::OnRpcserverStatus(WParam wParam) {
    TraceFmt(TRACE_FUNC, u"CMainDlg::OnRpcserverStatus(%d)", static_cast<std::int32_t>(wParam));
    const bool down = wParam != 0;
    if (down) {
        m_timers.KillTimer(RefreshTimer);
    } else {
        m_timers.SetTimer(RefreshTimer, RefreshPeriod);
        PostToStatusPage(WM_QG_PAGE_REFRESH);
    }
    PrivateMessageEvent::Send(m_statusPage.data(), WM_QG_RPC_STATUS, wParam);
    if (down)
        SwitchSection(0, Layout::StatusButton);

    const bool enabled = !down;
    SetControlEnabled(Layout::HelpButton, enabled);
    SetControlEnabled(Layout::UpdateButton, enabled);

    SetControlVisible(Layout::AboutButton, false);
    SetControlVisible(Layout::HiddenButton, false);
    SetControlVisible(Layout::AboutButton, true);
    SetControlVisible(Layout::UpdateButton, false);
    SetControlVisible(Layout::UpdatePicture, false);
    SetControlVisible(Layout::UpdatePicture, true);
    SetControlVisible(Layout::UpdateButton, true);

    for (int id : {Layout::AboutButton, Layout::StatusButton, Layout::AddressListButton,
                   Layout::AdvancedButton, Layout::SettingsButton, Layout::HiddenButton,
                   Layout::HintLabel, Layout::UpdatePicture})
        SetControlEnabled(id, enabled);
    if (m_statusPage != nullptr)
        m_statusPage->setEnabled(enabled);
}

CMainDlg::Result CMainDlg::OnServiceMessage(WParam message) {
    const auto* msg = reinterpret_cast<const IMessage*>(message);
    if (msg == nullptr)
        return 0;
    return m_inbound.DispatchInboundMessage(*msg);
}
