#include "foundation/MountTable.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

namespace {

using Corvane::MountTable;

TEST(MountTable, EachLineGivesDeviceMountPointFileSystemAndOptions) {
    const auto entries = MountTable::parse("/dev/sda1 / ext4 rw,relatime 0 0\n"
                                           "tmpfs /run tmpfs rw,nosuid 0 0\n");
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].device, "/dev/sda1");
    EXPECT_EQ(entries[0].mountPoint, "/");
    EXPECT_EQ(entries[0].fileSystem, "ext4");
    EXPECT_EQ(entries[0].options, "rw,relatime");
    EXPECT_EQ(entries[1].mountPoint, "/run");
}

TEST(MountTable, TheKernelsOctalEscapesAreUndone) {
    EXPECT_EQ(MountTable::unescape("/media/My\\040Stick"), "/media/My Stick");
    EXPECT_EQ(MountTable::unescape("a\\011b\\012c\\134d"), "a\tb\nc\\d");
    EXPECT_EQ(MountTable::unescape("not\\08escaped\\"), "not\\08escaped\\");
    EXPECT_EQ(MountTable::unescape("short\\04"), "short\\04");
    const auto entries = MountTable::parse("/dev/sdb1 /media/My\\040Stick vfat rw 0 0\n");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].mountPoint, "/media/My Stick");
}

TEST(MountTable, ShortBlankAndCommentLinesAreSkipped) {
    const auto entries = MountTable::parse("\n   \n# a comment\nonly two\n"
                                           "dev\t/mnt\txfs\n");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].device, "dev");
    EXPECT_EQ(entries[0].fileSystem, "xfs");
    EXPECT_EQ(entries[0].options, "");
}

TEST(MountTable, AFileThatCannotBeReadIsAFailure) {
    TestSupport::SandboxRoot sandbox;
    std::vector<Corvane::MountEntry> entries;
    EXPECT_FALSE(MountTable::read(sandbox.file("no-mounts"), entries));
    sandbox.writeFile("mounts", "a /b c d 0 0");
    EXPECT_TRUE(MountTable::read(sandbox.file("mounts"), entries));
    EXPECT_EQ(entries.size(), 1u);
}

TEST(MountTable, TheProcessOwnTableIsRead) {
    std::vector<Corvane::MountEntry> entries;
    ASSERT_TRUE(MountTable::read("/proc/self/mounts", entries));
    bool root = false;
    for (const auto& entry : entries)
        root = root || entry.mountPoint == "/";
    EXPECT_TRUE(root);
}

} // namespace
