#include "foundation/Formatter.h"

#include "foundation/stdstr.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <optional>

namespace Corvane {
namespace {

// Widths and precisions beyond this are refused: no text of the system needs them, and
// honouring "%2000000000d" would only exhaust memory.
constexpr int MaxFieldSize = 1 << 20;

struct Spec {
    bool left = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;
    int bits = 32; // integer size that the length modifier selects
    bool forceNarrow = false;
    bool forceWide = false;
    char conversion = 0;
};

template <class Ch>
class Composer {
public:
    Composer(std::basic_string<Ch>& out, std::span<const FormatArg> args, std::size_t maxLength)
        : m_out(out), m_args(args), m_maxLength(maxLength) {}

    bool run(std::basic_string_view<Ch> format);

private:
    using View = std::basic_string_view<Ch>;

    bool full() const { return m_out.size() >= m_maxLength; }
    void put(Ch c) {
        if (!full())
            m_out.push_back(c);
    }
    void put(View text) {
        if (full())
            return;
        m_out.append(text.substr(0, std::min(text.size(), m_maxLength - m_out.size())));
    }
    void pad(std::size_t count, Ch c) {
        if (full())
            return;
        m_out.append(std::min(count, m_maxLength - m_out.size()), c);
    }
    const FormatArg* next() {
        if (m_next >= m_args.size())
            return nullptr;
        return &m_args[m_next++];
    }
    static std::optional<std::int64_t> integerOf(const FormatArg& arg) {
        switch (arg.kind()) {
        case FormatArg::Kind::Signed:
            return arg.asSigned();
        case FormatArg::Kind::Unsigned:
        case FormatArg::Kind::Character:
            return static_cast<std::int64_t>(arg.asUnsigned());
        default:
            return std::nullopt;
        }
    }

    bool parseSpec(View format, std::size_t& i, Spec& spec);
    bool emitInteger(const Spec& spec);
    bool emitCharacter(const Spec& spec);
    bool emitText(const Spec& spec);
    bool emitPointer(const Spec& spec);
    bool emitFloating(const Spec& spec);
    void emitField(View body, View prefix, const Spec& spec, bool zeroPadAllowed);

