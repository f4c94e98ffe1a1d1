#include "foundation/Drives.h"

#include "foundation/DebugLog.h"
#include "foundation/DriveClassifier.h"
#include "foundation/MountTable.h"
#include "foundation/SyncLock.h"
#include "foundation/VolumeLabels.h"
#include "foundation/stdstr.h"

#include <chrono>
#include <map>
#include <sys/statvfs.h>
#include <utility>

namespace Corvane {

Drives::Drives() = default;

Drives::Drives(Sources sources) : m_sources(std::move(sources)) {}

Drives::~Drives() = default;

bool Drives::refresh() {
    const SyncLock lock(m_section);
    clear();
    const auto start = std::chrono::steady_clock::now();

    std::vector<MountEntry> entries;
    if (!MountTable::read(m_sources.mountTable, entries))
        return false;
    // Only the last mount on a mount point is seen there.
    std::map<std::string, std::size_t> lastAt;
    for (std::size_t i = 0; i < entries.size(); ++i)
        lastAt[entries[i].mountPoint] = i;

    const DriveClassifier classifier(m_sources.sysRoot);
    const VolumeLabels labels(m_sources.labelFolder);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const MountEntry& entry = entries[i];
        if (lastAt[entry.mountPoint] != i)
            continue;
        const auto type = classifier.typeOf(entry);
        if (!type)
            continue;
        struct statvfs volume {};
        if (::statvfs(entry.mountPoint.c_str(), &volume) != 0)
            continue;
        Drive drive;
        drive.rootPath = stdstr::toTString(entry.mountPoint);
        drive.volumeName = labels.labelOf(entry.device);
        drive.serialNumber = static_cast<std::uint32_t>(volume.f_fsid);
        drive.maxComponentLength = static_cast<std::uint32_t>(volume.f_namemax);
        drive.fileSystemFlags = static_cast<std::uint32_t>(volume.f_flag);
        drive.fileSystemName = stdstr::toTString(entry.fileSystem);
        drive.type = *type;
        push_back(std::move(drive));
    }

    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start);
    DebugLogPrintf("Drive info retrieval took %dms\n", static_cast<int>(took.count()));
    return true;
}

std::vector<Drive> Drives::snapshot() {
    const SyncLock lock(m_section);
    return std::vector<Drive>(begin(), end());
}

} // namespace Corvane
