#include "service/PeerCredentials.h"

#include <algorithm>
#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

bool KernelGroups(int fd, std::vector<gid_t>& groups) {
    groups.resize(32);
    for (;;) {
        socklen_t size = static_cast<socklen_t>(groups.size() * sizeof(gid_t));
        if (::getsockopt(fd, SOL_SOCKET, SO_PEERGROUPS, groups.data(), &size) == 0) {
            groups.resize(size / sizeof(gid_t));
            return true;
        }
        if (errno != ERANGE || size <= groups.size() * sizeof(gid_t))
            return false;
        groups.resize(size / sizeof(gid_t));
    }
}

bool DatabaseGroups(uid_t uid, gid_t gid, std::vector<gid_t>& groups) {
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return false;
    int count = 32;
    groups.resize(static_cast<std::size_t>(count));
    if (::getgrouplist(found->pw_name, gid, groups.data(), &count) < 0) {
        groups.resize(static_cast<std::size_t>(count));
        if (::getgrouplist(found->pw_name, gid, groups.data(), &count) < 0)
            return false;
    }
    groups.resize(static_cast<std::size_t>(count));
    return true;
}

} // namespace

bool PeerCredentials::of(int fd, PeerCredentials& out) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (::getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0 ||
        size != sizeof credentials)
        return false;
    out.pid = credentials.pid;
    out.uid = credentials.uid;
    out.gid = credentials.gid;
    out.groups.clear();
    if (!KernelGroups(fd, out.groups) && !DatabaseGroups(out.uid, out.gid, out.groups))
        out.groups.clear();
    return true;
}

bool PeerCredentials::inGroup(gid_t group) const {
    return gid == group || std::find(groups.begin(), groups.end(), group) != groups.end();
}
