#pragma once
// The application object: one global instance, _Module (see Module.h), through which the
// program reaches its paths, its settings, the shared look-and-feel resources, the inbound
// pump, the service supervision and the main window. Its Init is the start-up of the
// process up to the loading of the plug-in (StartupSequence), Run shows the main window and
// runs the loop (RunSequence), Term undoes the window system's part.
//
// _Module is made during static initialisation, before the entry runs and before there is
// a window system or a trace log: its constructor reads the settings and makes the pump,
// the way the program always started. Qt objects cannot exist before the QApplication, so
// everything that needs the window system (the shared resources, the second-copy listener,
// the screen enquiry, the main window) is made later, from Init on, and is let go of again
// by ReleaseWindowSystemParts before the QApplication goes.
//
// It is the main window's host (IMainWindowHost). The parts of later work that the window
// or the plug-in reach through it (update launchers, links and help, About box, tray icon,
// summary pop-up, first-run wizard, reinstall prompt) are not built yet: each of their
// operations here traces that at TRACE_DEBUG and does nothing else.

#include "app/AppShellExecutor.h"
#include "app/GuiThreadMessageBoxes.h"
#include "app/IRunSteps.h"
#include "app/IServiceDialogRunner.h"
#include "app/IStartupSteps.h"
#include "app/InboundPump.h"
#include "app/QtInboundDialogs.h"
#include "app/QuillgateSettings.h"
#include "app/ServiceSupervisor.h"
#include "foundation/Drives.h"
#include "foundation/Event.h"
#include "foundation/Mutex.h"
#include "foundation/ShellOpenInfo.h"
#include "foundation/stdstr.h"
#include "localisation/CTranslator.h"
#include "mainwindow/IMainWindowHost.h"
#include "mainwindow/InfoValues.h"
#include "mainwindow/WidgetWindowPort.h"
#include "messaging/ComponentFailureResponder.h"
#include "messaging/LspReinstaller.h"
#include "messaging/ShellInstallerLauncher.h"

#include <QByteArray>
#include <QPointer>
#include <QString>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

class ActivationListener;
class CMainDlg;
class IMessageBoxes;
class QuillgateGUIRes;
class StartSvcDlgRunner;
class QWidget;
class SystemReboot;

