#include "service/ServicePaths.h"

#include "foundation/SystemPaths.h"

namespace ServicePaths {

std::string PidFile() {
    return SystemPaths::RunFolder() + "/VelloranQuillgateSvc.pid";
}

std::string ModuleDataFolder() {
    return SystemPaths::CommonDataFolder() + "/velloran/quillgate";
}

std::string ConfigFile() {
    return ModuleDataFolder() + "/QGConfig.ini";
}

std::string MessageLog() {
    return SystemPaths::Root() + "/var/log/velloran/qgsasvc-messages.jsonl";
}

std::string DiagnosticLog() {
    return SystemPaths::Root() + "/var/log/velloran/qgsasvc.log";
}

std::string SettingsFile() {
    return SystemPaths::Root() + "/etc/velloran/qgsasvc.conf";
}

} // namespace ServicePaths
