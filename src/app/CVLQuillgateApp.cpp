#include "app/CVLQuillgateApp.h"

#include "app/ActivationListener.h"
#include "app/DriveTypeTexts.h"
#include "app/QtScreenAreaSource.h"
#include "app/RunSequence.h"
#include "app/SandboxMessageBoxes.h"
#include "app/SandboxReboot.h"
#include "app/ServiceManagerQueries.h"
#include "app/ServiceProgram.h"
#include "app/ShowMainWindowAtStart.h"
#include "app/SingleInstanceCheck.h"
#include "app/StartSvcDlgRunner.h"
#include "app/StartupSequence.h"
#include "foundation/AccountInfo.h"
#include "foundation/ApplicationFinder.h"
#include "foundation/CorvaneSystemInfo.h"
#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"
#include "localisation/CQGTranslationManager.h"
#include "localisation/QGEntString.h"
#include "mainwindow/CMainDlg.h"
#include "mainwindow/PluginCallbacks.h"
#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginPointers.h"
#include "mainwindow/PrivateMessages.h"
#include "mainwindow/QtMessageBoxes.h"
#include "messaging/InboundHandlers.h"
#include "messaging/LogindReboot.h"
#include "messaging/MainWindowPort.h"
#include "messaging/SendRpcMessage.h"
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"
#include "toolkit/DialogControl.h"
#include "toolkit/PrivateMessageEvent.h"
#include "toolkit/QuillgateGUIRes.h"

#include "resource.h"

#include <QApplication>
#include <QByteArray>
#include <QMenu>
#include <QMetaObject>
#include <QThread>

#include <chrono>
#include <climits>
#include <future>
#include <unistd.h>

namespace {

// The message boxes of the program; in a sandbox root with a record file named, boxes that
// nobody has to click (see SandboxMessageBoxes).
std::unique_ptr<IMessageBoxes> ChooseMessageBoxes() {
    const std::string record = SandboxMessageBoxes::ChosenLogPath();
    if (!record.empty())
        return std::make_unique<SandboxMessageBoxes>(record);
    return std::make_unique<QtMessageBoxes>();
}

// A demo or a test in a sandbox root must never restart the machine it runs on.
std::unique_ptr<SystemReboot> ChooseReboot() {
    if (!SystemPaths::Root().empty())
        return std::make_unique<SandboxReboot>();
    return std::make_unique<LogindReboot>();
}

} // namespace

CVLQuillgateApp::CVLQuillgateApp()
    : m_boxes(ChooseMessageBoxes()), m_anyThreadBoxes(*m_boxes),
      m_inboundDialogs(m_anyThreadBoxes, [this] { return GetMainWindow(); }),
      m_reboot(ChooseReboot()), m_reinstaller(m_inboundDialogs, m_installer, *m_reboot),
      m_failureResponder(m_inboundDialogs, m_reinstaller),
      m_msgHandler(m_mainWindowPort, m_failureResponder), m_shellExecutor(m_anyThreadBoxes),
      m_supervisor([] { return std::make_unique<ServiceManagerQueries>(); }, m_anyThreadBoxes,
                   *this, [] { return ShowMainWindowAtStart != 0; }) {
    // The send path and the service's handlers reach the main window through this port, and
    // the handlers queue into this pump and store into these settings.
    MainWindowPort::Install(&m_mainWindowPort);
    InboundHandlers::Attach(&m_msgHandler, &m_settings);
}

CVLQuillgateApp::~CVLQuillgateApp() {
    InboundHandlers::Attach(nullptr, nullptr);
    MainWindowPort::Install(nullptr);
    if (QGEntString::m_pLocalizer.load() == &m_translator)
        QGEntString::m_pLocalizer.store(nullptr);
}

// ---- Start and end ----

std::int32_t CVLQuillgateApp::Init() {
    StartupSequence sequence(*this);
    const std::int32_t result = sequence.Init();
    m_exePath = sequence.GetPaths().exePath;
    m_exeFolder = sequence.GetPaths().exeFolder;
    m_configFolder = sequence.GetPaths().configFolder;
    return result;
}

