#pragma once
// Corvane::Drive: one mounted volume as the drive list records it: where it is mounted,
// its label, serial number, longest file name, flags, file system and kind. The kinds keep
// the Windows drive-type numbers, with 7 for a floppy disk drive.

#include <cstdint>
#include <string>

namespace Corvane {

enum DriveType : std::uint32_t {
    DRIVE_UNKNOWN = 0,
    DRIVE_NO_ROOT_DIR = 1,
    DRIVE_REMOVABLE = 2,
    DRIVE_FIXED = 3,
    DRIVE_REMOTE = 4,
    DRIVE_CDROM = 5,
    DRIVE_RAMDISK = 6,
    DRIVE_FLOPPY = 7,
};

struct Drive {
    std::u16string rootPath;   // the mount point
    std::u16string volumeName; // the file system's label, empty without one
    std::uint32_t serialNumber = 0;
    std::uint32_t maxComponentLength = 0;
    std::uint32_t fileSystemFlags = 0; // the mount's ST_* flags (ST_RDONLY, ST_NOSUID, ...)
    std::u16string fileSystemName;
    std::uint32_t type = DRIVE_UNKNOWN;
};

} // namespace Corvane
