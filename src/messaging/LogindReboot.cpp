#include "messaging/LogindReboot.h"

#include "foundation/PathFunctions.h"
#include "foundation/ShellOpenInfo.h"
#include "foundation/stdstr.h"

#include <systemd/sd-bus.h>

#include <memory>
#include <utility>

namespace {

struct BusCloser {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};

struct ErrorHolder {
    // SD_BUS_ERROR_NULL is a C compound literal; value-initialising gives the same empty error.
    sd_bus_error error{};
    ErrorHolder() = default;
    ErrorHolder(const ErrorHolder&) = delete;
    ErrorHolder& operator=(const ErrorHolder&) = delete;
    ~ErrorHolder() { sd_bus_error_free(&error); }
};

} // namespace

LogindReboot::LogindReboot(std::string systemctl) : m_systemctl(std::move(systemctl)) {}

bool LogindReboot::RebootComputer() {
    switch (AskLogind()) {
    case LogindAnswer::Accepted:
        return true;
    case LogindAnswer::Refused:
        return false;
    case LogindAnswer::Unreachable:
        break;
    }
    return RunSystemctl();
}

LogindReboot::LogindAnswer LogindReboot::AskLogind() {
    sd_bus* opened = nullptr;
    if (sd_bus_open_system(&opened) < 0)
        return LogindAnswer::Unreachable;
    const std::unique_ptr<sd_bus, BusCloser> bus(opened);
    ErrorHolder failure;
    sd_bus_message* reply = nullptr;
    // Reboot(interactive): false, so no authorisation dialog is raised; the policy decides.
    const int result = sd_bus_call_method(
        bus.get(), "org.freedesktop.login1", "/org/freedesktop/login1",
        "org.freedesktop.login1.Manager", "Reboot", &failure.error, &reply, "b", 0);
    sd_bus_message_unref(reply);
    if (result >= 0)
        return LogindAnswer::Accepted;
    // Without an error name the bus itself failed; these names say that nobody is there.
    if (!sd_bus_error_is_set(&failure.error) ||
        sd_bus_error_has_names(&failure.error, SD_BUS_ERROR_SERVICE_UNKNOWN,
                               SD_BUS_ERROR_NAME_HAS_NO_OWNER, SD_BUS_ERROR_UNKNOWN_OBJECT,
                               SD_BUS_ERROR_UNKNOWN_INTERFACE, SD_BUS_ERROR_UNKNOWN_METHOD))
        return LogindAnswer::Unreachable;
    return LogindAnswer::Refused;
}

bool LogindReboot::RunSystemctl() const {
    ShellOpenInfo started;
    int exitCode = -1;
    ShellOpen(stdstr::toTString(m_systemctl), u"reboot", true, &started, &exitCode);
    return started.pid() != -1 && exitCode == 0;
}
