#pragma once
// AccountLookup: the account database as AccountInfo reads it (effective user, its entry,
// its groups, groups by name, the host's name). The system's lookup is
// SystemAccountLookup; tests give their own, because the test machines run as root.

#include <optional>
#include <string>
#include <sys/types.h>

class AccountLookup {
public:
    struct User {
        std::string name;
        gid_t primaryGroup = 0;
    };

    virtual ~AccountLookup() = default;

    virtual uid_t effectiveUser() const = 0;
    // The entry of `uid`; empty with `error` set on failure (ENOENT when there is none).
    virtual std::optional<User> userEntry(uid_t uid, int& error) const = 0;
    // getgrouplist's contract: writes at most `count` group ids (the primary group and the
    // supplementary groups of the group database) to `groups` and sets `count` to the
    // number that the user has; returns that number, or -1 when `count` was too small.
    virtual int groupList(const User& user, gid_t* groups, int& count) const = 0;
    // The id of the group called `name`; empty with `error` 0 when no group has that name,
    // or with the errno of a failed lookup.
    virtual std::optional<gid_t> groupId(const std::string& name, int& error) const = 0;
    // gethostname.
    virtual bool hostName(std::string& name, int& error) const = 0;
};
