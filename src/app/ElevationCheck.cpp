#include "app/ElevationCheck.h"

#include "foundation/SystemPaths.h"

#include <sys/stat.h>
#include <unistd.h>

bool ElevationCheck::Applies() {
    struct stat st {};
    const bool systemdBooted = ::stat("/run/systemd/system", &st) == 0 && S_ISDIR(st.st_mode);
    return Applies(!SystemPaths::Root().empty(), systemdBooted, ::geteuid() == 0);
}

bool ElevationCheck::Applies(bool sandboxRoot, bool systemdBooted, bool effectiveRoot) {
    return !sandboxRoot && systemdBooted && !effectiveRoot;
}
