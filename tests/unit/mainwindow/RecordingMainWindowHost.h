#pragma once
// The application as the main window sees it, for tests: every action of IMainWindowHost
// is written to a call log (shared with the recording plug-in, so that one log shows the
// order of both), the settings live in maps, and hooks let a test look at the window at
// the moment of a call.

#include "RecordingMessageBoxes.h"
#include "foundation/stdstr.h"
#include "mainwindow/CMainDlg.h"
#include "mainwindow/IMainWindowHost.h"
#include "messaging/ComponentFailureResponder.h"
#include "messaging/IMessage.h"
#include "messaging/InboundDialogs.h"
#include "messaging/InstallerLauncher.h"
#include "messaging/LspReinstaller.h"
#include "messaging/SystemReboot.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "toolkit/QuillgateGUIRes.h"

#include <QString>

#include <functional>
#include <map>
#include <string>
#include <vector>

// One log of calls, in order.
struct CallLog {
    std::vector<std::string> lines;
    void Add(const std::string& line) { lines.push_back(line); }
    // The lines that start with `start`, in order.
    std::vector<std::string> StartingWith(const std::string& start) const {
        std::vector<std::string> found;
        for (const std::string& line : lines) {
            if (line.compare(0, start.size(), start) == 0)
                found.push_back(line);
        }
        return found;
    }
    // The position of the first line that is `line`, or -1.
    int IndexOf(const std::string& line) const {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (lines[i] == line)
                return static_cast<int>(i);
        }
        return -1;
    }
};

inline std::string Narrow(const stdstr& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())).toStdString();
}

class RecordingMainWindowHost : public IMainWindowHost {
public:
    explicit RecordingMainWindowHost(CallLog& log, int dpi = 96) : log(log), dpi(dpi) {
        resources.Create(dpi, dpi);
        texts[Text::ConfigPath] = u"/var/lib/velloran/quillgate";
        texts[Text::Language] = u"1033";
        numbers[Number::FilterOn] = 1;
    }

    // ---- IInfoValueHost ----
    void SetFlagByte(int code, std::uint8_t value) override {
        log.Add("SetFlagByte " + std::to_string(code) + " " + std::to_string(value));
    }
    std::int32_t UpdateAction() override { return updateAction; }
    void SetUpdateAction(std::int32_t action) override { updateAction = action; }
    std::int32_t GetNumber(Number setting) override { return numbers[setting]; }
    void SetNumber(Number setting, std::int32_t value) override { numbers[setting] = value; }
    const stdstr& GetText(Text setting) override { return texts[setting]; }
    void SetText(Text setting, const stdstr& value) override { texts[setting] = value; }
    bool SetFilterState(std::int32_t value) override {
        log.Add("SetFilterState " + std::to_string(value));
        return filterStateAnswer;
    }
    void RunFreshUpdate(std::int32_t mode) override {
        log.Add("RunFreshUpdate " + std::to_string(mode));
    }
    void NotifyService() override { log.Add("NotifyService"); }
    void Command(int id) override { log.Add("host Command " + std::to_string(id)); }
    bool ReadFileVersion(const stdstr&, std::array<std::uint32_t, 4>&) override { return false; }