    std::basic_string<Ch>& m_out;
    std::span<const FormatArg> m_args;
    std::size_t m_maxLength;
    std::size_t m_next = 0;
};

template <class Ch>
bool Composer<Ch>::run(View format) {
    std::size_t i = 0;
    while (i < format.size() && !full()) {
        const std::size_t percent = format.find(Ch('%'), i);
        if (percent == View::npos) {
            put(format.substr(i));
            break;
        }
        put(format.substr(i, percent - i));
        i = percent + 1;
        Spec spec;
        if (!parseSpec(format, i, spec))
            return false;
        bool ok = true;
        switch (spec.conversion) {
        case '%':
            put(Ch('%'));
            break;
        case 'd':
        case 'i':
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            ok = emitInteger(spec);
            break;
        case 'c':
        case 'C':
            ok = emitCharacter(spec);
            break;
        case 's':
        case 'S':
        case 'Z':
            ok = emitText(spec);
            break;
        case 'p':
            ok = emitPointer(spec);
            break;
        case 'f':
        case 'F':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
        case 'a':
        case 'A':
            ok = emitFloating(spec);
            break;
        default:
            ok = false; // "%n" included: nothing of this system writes through a format
        }
        if (!ok)
            return false;
    }
    return true;
}

template <class Ch>
bool Composer<Ch>::parseSpec(View format, std::size_t& i, Spec& spec) {
    auto at = [&](std::size_t k) -> char32_t {
        return k < format.size() ? static_cast<char32_t>(format[k]) : 0;
    };
    for (;; ++i) {
        const char32_t c = at(i);
        if (c == '-')
            spec.left = true;
        else if (c == '+')
            spec.plus = true;
        else if (c == ' ')
            spec.space = true;
        else if (c == '#')
            spec.alternate = true;
        else if (c == '0')
            spec.zero = true;
        else
            break;
    }
    auto number = [&](int& target) -> bool {
        if (at(i) == '*') {
            ++i;
            const FormatArg* arg = next();
            if (!arg)
                return false;
            const auto value = integerOf(*arg);
            if (!value || *value > MaxFieldSize || *value < -MaxFieldSize)
                return false;
            target = static_cast<int>(*value);
            return true;
        }
        long long value = 0;
        bool any = false;
        while (at(i) >= '0' && at(i) <= '9') {
            value = value * 10 + (at(i) - '0');
            if (value > MaxFieldSize)
                return false;
            ++i;
            any = true;
        }
        if (any)
            target = static_cast<int>(value);
        return true;
    };
    if (!number(spec.width))
        return false;
    if (spec.width < 0) {
        spec.left = true;
        spec.width = -spec.width;
    }
    if (at(i) == '.') {
        ++i;
        spec.precision = 0;
        if (!number(spec.precision))
            return false;
        if (spec.precision < 0)
            spec.precision = -1;
    }
    // Length modifiers with their Windows meaning: "l" stays 32 bits.
    switch (at(i)) {
    case 'h':
        ++i;
        spec.bits = 16;
        spec.forceNarrow = true;
        if (at(i) == 'h') {
            ++i;
            spec.bits = 8;
        }
        break;
    case 'l':
        ++i;
        spec.forceWide = true;
        if (at(i) == 'l') {
            ++i;
            spec.bits = 64;
            spec.forceWide = false;
        }
        break;
    case 'w':
        ++i;
        spec.forceWide = true;
        break;
    case 'L':
    case 'q':
    case 'j':
    case 'z':
    case 't':
        ++i;
        spec.bits = 64;
        break;
    case 'I':
        ++i;
        if (at(i) == '6' && at(i + 1) == '4') {
            i += 2;
            spec.bits = 64;
        } else if (at(i) == '3' && at(i + 1) == '2') {
            i += 2;
            spec.bits = 32;
        } else {
            spec.bits = 64; // pointer-sized
        }
        break;
    default:
        break;
    }
    const char32_t c = at(i);
    if (c == 0 || c > 0x7F)
        return false;
    spec.conversion = static_cast<char>(c);
    ++i;
    return true;
}

template <class Ch>
void Composer<Ch>::emitField(View body, View prefix, const Spec& spec, bool zeroPadAllowed) {
    const std::size_t length = body.size() + prefix.size();
    const std::size_t fill = spec.width > 0 && static_cast<std::size_t>(spec.width) > length
                                 ? static_cast<std::size_t>(spec.width) - length
                                 : 0;
    if (spec.left) {
        put(prefix);
        put(body);
        pad(fill, Ch(' '));
    } else if (spec.zero && zeroPadAllowed) {
        put(prefix);
        pad(fill, Ch('0'));
        put(body);
    } else {
        pad(fill, Ch(' '));
        put(prefix);
        put(body);
    }
}

template <class Ch>
bool Composer<Ch>::emitInteger(const Spec& spec) {
    const FormatArg* arg = next();
    if (!arg)
        return false;
    const auto raw = integerOf(*arg);
    if (!raw)
        return false;
    const bool isSigned = spec.conversion == 'd' || spec.conversion == 'i';
    std::uint64_t bits = static_cast<std::uint64_t>(*raw);
    if (spec.bits < 64)
        bits &= (std::uint64_t{1} << spec.bits) - 1;
    bool negative = false;
    std::uint64_t magnitude = bits;
    if (isSigned && spec.bits < 64 && (bits >> (spec.bits - 1)) & 1) {
        negative = true;
        magnitude = (std::uint64_t{1} << spec.bits) - bits;
    } else if (isSigned && spec.bits == 64 && static_cast<std::int64_t>(bits) < 0) {
        negative = true;
        magnitude = ~bits + 1;
    }
    const unsigned base = spec.conversion == 'o'                               ? 8
                          : (spec.conversion == 'x' || spec.conversion == 'X') ? 16
                                                                               : 10;
    const char* digitsOf = spec.conversion == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    Ch digits[24];
    int count = 0;
    for (std::uint64_t v = magnitude; v != 0; v /= base)
        digits[count++] = Ch(digitsOf[v % base]);
    const int precision = spec.precision < 0 ? 1 : spec.precision;
    // Zeros that the precision asks for go between the sign and the digits.
    std::size_t leadingZeros = precision > count ? static_cast<std::size_t>(precision - count) : 0;
    if (spec.conversion == 'o' && spec.alternate && leadingZeros == 0 &&
        (count == 0 || digits[count - 1] != Ch('0')))
        leadingZeros = 1;
    std::reverse(digits, digits + count);

    Ch prefix[2];
    std::size_t prefixLength = 0;
    if (isSigned) {
        if (negative)
            prefix[prefixLength++] = Ch('-');
        else if (spec.plus)
            prefix[prefixLength++] = Ch('+');
        else if (spec.space)
            prefix[prefixLength++] = Ch(' ');
    } else if (base == 16 && spec.alternate && magnitude != 0) {
        prefix[prefixLength++] = Ch('0');
        prefix[prefixLength++] = Ch(spec.conversion);
    }
    const View body(digits, static_cast<std::size_t>(count));
    if (leadingZeros == 0) {
        emitField(body, View(prefix, prefixLength), spec, spec.precision < 0);
        return true;
    }
    // The field is laid out with the zeros counted in, so that width padding stays right.
    const std::size_t length = prefixLength + leadingZeros + body.size();
    const std::size_t fill = spec.width > 0 && static_cast<std::size_t>(spec.width) > length
                                 ? static_cast<std::size_t>(spec.width) - length
                                 : 0;
    // With the '0' flag and no precision the width is made up with zeros as well.
    const bool zeroFill = spec.zero && spec.precision < 0 && !spec.left;
    if (!spec.left && !zeroFill)
        pad(fill, Ch(' '));
    put(View(prefix, prefixLength));
    pad(leadingZeros + (zeroFill ? fill : 0), Ch('0'));
    put(body);
    if (spec.left)
        pad(fill, Ch(' '));
    return true;
}

template <class Ch>
bool Composer<Ch>::emitCharacter(const Spec& spec) {
    const FormatArg* arg = next();
    if (!arg)
        return false;
    const auto raw = integerOf(*arg);
    if (!raw)
        return false;
    const auto code = static_cast<std::uint32_t>(*raw);
    std::basic_string<Ch> body;
    if constexpr (sizeof(Ch) == 1) {
        if (code < 0x80 || arg->kind() != FormatArg::Kind::Character) {
            body.push_back(static_cast<Ch>(code & 0xFF));
        } else {
            std::u16string wide;
            if (code > 0xFFFF && code <= 0x10FFFF) {
                wide.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
                wide.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
            } else {
                wide.push_back(static_cast<char16_t>(code));
            }
            body = stdstr::fromTString(wide);
        }
    } else {
        if (code > 0xFFFF && code <= 0x10FFFF) {
            body.push_back(static_cast<Ch>(0xD800 + ((code - 0x10000) >> 10)));
            body.push_back(static_cast<Ch>(0xDC00 + ((code - 0x10000) & 0x3FF)));
        } else {
            body.push_back(static_cast<Ch>(code & 0xFFFF));
        }
    }
    emitField(body, View(), spec, false);
    return true;
}

template <class Ch>
bool Composer<Ch>::emitText(const Spec& spec) {
    const FormatArg* arg = next();
    if (!arg)
        return false;
    if (arg->kind() != FormatArg::Kind::WideText && arg->kind() != FormatArg::Kind::NarrowText)
        return false;
    std::basic_string<Ch> converted;
    View body;
    if (arg->isNullText()) {
        static constexpr Ch null[] = {'(', 'n', 'u', 'l', 'l', ')'};
        body = View(null, 6);
    } else if constexpr (sizeof(Ch) == 1) {
        if (arg->kind() == FormatArg::Kind::NarrowText) {
            body = arg->narrow();
        } else {
            converted = stdstr::fromTString(std::u16string(arg->wide()));
            body = converted;
        }
    } else {
        if (arg->kind() == FormatArg::Kind::WideText) {
            body = arg->wide();
        } else {
            converted = stdstr::toTString(arg->narrow());
            body = converted;
        }
    }
    if (spec.precision >= 0 && body.size() > static_cast<std::size_t>(spec.precision)) {
        std::size_t cut = static_cast<std::size_t>(spec.precision);
        if constexpr (sizeof(Ch) == 1) {
            // Never leave half a UTF-8 sequence behind.
            while (cut > 0 && (static_cast<unsigned char>(body[cut]) & 0xC0) == 0x80)
                --cut;
        } else {
            if (cut > 0 && body[cut - 1] >= 0xD800 && body[cut - 1] <= 0xDBFF)
                --cut;
        }
        body = body.substr(0, cut);
    }
    emitField(body, View(), spec, false);
    return true;
}

template <class Ch>
bool Composer<Ch>::emitPointer(const Spec& spec) {
    const FormatArg* arg = next();
    if (!arg)
        return false;
    if (arg->kind() != FormatArg::Kind::Pointer && arg->kind() != FormatArg::Kind::Unsigned &&
        arg->kind() != FormatArg::Kind::Signed)
        return false;
    // Pointers print as sixteen upper-case hex digits, as they do on 64-bit Windows.
    std::uint64_t value = arg->kind() == FormatArg::Kind::Signed
                              ? static_cast<std::uint64_t>(arg->asSigned())
                              : arg->asUnsigned();
    Ch digits[16];
    for (int k = 15; k >= 0; --k, value >>= 4)
        digits[k] = Ch("0123456789ABCDEF"[value & 0xF]);
    emitField(View(digits, 16), View(), spec, false);
    return true;
}

template <class Ch>
bool Composer<Ch>::emitFloating(const Spec& spec) {
    const FormatArg* arg = next();
    if (!arg || arg->kind() != FormatArg::Kind::Floating)
        return false;
    // The C library does floating point best; the spec is rebuilt from checked parts only.
    char cformat[32];
    int n = 0;
    cformat[n++] = '%';
    if (spec.left)
        cformat[n++] = '-';
    if (spec.plus)
        cformat[n++] = '+';
    if (spec.space)
        cformat[n++] = ' ';
    if (spec.alternate)
        cformat[n++] = '#';
    if (spec.zero)
        cformat[n++] = '0';
    n += std::snprintf(cformat + n, sizeof cformat - static_cast<std::size_t>(n), "*.*%c",
                       spec.conversion);
    const int precision = spec.precision < 0 ? 6 : spec.precision;
    const int needed = std::snprintf(nullptr, 0, cformat, spec.width, precision, arg->asFloating());
    if (needed < 0)
        return false;
    std::string text(static_cast<std::size_t>(needed) + 1, '\0');
    std::snprintf(text.data(), text.size(), cformat, spec.width, precision, arg->asFloating());
    text.resize(static_cast<std::size_t>(needed));
    for (char c : text)
        put(Ch(c));
    return true;
}

template <class Ch>
bool formatAppendImpl(std::basic_string<Ch>& out, std::basic_string_view<Ch> format,
                      std::span<const FormatArg> args, std::size_t maxLength) {
    const std::size_t original = out.size();
    if (original >= maxLength)
        return true;
    Composer<Ch> composer(out, args, maxLength);
    if (!composer.run(format)) {
        out.resize(original);
        return false;
    }
    return true;
}

} // namespace

bool formatAppend(std::u16string& out, std::u16string_view format, std::span<const FormatArg> args,
                  std::size_t maxLength) {
    return formatAppendImpl(out, format, args, maxLength);
}

bool formatAppend(std::string& out, std::string_view format, std::span<const FormatArg> args,
                  std::size_t maxLength) {
    return formatAppendImpl(out, format, args, maxLength);
}

} // namespace Corvane
