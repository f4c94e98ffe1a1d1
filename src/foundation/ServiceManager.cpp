#include "foundation/ServiceManager.h"

#include "foundation/ErrorKeys.h"
#include "foundation/ServiceBackend.h"
#include "foundation/ServiceBackendChoice.h"
#include "foundation/Trace.h"
#include "foundation/TraceLevels.h"

#include <utility>

namespace {

struct FailureLines {
    const char16_t* manager;
    const char16_t* service;
    const char16_t* status;
};

constexpr FailureLines ExistsLines{
    u"ServiceManager::ServiceExists(%s): OpenServiceManager failed, error (%s)",
    u"ServiceManager::ServiceExists(%s): OpenService failed, error (%s)",
    // ServiceExists reads no status; a backend that still reports that step failing has
    // failed to open the service.
    u"ServiceManager::ServiceExists(%s): OpenService failed, error (%s)"};

constexpr FailureLines StartedLines{
    u"ServiceManager::ServiceHasStarted(%s): OpenServiceManager failed, error (%s)",
    u"ServiceManager::ServiceHasStarted(%s): OpenService failed, error (%s)",
    u"ServiceManager::ServiceHasStarted(%s): QueryServiceStatus failed, error (%s)"};

constexpr FailureLines StoppedLines{
    u"ServiceManager::ServiceHasStopped(%s): OpenServiceManager failed, error (%s)",
    u"ServiceManager::ServiceHasStopped(%s): OpenService failed, error (%s)",
    u"ServiceManager::ServiceHasStopped(%s): QueryServiceStatus failed, error (%s)"};

void TraceFailure(const FailureLines& lines, const stdstr& name,
                  const ServiceBackend::Answer& answer) {
    const char16_t* format = lines.status;
    if (answer.failedStep == ServiceBackend::Step::Manager)
        format = lines.manager;
    else if (answer.failedStep == ServiceBackend::Step::Service)
        format = lines.service;
    TraceFmt(TRACE_ERROR, format, name, GetOSErrorText(answer.error));
}

} // namespace

ServiceManager::ServiceManager(const stdstr& machine) : m_machine(machine) {}

ServiceManager::ServiceManager(const stdstr& machine, std::shared_ptr<ServiceBackend> backend)
    : m_machine(machine), m_backend(std::move(backend)) {}

ServiceManager::~ServiceManager() = default;

std::shared_ptr<ServiceBackend> ServiceManager::backend() const {
    // The process's backend is looked up at each question rather than kept: that leaves
    // the object unchanged, so threads may share it, and making one stays free.
    return m_backend ? m_backend : ServiceBackendChoice::processBackend();
}

bool ServiceManager::ServiceExists(const stdstr& name) {
    bool exists = false;
    const ServiceBackend::Answer answer =
        backend()->ask(stdstr::fromTString(m_machine), stdstr::fromTString(name), false);
    if (answer.failed()) {
        TraceFailure(ExistsLines, name, answer);
        return exists;
    }
    exists = true;
    return exists;
}

bool ServiceManager::ServiceHasStarted(const stdstr& name) {
    bool started = false;
    const ServiceBackend::Answer answer =
        backend()->ask(stdstr::fromTString(m_machine), stdstr::fromTString(name), true);
    if (answer.failed()) {
        TraceFailure(StartedLines, name, answer);
        return started;
    }
    started = answer.state == ServiceBackend::State::Running;
    return started;
}

bool ServiceManager::ServiceHasStopped(const stdstr& name) {
    // A service that cannot be asked counts as stopped.
    bool stopped = true;
    const ServiceBackend::Answer answer =
        backend()->ask(stdstr::fromTString(m_machine), stdstr::fromTString(name), true);
    if (answer.failed()) {
        TraceFailure(StoppedLines, name, answer);
        return stopped;
    }
    stopped = answer.state == ServiceBackend::State::Stopped;
    return stopped;
}
