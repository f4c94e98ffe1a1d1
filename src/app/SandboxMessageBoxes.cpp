#include "app/SandboxMessageBoxes.h"

#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

std::string Escaped(const stdstr& text) {
    std::string out;
    for (char c : stdstr::fromTString(text)) {
        if (c == '\n')
            out += "\\n";
        else if (c == '\r')
            out += "\\r";
        else
            out += c;
    }
    return out;
}

} // namespace

SandboxMessageBoxes::SandboxMessageBoxes(std::string logPath) : m_logPath(std::move(logPath)) {}

std::string SandboxMessageBoxes::ChosenLogPath() {
    const char* path = std::getenv(LogVariable);
    if (SystemPaths::Root().empty() || path == nullptr || *path == '\0')
        return {};
    return path;
}

int SandboxMessageBoxes::AnswerFor(std::uint32_t type) {
    switch (type & ButtonMask) {
    case MB_YESNO:
        return IDNO;
    case MB_OKCANCEL:
        return IDCANCEL;
    default:
        return IDOK;
    }
}

int SandboxMessageBoxes::MessageBox(QWidget*, const stdstr& text, const stdstr& caption,
                                    std::uint32_t type) {
    char typeText[16];
    std::snprintf(typeText, sizeof typeText, "%x", static_cast<unsigned>(type));
    std::ofstream log(m_logPath, std::ios::app);
    log << typeText << '|' << Escaped(caption) << '|' << Escaped(text) << '\n';
    TraceFmt(TRACE_DEBUG, u"SandboxMessageBoxes::MessageBox(%s) - recorded, not shown", text);
    return AnswerFor(type);
}
