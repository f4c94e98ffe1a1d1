#include "mainwindow/CMainDlg.h"

#include "StringTable.h"

#include "foundation/Trace.h"
#include "localisation/QGEntString.h"
#include "mainwindow/IMainWindowHost.h"
#include "mainwindow/InitPluginPages.h"
#include "mainwindow/MainDlgLayout.h"
#include "mainwindow/MainDlgMessageFilter.h"
#include "mainwindow/PluginLoader.h"
#include "mainwindow/PluginPointers.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "toolkit/CDialogPage.h"
#include "toolkit/CDibButtonCtrl.h"
#include "toolkit/CLabel.h"
#include "toolkit/DialogControl.h"
#include "toolkit/DpiFontRule.h"
#include "toolkit/LabelTextFlags.h"
#include "toolkit/PrivateMessageEvent.h"
#include "toolkit/QuillgateGUIRes.h"
#include "toolkit/ResourceStore.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QScreen>
#include <QTimerEvent>
#include <QWindow>

#include <unistd.h>

namespace {

using Map = MainDlgMessageMap;
using Layout = MainDlgLayout;

// The dialog template's font, "MS Sans Serif" 8: the dialogs' face at 8 points.
constexpr int DialogFontPoints = 8;

constexpr int MK_LBUTTON = 0x0001;

QString ToQString(const stdstr& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

Qt::CursorShape CursorOf(MainDlgHitTest::Code code) {
    using Code = MainDlgHitTest::Code;
    switch (code) {
    case Code::Left:
    case Code::Right:
        return Qt::SizeHorCursor;
    case Code::Top:
    case Code::Bottom:
        return Qt::SizeVerCursor;
    case Code::TopLeft:
    case Code::BottomRight:
        return Qt::SizeFDiagCursor;
    case Code::TopRight:
    case Code::BottomLeft:
        return Qt::SizeBDiagCursor;
    case Code::Client:
    case Code::Caption:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace

CMainDlg::CMainDlg(IMainWindowHost& host)
    : QWidget(nullptr), m_host(host), m_timers(*this),
      m_infoHost(host, [this](int id) { Command(id); }), m_infoValues(m_infoHost), m_selfPort(this),
      m_view(*this), m_inbound(m_view, m_selfPort, host.GetComponentFailureResponder()) {
    OffscreenSetUp();
    // The hand over the home-page area and the frame's cursors need every move.
    setMouseTracking(true);
}

CMainDlg::~CMainDlg() {
    // The pages are the plug-in's code: they go before the library that holds it.
    DestroyWindow();

    TraceMsg(TRACE_DEBUG, u"~CMainDlg - GDI resources");
    m_trayIcons.on = QIcon();
    m_trayIcons.off = QIcon();
    delete m_helpMenu.data();
    m_trayIcons.frames.clear();
    TraceMsg(TRACE_DEBUG, u"~CMainDlg - Stopping brisk update thread");
    m_host.StopUpdateThread(UpdateThreadStopWait);
    TraceMsg(TRACE_DEBUG, u"~CMainDlg - completed");
    if (m_hPluginModule != nullptr)
        PluginLoader::FreePlugin();
}

bool CMainDlg::Create() {
    if (m_created)
        return !m_destroyed;
    m_created = true;

    // The dialog's own title, as the resource has it and not translated: a second copy of the
    // program finds this window by that very text.
    setWindowTitle(ToQString(QGResources::FindEnglishString(Layout::TitleString)));
    const QFont dialogFont =
        QuillgateGUIRes::MakeFont(DpiFontRule::LogicalHeight(DialogFontPoints, m_host.ScreenDpi()),
                                  0, false, 0, QuillgateGUIRes::DialogFace());
    setFont(dialogFont);
    m_units = DialogUnits::FromFont(dialogFont);
    resize(m_units.ToPixelsX(Layout::DialogWidth), m_units.ToPixelsY(Layout::DialogHeight));
    CreateControls();
    // The answer only tells the dialog manager to give the first control the focus.
    OnInitDialog();
    return true;
}

void CMainDlg::CreateControls() {
    for (const Layout::Control& control : Layout::Controls()) {
        QWidget* widget = nullptr;
        switch (control.kind) {
        case Layout::Kind::Button: {
            auto* button = new CDibButtonCtrl(this, control.id);
            connect(button, &CDibButtonCtrl::clicked, this, [this](int id) { Command(id); });
            m_buttons[control.id] = button;
            widget = button;
            break;
        }
        case Layout::Kind::Label:
            m_hintLabel = new CLabel(this, LabelTextFlags::SS_CENTER);
            widget = m_hintLabel;
            break;
        case Layout::Kind::Picture:
            m_updatePicture = new QLabel(this);
            widget = m_updatePicture;
            break;
        }
        DialogControl::SetId(widget, control.id);
        widget->setGeometry(m_units.ToPixels(control.units));
        if (widget == m_updatePicture) {
            // A picture control takes the size of its picture.
            const QPixmap picture = ResourceStore::Bitmap(Layout::UpdatePictureBitmap);
            if (!picture.isNull()) {
                m_updatePicture->setPixmap(picture);
                m_updatePicture->resize(picture.deviceIndependentSize().toSize());
            }
            m_updatePicture->setAutoFillBackground(true);
            QPalette palette = m_updatePicture->palette();
            palette.setColor(QPalette::Window, Qt::white);
            m_updatePicture->setPalette(palette);
        }
        widget->setVisible(control.visible);
    }
}

int CMainDlg::OnInitDialog() {
    // 1. Centred on the screen.
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    // 2.
    m_host.SetMainWindow(this);
    // 3.
    if (m_host.ScreenDpi() == DpiFontRule::LargeFontDpi)
        ApplyHighDpiLayout();
    // 4. The dialog's size is its smallest.
    setMinimumSize(size());
    // 5. The result doesn't matter: without pages the window still comes up.
    if (m_pStandAlone != nullptr && m_pPlugin != nullptr && m_pCommonUI != nullptr &&
        m_pQGInfo != nullptr)
        InitPluginPages(*this);
    else
        TraceMsg(TRACE_ERROR, u"CMainDlg::OnInitDialog(): the plug-in is incomplete, no pages.");
    // 6.
    if (m_host.GetFirstRun() != 0) {
        m_host.RunFirstRunWizard(*this);
        m_host.SetFirstRun(0);
        m_host.NotifyService();
    }
    // 7.
    m_skin = PaintBkgnd(m_host.GetGUIRes().GetWhiteBrush());
    m_skin.Load(PaintBkgnd::MainWindowIds(), devicePixelRatioF());
    // 8. The message filter of the loop; there is no idle work.
    if (!m_filtering) {
        qApp->installEventFilter(this);
        m_filtering = true;
    }
    // 9.
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    CreateHelpMenu();
    // 10.
    m_host.SetUpTray(*this);
    // 11.
    DressButtons();
    RunLanguageStep();
    // 12. The label paints itself, so the colours of the dialog's static controls are given
    // to it directly.
    if (m_hintLabel != nullptr) {
        m_hintLabel->hide();
        const QFont hintFont = m_host.GetGUIRes().GetNormalFont();
        m_hintLabel->SetFontName(hintFont.family());
        m_hintLabel->SetFontSize(DpiFontRule::PointsFor(m_host.ScreenDpi()));
        m_hintLabel->SetTextColor(Layout::HintTextColour);
        m_hintLabel->SetTransparent(true, false);
    }
    // 13.
    setWindowIcon(ResourceStore::Icon(128));
    // 14.
    if (m_host.IsAdministrator())
        m_timers.SetTimer(UpdateCheckTimer, UpdateCheckPeriod);
    // 15.
    m_timers.SetTimer(RefreshTimer, RefreshPeriod);
    m_timers.SetTimer(PingTimer, PingPeriod);
    // 16.
    ShowInitialControls();
    // 17.
    PrivateMessageEvent::Send(m_statusPage.data(), WM_QG_PAGE_INIT);
    PostToStatusPage(WM_QG_PAGE_SHOW);
    // 18.
    m_group.SelectButton(Button(Layout::StatusButton));
    // 19. The first message to the service.
    enumMSG_GUI_START_Message start;
    start.SetProcessId(static_cast<std::int32_t>(getpid()));
    m_host.SendRpcMessage(start);
    // 20.
    return 1;
}

void CMainDlg::ApplyHighDpiLayout() {
    for (const Layout::HighDpiStep& step : Layout::HighDpiSteps()) {
        if (QWidget* control = Control(step.id))
            control->setGeometry(Layout::ApplyHighDpiStep(control->geometry(), step));
    }
}

void CMainDlg::CreateHelpMenu() {
    if (m_helpMenu != nullptr)
        return;
    m_helpMenu = new QMenu(this);
    m_helpMenu->setObjectName(QStringLiteral("helpMenu"));
    for (const Layout::MenuItem& item : Layout::HelpMenuItems()) {
        QAction* action = m_helpMenu->addAction(QString());
        action->setObjectName(QString::number(item.command));
        action->setData(item.command);
        const int command = item.command;
        connect(action, &QAction::triggered, this, [this, command] { Command(command); });
    }
}

void CMainDlg::DressButtons() {
    for (const auto& [id, button] : m_buttons) {
        const Layout::ButtonLook* look = Layout::LookOf(id);
        if (look == nullptr)
            continue;
        const auto& b = look->bitmaps;
        button->SetStateBitmaps(b[0], b[1], b[2], b[3], b[4], b[5]);
        const auto& c = look->colours;
        button->SetColors(c[0], c[1], c[2], c[3]);
        button->SetClickSound(look->soundOn, look->soundId);
        button->SetPushMode(look->pushMode);
    }
    // The group latches its members; unlatched, the current section can be clicked again.
    for (int id : Layout::GroupButtons) {
        CDibButtonCtrl* button = Button(id);
        m_group.AddButton(button);
        if (button != nullptr)
            button->SetLatched(false);
    }
}

void CMainDlg::RunLanguageStep() {
    for (const Layout::ToolTip& tip : Layout::ToolTips()) {
        if (CDibButtonCtrl* button = Button(tip.id))
            button->SetToolTipText(QGEntString(tip.stringId).c_str());
    }
    const QuillgateGUIRes& resources = m_host.GetGUIRes();
    const QFont sectionFont = resources.GetBoldFont();
    const QFont linkFont = resources.GetLinkFont();
    for (const Layout::Caption& caption : Layout::Captions()) {
        CDibButtonCtrl* button = Button(caption.id);
        if (button == nullptr)
            continue;
        const bool wasVisible = !button->isHidden();
        const QFont& font = caption.font == Layout::CaptionFont::Section ? sectionFont : linkFont;
        button->SetCaption(QGEntString(caption.stringId), &font, caption.align, caption.xOffset, 0,
                           0);
        if (caption.toolTipId != 0)
            button->SetToolTipText(QGEntString(caption.toolTipId).c_str());
        // Hidden and shown again, so that it repaints with the new text.
        if (!caption.onlyIfVisible || wasVisible) {
            button->hide();
            button->show();
        }
    }
    if (m_helpMenu != nullptr) {
        for (const Layout::MenuItem& item : Layout::HelpMenuItems()) {
            const QString name = QString::number(item.command);
            for (QAction* action : m_helpMenu->actions()) {
                if (action->objectName() == name)
                    action->setText(ToQString(QGEntString(item.stringId)));
            }
        }
    }
}

void CMainDlg::ShowInitialControls() {
    SetControlVisible(Layout::AboutButton, true);
    SetControlVisible(Layout::UpdatePicture, true);
    SetControlVisible(Layout::UpdateButton, true);
    SetControlVisible(Layout::HiddenButton, false);
}

void CMainDlg::DestroyWindow() {
    if (m_destroyed)
        return;
    m_destroyed = true;
    m_timers.KillAll();
    if (m_filtering) {
        qApp->removeEventFilter(this);
        m_filtering = false;
    }
    if (m_helpMenu != nullptr)
        m_helpMenu->close();
    m_pages.DestroyAll();
    hide();
}

void CMainDlg::Command(int id) {
    if (m_destroyed)
        return;
    Dispatch(Map::WM_COMMAND, Map::MakeCommand(id, 0), 0);
}

PluginPageId CMainDlg::PageIdOf(int buttonId) const {
    const auto found = m_pageMap.find(buttonId);
    return found != m_pageMap.end() ? found->second : 0;
}

CDibButtonCtrl* CMainDlg::Button(int id) const {
    const auto found = m_buttons.find(id);
    return found != m_buttons.end() ? found->second : nullptr;
}

QWidget* CMainDlg::Control(int id) const {
    if (id == Layout::HintLabel)
        return m_hintLabel;
    if (id == Layout::UpdatePicture)
        return m_updatePicture;
    return Button(id);
}

void CMainDlg::SetControlVisible(int id, bool visible) {
    if (QWidget* control = Control(id))
        control->setVisible(visible);
}

void CMainDlg::SetControlEnabled(int id, bool enabled) {
    if (QWidget* control = Control(id))
        control->setEnabled(enabled);
}

bool CMainDlg::PostToStatusPage(int message, WParam wParam) {
    return PrivateMessageEvent::Post(m_statusPage.data(), message, wParam);
}

void CMainDlg::DoPaint(QPainter& painter) {
    m_skin.Draw(painter, rect());
}

// ---- The page host ----

stdstr CMainDlg::ConfigPath() {
    return m_host.GetText(IInfoValueHost::Text::ConfigPath);
}

stdstr CMainDlg::LanguageSetting() {
    return m_host.GetText(IInfoValueHost::Text::Language);
}

void CMainDlg::SetPageField(PageField field, QWidget* page) {
    switch (field) {
    case PageField::Status:
        m_statusPage = page;
        break;
    case PageField::AddressList:
        m_addressListPage = page;
        break;
    case PageField::Settings:
        m_settingsPage = page;
        break;
    }
}

void CMainDlg::AddPage(int index, QWidget* page) {
    if (index < 0 || index >= static_cast<int>(m_pageRecords.size()))
        return;
    auto record = std::make_unique<CDialogPage>(page);
    // A key that is taken keeps its page, and the stack keeps pointing at its record.
    if (m_pages.AddPage(record.get(), index) == DialogPages::ResultOk) {
        m_pageRecords[static_cast<std::size_t>(index)] = std::move(record);
        // Pages are made visible by the plug-in; the stack shows one at a time, so a page
        // waits hidden until it is selected instead of covering the one that is.
        const CDialogPage* current = m_pages.GetCurrentPage();
        if (page != nullptr && (current == nullptr || current->Window() != page))
            page->hide();
    }
}

void CMainDlg::SelectPage(int index) {
    m_pages.ShowPage(index);
}

void CMainDlg::MapButtonToPage(int buttonId, PluginPageId page) {
    m_pageMap[buttonId] = page;
}

// ---- Events into the message map ----

std::optional<CMainDlg::Result> CMainDlg::Dispatch(int message, WParam wParam, LParam lParam) {
    return MainDlgMessageMap::Dispatch(message, wParam, lParam, *this);
}

bool CMainDlg::event(QEvent* event) {
    if (PrivateMessageEvent::IsPrivateMessage(static_cast<int>(event->type()))) {
        if (auto* message = dynamic_cast<PrivateMessageEvent*>(event)) {
            // A destroyed window's queued messages are thrown away with it.
            if (m_destroyed) {
                message->SetResult(0);
                return true;
            }
            const auto result = Dispatch(message->Message(), message->wParam(), message->lParam());
            message->SetResult(result.value_or(0));
            return true;
        }
    }
    return QWidget::event(event);
}

bool CMainDlg::eventFilter(QObject* watched, QEvent* event) {
    using Filter = MainDlgMessageFilter;
    if (!m_filtering)
        return false;
    Filter::Input input;
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            input.event = Filter::Event::ReturnKeyDown;
    } else if (event->type() == QEvent::MouseButtonRelease) {
        if (static_cast<QMouseEvent*>(event)->button() == Qt::RightButton)
            input.event = Filter::Event::RightButtonUp;
    }
    if (input.event == Filter::Event::Other)
        return false;

    QWidget* receiver = watched->isWidgetType() ? static_cast<QWidget*>(watched) : nullptr;
    QWidget* focus = QApplication::focusWidget();
    input.forMainWindow = receiver != nullptr && (receiver == this || isAncestorOf(receiver));
    input.receiverIsMainWindow = receiver == this;
    input.hasFocus = focus != nullptr;
    input.receiverHasFocus = focus != nullptr && focus == receiver;
    input.receiverContainsFocus =
        focus != nullptr && receiver != nullptr && receiver->isAncestorOf(focus);
    if (input.event == Filter::Event::RightButtonUp) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        // Passed up from the control that had it last, with the time of the copied release.
        input.alreadyCopied = m_copiedReleaseAt != nullptr && receiver != nullptr &&
                              m_copiedReleaseAt->parentWidget() == receiver &&
                              mouse->timestamp() == m_copiedReleaseTime;
        if (input.alreadyCopied)
            m_copiedReleaseAt = receiver != this ? receiver : nullptr;
    }

    switch (Filter::Decide(input)) {
    case Filter::Action::Deliver:
        return false;
    case Filter::Action::Drop:
        return true;
    case Filter::Action::SendToFocus: {
        const auto* key = static_cast<QKeyEvent*>(event);
        QKeyEvent copy(key->type(), key->key(), key->modifiers(), key->text(), key->isAutoRepeat(),
                       static_cast<quint16>(key->count()));
        QCoreApplication::sendEvent(focus, &copy);
        return true;
    }
    case Filter::Action::CopyToMainWindow: {
        QPointer<QWidget> target = receiver;
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPointF global = mouse->globalPosition();
        QMouseEvent copy(mouse->type(), mapFromGlobal(global), global, mouse->button(),
                         mouse->buttons(), mouse->modifiers());
        copy.setTimestamp(mouse->timestamp());
        QCoreApplication::sendEvent(this, &copy);
        // Written down only now, so that the copy itself is not taken for one passed up.
        m_copiedReleaseAt = target;
        m_copiedReleaseTime = mouse->timestamp();
        // The control keeps the release, as it would without the main window's look; if the
        // copy's handling took the control away, there is nothing left to deliver it to.
        return target == nullptr;
    }
    }
    return false;
}

void CMainDlg::paintEvent(QPaintEvent* event) {
    OffscreenPaint(event);
}

void CMainDlg::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Dispatch(Map::WM_SIZE, 0, Map::MakeLParam(event->size().width(), event->size().height()));
}

void CMainDlg::closeEvent(QCloseEvent* event) {
    // Closing never ends the program: the window goes to the tray.
    event->ignore();
    Dispatch(Map::WM_CLOSE);
}

void CMainDlg::timerEvent(QTimerEvent* event) {
    if (const auto id = m_timers.IdOf(event->timerId())) {
        Dispatch(Map::WM_TIMER, static_cast<WParam>(*id));
        return;
    }
    QWidget::timerEvent(event);
}

void CMainDlg::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    const MainDlgHitTest::Code code = HitTestAt(event->globalPosition().toPoint());
    if (code == MainDlgHitTest::Code::Client) {
        const QPoint local = event->position().toPoint();
        Dispatch(Map::WM_LBUTTONDOWN, MK_LBUTTON, Map::MakeLParam(local.x(), local.y()));
        return;
    }
    StartFrameGesture(code, event->globalPosition());
}

