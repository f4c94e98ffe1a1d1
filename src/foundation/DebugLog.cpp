#include "foundation/DebugLog.h"

#include "foundation/Registry.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SystemPaths.h"

#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace {

struct DebugLogState {
    bool enabled;
    std::string path;
};

// Decided once per process: only the value's existence counts, not its type or data.
const DebugLogState& State() {
    static const DebugLogState state{
        Corvane::Registry(HKEY_LOCAL_MACHINE)
            .valueExists(u"Software\\Velloran\\Quillgate", u"DebugOutput"),
        SystemPaths::TempFolder() + "QGDebugLog_" + SystemPaths::ProgramFileName() + ".txt"};
    return state;
}

} // namespace

namespace DebugLogDetail {

bool Enabled() {
    return State().enabled;
}

void Write(const char* format, std::span<const Corvane::FormatArg> args) {
    if (!format)
        return;
    std::string line;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    tm utc{};
    ::gmtime_r(&now.tv_sec, &utc);
    const auto head = Corvane::makeFormatArgs(
        static_cast<unsigned>(utc.tm_year + 1900), static_cast<unsigned>(utc.tm_mon + 1),
        static_cast<unsigned>(utc.tm_mday), static_cast<unsigned>(utc.tm_hour),
        static_cast<unsigned>(utc.tm_min), static_cast<unsigned>(utc.tm_sec),
        static_cast<unsigned>(now.tv_nsec / 1000000), static_cast<int>(::gettid()));
    Corvane::formatAppend(line, "%u/%u/%u  %u:%u:%u:%u | %d | ", head);
    if (!Corvane::formatAppend(line, format, args))
        line += format;
    // Text mode append, one open and close per message, as the log has no lock of its own.
    // Close-on-exec ("e"): a program started by another thread meanwhile must not inherit it.
    std::FILE* file = std::fopen(State().path.c_str(), "ae");
    if (!file)
        return;
    std::fwrite(line.data(), 1, line.size(), file);
    std::fclose(file);
}

} // namespace DebugLogDetail

const std::string& DebugLogPath() {
    return State().path;
}
