// Composition entry points of stdstr: Format with its fixed limit and stringFmt without one.
#include "foundation/stdstr.h"

namespace {

stdstr InvalidFormatText(const char16_t* format) {
    stdstr text(u"StringHelper::stringFmt() - Invalid message format : ");
    if (format)
        text += format;
    return text;
}

// Composing can only throw for want of memory; that failure is swallowed like a bad format.
bool Compose(std::u16string& out, const char16_t* format, std::span<const Corvane::FormatArg> args,
             std::size_t limit) {
    try {
        return Corvane::formatAppend(out, format, args, limit);
    } catch (...) {
        out.clear();
        return false;
    }
}

} // namespace

stdstr& stdstr::FormatArgs(const char16_t* format, std::span<const Corvane::FormatArg> args) {
    clear();
    if (!format)
        return *this;
    if (!Compose(*this, format, args, FormatLimit)) {
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
    if (!Compose(text, format, args, std::u16string::npos))
        return InvalidFormatText(format);
    return text;
}
