// The UTF-8 and UTF-16 conversions on arbitrary input: no crash, well-formed output, and a
// lossless round trip for well-formed text. glibc's iconv is the independent judge of what
// is well-formed.
#include "foundation/stdstr.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iconv.h>
#include <optional>
#include <string>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

// The strict decoding of `utf8` by iconv, or nothing when it is not well-formed UTF-8.
std::optional<std::u16string> StrictDecode(std::string_view utf8) {
    static const iconv_t cd =
        iconv_open(std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE", "UTF-8");
    Require(cd != reinterpret_cast<iconv_t>(-1));
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    std::u16string out(utf8.size() + 1, u'\0');
    char* in = const_cast<char*>(utf8.data());
    std::size_t inLeft = utf8.size();
    char* outPtr = reinterpret_cast<char*>(out.data());
    std::size_t outLeft = out.size() * sizeof(char16_t);
    if (iconv(cd, &in, &inLeft, &outPtr, &outLeft) == static_cast<std::size_t>(-1))
        return std::nullopt;
    out.resize(out.size() - outLeft / sizeof(char16_t));
    return out;
}

bool WellFormedUtf16(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            if (i + 1 >= text.size() || text[i + 1] < 0xDC00 || text[i + 1] > 0xDFFF)
                return false;
            ++i;
        } else if (unit >= 0xDC00 && unit <= 0xDFFF) {
            return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Bytes as UTF-8, up to the first NUL as the conversion reads them.
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    bytes = bytes.substr(0, bytes.find('\0'));
    const stdstr wide = stdstr::toTString(std::string(bytes).c_str());
    Require(wide.size() <= bytes.size());
    Require(WellFormedUtf16(wide));
    Require(stdstr::toTString(bytes) == wide);

    const std::string back = stdstr::fromTString(wide);
    Require(StrictDecode(back).has_value());
    if (const auto strict = StrictDecode(bytes)) {
        Require(*strict == wide);
        Require(back == bytes);
    } else {
        Require(wide.find(u'\xFFFD') != std::u16string::npos);
    }

    // The same bytes as UTF-16 units.
    std::u16string units(size / 2, u'\0');
    std::memcpy(units.data(), data, units.size() * sizeof(char16_t));
    const std::string narrow = stdstr::fromTString(units);
    const auto decoded = StrictDecode(narrow);
    Require(decoded.has_value());
    const std::u16string_view untilNul =
        std::u16string_view(units).substr(0, std::u16string_view(units).find(u'\0'));
    if (WellFormedUtf16(untilNul))
        Require(*decoded == untilNul);
    Require(stdstr::toTString(narrow) == *decoded);
    Require(stdstr::fromUNICODE(units, 65001) == narrow);
    return 0;
}
