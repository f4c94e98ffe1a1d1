#include "foundation/CorvaneSystemInfo.h"

#include "foundation/ScreenAreaSource.h"
#include "foundation/SystemPaths.h"
#include "foundation/TaskbarPlacement.h"
#include "foundation/stdstr.h"

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <pwd.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace Corvane {
namespace {

std::string Env(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

std::optional<ScreenArea> PrimaryScreen() {
    const auto source = ScreenAreaSource::installed();
    if (!source)
        return std::nullopt;
    return source->primaryScreen();
}

std::string AccountHome() {
    std::vector<char> buffer(4096);
    for (;;) {
        passwd entry{};
        passwd* found = nullptr;
        const int result = ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found);
        if (result == ERANGE && buffer.size() < (1u << 20)) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        return result == 0 && found && found->pw_dir ? std::string(found->pw_dir) : std::string();
    }
}

} // namespace

SystemInfo::SystemInfo() = default;

SystemInfo::SystemInfo(std::vector<std::string> osReleasePaths)
    : m_version(std::move(osReleasePaths)) {}

SystemInfo::~SystemInfo() = default;

std::u16string SystemInfo::getWindowsFolder() const {
    return {};
}

std::u16string SystemInfo::getCurrentFolder() const {
    std::vector<char> buffer(4096);
    for (;;) {
        if (::getcwd(buffer.data(), buffer.size()))
            return stdstr::toTString(buffer.data());
        if (errno != ERANGE || buffer.size() >= (1u << 20))
            return {};
        buffer.resize(buffer.size() * 2);
    }
}

std::u16string SystemInfo::getAppDataFolder() const {
    // The same rule as the user's store (SystemPaths), so that both name one folder. Only
    // when neither variable tells anything is there no folder to give.
    const std::string config = Env("XDG_CONFIG_HOME");
    if ((config.empty() || config.front() != '/') && Env("HOME").empty())
        return {};
    return stdstr::toTString(SystemPaths::UserConfigFolder());
}

std::u16string SystemInfo::getTempFolder() const {
    std::string temp = SystemPaths::TempFolder();
    // The root folder keeps its one '/', or nothing would be left of it.
    if (temp.size() > 1 && temp.back() == '/')
        temp.pop_back();
    return stdstr::toTString(temp);
}

std::u16string SystemInfo::getUserProfileFolder() const {
    const std::string home = Env("HOME");
    return stdstr::toTString(home.empty() ? AccountHome() : home);
}

// No Windows family is this system, so each test answers false, as for a version that
// could not be read.
bool SystemInfo::isWin9x() const {
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
bool SystemInfo::isWinNT() const {
    return false;
}
bool SystemInfo::isWinXPOrServer2003() const {
    return false;
}
bool SystemInfo::isServer2003() const {
    return false;
}
bool SystemInfo::isVista() const {
    return false;
}

int SystemInfo::getBitsPerPixel() const {
    const auto screen = PrimaryScreen();
    return screen ? screen->bitsPerPixel : 0;
}

void SystemInfo::getTaskbarRects(Rect& taskbar, Rect& notifyArea) const {
    const auto screen = PrimaryScreen();
    if (!screen)
        return;
    if (const auto panel = TaskbarPlacement::panelOf(*screen)) {
        taskbar = panel->rect;
        notifyArea = TaskbarPlacement::notifyAreaBeside(*panel);
        return;
    }
    notifyArea = TaskbarPlacement::cornerOf(screen->workArea);
}

int SystemInfo::getScreenWidth() const {
    const auto screen = PrimaryScreen();
    return screen ? screen->geometry.width() : 0;
}

int SystemInfo::getScreenHeight() const {
    const auto screen = PrimaryScreen();
    return screen ? screen->geometry.height() : 0;
}

int SystemInfo::getTaskbarEdge() const {
    const auto screen = PrimaryScreen();
    if (!screen)
        return TaskbarPlacement::Bottom;
    const auto panel = TaskbarPlacement::panelOf(*screen);
    return panel ? panel->edge : TaskbarPlacement::Bottom;
}

bool SystemInfo::readVersion() {
    return m_version.read();
}

std::u16string SystemInfo::getOperatingSystemText() const {
    return m_version.text();
}

} // namespace Corvane