void CVLQuillgateApp::Term() {
    m_guiRes.reset();
    Corvane::ScreenAreaSource::install(nullptr);
}

int CVLQuillgateApp::Run() {
    RunSequence sequence(*this);
    return sequence.Run();
}

void CVLQuillgateApp::ReleaseWindowSystemParts() {
    m_dialog.reset();
    m_activation.reset();
    m_mainWindowPort.SetWindow(nullptr);
    StopInboundPump();
    m_serviceDialogs.reset();
    m_guiRes.reset();
    Corvane::ScreenAreaSource::install(nullptr);
}

void CVLQuillgateApp::StopInboundPump() {
    QCoreApplication* application = QCoreApplication::instance();
    if (application == nullptr || QThread::currentThread() != application->thread()) {
        m_msgHandler.Stop();
        return;
    }
    // The loop has ended, so a box that the pump waits for would never be shown: its call is
    // taken out of the queue unrun, which releases the pump with the unshown answer, until
    // the pump has seen its exit event.
    auto stopped = std::async(std::launch::async, [this] { m_msgHandler.Stop(); });
    while (stopped.wait_for(std::chrono::milliseconds(10)) != std::future_status::ready)
        QCoreApplication::removePostedEvents(application, QEvent::MetaCall);
    stopped.get();
}

bool CVLQuillgateApp::CheckSingleInstance() {
    SingleInstanceCheck check(ActivationListener::DefaultSocketPath());
    return check.Check(m_instanceMutex);
}

bool CVLQuillgateApp::IsFirstCopy() const {
    return m_instanceMutex != nullptr && !m_instanceMutex->alreadyExisted();
}

bool CVLQuillgateApp::EnsureServiceRunning() {
    return m_supervisor.EnsureServiceRunning();
}

bool CVLQuillgateApp::StopFilterService() {
    return m_supervisor.StopFilterService();
}

bool CVLQuillgateApp::appShellExecute(const stdstr& file, const stdstr& parameters, bool wait,
                                      ShellOpenInfo* info, int* exitCode, int show) {
    return m_shellExecutor.appShellExecute(file, parameters, wait, info, exitCode, show);
}

int CVLQuillgateApp::RunServiceDialog(bool start) {
    if (!m_serviceDialogs) {
        StartSvcDlgBase::Setup setup;
        setup.worker.executor = &m_shellExecutor;
        setup.worker.serviceProgram = [] { return ServiceProgram::Path(); };
        setup.worker.pause = SystemSleep;
        setup.background = GetGUIRes().GetWhiteBrush();
        m_serviceDialogs = std::make_unique<StartSvcDlgRunner>(std::move(setup));
    }
    return m_serviceDialogs->RunServiceDialog(start);
}

// ---- Accessors ----

QuillgateGUIRes& CVLQuillgateApp::GetGUIRes() {
    if (!m_guiRes)
        m_guiRes = std::make_unique<QuillgateGUIRes>();
    return *m_guiRes;
}

QWidget* CVLQuillgateApp::GetMainWindow() const {
    return m_mainWindow.data();
}

// ---- The plug-in's requests and other services ----

std::intptr_t CVLQuillgateApp::SetInfoValue(std::int32_t code, std::intptr_t value) {
    return m_infoValues.SetInfoValue(code, value);
}

std::intptr_t CVLQuillgateApp::GetInfoValue(std::int32_t code, std::intptr_t value) {
    return m_infoValues.GetInfoValue(code, value);
}

stdstr CVLQuillgateApp::DriveTypeText(const Corvane::Drive& drive) const {
    return DriveTypeTexts::Of(static_cast<int>(drive.type));
}

bool CVLQuillgateApp::IsAdministrator() {
    AccountInfo account;
    return account.isAdministrator();
}

void CVLQuillgateApp::StartTrayAnimation() {
    m_mainWindowPort.post(WM_QG_TRAY_ANIMATE, 1, 0);
}

void CVLQuillgateApp::StopTrayAnimation() {
    m_mainWindowPort.post(WM_QG_TRAY_ANIMATE, 0, 0);
}

