#include "service/AccessPolicy.h"

#include <charconv>
#include <grp.h>
#include <vector>

bool AccessPolicy::fromGroup(const std::string& group, AccessPolicy& out, std::string& error) {
    out = AccessPolicy();
    if (group.empty())
        return true;
    gid_t number = 0;
    const auto [end, failure] = std::from_chars(group.data(), group.data() + group.size(), number);
    if (failure == std::errc() && end == group.data() + group.size()) {
        out.m_group = number;
        return true;
    }
    std::vector<char> buffer(16384);
    struct group entry {};
    struct group* found = nullptr;
    if (::getgrnam_r(group.c_str(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) {
        error = "unknown group '" + group + "'";
        return false;
    }
    out.m_group = found->gr_gid;
    return true;
}

bool AccessPolicy::allows(const PeerCredentials& peer) const {
    return !m_group || peer.inGroup(*m_group);
}

std::string AccessPolicy::describe() const {
    return m_group ? "members of group " + std::to_string(*m_group) : std::string("everybody");
}
