#pragma once
// Where the system's files stand on Linux. Everything hangs below an optional sandbox root,
// taken from QUILLGATE_ROOT, so that the demo and the tests never touch the machine.
// All paths are UTF-8 and use '/'.

#include <string>

namespace SystemPaths {

// QUILLGATE_ROOT without a trailing '/', or empty on a real installation.
std::string Root();
// $ROOT/run: the lock files of named mutexes.
std::string RunFolder();
// $ROOT/var/lib: the all-users data folder.
std::string CommonDataFolder();
// $ROOT/var/lib/velloran/registry/machine.reg: the machine-wide store.
std::string MachineStorePath();
// $XDG_CONFIG_HOME (else $HOME/.config): the user's configuration folder.
std::string UserConfigFolder();
// $XDG_CONFIG_HOME/velloran/user.reg: the user's store.
std::string UserStorePath();
// $TMPDIR, else /tmp; always with a trailing '/', as the system's temporary-folder
// enquiry answers.
std::string TempFolder();
// The folder of /proc/self/exe, without a trailing '/'.
std::string ProgramFolder();
// The file name of /proc/self/exe.
std::string ProgramFileName();
// Creates `folder` and its parents with `mode` (umask applies); true when it exists after.
bool MakeFolders(const std::string& folder, unsigned mode = 0755);

} // namespace SystemPaths
