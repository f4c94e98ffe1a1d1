#pragma once
// Corvane::MountTable: the lines of a mount table in the kernel's format
// (/proc/self/mounts, fstab(5) fields): device, mount point, file system type, options. The
// kernel writes space, tab, newline and backslash inside a field as \040, \011, \012, \134.

#include <string>
#include <string_view>
#include <vector>

namespace Corvane {

struct MountEntry {
    std::string device;
    std::string mountPoint;
    std::string fileSystem;
    std::string options;
};

class MountTable {
public:
    // Lines with fewer than three fields are skipped.
    static std::vector<MountEntry> parse(std::string_view text);
    // Undoes the kernel's octal escapes; any other backslash stays as it is.
    static std::string unescape(std::string_view field);
    // False when the file cannot be read.
    static bool read(const std::string& path, std::vector<MountEntry>& entries);
};

} // namespace Corvane
