#pragma once
// SystemInfo: the application's own small enquiry about the system it runs on: the Windows
// family tests (all false on Linux) and the system's name for the About box. The foundation's
// wider enquiry is Corvane::SystemInfo.

#include "foundation/OperatingSystemVersion.h"
#include "foundation/stdstr.h"

#include <string>
#include <vector>

class SystemInfo {
public:
    SystemInfo();
    explicit SystemInfo(std::vector<std::string> osReleasePaths);
    virtual ~SystemInfo();

    virtual bool isWin9x() const;
    virtual bool isWinNT() const;
    virtual bool isWinNTOrLater() const;
    virtual bool isWin2000() const;
    virtual bool isWinXP() const;
    virtual bool isVista() const;
    // Reads the system's version again; false when the kernel did not answer.
    virtual bool readVersion();
    virtual stdstr getOperatingSystemText() const;

private:
    OperatingSystemVersion m_version;
};
