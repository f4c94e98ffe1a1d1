#include "foundation/DriveClassifier.h"

#include "foundation/Drive.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using namespace Corvane;

// A sysfs with the disks the tests name: sdqx (fixed) and sdqy (removable) with one
// partition each, the floppy fd0 (removable, as the kernel reports it), and the
// whole-disk stick sdqz (removable).
class DriveClassifierTest : public ::testing::Test {
protected:
    void SetUp() override {
        disk("sdqx", "0", "sdqx1");
        disk("sdqy", "1", "sdqy1");
        disk("fd0", "1", "");
        disk("sdqz", "1", "");
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

    std::optional<std::uint32_t> type(const std::string& device, const std::string& fs) const {
        return DriveClassifier(sandbox.file("sys")).typeOf({device, "/mnt", fs, "rw"});
    }

    TestSupport::SandboxRoot sandbox;
};

TEST_F(DriveClassifierTest, TheKernelsOwnViewsAreNoDrives) {
    for (const char* fs : {"proc", "sysfs", "devtmpfs", "devpts", "cgroup", "cgroup2", "securityfs",
                           "debugfs", "tracefs", "mqueue", "autofs", "bpf", "binfmt_misc",
                           "fusectl", "configfs", "hugetlbfs", "pstore"})
        EXPECT_EQ(type(fs, fs), std::nullopt) << fs;
}

TEST_F(DriveClassifierTest, NetworkFileSystemsAndSharesAreRemote) {
    for (const char* fs : {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "sshfs", "9p", "ceph"})
        EXPECT_EQ(type("server:/export", fs), DRIVE_REMOTE) << fs;
    EXPECT_EQ(type("//server/share", "fuse.unknown"), DRIVE_REMOTE);
    EXPECT_EQ(type("user@host:/home", "fuse"), DRIVE_REMOTE);
}

TEST_F(DriveClassifierTest, MemoryFileSystemsAndRamDisksAreRamDisks) {
    EXPECT_EQ(type("tmpfs", "tmpfs"), DRIVE_RAMDISK);
    EXPECT_EQ(type("none", "ramfs"), DRIVE_RAMDISK);
    EXPECT_EQ(type("/dev/zram0", "ext4"), DRIVE_RAMDISK);
    EXPECT_EQ(type("/dev/ram1", "ext2"), DRIVE_RAMDISK);
}

TEST_F(DriveClassifierTest, OpticalDiscsAreCdDrives) {
    EXPECT_EQ(type("/dev/sr0", "iso9660"), DRIVE_CDROM);
    EXPECT_EQ(type("/dev/sr1", "udf"), DRIVE_CDROM);
    EXPECT_EQ(type("/dev/sr0", "auto"), DRIVE_CDROM);
    EXPECT_EQ(type("/tmp/disc.iso", "iso9660"), DRIVE_CDROM);
}

TEST_F(DriveClassifierTest, AFloppyDriveIsAFloppyAlthoughItIsRemovable) {
    EXPECT_EQ(type("/dev/fd0", "vfat"), DRIVE_FLOPPY);
}

TEST_F(DriveClassifierTest, ADiskThatSaysItIsRemovableIsRemovable) {
    EXPECT_EQ(type("/dev/sdqy1", "vfat"), DRIVE_REMOVABLE);
    EXPECT_EQ(type("/dev/sdqz", "exfat"), DRIVE_REMOVABLE);
}

TEST_F(DriveClassifierTest, OtherBlockDevicesAndEverythingElseAreFixed) {
    EXPECT_EQ(type("/dev/sdqx1", "ext4"), DRIVE_FIXED);
    EXPECT_EQ(type("/dev/nvme9n9p9", "btrfs"), DRIVE_FIXED);
    EXPECT_EQ(type("overlay", "overlay"), DRIVE_FIXED);
    EXPECT_EQ(type("/dev/loop99", "squashfs"), DRIVE_FIXED);
    EXPECT_EQ(type("/dev/fd", "ext4"), DRIVE_FIXED);
    EXPECT_EQ(type("/dev/srx", "ext4"), DRIVE_FIXED);
}

} // namespace
