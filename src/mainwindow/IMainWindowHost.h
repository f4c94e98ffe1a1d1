#pragma once
// Everything that the main window (CMainDlg) needs of the application object, in one
// interface, so that the window is built and tested without the rest of the program. The
// application implements it; the tests record it.
//
// All calls come on the GUI thread, from the window's set-up, its handlers and its
// destructor. The settings part (FilterOn, AutoUpgrade, ..., ConfigPath, Language, the
// update action, NotifyService, SetFilterState, RunFreshUpdate) is IInfoValueHost's, which
// also answers the plug-in's set and get requests.
//
// How the application uses the window (in Run, after LoadPlugin succeeded):
//
//     CMainDlg dlg(host);         // the host outlives the window
//     if (!dlg.Create()) ...      // controls of dialog 129, then the set-up (OnInitDialog):
//                                 // pages, first run, tray, timers, "GUI Start" to the service
//     post 1041 (summary) if wanted; dlg.show() or dlg.hide(); post 1057 with FilterOn
//     run the event loop
//     // ExitProgram: UnregisterHandler..., StopFilterService, TermGUI, dlg.DestroyWindow(),
//     // remove the tray icon, quit the loop with the exit code
//     // dlg goes out of scope: its destructor stops the updater thread and frees the plug-in

#include "foundation/stdstr.h"
#include "mainwindow/IInfoValueHost.h"

#include <cstdint>

class CMainDlg;
class ComponentFailureResponder;
class IMessage;
class IMessageBoxes;
class QuillgateGUIRes;

class IMainWindowHost : public IInfoValueHost {
public:
    // ---- The window and the program ----

    // SetMainWindow, the second step of the set-up: from now on the program's port to its
    // main window (MainWindowPort, which the send path and the service's handlers use)
    // reaches `window`. The application keeps a WidgetWindowPort of its own for the whole
    // process, points it at the window here and installs it once.
    virtual void SetMainWindow(CMainDlg* window) = 0;

    // The shared fonts, brushes and pictures (QuillgateGUIRes), made before the window.
    virtual QuillgateGUIRes& GetGUIRes() = 0;
    // The screen's dots per inch as the shared resources read them
    // (QuillgateGUIRes::GetScreenDpi); 120 turns on the large-font layout.
    virtual int ScreenDpi() = 0;

    // The process's message boxes.
    virtual IMessageBoxes& MessageBoxes() = 0;

    // ---- Settings beyond IInfoValueHost ----

    // The setting FirstRun (QuillgateSettings), not 0 until the first-run wizard has run.
    virtual std::int32_t GetFirstRun() = 0;
    // Changes it in memory only; the window calls NotifyService() afterwards.
    virtual void SetFirstRun(std::int32_t value) = 0;

    // ---- Account, service, updates ----

    // IsAdministrator(): whether the user may run the updater (AccountInfo). Asked once, in
    // the set-up; only then does the 60-second update check (timer 400) run.
    virtual bool IsAdministrator() = 0;

    // The send path to the filter service: ::SendRpcMessage(msg). True when the status was 1.
    // The window sends "GUI Start" at the end of its set-up and a ping every second.
    virtual bool SendRpcMessage(const IMessage& msg) = 0;

    // What the user is told about a failed component (260, 263, 264) when the inbound pump
    // hands one to the window with 1060; the same object that the pump uses without a window.
    virtual ComponentFailureResponder& GetComponentFailureResponder() = 0;

    // CheckAutoUpdate(): the periodic update check, every 60 seconds (timer 400).
    virtual void CheckAutoUpdate() = 0;

    // Stops the update launcher's thread, waiting at most `waitMs` milliseconds; called by
    // the window's destructor with 3000.
    virtual void StopUpdateThread(std::uint32_t waitMs) = 0;

    // ---- Windows and links ----

    // ShowAbout(): the About box, modal, with `owner` (the main window) as its parent.
    virtual void ShowAbout(CMainDlg& owner) = 0;

    // The web pages and the help file (QGUrls): the home page (the home-page area at the
    // bottom left and menu command 32784), the support page (32783) and the help file named
    // by string 212 in the program's folder (32782 and message 1280).
    virtual void OpenHomePage() = 0;
    virtual void OpenSupportPage() = 0;
    virtual void OpenHelpContents() = 0;

    // Language change (message 1055): selects the language `name` (as LanguageTable names
    // it) in the translation manager. The window then sets its texts again and tells the
    // plug-in.
    virtual void SelectLanguage(const stdstr& name) = 0;

    // ExitProgram(exitCode): the exit sequence. Called for menu command 32790 (after the
    // window hid itself and RemoveTrayIcon) with 1, for 1059 with 1 and for 1048 with 0.
    // It ends with the window's DestroyWindow() and the end of the event loop.
    virtual void ExitProgram(std::int32_t exitCode) = 0;

    // ---- Later work: first-run wizard, tray icon, summary pop-up ----

    // Step 6 of the set-up, when FirstRun is not 0: the first-run wizard (WelcomeFirstRun),
    // run to its end. The window sets FirstRun to 0 and calls NotifyService() afterwards,
    // however it ended.
    virtual void RunFirstRunWizard(CMainDlg& window) = 0;

    // Step 10 of the set-up: the tray icon. Loads the "on" and "off" icons and the frames
    // into window.TrayIcons(), adds the icon with string 129 as tip and id 265, sets the
    // default command 32789 and plays sound 206. The tray's menu commands come back as
    // window.Command(id); its animation timer (id 1) is set with window.Timers() and comes
    // back through OnMainWindowTimer.
    virtual void SetUpTray(CMainDlg& window) = 0;

    // HideToTray, for WM_CLOSE and the close button 1007: the animated hide of the window
    // into the tray, then the close warning if the setting ShowCloseWindow asks for it.
    virtual void HideToTray(CMainDlg& window) = 0;

    // RemoveIcon: takes the tray icon away (menu command 32790, before ExitProgram).
    virtual void RemoveTrayIcon() = 0;

    // Message 1054: `start` true starts the tray's animation, false stops it.
    virtual void AnimateTray(bool start) = 0;

    // Message 1057: the tray icon and tip for the filter's state (`filterOn` not 0: on).
    virtual void ShowFilterState(std::int32_t filterOn) = 0;

    // Every tick of a timer of the main window, after the window's own work for it, as the
    // tray's handler in the chain sees it; the tray acts on its animation timer, id 1.
    virtual void OnMainWindowTimer(int timerId) = 0;

    // Message 1041: the filtering summary pop-up (CQGStatusDlg) for 4000 ms, owned by the
    // active window.
    virtual void ShowSummary(CMainDlg& window) = 0;

protected:
    IMainWindowHost() = default;
    IMainWindowHost(const IMainWindowHost&) = default;
    IMainWindowHost& operator=(const IMainWindowHost&) = default;
};
