#pragma once
// The restart of the computer in a sandbox root (the demo, the tests): the request is
// written down under the root and traced instead of being carried out, since a demo or a
// test run must never restart the machine it runs on. The program picks it whenever
// QUILLGATE_ROOT is set.

#include "messaging/SystemReboot.h"

#include <string>

class SandboxReboot : public SystemReboot {
public:
    // Below the sandbox root.
    static constexpr const char* RecordFile = "var/log/velloran/quillgate-reboot.txt";

    // Appends "reboot requested by <pid>" to the record and answers true, as an accepted
    // restart would; false when the record cannot be written.
    bool RebootComputer() override;

    static std::string RecordPath();
};
