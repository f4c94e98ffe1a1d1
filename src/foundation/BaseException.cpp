#include "foundation/BaseException.h"

namespace {

bool Compose(stdstr& out, const char16_t* format, std::span<const Corvane::FormatArg> args) {
    out.clear();
    if (!format)
        return false;
    try {
        return Corvane::formatAppend(out, format, args);
    } catch (...) {
        return false;
    }
}

} // namespace

BaseException::BaseException(const char16_t* file, int line, int code, const char16_t* function,
                             const char16_t* format, std::span<const Corvane::FormatArg> args)
    : m_code(code), m_line(line), m_file(file), m_function(function) {
    if (!Compose(m_message, format, args))
        m_message.Format(u"Invalid message format. file = (%s), line = %d", m_file, m_line);
}

void BaseException::AddDescriptionArgs(bool prepend, const char16_t* format,
                                       std::span<const Corvane::FormatArg> args) {
    stdstr text;
    if (Compose(text, format, args)) {
        m_message = prepend ? stdstr(text + m_message) : stdstr(m_message + text);
    } else if (prepend) {
        m_message.insert(0, u"Invalid message format");
    } else {
        m_message += u", Invalid message format description was added";
    }
}

void BaseException::AddFunctionArgs(bool prepend, const char16_t* format,
                                    std::span<const Corvane::FormatArg> args) {
    stdstr text;
    if (Compose(text, format, args)) {
        m_function = prepend ? stdstr(text + m_function) : stdstr(m_function + text);
    } else if (prepend) {
        m_function.insert(0, u"Invalid message format");
    } else {
        m_function = stringFmt(u"BaseException::AddFunction() - Invalid message format. (%s)",
                               format ? format : u"");
    }
}

stdstr BaseException::GetFullMessage() const {
    if (m_function.empty())
        return stringFmt(u"Exception on File = (%s), line = (%d): ", m_file, m_line) + m_message;
    return m_function + u" - " + m_message;
}
