#include "app/ServiceProgram.h"

#include <climits>
#include <cstdlib>
#include <unistd.h>

std::optional<stdstr> ServiceProgram::Path() {
    const char* override = std::getenv(OverrideVariable);
    if (override != nullptr && *override != '\0')
        return stdstr::toTString(override);
    char buffer[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", buffer, sizeof buffer);
    if (length <= 0 || static_cast<std::size_t>(length) >= sizeof buffer)
        return std::nullopt;
    return BesideProgram(
        stdstr::toTString(std::string_view(buffer, static_cast<std::size_t>(length))));
}

stdstr ServiceProgram::BesideProgram(const stdstr& programPath) {
    const std::size_t slash = programPath.rfind(u'/');
    stdstr folder = slash == stdstr::npos ? programPath : stdstr(programPath.substr(0, slash));
    return folder + u"/" + FileName;
}
