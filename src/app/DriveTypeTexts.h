#pragma once
// The words for a drive's type in the About box: the kinds that users meet through the
// translation layer, the rare ones and the unknown as fixed English words.

#include "foundation/stdstr.h"

class DriveTypeTexts {
public:
    // Windows drive types, as the drive list gives them.
    static constexpr int Invalid = 1;   // DRIVE_NO_ROOT_DIR
    static constexpr int Removable = 2; // string 177
    static constexpr int Fixed = 3;     // string 178
    static constexpr int Remote = 4;    // string 179
    static constexpr int Optical = 5;   // string 180
    static constexpr int RamDisk = 6;   // DRIVE_RAMDISK
    static constexpr int Floppy = 7;    // string 181

    static stdstr Of(int type);
};
