#pragma once
// The debug log of the foundation classes: a separate, simple file in the temporary folder,
// "QGDebugLog_<executable>.txt", written only when the machine store holds the value
// "DebugOutput" under "Software\Velloran\Quillgate". Times are UTC. Each message opens,
// appends and closes the file; failures are silent.

#include "foundation/Formatter.h"

#include <span>
#include <string>

namespace DebugLogDetail {
bool Enabled();
void Write(const char* format, std::span<const Corvane::FormatArg> args);
} // namespace DebugLogDetail

// A narrow printf-style format whose text brings its own line end.
template <class... Args>
void DebugLogPrintf(const char* format, const Args&... args) {
    if (!DebugLogDetail::Enabled())
        return;
    const auto packed = Corvane::makeFormatArgs(args...);
    DebugLogDetail::Write(format, packed);
}

// The path of the debug log of this process (built even when the log is off).
const std::string& DebugLogPath();
