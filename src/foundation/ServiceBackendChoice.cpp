#include "foundation/ServiceBackendChoice.h"

#include "foundation/FileServiceBackend.h"
#include "foundation/SystemPaths.h"
#include "foundation/SystemdServiceBackend.h"
#include "foundation/Trace.h"
#include "foundation/TraceLevels.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

std::string BusAddressFromEnvironment() {
    const char* value = std::getenv(ServiceBackendChoice::BusAddressVariable);
    return value ? std::string(value) : std::string();
}

std::shared_ptr<ServiceBackend> ChooseOnce() {
    ServiceBackendChoice::Facts facts;
    facts.sandboxRoot = !SystemPaths::Root().empty();
    const std::string address = BusAddressFromEnvironment();
    facts.busAddressGiven = !address.empty();
    // sd_booted()'s test: the folder exists only while systemd is the init system.
    facts.systemdBooted = ::access("/run/systemd/system", F_OK) == 0;
    if (!facts.sandboxRoot && !facts.busAddressGiven && facts.systemdBooted)
        facts.systemBusOpens = SystemdServiceBackend::systemBusOpens();

    if (ServiceBackendChoice::decide(facts) == ServiceBackendChoice::Kind::Systemd) {
        if (facts.busAddressGiven)
            TraceFmt(TRACE_INFO,
                     u"ServiceManager: service states come from systemd on the bus (%S)", address);
        else
            TraceMsg(TRACE_INFO,
                     u"ServiceManager: service states come from systemd over the system bus");
        return std::make_shared<SystemdServiceBackend>(address);
    }
    const std::string root = SystemPaths::Root();
    TraceFmt(TRACE_INFO,
             u"ServiceManager: service states come from the unit files in (%S) and the pid "
             u"files in (%S)",
             FileServiceBackend::unitFolder(root), FileServiceBackend::pidFolder(root));
    return std::make_shared<FileServiceBackend>();
}

} // namespace

ServiceBackendChoice::Kind ServiceBackendChoice::decide(const Facts& facts) {
    if (facts.sandboxRoot)
        return Kind::Files;
    if (facts.busAddressGiven)
        return Kind::Systemd;
    if (facts.systemdBooted && facts.systemBusOpens)
        return Kind::Systemd;
    return Kind::Files;
}

std::shared_ptr<ServiceBackend> ServiceBackendChoice::processBackend() {
    static const std::shared_ptr<ServiceBackend> backend = ChooseOnce();
    return backend;
}
