#pragma once
// Who may use the service. The socket itself is open to every local user (mode 0666), as a
// system service's endpoint is; the decision is taken on the peer's kernel credentials, so
// that a refused user learns it as the status "Access Denied" rather than as a service that
// seems to be down.

#include "service/PeerCredentials.h"

#include <optional>
#include <string>
#include <sys/types.h>

class AccessPolicy {
public:
    // Everybody may.
    AccessPolicy() = default;
    // Members of `group` (a name or a number) may; an empty text means everybody. False with
    // `error` set for a name the group database does not know.
    static bool fromGroup(const std::string& group, AccessPolicy& out, std::string& error);

    bool allows(const PeerCredentials& peer) const;
    // "everybody" or "members of group 27", for the diagnostics.
    std::string describe() const;

private:
    std::optional<gid_t> m_group;
};
