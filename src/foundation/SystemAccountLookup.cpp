#include "foundation/SystemAccountLookup.h"

#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace {

// The _r lookups report ERANGE for a buffer that is too small; the entries of a large
// group (many members) need more than sysconf's suggestion.
constexpr std::size_t FirstBuffer = 4096;
constexpr std::size_t LargestBuffer = 1u << 20;

} // namespace

uid_t SystemAccountLookup::effectiveUser() const {
    return ::geteuid();
}

std::optional<AccountLookup::User> SystemAccountLookup::userEntry(uid_t uid, int& error) const {
    std::vector<char> buffer(FirstBuffer);
    for (;;) {
        passwd entry{};
        passwd* found = nullptr;
        const int result = ::getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found);
        if (result == ERANGE && buffer.size() < LargestBuffer) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        if (result != 0) {
            error = result;
            return std::nullopt;
        }
        if (!found) {
            error = ENOENT;
            return std::nullopt;
        }
        return User{found->pw_name ? found->pw_name : "", found->pw_gid};
    }
}

int SystemAccountLookup::groupList(const User& user, gid_t* groups, int& count) const {
    return ::getgrouplist(user.name.c_str(), user.primaryGroup, groups, &count);
}

std::optional<gid_t> SystemAccountLookup::groupId(const std::string& name, int& error) const {
    std::vector<char> buffer(FirstBuffer);
    for (;;) {
        group entry{};
        group* found = nullptr;
        const int result = ::getgrnam_r(name.c_str(), &entry, buffer.data(), buffer.size(), &found);
        if (result == ERANGE && buffer.size() < LargestBuffer) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        // Not finding the name is reported as 0 or as one of these, depending on the source.
        if (result == 0 || result == ENOENT || result == ESRCH || result == EBADF ||
            result == EPERM) {
            error = 0;
            if (result != 0 || !found)
                return std::nullopt;
            return found->gr_gid;
        }
        error = result;
        return std::nullopt;
    }
}

bool SystemAccountLookup::hostName(std::string& name, int& error) const {
    // 1025 bytes, the size the Windows host-name lookup was given; the name is cut there.
    char buffer[1025] = {};
    if (::gethostname(buffer, sizeof buffer - 1) != 0) {
        error = errno;
        return false;
    }
    name = buffer;
    return true;
}
