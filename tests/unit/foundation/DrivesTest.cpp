#include "foundation/Drives.h"

#include "foundation/DebugLog.h"
#include "foundation/stdstr.h"

#include "support/RunInChild.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace Corvane;

// A machine described by files: a mount table, a sysfs with the disks' "removable"
// attributes, udev's label links, and a folder for each mount point that "has a volume".
class DrivesTest : public ::testing::Test {
protected:
    void SetUp() override {
        disk("sdqx", "0", "sdqx1");
        disk("sdqy", "1", "sdqy1");
        disk("fd0", "1", "");
        sandbox.writeFile("dev/vol1", "");
        std::filesystem::create_directories(sandbox.file("dev/disk/by-label"));
        std::filesystem::create_symlink("../../vol1",
                                        sandbox.file("dev/disk/by-label/My\\x20Data"));
    }

    void disk(const std::string& name, const std::string& removable, const std::string& part) {
        const std::string folder = "sys/devices/test/block/" + name;
        sandbox.writeFile(folder + "/removable", removable + "\n");
        std::filesystem::create_directories(sandbox.file("sys/class/block"));
        std::filesystem::create_symlink("../../devices/test/block/" + name,
                                        sandbox.file("sys/class/block/" + name));
        if (part.empty())
            return;
        sandbox.writeFile(folder + "/" + part + "/partition", "1\n");
        std::filesystem::create_symlink("../../devices/test/block/" + name + "/" + part,
                                        sandbox.file("sys/class/block/" + part));
    }

    // A mount point that exists (statvfs answers for it).
    std::string mountPoint(const std::string& name) const {
        std::filesystem::create_directories(sandbox.file("mnt/" + name));
        return sandbox.file("mnt/" + name);
    }

    Drives::Sources sources() const {
        return {sandbox.file("mounts"), sandbox.file("sys"), sandbox.file("dev/disk/by-label")};
    }

    const Drive* find(const std::vector<Drive>& drives, const std::string& root) const {
        const std::u16string wanted = stdstr::toTString(root);
        for (const Drive& drive : drives) {
            if (drive.rootPath == wanted)
                return &drive;
        }
        return nullptr;
    }

    TestSupport::SandboxRoot sandbox;
};

TEST_F(DrivesTest, EveryKindOfDriveIsListedInTheTablesOrderWithItsType) {
    const std::string table =
        "/dev/sdqx1 " + mountPoint("disk") + " ext4 rw 0 0\n" + "proc " + mountPoint("proc") +
        " proc rw 0 0\n" + "/dev/sdqy1 " + mountPoint("stick") + " vfat rw 0 0\n" +
        "server:/export " + mountPoint("nfs") + " nfs4 rw 0 0\n" + "sysfs " + mountPoint("sys") +
        " sysfs rw 0 0\n" + "/dev/sr0 " + mountPoint("cd") + " iso9660 ro 0 0\n" + "tmpfs " +
        mountPoint("ram") + " tmpfs rw 0 0\n" + "/dev/fd0 " + mountPoint("floppy") +
        " vfat rw 0 0\n" + "cgroup2 " + mountPoint("cgroup") + " cgroup2 rw 0 0\n";
    sandbox.writeFile("mounts", table);
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    const std::vector<Drive> list = drives.snapshot();
    ASSERT_EQ(list.size(), 6u);
    const std::vector<std::pair<std::string, std::uint32_t>> expected{
        {"disk", DRIVE_FIXED}, {"stick", DRIVE_REMOVABLE}, {"nfs", DRIVE_REMOTE},
        {"cd", DRIVE_CDROM},   {"ram", DRIVE_RAMDISK},     {"floppy", DRIVE_FLOPPY}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(list[i].rootPath, stdstr::toTString(sandbox.file("mnt/" + expected[i].first)));
        EXPECT_EQ(list[i].type, expected[i].second) << expected[i].first;
    }
    EXPECT_EQ(list[1].fileSystemName, u"vfat");
    EXPECT_EQ(list[2].fileSystemName, u"nfs4");
}

TEST_F(DrivesTest, AFloppyWithADiscHasTypeSevenAndNotRemovable) {
    sandbox.writeFile("mounts", "/dev/fd0 " + mountPoint("a") + " vfat rw 0 0\n");
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    ASSERT_EQ(drives.size(), 1u);
    EXPECT_EQ(drives[0].type, 7u);
}

TEST_F(DrivesTest, AMountWithoutVolumeInformationIsLeftOut) {
    // An optical drive whose disc went away: the table still names it, statvfs fails.
    sandbox.writeFile("mounts", "/dev/sr0 " + sandbox.file("mnt/gone") + " iso9660 ro 0 0\n" +
                                    "tmpfs " + mountPoint("ram") + " tmpfs rw 0 0\n");
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    ASSERT_EQ(drives.size(), 1u);
    EXPECT_EQ(drives[0].rootPath, stdstr::toTString(sandbox.file("mnt/ram")));
}

