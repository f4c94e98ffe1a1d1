#include "foundation/SystemAccountLookup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace {

TEST(SystemAccountLookup, TheEffectiveUserIsThisProcesss) {
    EXPECT_EQ(SystemAccountLookup().effectiveUser(), ::geteuid());
}

TEST(SystemAccountLookup, TheUsersEntryIsThePasswordDatabases) {
    int error = 0;
    const auto user = SystemAccountLookup().userEntry(::geteuid(), error);
    ASSERT_TRUE(user.has_value()) << error;
    const passwd* entry = ::getpwuid(::geteuid());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(user->name, entry->pw_name);
    EXPECT_EQ(user->primaryGroup, entry->pw_gid);
}

TEST(SystemAccountLookup, AUidWithoutEntryIsNotFound) {
    int error = 0;
    // 4294967294 is (uid_t)-2, which no system gives an entry.
    EXPECT_FALSE(SystemAccountLookup().userEntry(static_cast<uid_t>(-2), error).has_value());
    EXPECT_EQ(error, ENOENT);
}

TEST(SystemAccountLookup, TheGroupListNeedsRoomAndHoldsThePrimaryGroup) {
    const SystemAccountLookup lookup;
    int error = 0;
    const auto user = lookup.userEntry(::geteuid(), error);
    ASSERT_TRUE(user.has_value());
    int count = 0;
    gid_t none = 0;
    EXPECT_LT(lookup.groupList(*user, &none, count), 0);
    ASSERT_GE(count, 1);
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    EXPECT_EQ(lookup.groupList(*user, groups.data(), count), count);
    EXPECT_NE(std::find(groups.begin(), groups.end(), user->primaryGroup), groups.end());
}

TEST(SystemAccountLookup, GroupsAreFoundByNameAndAMissingOneIsNoError) {
    const SystemAccountLookup lookup;
    int error = -1;
    EXPECT_EQ(lookup.groupId("root", error), std::optional<gid_t>(0));
    EXPECT_EQ(error, 0);
    error = -1;
    EXPECT_FALSE(lookup.groupId("qg-no-such-group", error).has_value());
    EXPECT_EQ(error, 0);
}

TEST(SystemAccountLookup, TheHostNameIsTheKernels) {
    std::string name;
    int error = 0;
    ASSERT_TRUE(SystemAccountLookup().hostName(name, error));
    char expected[HOST_NAME_MAX + 1] = {};
    ::gethostname(expected, sizeof expected);
    EXPECT_EQ(name, expected);
}

} // namespace
