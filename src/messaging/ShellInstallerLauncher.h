#pragma once
// The installer of a reinstall, started the way the desktop opens a file (a program is run
// with its parameters, anything else goes to the desktop's opener) and waited for to its end.
// A relative file name is taken in the working folder that the service gave with it.

#include "messaging/InstallerLauncher.h"

class ShellInstallerLauncher : public InstallerLauncher {
public:
    std::optional<std::uint32_t> RunAndWait(const stdstr& file, const stdstr& parameters,
                                            const stdstr& folder) override;
};
