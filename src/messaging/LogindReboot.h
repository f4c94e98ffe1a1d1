#pragma once
// Restarts the computer on Linux: logind's Reboot over the system bus, the way the desktop's
// own restart asks for it, without an interactive authorisation (the restart that follows a
// reinstall is forced, not negotiated). Where logind is not on the bus, or there is no system
// bus, `systemctl reboot` is the fallback; a refusal by logind is final, since systemctl
// would only ask the same logind again.

#include "messaging/SystemReboot.h"

#include <string>

class LogindReboot : public SystemReboot {
public:
    static constexpr const char* DefaultSystemctl = "/usr/bin/systemctl";

    // `systemctl` is the program of the fallback; tests give a stand-in.
    explicit LogindReboot(std::string systemctl = DefaultSystemctl);

    bool RebootComputer() override;

private:
    enum class LogindAnswer { Accepted, Refused, Unreachable };
    static LogindAnswer AskLogind();
    // True when `systemctl reboot` ran and exited with 0.
    bool RunSystemctl() const;

    std::string m_systemctl;
};