TEST_F(DrivesTest, TheVolumeInformationIsTheMountsOwn) {
    const std::string root = mountPoint("labelled");
    sandbox.writeFile("mounts", sandbox.file("dev/vol1") + " " + root + " ext4 rw 0 0\n" +
                                    "tmpfs " + mountPoint("ram") + " tmpfs rw 0 0\n");
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    ASSERT_EQ(drives.size(), 2u);
    struct statvfs volume {};
    ASSERT_EQ(::statvfs(root.c_str(), &volume), 0);
    EXPECT_EQ(drives[0].volumeName, u"My Data");
    EXPECT_EQ(drives[0].serialNumber, static_cast<std::uint32_t>(volume.f_fsid));
    EXPECT_EQ(drives[0].maxComponentLength, static_cast<std::uint32_t>(volume.f_namemax));
    EXPECT_EQ(drives[0].fileSystemFlags, static_cast<std::uint32_t>(volume.f_flag));
    EXPECT_EQ(drives[0].fileSystemName, u"ext4");
    EXPECT_EQ(drives[1].volumeName, u"");
}

TEST_F(DrivesTest, MountPointsWithBlanksAreUnescaped) {
    const std::string root = mountPoint("My Stick");
    std::string escaped = root;
    escaped.replace(escaped.find(' '), 1, "\\040");
    sandbox.writeFile("mounts", "/dev/sdqy1 " + escaped + " vfat rw 0 0\n");
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    ASSERT_EQ(drives.size(), 1u);
    EXPECT_EQ(drives[0].rootPath, stdstr::toTString(root));
    EXPECT_EQ(drives[0].type, DRIVE_REMOVABLE);
}

TEST_F(DrivesTest, AMountPointMountedOverCountsOnceWithTheMountThatIsSeen) {
    const std::string root = mountPoint("over");
    sandbox.writeFile("mounts", "/dev/sdqx1 " + root + " ext4 rw 0 0\n" + "tmpfs " +
                                    mountPoint("ram") + " tmpfs rw 0 0\n" + "tmpfs " + root +
                                    " tmpfs rw 0 0\n");
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    ASSERT_EQ(drives.size(), 2u);
    EXPECT_EQ(drives[0].rootPath, stdstr::toTString(sandbox.file("mnt/ram")));
    EXPECT_EQ(drives[1].rootPath, stdstr::toTString(root));
    EXPECT_EQ(drives[1].type, DRIVE_RAMDISK);
}

TEST_F(DrivesTest, AMountTableThatCannotBeReadEmptiesTheListAndFails) {
    sandbox.writeFile("mounts", "tmpfs " + mountPoint("ram") + " tmpfs rw 0 0\n");
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    ASSERT_EQ(drives.size(), 1u);
    std::filesystem::remove(sandbox.file("mounts"));
    EXPECT_FALSE(drives.refresh());
    EXPECT_TRUE(drives.empty());
}

// The debug log decides once per process whether it is on, and the other tests of this
// program have decided it already: the case runs again in a fresh run of this program.
TEST_F(DrivesTest, TheRefreshWritesItsDurationToTheDebugLog) {
    if (!std::getenv("QG_DRIVES_FRESH_PROCESS")) {
        const int code = TestSupport::RunInChild([] {
            ::setenv("QG_DRIVES_FRESH_PROCESS", "1", 1);
            ::execl("/proc/self/exe", "DrivesTest",
                    "--gtest_filter=DrivesTest.TheRefreshWritesItsDurationToTheDebugLog",
                    static_cast<char*>(nullptr));
            return 127;
        });
        EXPECT_EQ(code, 0);
        return;
    }
    sandbox.writeFile("var/lib/velloran/registry/machine.reg",
                      "Windows Registry Editor Version 5.00\r\n\r\n"
                      "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                      "\"DebugOutput\"=dword:00000001\r\n");
    sandbox.writeFile("mounts", "tmpfs " + mountPoint("ram") + " tmpfs rw 0 0\n");
    Drives drives(sources());
    ASSERT_TRUE(drives.refresh());
    const std::string log = TestSupport::SandboxRoot::readFile(DebugLogPath());
    const std::regex line(R"(\d+/\d+/\d+  \d+:\d+:\d+:\d+ \| \d+ \| )"
                          R"(Drive info retrieval took \d+ms\n)");
    EXPECT_TRUE(std::regex_match(log, line)) << log;
}

TEST_F(DrivesTest, TheMachinesOwnTableListsTheRootAndNoKernelViews) {
    Drives drives;
    ASSERT_TRUE(drives.refresh());
    const std::vector<Drive> list = drives.snapshot();
    ASSERT_NE(find(list, "/"), nullptr);
    for (const Drive& drive : list) {
        EXPECT_EQ(drive.rootPath.front(), u'/');
        EXPECT_NE(drive.fileSystemName, u"proc");
        EXPECT_NE(drive.fileSystemName, u"sysfs");
        EXPECT_GE(drive.type, DRIVE_REMOVABLE);
        EXPECT_LE(drive.type, DRIVE_FLOPPY);
    }
}

TEST_F(DrivesTest, TheListCanBeReadWhileAnotherThreadRefreshesIt) {
    std::string table;
    for (int i = 0; i < 20; ++i)
        table += "tmpfs " + mountPoint("r" + std::to_string(i)) + " tmpfs rw 0 0\n";
    sandbox.writeFile("mounts", table);
    Drives drives(sources());
    std::atomic<bool> done{false};
    std::thread refresher([&] {
        for (int i = 0; i < 50; ++i)
            drives.refresh();
        done = true;
    });
    while (!done) {
        const auto list = drives.snapshot();
        // A reader sees the list before or after a refresh, never half of one.
        EXPECT_TRUE(list.empty() || list.size() == 20u) << list.size();
    }
    refresher.join();
    EXPECT_EQ(drives.snapshot().size(), 20u);
}

} // namespace
