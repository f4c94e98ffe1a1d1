#pragma once
// Keeps the filter service VelloranQuillgateSvc running for the program: at start-up it waits
// for the service or starts it, at exit it stops it, both by running the service's own
// executable in the start/stop dialog. The service's state is asked anew at each decision.
//
// How the application object wires it (it owns one ServiceSupervisor for the process):
//   - queries: a factory making a ServiceManagerQueries, one per call, so that a
//     ServiceManager lives through each EnsureServiceRunning and StopFilterService;
//   - boxes: the program's message boxes (QtMessageBoxes, wrapped in GuiThreadMessageBoxes
//     because appShellExecute may show its box on the dialog's worker);
//   - dialogs: a StartSvcDlgRunner whose Setup names the application's AppShellExecutor (the
//     object behind its appShellExecute), ServiceProgram::Path, SystemSleep and the white
//     brush of QuillgateGUIRes;
//   - showMainWindowAtStart: [] { return ShowMainWindowAtStart != 0; };
//   - sleep and strings: the defaults (SystemSleep, TranslatedString).
// CVLQuillgateApp::EnsureServiceRunning and StopFilterService then call the two operations
// below, and appShellExecute forwards to the AppShellExecutor.

#include "app/IServiceDialogRunner.h"
#include "app/IServiceQueries.h"
#include "app/SupervisionTypes.h"

#include <chrono>
#include <functional>
#include <memory>

class IMessageBoxes;

class ServiceSupervisor {
public:
    using QueriesFactory = std::function<std::unique_ptr<IServiceQueries>()>;

    static constexpr const char16_t* ServiceName = u"VelloranQuillgateSvc";
    // The silent start's waits: one second each, 91 and then 31 of them (the counters are
    // tested after the wait, for more than 90 and more than 30 turns).
    static constexpr std::chrono::milliseconds WaitStep{1000};
    static constexpr int FirstWaits = 91;
    static constexpr int SecondWaits = 31;

    ServiceSupervisor(QueriesFactory queries, IMessageBoxes& boxes, IServiceDialogRunner& dialogs,
                      std::function<bool()> showMainWindowAtStart,
                      SleepFunction sleep = SystemSleep, StringLookup strings = TranslatedString);

    // At start-up. False means that the program cannot go on; the user has been told, except
    // after a silent start whose waits ran out (trace only).
    bool EnsureServiceRunning();
    // At exit; the caller ignores the result. False when the service is not installed or did
    // not stop (the user has been told).
    bool StopFilterService();

private:
    // The box of `textId` with the product name as caption, flags 0, no owner.
    void ShowError(std::uint32_t textId);

    QueriesFactory m_queries;
    IMessageBoxes& m_boxes;
    IServiceDialogRunner& m_dialogs;
    std::function<bool()> m_showMainWindowAtStart;
    SleepFunction m_sleep;
    StringLookup m_strings;
};
