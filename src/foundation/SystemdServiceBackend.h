#pragma once
// SystemdServiceBackend: asks systemd over D-Bus. The manager step is the bus connection,
// the service step is Manager.LoadUnit of "<name>.service" and the unit's LoadState
// ("not-found": no such service; GetUnit would fail for an installed unit that is merely
// not loaded), the status step is the unit's ActiveState: "active" is running,
// "inactive" and "failed" are stopped, anything else ("activating", "deactivating",
// "reloading", ...) is on its way and neither.

#include "foundation/ServiceBackend.h"

#include <string>

class SystemdServiceBackend : public ServiceBackend {
public:
    // An empty `busAddress` means the system bus of the machine asked (over ssh for another
    // machine, as sd-bus does); otherwise the bus at that D-Bus address, for every machine.
    explicit SystemdServiceBackend(std::string busAddress = std::string());

    Answer ask(const std::string& machine, const std::string& service, bool withStatus) override;

    // Whether this machine's system bus accepts a connection.
    static bool systemBusOpens();

private:
    std::string m_busAddress;
};
