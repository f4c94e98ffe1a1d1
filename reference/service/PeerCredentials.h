#pragma once
// Who is at the other end of a connection, as the kernel recorded it when the peer
// connected: its process, user, group and supplementary groups. Nothing the peer sends can
// change it.

#include <string>
#include <sys/types.h>
#include <vector>

struct PeerCredentials {
    pid_t pid = 0;
    uid_t uid = 0;
    gid_t gid = 0;
    std::vector<gid_t> groups;

    // SO_PEERCRED, and SO_PEERGROUPS for the supplementary groups (the user's groups from
    // the group database where the kernel is too old for that). False when the socket
    // cannot say.
    static bool of(int fd, PeerCredentials& out);
    bool inGroup(gid_t group) const;
};
