#pragma once
// Starts the installer that the service names for a reinstall, and waits for it without a
// time limit (ShellExecuteExW "open" with the process kept, then a wait).

#include "foundation/stdstr.h"

#include <cstdint>
#include <optional>

class InstallerLauncher {
public:
    // Runs `file` with `parameters` in `folder` and returns its exit code once it has ended;
    // nothing when it could not be started.
    virtual std::optional<std::uint32_t> RunAndWait(const stdstr& file, const stdstr& parameters,
                                                    const stdstr& folder) = 0;

    virtual ~InstallerLauncher() = default;

protected:
    InstallerLauncher() = default;
    InstallerLauncher(const InstallerLauncher&) = default;
    InstallerLauncher& operator=(const InstallerLauncher&) = default;
};
