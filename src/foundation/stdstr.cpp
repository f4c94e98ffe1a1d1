#include "foundation/stdstr.h"

#include "foundation/BaseException.h"
#include "foundation/CodePageConverter.h"
#include "foundation/ErrorKeys.h"
#include "foundation/Unicode.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <stdexcept>

namespace {

constexpr const char16_t* ThisFile = u"stdstr.cpp";

// The conversions fail only when the system does: memory, or a code page it cannot
// convert to. The message names the Windows function whose part the conversion plays, so
// that it reads the same in every build.
[[noreturn]] void throwConversionFailure(int line, int code, const char16_t* systemFunction,
                                         const char16_t* function) {
    throw BaseException(ThisFile, line, code, function, MessageTemplates::KeyWith2Params,
                        ErrorKeys::QGFuncFailed, systemFunction, GetOSErrorText(code));
}

} // namespace

stdstr stdstr::toTString(const char* utf8) {
    if (utf8 == nullptr)
        return stdstr();
    return toTString(std::string_view(utf8));
}

stdstr stdstr::toTString(std::string_view utf8) {
    try {
        stdstr result;
        Corvane::Unicode::appendUtf16(result, Corvane::Unicode::untilNul(utf8));
        return result;
    } catch (const std::bad_alloc&) {
        throwConversionFailure(__LINE__, ENOMEM, u"MultiByteToWideChar", u"stdstr::toTString()");
    } catch (const std::length_error&) {
        throwConversionFailure(__LINE__, ENOMEM, u"MultiByteToWideChar", u"stdstr::toTString()");
    }
}

std::string stdstr::fromTString(const std::u16string& text) {
    try {
        std::string result;
        Corvane::Unicode::appendUtf8(result, Corvane::Unicode::untilNul(text));
        return result;
    } catch (const std::bad_alloc&) {
        throwConversionFailure(__LINE__, ENOMEM, u"WideCharToMultiByte", u"stdstr::fromTString()");
    } catch (const std::length_error&) {
        throwConversionFailure(__LINE__, ENOMEM, u"WideCharToMultiByte", u"stdstr::fromTString()");
    }
}

std::string stdstr::fromUNICODE(const std::u16string& text, unsigned codePage) {
    int error = 0;
    std::string result;
    try {
        error =
            Corvane::CodePageConverter::narrow(Corvane::Unicode::untilNul(text), codePage, result);
    } catch (const std::bad_alloc&) {
        error = ENOMEM;
    } catch (const std::length_error&) {
        error = ENOMEM;
    }
    if (error != 0)
        throwConversionFailure(__LINE__, error, u"WideCharToMultiByte", u"stdstr::fromUNICODE()");
    return result;
}

void stdstr::replaceChar(char16_t character, char16_t replacement) {
    std::replace(begin(), end(), character, replacement);
}

void stdstr::replaceText(std::u16string_view text, char16_t replacement) {
    if (text.empty())
        return;
    // One pass, writing behind the reading position: the text only ever gets shorter.
    std::size_t write = 0;
    std::size_t read = 0;
    const std::size_t length = size();
    char16_t* const chars = data();
    while (read < length) {
        if (std::u16string_view(chars + read, length - read).starts_with(text)) {
            chars[write++] = replacement;
            read += text.size();
        } else {
            chars[write++] = chars[read++];
        }
    }
    resize(write);
}

stdstr replaceAll(const std::u16string& text, std::u16string_view from, std::u16string_view to) {
    if (from.empty())
        return stdstr(text);
    stdstr result;
    result.reserve(text.size());
    std::size_t position = 0;
    for (;;) {
        const std::size_t found = text.find(from, position);
        if (found == std::u16string::npos)
            break;
        result.append(text, position, found - position);
        result.append(to);
        position = found + from.size();
    }
    result.append(text, position, std::u16string::npos);
    return result;
}