    // ---- IMainWindowHost ----
    void SetMainWindow(CMainDlg* window) override {
        mainWindow = window;
        log.Add("SetMainWindow");
    }
    QuillgateGUIRes& GetGUIRes() override { return resources; }
    int ScreenDpi() override { return dpi; }
    IMessageBoxes& MessageBoxes() override { return boxes; }
    std::int32_t GetFirstRun() override { return firstRun; }
    void SetFirstRun(std::int32_t value) override {
        firstRun = value;
        log.Add("SetFirstRun " + std::to_string(value));
    }
    bool IsAdministrator() override {
        log.Add("IsAdministrator");
        if (onIsAdministrator)
            onIsAdministrator();
        return administrator;
    }
    bool SendRpcMessage(const IMessage& msg) override {
        std::string line = "Send " + Narrow(msg.GetName());
        if (const auto* start = dynamic_cast<const enumMSG_GUI_START_Message*>(&msg))
            line += " pid=" + std::to_string(start->GetProcessId());
        log.Add(line);
        if (onSend)
            onSend(msg);
        return true;
    }
    ComponentFailureResponder& GetComponentFailureResponder() override { return responder; }
    void CheckAutoUpdate() override { log.Add("CheckAutoUpdate"); }
    void StopUpdateThread(std::uint32_t waitMs) override {
        log.Add("StopUpdateThread " + std::to_string(waitMs));
        if (onStopUpdateThread)
            onStopUpdateThread();
    }
    void ShowAbout(CMainDlg&) override { log.Add("ShowAbout"); }
    void OpenHomePage() override { log.Add("OpenHomePage"); }
    void OpenSupportPage() override { log.Add("OpenSupportPage"); }
    void OpenHelpContents() override { log.Add("OpenHelpContents"); }
    void SelectLanguage(const stdstr& name) override { log.Add("SelectLanguage " + Narrow(name)); }
    void ExitProgram(std::int32_t exitCode) override {
        log.Add("ExitProgram " + std::to_string(exitCode));
    }
    void RunFirstRunWizard(CMainDlg& window) override {
        log.Add("RunFirstRunWizard");
        if (onWizard)
            onWizard(window);
    }
    void SetUpTray(CMainDlg& window) override {
        log.Add("SetUpTray");
        if (onSetUpTray)
            onSetUpTray(window);
    }
    void HideToTray(CMainDlg&) override { log.Add("HideToTray"); }
    void RemoveTrayIcon() override { log.Add("RemoveTrayIcon"); }
    void AnimateTray(bool start) override {
        log.Add(start ? "AnimateTray start" : "AnimateTray stop");
    }
    void ShowFilterState(std::int32_t filterOn) override {
        log.Add("ShowFilterState " + std::to_string(filterOn));
    }
    void OnMainWindowTimer(int timerId) override {
        ++timerTicks[timerId];
        if (timerId != 399 && timerId != 400 && timerId != 401)
            log.Add("OnMainWindowTimer " + std::to_string(timerId));
    }
    void ShowSummary(CMainDlg&) override { log.Add("ShowSummary"); }

    CallLog& log;
    int dpi;
    QuillgateGUIRes resources;
    bool administrator = true;
    bool filterStateAnswer = true;
    std::int32_t firstRun = 0;
    std::int32_t updateAction = 0;
    std::map<Number, std::int32_t> numbers;
    std::map<Text, stdstr> texts;
    std::map<int, int> timerTicks;
    CMainDlg* mainWindow = nullptr;
    RecordingMessageBoxes boxes;

    std::function<void(CMainDlg&)> onWizard;
    std::function<void(CMainDlg&)> onSetUpTray;
    std::function<void()> onIsAdministrator;
    std::function<void(const IMessage&)> onSend;
    std::function<void()> onStopUpdateThread;

    // What a failed component shows, answered at once.
    class Dialogs : public InboundDialogs {
    public:
        explicit Dialogs(CallLog& log) : m_log(log) {}
        int MessageBox(Owner owner, const stdstr& text, const stdstr&, std::uint32_t) override {
            m_log.Add(std::string("failure box ") +
                      (owner == Owner::MainWindow ? "main " : "none ") + Narrow(text));
            return IDOK;
        }
        int ReinstallPrompt() override {
            m_log.Add("reinstall prompt");
            return ReinstallCancel;
        }

    private:
        CallLog& m_log;
    };
    class NoInstaller : public InstallerLauncher {
    public:
        std::optional<std::uint32_t> RunAndWait(const stdstr&, const stdstr&,
                                                const stdstr&) override {
            return std::nullopt;
        }
    };
    class NoReboot : public SystemReboot {
    public:
        bool RebootComputer() override { return false; }
    };
    Dialogs dialogs{log};
    NoInstaller installer;
    NoReboot reboot;
    LspReinstaller reinstaller{dialogs, installer, reboot};
    ComponentFailureResponder responder{dialogs, reinstaller};
};
