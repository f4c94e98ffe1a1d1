#include "foundation/DriveClassifier.h"

#include "foundation/Drive.h"
#include "foundation/SmallTextFile.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace Corvane {
namespace {

constexpr std::string_view PseudoFileSystems[] = {
    "proc",    "sysfs",       "devtmpfs",        "devpts",      "cgroup",
    "cgroup2", "securityfs",  "pstore",          "bpf",         "tracefs",
    "debugfs", "configfs",    "fusectl",         "mqueue",      "hugetlbfs",
    "autofs",  "binfmt_misc", "efivarfs",        "selinuxfs",   "rpc_pipefs",
    "nsfs",    "nfsd",        "fuse.gvfsd-fuse", "fuse.portal", "fuse.xdg-document-portal"};

constexpr std::string_view NetworkFileSystems[] = {
    "nfs", "nfs4",      "cifs",       "smb3",  "smbfs",          "ncpfs", "afs",        "ceph",
    "9p",  "glusterfs", "fuse.sshfs", "sshfs", "fuse.glusterfs", "davfs", "fuse.rclone"};

template <std::size_t N>
bool OneOf(const std::string_view (&names)[N], std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

// "<prefix><digits>", the kernel's names of numbered devices.
bool NumberedDevice(std::string_view name, std::string_view prefix) {
    if (!StartsWith(name, prefix) || name.size() == prefix.size())
        return false;
    const std::string_view number = name.substr(prefix.size());
    return std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string RealPath(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) ? std::string(resolved) : std::string();
}

// The kernel's name of a device node: /dev/disk/by-uuid/..., /dev/mapper/x and /dev/cdrom
// are links to the node itself.
std::string KernelName(const std::string& device) {
    if (!StartsWith(device, "/dev/"))
        return {};
    std::string resolved = RealPath(device);
    if (resolved.empty() || !StartsWith(resolved, "/dev/"))
        resolved = device;
    return resolved.substr(resolved.rfind('/') + 1);
}

bool NetworkDevice(std::string_view device) {
    if (StartsWith(device, "//"))
        return true;
    const auto colon = device.find(":/");
    return colon != std::string_view::npos && colon > 0 && device.front() != '/';
}

} // namespace

DriveClassifier::DriveClassifier(std::string sysRoot) : m_sysRoot(std::move(sysRoot)) {}

std::optional<std::uint32_t> DriveClassifier::typeOf(const MountEntry& entry) const {
    const std::string_view fs = entry.fileSystem;
    if (OneOf(PseudoFileSystems, fs))
        return std::nullopt;
    if (OneOf(NetworkFileSystems, fs) || NetworkDevice(entry.device))
        return DRIVE_REMOTE;

    const std::string name = KernelName(entry.device);
    if (fs == "tmpfs" || fs == "ramfs" || NumberedDevice(name, "ram") ||
        NumberedDevice(name, "zram"))
        return DRIVE_RAMDISK;
    if (NumberedDevice(name, "fd"))
        return DRIVE_FLOPPY;
    if (fs == "iso9660" || fs == "udf" || NumberedDevice(name, "sr"))
        return DRIVE_CDROM;
    if (!name.empty() && isRemovable(name))
        return DRIVE_REMOVABLE;
    return DRIVE_FIXED;
}

bool DriveClassifier::isRemovable(const std::string& deviceName) const {
    std::string node = RealPath(m_sysRoot + "/class/block/" + deviceName);
    if (node.empty())
        return false;
    // A partition's folder lies inside its disk's, and only the disk says "removable".
    struct stat st {};
    if (::stat((node + "/partition").c_str(), &st) == 0)
        node = node.substr(0, node.rfind('/'));
    std::string text;
    if (!SmallTextFile::read(node + "/removable", text, 16))
        return false;
    return !text.empty() && text.front() == '1';
}

} // namespace Corvane
