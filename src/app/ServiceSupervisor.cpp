#include "app/ServiceSupervisor.h"

#include "foundation/Trace.h"
#include "mainwindow/IMessageBoxes.h"
#include "resource.h"

ServiceSupervisor::ServiceSupervisor(QueriesFactory queries, IMessageBoxes& boxes,
                                     IServiceDialogRunner& dialogs,
                                     std::function<bool()> showMainWindowAtStart,
                                     SleepFunction sleep, StringLookup strings)
    : m_queries(std::move(queries)), m_boxes(boxes), m_dialogs(dialogs),
      m_showMainWindowAtStart(std::move(showMainWindowAtStart)), m_sleep(std::move(sleep)),
      m_strings(std::move(strings)) {}

bool ServiceSupervisor::EnsureServiceRunning() {
    const std::unique_ptr<IServiceQueries> service = m_queries();
    const stdstr name(ServiceName);
    if (!service->ServiceExists(name)) {
        ShowError(IDS_SERVICE_NOT_FOUND);
        return false;
    }
    // Any state but stopped is good enough, a service that is still starting included.
    if (!service->ServiceHasStopped(name))
        return true;

    bool startIt = m_showMainWindowAtStart && m_showMainWindowAtStart();
    if (!startIt) {
        // A silent start, at log-on: the service is likely on its way up by itself.
        for (int turn = 0; turn < FirstWaits; ++turn) {
            m_sleep(WaitStep);
            if (service->ServiceHasStarted(name))
                return true;
            TraceMsg(TRACE_INFO, u"Wait Service to start");
        }
        startIt = service->ServiceHasStopped(name);
    }
    if (!startIt) {
        for (int turn = 0; turn < SecondWaits; ++turn) {
            m_sleep(WaitStep);
            if (service->ServiceHasStarted(name))
                return true;
            TraceMsg(TRACE_INFO, u"Wait service to start1");
        }
        if (!service->ServiceHasStopped(name)) {
            TraceMsg(TRACE_ERROR, u"Quillgate is not started after 120 seconds");
            return false;
        }
    }

    const int result = m_dialogs.RunServiceDialog(true);
    // A result of 0 is believed without another look.
    if (result != 0 && !service->ServiceHasStarted(name)) {
        ShowError(IDS_SERVICE_START_FAILED);
        return false;
    }
    return true;
}

bool ServiceSupervisor::StopFilterService() {
    const std::unique_ptr<IServiceQueries> service = m_queries();
    const stdstr name(ServiceName);
    if (!service->ServiceExists(name)) {
        ShowError(IDS_SERVICE_NOT_FOUND);
        return false;
    }
    if (!service->ServiceHasStarted(name))
        return true;
    if (m_dialogs.RunServiceDialog(false) != 0) {
        ShowError(IDS_SERVICE_STOP_FAILED);
        return false;
    }
    return true;
}

void ServiceSupervisor::ShowError(std::uint32_t textId) {
    m_boxes.MessageBox(nullptr, m_strings(textId), m_strings(IDS_PRODUCT_NAME), 0);
}
