#include "messaging/ShellInstallerLauncher.h"

#include "foundation/PathFunctions.h"
#include "foundation/ShellOpenInfo.h"

std::optional<std::uint32_t> ShellInstallerLauncher::RunAndWait(const stdstr& file,
                                                                const stdstr& parameters,
                                                                const stdstr& folder) {
    // An empty name names nothing: the launch fails, as the shell's does.
    if (file.empty())
        return std::nullopt;
    const stdstr target =
        file.front() == u'/' || folder.empty() ? file : AppendPathComponent(folder, file);
    ShellOpenInfo started;
    int exitCode = -1;
    ShellOpen(target, parameters, true, &started, &exitCode);
    if (started.pid() == -1)
        return std::nullopt;
    return static_cast<std::uint32_t>(exitCode);
}
