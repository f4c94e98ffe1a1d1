#pragma once
// Restarts the computer, after a reinstall that needs it. Behind an interface because the
// way to ask for it is the platform's, and because no test may really restart a machine.

class SystemReboot {
public:
    // True when the restart was accepted; the program is then about to be ended by it.
    virtual bool RebootComputer() = 0;

    virtual ~SystemReboot() = default;

protected:
    SystemReboot() = default;
    SystemReboot(const SystemReboot&) = default;
    SystemReboot& operator=(const SystemReboot&) = default;
};
