#include "app/ProcessSnapshot.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <dirent.h>
#include <fstream>
#include <limits.h>
#include <unistd.h>

namespace {

// A process folder's name is its id: digits only.
bool ParsePid(const char* name, pid_t& pid) {
    const char* end = name + std::strlen(name);
    if (name == end || !std::all_of(name, end, [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    const auto [last, result] = std::from_chars(name, end, pid);
    return result == std::errc() && last == end && pid > 0;
}

DIR* AsDir(void* folder) {
    return static_cast<DIR*>(folder);
}

} // namespace

ProcessSnapshot::ProcessSnapshot(std::string procRoot) : m_procRoot(std::move(procRoot)) {}

ProcessSnapshot::~ProcessSnapshot() {
    Close();
}

bool ProcessSnapshot::Take(int& error) {
    Close();
    DIR* folder = ::opendir(m_procRoot.c_str());
    if (folder == nullptr) {
        error = errno;
        return false;
    }
    m_folder = folder;
    m_pids.clear();
    m_next = 0;
    m_listError = 0;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(folder);
        if (entry == nullptr) {
            m_listError = errno;
            break;
        }
        pid_t pid = 0;
        if (ParsePid(entry->d_name, pid))
            m_pids.push_back(pid);
    }
    // The kernel lists processes by id already; a folder of a test need not.
    std::sort(m_pids.begin(), m_pids.end());
    return true;
}

int ProcessSnapshot::Handle() const {
    return m_folder == nullptr ? -1 : ::dirfd(AsDir(m_folder));
}

bool ProcessSnapshot::Next(Entry& entry, int& error) {
    while (m_next < m_pids.size()) {
        const pid_t pid = m_pids[m_next++];
        std::string name = ImageName(m_procRoot, pid);
        if (name.empty())
            continue;
        entry.pid = pid;
        entry.name = std::move(name);
        return true;
    }
    error = m_listError != 0 ? m_listError : NoMoreFiles;
    return false;
}

void ProcessSnapshot::Close() {
    if (m_folder != nullptr)
        ::closedir(AsDir(m_folder));
    m_folder = nullptr;
}

std::string ProcessSnapshot::ImageName(const std::string& procRoot, pid_t pid) {
    const std::string folder = procRoot + "/" + std::to_string(pid);
    char target[PATH_MAX];
    const ssize_t length = ::readlink((folder + "/exe").c_str(), target, sizeof target - 1);
    if (length > 0) {
        std::string path(target, static_cast<std::size_t>(length));
        // An executable replaced on disk while it runs (an update) still names its process.
        constexpr std::string_view Deleted = " (deleted)";
        if (path.size() > Deleted.size() && path.ends_with(Deleted))
            path.resize(path.size() - Deleted.size());
        const std::size_t slash = path.rfind('/');
        std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
        if (!name.empty())
            return name;
    }
    std::ifstream comm(folder + "/comm");
    std::string name;
    if (comm && std::getline(comm, name))
        return name;
    return {};
}

std::optional<std::string> ProcessSnapshot::EnvironmentValue(const std::string& procRoot, pid_t pid,
                                                             const std::string& variable) {
    std::ifstream environ(procRoot + "/" + std::to_string(pid) + "/environ", std::ios::binary);
    const std::string prefix = variable + "=";
    for (std::string entry; std::getline(environ, entry, '\0');) {
        if (entry.compare(0, prefix.size(), prefix) == 0)
            return entry.substr(prefix.size());
    }
    return std::nullopt;
}
