#pragma once
// Where the service stand-in keeps its files, all below the sandbox root ($ROOT, from
// QUILLGATE_ROOT). The socket is the protocol's (RpcSocketPath).

#include <string>

namespace ServicePaths {

// $ROOT/run/VelloranQuillgateSvc.pid: locked by the running service; says its state.
std::string PidFile();
// $ROOT/var/lib/velloran/quillgate: ModuleDataFolder, the folder of QGConfig.ini.
std::string ModuleDataFolder();
// $ROOT/var/lib/velloran/quillgate/QGConfig.ini
std::string ConfigFile();
// $ROOT/var/log/velloran/qgsasvc-messages.jsonl: one line per message received or sent.
std::string MessageLog();
// $ROOT/var/log/velloran/qgsasvc.log: the daemon's own diagnostics (its standard error).
std::string DiagnosticLog();
// $ROOT/etc/velloran/qgsasvc.conf: optional settings (allowed group, connection limit).
std::string SettingsFile();

} // namespace ServicePaths
