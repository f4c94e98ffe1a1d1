#pragma once
// The system's one string type: UTF-16 code units, so that lengths and limits count
// characters the way the rest of the system (messages, files, buffers) counts them.
// It adds no field to the standard string; narrow text exists only at the edges.

#include "foundation/Formatter.h"

#include <cstddef>
#include <string>
#include <string_view>

class stdstr : public std::u16string {
public:
    // The largest text that Format composes; longer results are cut to it.
    static constexpr std::size_t FormatLimit = 32767;

    stdstr() = default;
    stdstr(const char16_t* text) : std::u16string(text ? text : u"") {}
    stdstr(const char16_t* text, std::size_t length) : std::u16string(text, length) {}
    stdstr(const std::u16string& text) : std::u16string(text) {}
    stdstr(std::u16string&& text) : std::u16string(std::move(text)) {}
    stdstr(std::u16string_view text) : std::u16string(text) {}
    stdstr(std::size_t count, char16_t c) : std::u16string(count, c) {}

    // Replaces the content with the composed text, at most FormatLimit characters. A null
    // format gives an empty string; a format that does not fit its arguments gives the
    // same fallback text as stringFmt.
    template <class... Args>
    stdstr& Format(const char16_t* format, const Args&... args) {
        const auto packed = Corvane::makeFormatArgs(args...);
        return FormatArgs(format, packed);
    }
    stdstr& FormatArgs(const char16_t* format, std::span<const Corvane::FormatArg> args);

    // The three conversions read their input as a terminated string, as the Windows calls
    // with a length of -1 do: an embedded NUL ends the text there.
    // UTF-8 to stdstr. Invalid sequences become U+FFFD; nothing is thrown for them.
    static stdstr toTString(const char* utf8);
    static stdstr toTString(std::string_view utf8);
    // stdstr to UTF-8. Unpaired surrogates become U+FFFD.
    static std::string fromTString(const std::u16string& text);
    // stdstr to a narrow string in a Windows code page number (0: the system's, 65001:
    // UTF-8, 1252: Western, ...). Characters the code page lacks become '?'. A code page
    // that this system cannot convert to throws BaseException.
    static std::string fromUNICODE(const std::u16string& text, unsigned codePage);

    // In-place replacement of every occurrence, left to right, by one character.
    void replaceChar(char16_t character, char16_t replacement);
    void replaceText(std::u16string_view text, char16_t replacement);
};

// A copy of `text` with every `from` replaced by `to`; the scan goes on behind each
// replacement, so a `to` that contains `from` is not replaced again.
stdstr replaceAll(const std::u16string& text, std::u16string_view from, std::u16string_view to);

// Composes without a length limit. A format that does not fit its arguments gives
// "StringHelper::stringFmt() - Invalid message format : " followed by the format.
stdstr stringFmtArgs(const char16_t* format, std::span<const Corvane::FormatArg> args);
template <class... Args>
stdstr stringFmt(const char16_t* format, const Args&... args) {
    const auto packed = Corvane::makeFormatArgs(args...);
    return stringFmtArgs(format, packed);
}
