#pragma once
// String services for the wide standard string inside Corvane: composing a text from a
// format and narrowing it into a code page. Unlike the free stringFmt it has no fallback
// text: a format that does not fit its arguments is the caller's error and is thrown.

#include "foundation/Formatter.h"

#include <span>
#include <string>

namespace Corvane {

class StringHelper {
public:
    virtual ~StringHelper() = default;

    // Composes without a length limit. A null format gives an empty text; a format that
    // does not fit its arguments throws Corvane::BaseException.
    template <class... Args>
    static std::u16string stringFmt(const char16_t* format, const Args&... args) {
        const auto packed = makeFormatArgs(args...);
        return stringFmtArgs(format, packed);
    }
    static std::u16string stringFmtArgs(const char16_t* format, std::span<const FormatArg> args);

    // `text` in a Windows code page number, 0 for the system's. A code page that cannot be
    // converted to throws Corvane::BaseException. The text ends at its first NUL.
    static std::string toNarrow(const std::u16string& text, unsigned codePage);
};

} // namespace Corvane
