#include "foundation/StringHelper.h"

#include "foundation/CodePageConverter.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/Unicode.h"

#include <cerrno>
#include <new>
#include <stdexcept>

namespace Corvane {

namespace {
constexpr const char16_t* ThisFile = u"StringHelper.cpp";
}

std::u16string StringHelper::stringFmtArgs(const char16_t* format,
                                           std::span<const FormatArg> args) {
    std::u16string result;
    if (format == nullptr)
        return result;
    if (!formatAppend(result, format, args))
        throw BaseException(ThisFile, __LINE__,
                            u"StringHelper::stringFmt() - Invalid message format : " +
                                std::u16string(format));
    return result;
}

std::string StringHelper::toNarrow(const std::u16string& text, unsigned codePage) {
    int error = 0;
    std::string result;
    try {
        error = CodePageConverter::narrow(Unicode::untilNul(text), codePage, result);
    } catch (const std::bad_alloc&) {
        error = ENOMEM;
    } catch (const std::length_error&) {
        error = ENOMEM;
    }
    if (error != 0)
        throw BaseException(ThisFile, __LINE__, u"WideCharToMultiByte function failed", error);
    return result;
}

} // namespace Corvane
