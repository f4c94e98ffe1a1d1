// Composition entry points of stdstr: Format with its fixed limit and stringFmt without one.
#include "foundation/stdstr.h"

namespace {

stdstr InvalidFormatText(const char16_t* format) {
    stdstr text(u"StringHelper::stringFmt() - Invalid message format : ");
    if (format)
        text += format;
    return text;
}

} // namespace

stdstr& stdstr::FormatArgs(const char16_t* format, std::span<const Corvane::FormatArg> args) {
    clear();
    if (!format)
        return *this;
    if (!Corvane::formatAppend(*this, format, args, FormatLimit)) {
        assign(InvalidFormatText(format));
        if (size() > FormatLimit)
            resize(FormatLimit);
    }
    return *this;
}

stdstr stringFmtArgs(const char16_t* format, std::span<const Corvane::FormatArg> args) {
    stdstr text;
    if (!format)
        return text;
    if (!Corvane::formatAppend(text, format, args))
        return InvalidFormatText(format);
    return text;
}
