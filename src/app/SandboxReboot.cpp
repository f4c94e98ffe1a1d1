#include "app/SandboxReboot.h"

#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"
#include "foundation/stdstr.h"

#include <fstream>
#include <unistd.h>

std::string SandboxReboot::RecordPath() {
    return SystemPaths::Root() + "/" + RecordFile;
}

bool SandboxReboot::RebootComputer() {
    const std::string path = RecordPath();
    const std::string folder = path.substr(0, path.rfind('/'));
    std::ofstream record;
    if (SystemPaths::MakeFolders(folder))
        record.open(path, std::ios::app);
    if (record)
        record << "reboot requested by " << ::getpid() << '\n';
    record.flush();
    const bool written = record.good() && record.is_open();
    TraceFmt(TRACE_INFO, u"SandboxReboot::RebootComputer - %s (%s)",
             written ? u"recorded, not carried out" : u"could not be recorded",
             stdstr::toTString(path));
    return written;
}