int CVLQuillgateApp::MessageBoxText(QWidget* parent, const stdstr& text, const stdstr& caption,
                                    std::uint32_t flags) {
    return m_boxes->MessageBox(parent, text, caption, flags);
}

int CVLQuillgateApp::MessageBoxById(QWidget* parent, std::uint32_t textId, std::uint32_t captionId,
                                    std::uint32_t flags) {
    const QGEntString text(textId);
    const QGEntString caption(captionId);
    return MessageBoxText(parent, text, caption, flags);
}

void CVLQuillgateApp::ResizeControl(QWidget* dialog, int id, int deltaHeight, int deltaWidth) {
    QuillgateGUIRes::GrowControl(dialog, id, deltaHeight, deltaWidth);
}

void CVLQuillgateApp::MoveControl(QWidget* dialog, int id, int deltaUp, int deltaRight,
                                  bool toClient) {
    QWidget* control = DialogControl::Find(dialog, id);
    if (control == nullptr)
        return;
    QPoint topLeft = control->mapToGlobal(QPoint(0, 0));
    // Without the conversion the screen position is taken as it stands, as the callers of
    // the dialogs that ask for it expect.
    if (toClient && control->parentWidget() != nullptr)
        topLeft = control->parentWidget()->mapFromGlobal(topLeft);
    control->move(topLeft.x() + deltaRight, topLeft.y() - deltaUp);
    control->update();
}

// ---- IInfoValueHost ----

void CVLQuillgateApp::SetFlagByte(int code, std::uint8_t value) {
    (code == 1 ? m_flagByte1 : m_flagByte2) = value;
}

std::int32_t CVLQuillgateApp::GetNumber(Number setting) {
    return m_settings.GetNumber(setting);
}

void CVLQuillgateApp::SetNumber(Number setting, std::int32_t value) {
    m_settings.SetNumber(setting, value);
}

const stdstr& CVLQuillgateApp::GetText(Text setting) {
    return m_settings.GetText(setting);
}

void CVLQuillgateApp::SetText(Text setting, const stdstr& value) {
    m_settings.SetText(setting, value);
}

bool CVLQuillgateApp::SetFilterState(std::int32_t value) {
    std::int32_t filterOn = 1;
    if (value == 1) {
        const QGEntString question(IDS_CONFIRM_STOP_FILTERING);
        const QGEntString caption(IDS_PRODUCT_NAME);
        const int answer = m_boxes->MessageBox(
            GetMainWindow(), question, caption,
            IMessageBoxes::MB_YESNO | IMessageBoxes::MB_ICONEXCLAMATION | MB_SETFOREGROUND);
        if (answer != IMessageBoxes::IDYES)
            return false;
        filterOn = 0;
    }
    m_settings.SetFilterOn(filterOn);
    m_settings.NotifyService();
    enumMSG_FILTER_CHANGE_Message change;
    change.SetFilterState(filterOn);
    ::SendRpcMessage(change);
    m_mainWindowPort.post(WM_QG_FILTER_STATE, static_cast<std::uintptr_t>(filterOn), 0);
    return true;
}

void CVLQuillgateApp::RunFreshUpdate(std::int32_t mode) {
    TraceFmt(TRACE_DEBUG,
             u"CVLQuillgateApp::RunFreshUpdate(%d) - the update launcher is not "
             u"built yet",
             mode);
}

void CVLQuillgateApp::NotifyService() {
    m_settings.NotifyService();
}

void CVLQuillgateApp::Command(int id) {
    if (CMainDlg* window = m_mainWindow.data())
        window->Command(id);
}

bool CVLQuillgateApp::ReadFileVersion(const stdstr& path, std::array<std::uint32_t, 4>& version) {
    int parts[4] = {0, 0, 0, 0};
    if (!Corvane::ApplicationFinder().getFileVersion(path, parts[0], parts[1], parts[2], parts[3]))
        return false;
    for (std::size_t i = 0; i < version.size(); ++i)
        version[i] = static_cast<std::uint32_t>(parts[i]);
    return true;
}