class CVLQuillgateApp : public IMainWindowHost,
                        private IStartupSteps,
                        private IRunSteps,
                        private IServiceDialogRunner {
public:
    static constexpr std::int32_t S_OK = 0;
    static constexpr std::int32_t E_FAIL = static_cast<std::int32_t>(0x80004005u);
    // MessageBoxW's flags that the application's own boxes use.
    static constexpr std::uint32_t MB_ICONERROR = 0x10;
    static constexpr std::uint32_t MB_SETFOREGROUND = 0x10000;

    CVLQuillgateApp();
    ~CVLQuillgateApp() override;
    CVLQuillgateApp(const CVLQuillgateApp&) = delete;
    CVLQuillgateApp& operator=(const CVLQuillgateApp&) = delete;

    // ---- Start and end ----

    // The start-up sequence; 0 for success, E_FAIL for every failure (a second copy too).
    // Needs the QApplication.
    std::int32_t Init();
    // Lets go of the shared resources and the screen enquiry; also after a failed Init.
    void Term();
    // Creates the main window, shows or hides it, runs the loop, destroys the window; the
    // loop's exit code (0 when the window could not be made).
    int Run();
    // Everything of the object that belongs to the window system, let go of before the
    // QApplication is destroyed: the main window, the second-copy listener, the shared
    // resources, the screen enquiry, and the inbound pump's thread, which could otherwise ask
    // for a box after the window system is gone. It does not run Term: the entry's exception
    // path comes here too, and that path skips Term.
    void ReleaseWindowSystemParts();

    // True if this is the first copy; a second copy asks the first to show its window.
    bool CheckSingleInstance() override;
    bool EnsureServiceRunning() override;
    bool StopFilterService();
    bool appShellExecute(const stdstr& file, const stdstr& parameters, bool wait,
                         ShellOpenInfo* info, int* exitCode, int show);

    // ---- Accessors ----

    QuillgateSettings& GetSettings() { return m_settings; }
    QuillgateGUIRes& GetGUIRes() override;
    CMsgHandler& GetMsgHandler() { return m_msgHandler; }
    IMessageBoxes& MessageBoxes() override { return *m_boxes; }
    // The main window, null before it registered itself and after it is gone.
    QWidget* GetMainWindow() const;
    const stdstr& GetExePath() const { return m_exePath; }
    const stdstr& GetExeFolder() const { return m_exeFolder; }
    const stdstr& GetConfigFolder() const { return m_configFolder; }
    Corvane::Drives& GetDrives() { return m_drives; }
    // Whether this object holds the single-instance lock as the first copy.
    bool IsFirstCopy() const;
    // The set-up's state of the exit sequence: set at the head of ExitProgram, never cleared.
    bool IsExiting() const { return m_exiting.load(); }

    // ---- The plug-in's requests (messages 1051 and 1052) and other services ----

    std::intptr_t SetInfoValue(std::int32_t code, std::intptr_t value);
    std::intptr_t GetInfoValue(std::int32_t code, std::intptr_t value);
    // By the drive's type: the text of the About box.
    stdstr DriveTypeText(const Corvane::Drive& drive) const;
    bool IsAdministrator() override;
    // Post 1054 to the main window with 1 or 0.
    void StartTrayAnimation();
    void StopTrayAnimation();
    int MessageBoxText(QWidget* parent, const stdstr& text, const stdstr& caption,
                       std::uint32_t flags);
    int MessageBoxById(QWidget* parent, std::uint32_t textId, std::uint32_t captionId,
                       std::uint32_t flags);
    // Grows control `id` of `dialog` by the deltas; moves it right and up by the deltas
    // (taking its screen position as client coordinates unless `toClient`).
    static void ResizeControl(QWidget* dialog, int id, int deltaHeight, int deltaWidth);
    static void MoveControl(QWidget* dialog, int id, int deltaUp, int deltaRight, bool toClient);

    // ---- IInfoValueHost ----

    void SetFlagByte(int code, std::uint8_t value) override;
    std::int32_t UpdateAction() override { return m_updateAction; }
    void SetUpdateAction(std::int32_t action) override { m_updateAction = action; }
    std::int32_t GetNumber(Number setting) override;
    void SetNumber(Number setting, std::int32_t value) override;
    const stdstr& GetText(Text setting) override;
    void SetText(Text setting, const stdstr& value) override;
    // 1 asks the user and turns filtering off; anything else turns it on. True when the
    // state changed.
    bool SetFilterState(std::int32_t value) override;
    void RunFreshUpdate(std::int32_t mode) override;
    void NotifyService() override;
    void Command(int id) override;
    bool ReadFileVersion(const stdstr& path, std::array<std::uint32_t, 4>& version) override;

    // ---- IMainWindowHost ----

    void SetMainWindow(CMainDlg* window) override;
    int ScreenDpi() override;
    std::int32_t GetFirstRun() override;
    void SetFirstRun(std::int32_t value) override;
    bool SendRpcMessage(const IMessage& msg) override;
    ComponentFailureResponder& GetComponentFailureResponder() override {
        return m_failureResponder;
    }
    void CheckAutoUpdate() override;
    void StopUpdateThread(std::uint32_t waitMs) override;
    void ShowAbout(CMainDlg& owner) override;
    void OpenHomePage() override;
    void OpenSupportPage() override;
    void OpenHelpContents() override;
    void SelectLanguage(const stdstr& name) override;
    void ExitProgram(std::int32_t exitCode) override;
    void RunFirstRunWizard(CMainDlg& window) override;
    void SetUpTray(CMainDlg& window) override;
    void HideToTray(CMainDlg& window) override;
    void RemoveTrayIcon() override;
    void AnimateTray(bool start) override;
    void ShowFilterState(std::int32_t filterOn) override;
    void OnMainWindowTimer(int timerId) override;
    void ShowSummary(CMainDlg& window) override;

private:
    // IStartupSteps
    bool StartMessageThread() override;
    void RequestLowFragmentationHeap() override;
    bool ReadModuleFileName(stdstr& path) override;
    void DiscoverLanguages() override;
    stdstr LanguageSettingText() override;
    void InstallTranslator() override;
    std::int32_t InitModule() override;
    void LoadGUIResources() override;
    stdstr AppDataFolder() override;
    void LoadSettings() override;
    void LoadDrives() override;
    void ShowErrorBox(const stdstr& text) override;

    // IRunSteps
    void AddMessageLoop() override;
    void RemoveMessageLoop() override;
    void DestroyMessageLoop() override;
    bool CreateMainWindow() override;
    void DestroyMainWindow() override;
    void ShowMainWindow(bool visible) override;
    void PostToMainWindow(int message, std::uintptr_t wParam, std::intptr_t lParam) override;
    std::int32_t FilterOn() override;
    int RunMessageLoop() override;

    // IServiceDialogRunner: StartSvcDlgRunner, made at the first use (its white brush is the
    // shared resources', which need the window system).
    int RunServiceDialog(bool start) override;
    // A message in delivery may wait for a box on the GUI thread: the wait for the pump's end
    // drops such calls unrun, so that neither thread waits for the other for ever.
    void StopInboundPump();

    // A second copy asked for the main window: show and raise it, with the caller's
    // activation token; false when there is no window of that title.
    bool ShowForSecondCopy(const QString& title, const QByteArray& token);
    // Traces that a part of later work was asked for.
    static void NotBuiltYet(const char16_t* operation);

    // Members in the order of the program's application object; the Linux plumbing that a
    // member needs stands right before it.
    WidgetWindowPort m_mainWindowPort;
    QPointer<CMainDlg> m_mainWindow;
    std::unique_ptr<Corvane::Mutex> m_instanceMutex;
    stdstr m_exePath;
    stdstr m_exeFolder;
    stdstr m_configFolder;
    // Made at the first use after the QApplication exists.
    std::unique_ptr<QuillgateGUIRes> m_guiRes;
    Corvane::Drives m_drives;
    std::int32_t m_updateAction = 0;
    // Made unsignalled; nothing touches it.
    Corvane::Event m_event;
    std::uint8_t m_flagByte1 = 0;
    std::uint8_t m_flagByte2 = 0;
    QuillgateSettings m_settings;
    // The answers to the plug-in's set and get requests; keeps the first version text.
    InfoValues m_infoValues{*this};

    std::unique_ptr<IMessageBoxes> m_boxes;
    GuiThreadMessageBoxes m_anyThreadBoxes;
    QtInboundDialogs m_inboundDialogs;
    ShellInstallerLauncher m_installer;
    std::unique_ptr<SystemReboot> m_reboot;
    LspReinstaller m_reinstaller;
    ComponentFailureResponder m_failureResponder;
    InboundPump m_msgHandler;

    AppShellExecutor m_shellExecutor;
    std::unique_ptr<StartSvcDlgRunner> m_serviceDialogs;
    ServiceSupervisor m_supervisor;
    CTranslator m_translator;
    std::unique_ptr<ActivationListener> m_activation;
    // Run's window; its destructor stops the updater's thread and frees the plug-in.
    std::unique_ptr<CMainDlg> m_dialog;
    bool m_messageLoopAdded = false;
    std::atomic<bool> m_exiting{false};
};
