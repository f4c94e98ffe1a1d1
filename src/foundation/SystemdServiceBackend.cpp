#include "foundation/SystemdServiceBackend.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <systemd/sd-bus.h>
#include <utility>

namespace {

constexpr const char* Destination = "org.freedesktop.systemd1";
constexpr const char* ManagerPath = "/org/freedesktop/systemd1";
constexpr const char* ManagerInterface = "org.freedesktop.systemd1.Manager";
constexpr const char* UnitInterface = "org.freedesktop.systemd1.Unit";

struct BusCloser {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};
using Bus = std::unique_ptr<sd_bus, BusCloser>;

struct MessageUnref {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageUnref>;

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

class BusError {
public:
    BusError() = default;
    ~BusError() { sd_bus_error_free(&m_error); }
    BusError(const BusError&) = delete;
    BusError& operator=(const BusError&) = delete;
    sd_bus_error* get() { return &m_error; }

private:
    sd_bus_error m_error{}; // SD_BUS_ERROR_NULL, without its C compound literal
};

// A negative errno from sd-bus as the positive code that the traces take; sd-bus maps a
// D-Bus error name that it does not know to EIO.
int Code(int result) {
    return result < 0 ? -result : EIO;
}

int OpenBus(const std::string& address, const std::string& machine, Bus& bus) {
    sd_bus* opened = nullptr;
    int result = 0;
    if (!address.empty()) {
        result = sd_bus_new(&opened);
        if (result < 0)
            return result;
        bus.reset(opened);
        result = sd_bus_set_address(opened, address.c_str());
        if (result >= 0)
            result = sd_bus_set_bus_client(opened, 1);
        if (result >= 0)
            result = sd_bus_start(opened);
        return result;
    }
    result = machine.empty() ? sd_bus_open_system(&opened)
                             : sd_bus_open_system_remote(&opened, machine.c_str());
    if (result >= 0)
        bus.reset(opened);
    return result;
}

int ReadUnitProperty(sd_bus* bus, const std::string& unitPath, const char* property,
                     std::string& value) {
    BusError error;
    char* text = nullptr;
    const int result = sd_bus_get_property_string(bus, Destination, unitPath.c_str(), UnitInterface,
                                                  property, error.get(), &text);
    const Text owned(text);
    if (result < 0)
        return result;
    value = owned ? owned.get() : "";
    return 0;
}

} // namespace

SystemdServiceBackend::SystemdServiceBackend(std::string busAddress)
    : m_busAddress(std::move(busAddress)) {}

bool SystemdServiceBackend::systemBusOpens() {
    Bus bus;
    return OpenBus(std::string(), std::string(), bus) >= 0;
}

ServiceBackend::Answer SystemdServiceBackend::ask(const std::string& machine,
                                                  const std::string& service, bool withStatus) {
    Bus bus;
    const int opened = OpenBus(m_busAddress, machine, bus);
    if (opened < 0)
        return Answer::failure(Step::Manager, Code(opened));

    const std::string unit = service + ".service";
    std::string unitPath;
    {
        BusError error;
        sd_bus_message* reply = nullptr;
        int result = sd_bus_call_method(bus.get(), Destination, ManagerPath, ManagerInterface,
                                        "LoadUnit", error.get(), &reply, "s", unit.c_str());
        const Message owned(reply);
        if (result < 0)
            return Answer::failure(Step::Service, Code(result));
        const char* path = nullptr;
        result = sd_bus_message_read(reply, "o", &path);
        if (result < 0 || !path)
            return Answer::failure(Step::Service, Code(result));
        unitPath = path;
    }

    // The service "opens" when systemd knows a unit file for it.
    std::string loadState;
    const int loadRead = ReadUnitProperty(bus.get(), unitPath, "LoadState", loadState);
    if (loadRead < 0)
        return Answer::failure(Step::Service, Code(loadRead));
    if (loadState == "not-found")
        return Answer::failure(Step::Service, ENOENT);
    if (!withStatus)
        return Answer{};

    std::string activeState;
    const int activeRead = ReadUnitProperty(bus.get(), unitPath, "ActiveState", activeState);
    if (activeRead < 0)
        return Answer::failure(Step::Status, Code(activeRead));
    Answer answer;
    if (activeState == "active")
        answer.state = State::Running;
    else if (activeState == "inactive" || activeState == "failed")
        answer.state = State::Stopped;
    else
        answer.state = State::Pending;
    return answer;
}
