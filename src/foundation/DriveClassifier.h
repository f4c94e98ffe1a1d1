#pragma once
// Corvane::DriveClassifier: the kind of a mount, in the Windows drive-type numbers, decided
// from its file system type and its device, first rule that applies:
//   1. not a drive: the kernel's own views (proc, sysfs, cgroup, devpts, devtmpfs, ...),
//      which hold no files of the user;
//   2. network (4): nfs, cifs, smb3, sshfs and the other network file systems, or a device
//      written as "//server/share" or "host:/path";
//   3. RAM (6): tmpfs, ramfs, or a /dev/ram* or /dev/zram* device;
//   4. floppy (7): a /dev/fd<N> device, even though the kernel also calls it removable;
//   5. optical (5): iso9660 or udf, or a /dev/sr<N> (/dev/cdrom) device;
//   6. removable (2): a block device whose disk says so in sysfs (<sys>/class/block/<dev>,
//      the disk of a partition), as card readers and most USB sticks do;
//   7. fixed (3): everything else (disks, partitions, loop images, overlay roots).

#include "foundation/MountTable.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Corvane {

class DriveClassifier {
public:
    explicit DriveClassifier(std::string sysRoot = "/sys");

    // Empty for a mount that is no drive.
    std::optional<std::uint32_t> typeOf(const MountEntry& entry) const;

private:
    bool isRemovable(const std::string& deviceName) const;

    std::string m_sysRoot;
};

} // namespace Corvane
