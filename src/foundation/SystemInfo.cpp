#include "foundation/SystemInfo.h"

#include <utility>

SystemInfo::SystemInfo() = default;

SystemInfo::SystemInfo(std::vector<std::string> osReleasePaths)
    : m_version(std::move(osReleasePaths)) {}

SystemInfo::~SystemInfo() = default;

// This is no Windows: every family test answers false, as for a version that could not be
// read. The caller that cares (AccountInfo) then decides by the account itself.
bool SystemInfo::isWin9x() const {
    return false;
}
bool SystemInfo::isWinNT() const {
    return false;
}
bool SystemInfo::isWinNTOrLater() const {
    return false;
}
bool SystemInfo::isWin2000() const {
    return false;
}
bool SystemInfo::isWinXP() const {
    return false;
}
bool SystemInfo::isVista() const {
    return false;
}

bool SystemInfo::readVersion() {
    return m_version.read();
}

stdstr SystemInfo::getOperatingSystemText() const {
    return m_version.text();
}
