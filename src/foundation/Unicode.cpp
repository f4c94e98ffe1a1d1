#include "foundation/Unicode.h"

#include <cstdint>
#include <cstring>

namespace Corvane::Unicode {

namespace {

constexpr bool isContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

constexpr std::uint64_t HighBits = 0x8080808080808080ULL;

} // namespace

void appendUtf16(std::u16string& out, std::string_view utf8) {
    // Every byte yields at most one UTF-16 unit (a four-byte sequence yields two), so the
    // result fits in as many units as there are bytes: one allocation, then a cut.
    const std::size_t start = out.size();
    out.resize(start + utf8.size());
    char16_t* const first = out.data() + start;
    char16_t* dst = first;
    const auto* p = reinterpret_cast<const unsigned char*>(utf8.data());
    const auto* const end = p + utf8.size();

    while (p < end) {
        const unsigned lead = *p;
        if (lead < 0x80) {
            // Text is mostly ASCII: widen eight bytes at a time while no high bit is set.
            while (end - p >= 8) {
                std::uint64_t word;
                std::memcpy(&word, p, sizeof word);
                if (word & HighBits)
                    break;
                for (int i = 0; i < 8; ++i)
                    dst[i] = p[i];
                dst += 8;
                p += 8;
            }
            while (p < end && *p < 0x80)
                *dst++ = *p++;
            continue;
        }
        const std::ptrdiff_t left = end - p;
        if (lead >= 0xC2 && lead <= 0xDF) {
            if (left >= 2 && isContinuation(p[1])) {
                *dst++ = static_cast<char16_t>(((lead & 0x1F) << 6) | (p[1] & 0x3F));
                p += 2;
            } else {
                *dst++ = ReplacementCharacter;
                p += 1;
            }
            continue;
        }
        if (lead >= 0xE0 && lead <= 0xEF) {
            // The second byte's range excludes overlong forms (E0) and surrogates (ED).
            const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
            const unsigned high = lead == 0xED ? 0x9F : 0xBF;
            if (left < 2 || p[1] < low || p[1] > high) {
                *dst++ = ReplacementCharacter;
                p += 1;
            } else if (left < 3 || !isContinuation(p[2])) {
                *dst++ = ReplacementCharacter;
                p += 2;
            } else {
                *dst++ = static_cast<char16_t>(((lead & 0x0F) << 12) | ((p[1] & 0x3F) << 6) |
                                               (p[2] & 0x3F));
                p += 3;
            }
            continue;
        }
        if (lead >= 0xF0 && lead <= 0xF4) {
            // The second byte's range excludes overlong forms (F0) and code points past
            // U+10FFFF (F4).
            const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
            const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
            if (left < 2 || p[1] < low || p[1] > high) {
                *dst++ = ReplacementCharacter;
                p += 1;
            } else if (left < 3 || !isContinuation(p[2])) {
                *dst++ = ReplacementCharacter;
                p += 2;
            } else if (left < 4 || !isContinuation(p[3])) {
                *dst++ = ReplacementCharacter;
                p += 3;
            } else {
                const std::uint32_t codePoint = ((lead & 0x07) << 18) | ((p[1] & 0x3F) << 12) |
                                                ((p[2] & 0x3F) << 6) | (p[3] & 0x3F);
                const std::uint32_t offset = codePoint - 0x10000;
                *dst++ = static_cast<char16_t>(0xD800 + (offset >> 10));
                *dst++ = static_cast<char16_t>(0xDC00 + (offset & 0x3FF));
                p += 4;
            }
            continue;
        }
        // A stray continuation byte, C0/C1 or F5..FF: never part of a well-formed sequence.
        *dst++ = ReplacementCharacter;
        p += 1;
    }
    out.resize(start + static_cast<std::size_t>(dst - first));
}

void appendUtf8(std::string& out, std::u16string_view utf16) {
    // At most three bytes per unit: a surrogate pair is two units for four bytes.
    const std::size_t start = out.size();
    out.resize(start + utf16.size() * 3);
    char* const first = out.data() + start;
    char* dst = first;
    const char16_t* p = utf16.data();
    const char16_t* const end = p + utf16.size();

    while (p < end) {
        // Plain ASCII, the common case of messages and paths, four units at a time.
        if (end - p >= 4) {
            std::uint64_t word;
            std::memcpy(&word, p, sizeof word);
            if ((word & 0xFF80FF80FF80FF80ull) == 0) {
                dst[0] = static_cast<char>(p[0]);
                dst[1] = static_cast<char>(p[1]);
                dst[2] = static_cast<char>(p[2]);
                dst[3] = static_cast<char>(p[3]);
                dst += 4;
                p += 4;
                continue;
            }
        }
        const std::uint32_t unit = *p;
        if (unit < 0x80) {
            *dst++ = static_cast<char>(unit);
            ++p;
        } else if (unit < 0x800) {
            *dst++ = static_cast<char>(0xC0 | (unit >> 6));
            *dst++ = static_cast<char>(0x80 | (unit & 0x3F));
            ++p;
        } else if (unit >= 0xD800 && unit <= 0xDBFF && end - p >= 2 && p[1] >= 0xDC00 &&
                   p[1] <= 0xDFFF) {
            const std::uint32_t codePoint = 0x10000 + ((unit - 0xD800) << 10) + (p[1] - 0xDC00);
            *dst++ = static_cast<char>(0xF0 | (codePoint >> 18));
            *dst++ = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
            *dst++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
            *dst++ = static_cast<char>(0x80 | (codePoint & 0x3F));
            p += 2;
        } else {
            const std::uint32_t codePoint =
                (unit >= 0xD800 && unit <= 0xDFFF) ? ReplacementCharacter : unit;
            *dst++ = static_cast<char>(0xE0 | (codePoint >> 12));
            *dst++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
            *dst++ = static_cast<char>(0x80 | (codePoint & 0x3F));
            ++p;
        }
    }
    out.resize(start + static_cast<std::size_t>(dst - first));
}

std::string_view untilNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::u16string_view untilNul(std::u16string_view text) {
    // Four units at a time: every conversion of the system passes through here, and the
    // character-by-character search of the standard traits was a third of its cost.
    const char16_t* const begin = text.data();
    const std::size_t size = text.size();
    std::size_t i = 0;
    for (; i + 4 <= size; i += 4) {
        std::uint64_t word;
        std::memcpy(&word, begin + i, sizeof word);
        if ((word - 0x0001000100010001ull) & ~word & 0x8000800080008000ull)
            break;
    }
    for (; i < size; ++i) {
        if (begin[i] == u'\0')
            return text.substr(0, i);
    }
    return text;
}

} // namespace Corvane::Unicode