// ---- IMainWindowHost ----

void CVLQuillgateApp::SetMainWindow(CMainDlg* window) {
    m_mainWindow = window;
    m_mainWindowPort.SetWindow(window);
    // A second copy reaches the first one's window for as long as it exists.
    if (window != nullptr && IsFirstCopy() && !m_activation) {
        m_activation = std::make_unique<ActivationListener>(
            [this](const QString& title, const QByteArray& token) {
                return ShowForSecondCopy(title, token);
            });
        if (!m_activation->Listen())
            TraceMsg(TRACE_ERROR,
                     u"CVLQuillgateApp::SetMainWindow - a second copy cannot reach this one");
    }
}

bool CVLQuillgateApp::ShowForSecondCopy(const QString& title, const QByteArray& token) {
    CMainDlg* window = m_mainWindow.data();
    if (window == nullptr || window->IsDestroyed() || window->windowTitle() != title)
        return false;
    // Wayland lets a window raise itself only with the token of the copy that the user
    // started; the platform reads it from the environment at the activation request.
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token);
    window->show();
    window->raise();
    window->activateWindow();
    TraceMsg(TRACE_DEBUG, u"CVLQuillgateApp::ShowForSecondCopy - main window shown");
    return true;
}

int CVLQuillgateApp::ScreenDpi() {
    return GetGUIRes().GetScreenDpi();
}

std::int32_t CVLQuillgateApp::GetFirstRun() {
    return m_settings.GetFirstRun();
}

void CVLQuillgateApp::SetFirstRun(std::int32_t value) {
    m_settings.SetFirstRun(value);
}

bool CVLQuillgateApp::SendRpcMessage(const IMessage& msg) {
    return ::SendRpcMessage(msg);
}

void CVLQuillgateApp::NotBuiltYet(const char16_t* operation) {
    TraceFmt(TRACE_DEBUG, u"CVLQuillgateApp::%s - not built yet", operation);
}

void CVLQuillgateApp::CheckAutoUpdate() {
    NotBuiltYet(u"CheckAutoUpdate (update check launcher)");
}

void CVLQuillgateApp::StopUpdateThread(std::uint32_t) {
    NotBuiltYet(u"StopUpdateThread (update launcher)");
}

void CVLQuillgateApp::ShowAbout(CMainDlg&) {
    NotBuiltYet(u"ShowAbout (About box)");
}

void CVLQuillgateApp::OpenHomePage() {
    NotBuiltYet(u"OpenHomePage (QGUrls)");
}

void CVLQuillgateApp::OpenSupportPage() {
    NotBuiltYet(u"OpenSupportPage (QGUrls)");
}

void CVLQuillgateApp::OpenHelpContents() {
    NotBuiltYet(u"OpenHelpContents (QGUrls)");
}

void CVLQuillgateApp::SelectLanguage(const stdstr& name) {
    CQGTranslationManager::Instance().LoadLanguage(name, false);
}

void CVLQuillgateApp::ExitProgram(std::int32_t exitCode) {
    m_exiting = true;
    // No more inbound calls arrive after this.
    if (m_pRPCExt != nullptr)
        PluginCallbacks::Unregister(*m_pRPCExt);
    // Ending the program stops the filter service too; a failure has been shown.
    StopFilterService();
    if (m_pPlugin != nullptr)
        m_pPlugin->TermGUI();
    if (CMainDlg* window = m_mainWindow.data())
        window->DestroyWindow();
    RemoveTrayIcon();
    // PostQuitMessage: the loop ends when it reaches this, behind what is queued already.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [exitCode] { QCoreApplication::exit(exitCode); },
        Qt::QueuedConnection);
}

void CVLQuillgateApp::RunFirstRunWizard(CMainDlg&) {
    NotBuiltYet(u"RunFirstRunWizard (first-run wizard)");
}

void CVLQuillgateApp::SetUpTray(CMainDlg&) {
    NotBuiltYet(u"SetUpTray (tray icon)");
}

void CVLQuillgateApp::HideToTray(CMainDlg&) {
    // Without a tray icon the window must stay reachable: closing it leaves it as it is.
    NotBuiltYet(u"HideToTray (tray icon, close warning)");
}