void CMainDlg::mouseMoveEvent(QMouseEvent* event) {
    if (m_movingByHand) {
        if (event->buttons() & Qt::LeftButton) {
            move(event->globalPosition().toPoint() - m_moveOffset);
            return;
        }
        m_movingByHand = false;
    }
    UpdateCursor(event->position().toPoint());
}

void CMainDlg::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        m_movingByHand = false;
        return;
    }
    if (event->button() == Qt::RightButton) {
        // Only a release on the window itself is one on its frame: over a control it
        // belongs to the control, and what reaches the window then is the copy that the
        // window is sent of every right-button release.
        const MainDlgHitTest::Code code = HitTestAt(event->globalPosition().toPoint());
        if (code != MainDlgHitTest::Code::Client &&
            childAt(event->position().toPoint()) == nullptr) {
            const QPoint global = event->globalPosition().toPoint();
            Dispatch(Map::WM_NCRBUTTONUP, static_cast<WParam>(code),
                     Map::MakeLParam(global.x(), global.y()));
        }
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void CMainDlg::mouseDoubleClickEvent(QMouseEvent* event) {
    // Not passed on: the base would take the second click for a press. Outside the client
    // part the double click is swallowed, so the caption band can't maximise the window.
    const MainDlgHitTest::Code code = HitTestAt(event->globalPosition().toPoint());
    if (code != MainDlgHitTest::Code::Client) {
        const QPoint global = event->globalPosition().toPoint();
        Dispatch(Map::WM_NCLBUTTONDBLCLK, static_cast<WParam>(code),
                 Map::MakeLParam(global.x(), global.y()));
    }
}

// ---- The frame ----

MainDlgHitTest::Code CMainDlg::HitTestAt(const QPoint& globalPos) const {
    const QPoint origin = mapToGlobal(QPoint(0, 0));
    const MainDlgHitTest::Bounds client{origin.x(), origin.y(), origin.x() + width(),
                                        origin.y() + height()};
    return MainDlgHitTest::HitTest(globalPos.x(), globalPos.y(), client);
}

void CMainDlg::StartFrameGesture(MainDlgHitTest::Code code, const QPointF& globalPos) {
    m_lastGesture = FrameGesture{code, false};
    QWindow* window = windowHandle();
    if (code == MainDlgHitTest::Code::Caption) {
        if (window != nullptr && window->startSystemMove()) {
            m_lastGesture.bySystem = true;
            return;
        }
        m_movingByHand = true;
        m_moveOffset = globalPos.toPoint() - frameGeometry().topLeft();
        return;
    }
    if (MainDlgHitTest::IsResize(code) && window != nullptr &&
        window->startSystemResize(MainDlgHitTest::EdgesOf(code)))
        m_lastGesture.bySystem = true;
}

void CMainDlg::UpdateCursor(const QPoint& localPos) {
    if (Dispatch(Map::WM_SETCURSOR, 0, Map::MakeLParam(localPos.x(), localPos.y())))
        return;
    setCursor(CursorOf(HitTestAt(mapToGlobal(localPos))));
}
