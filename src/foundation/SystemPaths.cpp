#include "foundation/SystemPaths.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace SystemPaths {
namespace {

std::string Env(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

std::string WithoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string ExePath() {
    char buffer[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (n <= 0)
        return {};
    return std::string(buffer, static_cast<std::size_t>(n));
}

} // namespace

std::string Root() {
    std::string root = WithoutTrailingSlash(Env("QUILLGATE_ROOT"));
    return root == "/" ? std::string() : root;
}

std::string RunFolder() {
    return Root() + "/run";
}

std::string CommonDataFolder() {
    return Root() + "/var/lib";
}

std::string MachineStorePath() {
    return CommonDataFolder() + "/velloran/registry/machine.reg";
}

std::string UserConfigFolder() {
    std::string config = Env("XDG_CONFIG_HOME");
    // The base directory spec says a relative value is invalid and must be ignored.
    if (config.empty() || config.front() != '/')
        config = Env("HOME") + "/.config";
    return WithoutTrailingSlash(config);
}

std::string UserStorePath() {
    return UserConfigFolder() + "/velloran/user.reg";
}

std::string TempFolder() {
    std::string temp = Env("TMPDIR");
    if (temp.empty())
        temp = "/tmp";
    temp = WithoutTrailingSlash(temp);
    return temp == "/" ? temp : temp + "/";
}

std::string ProgramFolder() {
    const std::string exe = ExePath();
    const auto slash = exe.rfind('/');
    if (slash == std::string::npos)
        return {};
    return slash == 0 ? std::string("/") : exe.substr(0, slash);
}

std::string ProgramFileName() {
    const std::string exe = ExePath();
    const auto slash = exe.rfind('/');
    return slash == std::string::npos ? exe : exe.substr(slash + 1);
}

bool MakeFolders(const std::string& folder, unsigned mode) {
    if (folder.empty())
        return false;
    struct stat st {};
    if (::stat(folder.c_str(), &st) == 0)
        return S_ISDIR(st.st_mode);
    const auto slash = folder.rfind('/');
    if (slash != std::string::npos && slash > 0 && !MakeFolders(folder.substr(0, slash), mode))
        return false;
    if (::mkdir(folder.c_str(), mode) == 0 || errno == EEXIST)
        return ::stat(folder.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
    return false;
}

} // namespace SystemPaths
