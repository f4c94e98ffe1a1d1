#pragma once
// Corvane::Drives: the list of the machine's drives, that is of its mounted volumes other
// than the kernel's own views (see DriveClassifier for the kinds). refresh() reads the
// mount table again. The list can be read on one thread while another refreshes it: every
// operation takes the critical section, and a reader holds it through section().

#include "foundation/CriticalSection.h"
#include "foundation/Drive.h"

#include <string>
#include <vector>

namespace Corvane {

class Drives : public std::vector<Drive> {
public:
    // Where the list is read from; tests give their own.
    struct Sources {
        std::string mountTable = "/proc/self/mounts";
        std::string sysRoot = "/sys";
        std::string labelFolder = "/dev/disk/by-label";
    };

    Drives();
    explicit Drives(Sources sources);
    virtual ~Drives();
    Drives(const Drives&) = delete;
    Drives& operator=(const Drives&) = delete;

    // Empties the list and reads it again: one drive per mount point, in the order of the
    // mount table (a mount point that is mounted over counts once, with the mount that is
    // seen). A mount whose volume information cannot be read (statvfs fails) is left out.
    // False when the mount table cannot be read; the list is then empty.
    bool refresh();

    // A copy of the list, taken under the lock.
    std::vector<Drive> snapshot();
    CriticalSection& section() { return m_section; }

private:
    Sources m_sources;
    CriticalSection m_section;
};

} // namespace Corvane
