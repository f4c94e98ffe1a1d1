#pragma once
// SystemAccountLookup: AccountLookup on the C library (geteuid, getpwuid_r, getgrouplist,
// getgrnam_r, gethostname), so NSS sources such as LDAP count as the local files do.

#include "foundation/AccountLookup.h"

class SystemAccountLookup : public AccountLookup {
public:
    uid_t effectiveUser() const override;
    std::optional<User> userEntry(uid_t uid, int& error) const override;
    int groupList(const User& user, gid_t* groups, int& count) const override;
    std::optional<gid_t> groupId(const std::string& name, int& error) const override;
    bool hostName(std::string& name, int& error) const override;
};