void CVLQuillgateApp::RemoveTrayIcon() {
    NotBuiltYet(u"RemoveTrayIcon (tray icon)");
}

void CVLQuillgateApp::AnimateTray(bool start) {
    TraceFmt(TRACE_DEBUG, u"CVLQuillgateApp::AnimateTray(%d) - the tray icon is not built yet",
             start ? 1 : 0);
}

void CVLQuillgateApp::ShowFilterState(std::int32_t filterOn) {
    TraceFmt(TRACE_DEBUG, u"CVLQuillgateApp::ShowFilterState(%d) - the tray icon is not built yet",
             filterOn);
}

void CVLQuillgateApp::OnMainWindowTimer(int) {
    // Every tick of every window timer comes here; the tray's animation timer is the only one
    // it would act on, and there is no tray yet. Not traced: it would fill the log.
}

void CVLQuillgateApp::ShowSummary(CMainDlg&) {
    NotBuiltYet(u"ShowSummary (summary pop-up)");
}

// ---- IStartupSteps ----

bool CVLQuillgateApp::StartMessageThread() {
    return m_msgHandler.StartThread();
}

void CVLQuillgateApp::RequestLowFragmentationHeap() {
    // glibc's allocator has no such request to make: nothing to do.
}

bool CVLQuillgateApp::ReadModuleFileName(stdstr& path) {
    char buffer[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (length <= 0)
        return false;
    path = stdstr::toTString(std::string_view(buffer, static_cast<std::size_t>(length)));
    return true;
}

void CVLQuillgateApp::DiscoverLanguages() {
    CQGTranslationManager::Instance().LoadLanguages(stdstr());
}

stdstr CVLQuillgateApp::LanguageSettingText() {
    return m_settings.GetLanguage();
}

void CVLQuillgateApp::InstallTranslator() {
    QGEntString::m_pLocalizer.store(&m_translator);
}

std::int32_t CVLQuillgateApp::InitModule() {
    // What ATL's module set up is the window system here: without it nothing can be shown.
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        return E_FAIL;
    Corvane::ScreenAreaSource::install(std::make_shared<QtScreenAreaSource>());
    return S_OK;
}

void CVLQuillgateApp::LoadGUIResources() {
    GetGUIRes().Create();
}

stdstr CVLQuillgateApp::AppDataFolder() {
    return Corvane::SystemInfo().getAppDataFolder();
}

void CVLQuillgateApp::LoadSettings() {
    m_settings.LoadSettings();
}

void CVLQuillgateApp::LoadDrives() {
    m_drives.refresh();
}

void CVLQuillgateApp::ShowErrorBox(const stdstr& text) {
    const QGEntString caption(IDS_PRODUCT_NAME);
    m_boxes->MessageBox(nullptr, text, caption, MB_ICONERROR);
}

// ---- IRunSteps ----

void CVLQuillgateApp::AddMessageLoop() {
    // The loop is the application's; the main window installs its own filter on it.
    m_messageLoopAdded = true;
}

void CVLQuillgateApp::RemoveMessageLoop() {
    m_messageLoopAdded = false;
}

void CVLQuillgateApp::DestroyMessageLoop() {}

bool CVLQuillgateApp::CreateMainWindow() {
    m_dialog = std::make_unique<CMainDlg>(*this);
    return m_dialog->Create();
}

void CVLQuillgateApp::DestroyMainWindow() {
    m_dialog.reset();
}

void CVLQuillgateApp::ShowMainWindow(bool visible) {
    if (m_dialog)
        m_dialog->setVisible(visible);
}

void CVLQuillgateApp::PostToMainWindow(int message, std::uintptr_t wParam, std::intptr_t lParam) {
    PrivateMessageEvent::Post(m_dialog.get(), message, wParam, lParam);
}

std::int32_t CVLQuillgateApp::FilterOn() {
    return m_settings.GetFilterOn();
}

int CVLQuillgateApp::RunMessageLoop() {
    return QApplication::exec();
}
