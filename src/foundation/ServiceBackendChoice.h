#pragma once
// ServiceBackendChoice: which service backend the process asks, decided once at the first
// question and traced. systemd is asked over the system bus where it runs; the unit and pid
// files are read where it does not (no /run/systemd/system, no system bus) and always in a
// sandbox root, whose service is the reference service with its pid file and not a unit.

#include <memory>

class ServiceBackend;

class ServiceBackendChoice {
public:
    enum class Kind { Systemd, Files };

    struct Facts {
        bool sandboxRoot = false;     // QUILLGATE_ROOT is set
        bool busAddressGiven = false; // QUILLGATE_SYSTEM_BUS_ADDRESS names systemd's bus
        bool systemdBooted = false;   // /run/systemd/system exists
        bool systemBusOpens = false;  // a connection to the system bus succeeds
    };

    // The environment variable that names the bus on which systemd is asked, instead of the
    // system bus; tests point it at a private bus.
    static constexpr const char* BusAddressVariable = "QUILLGATE_SYSTEM_BUS_ADDRESS";

    static Kind decide(const Facts& facts);
    // The backend of this process: chosen at the first call, the same object afterwards.
    static std::shared_ptr<ServiceBackend> processBackend();
};
