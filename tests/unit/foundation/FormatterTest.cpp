// The printf-style composer with the Windows conventions of the system's texts, the 32767
// limit of stdstr::Format and the fallback of stringFmt. Where the conventions agree with
// the C library, outputs are compared with snprintf over many generated conversions.
#include "foundation/Formatter.h"

#include "foundation/stdstr.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <random>
#include <string>
#include <vector>

using Corvane::formatAppend;
using Corvane::FormatArg;

namespace {

template <class... Args>
std::u16string Wide(std::u16string_view format, const Args&... args) {
    const auto packed = Corvane::makeFormatArgs(args...);
    std::u16string out;
    EXPECT_TRUE(formatAppend(out, format, packed)) << "format refused";
    return out;
}

template <class... Args>
std::string Narrow(std::string_view format, const Args&... args) {
    const auto packed = Corvane::makeFormatArgs(args...);
    std::string out;
    EXPECT_TRUE(formatAppend(out, format, packed)) << "format refused: " << format;
    return out;
}

// Composes onto a text that is already there; true when the composer took the format.
template <class... Args>
bool WideRefused(std::u16string_view format, const Args&... args) {
    const auto packed = Corvane::makeFormatArgs(args...);
    std::u16string out = u"keep";
    const bool accepted = formatAppend(out, format, packed);
    if (!accepted) {
        EXPECT_EQ(out, u"keep") << "output changed on refusal";
    }
    return !accepted;
}

template <class... Args>
bool NarrowRefused(std::string_view format, const Args&... args) {
    const auto packed = Corvane::makeFormatArgs(args...);
    std::string out = "keep";
    const bool accepted = formatAppend(out, format, packed);
    if (!accepted) {
        EXPECT_EQ(out, "keep") << "output changed on refusal";
    }
    return !accepted;
}

std::u16string Widen(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

} // namespace

// --- texts -----------------------------------------------------------------------------

TEST(FormatterText, InAWideFormatLowerSIsWideAndUpperSIsNarrow) {
    EXPECT_EQ(Wide(u"[%s]", u"wide"), u"[wide]");
    EXPECT_EQ(Wide(u"[%S]", "narrow"), u"[narrow]");
    EXPECT_EQ(Wide(u"[%S]", "caf\xC3\xA9"), u"[caf\u00E9]");
}

TEST(FormatterText, InANarrowFormatLowerSIsNarrowAndUpperSIsWide) {
    EXPECT_EQ(Narrow("[%s]", "narrow"), "[narrow]");
    EXPECT_EQ(Narrow("[%S]", u"wide"), "[wide]");
    EXPECT_EQ(Narrow("[%S]", u"caf\u00E9 \U0001F600"), "[caf\xC3\xA9 \xF0\x9F\x98\x80]");
}

TEST(FormatterText, ConvertsTextOfTheOtherWidthInsteadOfReinterpretingIt) {
    EXPECT_EQ(Wide(u"%s", "caf\xC3\xA9"), u"caf\u00E9");
    EXPECT_EQ(Narrow("%s", u"\u20AC"), "\xE2\x82\xAC");
}

TEST(FormatterText, TakesEveryKindOfStringArgument) {
    const std::u16string wide = u"w";
    const std::string narrow = "n";
    EXPECT_EQ(Wide(u"%s%s%s%S%S", wide, std::u16string_view(u"v"), stdstr(u"t"), narrow,
                   std::string_view("m")),
              u"wvtnm");
}

TEST(FormatterText, PrintsNullForANullText) {
    EXPECT_EQ(Wide(u"[%s]", static_cast<const char16_t*>(nullptr)), u"[(null)]");
    EXPECT_EQ(Wide(u"[%S]", static_cast<const char*>(nullptr)), u"[(null)]");
    EXPECT_EQ(Narrow("[%s]", static_cast<const char*>(nullptr)), "[(null)]");
    EXPECT_EQ(Wide(u"[%8s]", static_cast<const char16_t*>(nullptr)), u"[  (null)]");
}

TEST(FormatterText, HonoursWidthPrecisionAndLeftAlignment) {
    EXPECT_EQ(Wide(u"[%6s]", u"abc"), u"[   abc]");
    EXPECT_EQ(Wide(u"[%-6s]", u"abc"), u"[abc   ]");
    EXPECT_EQ(Wide(u"[%.2s]", u"abc"), u"[ab]");
    EXPECT_EQ(Wide(u"[%5.1s]", u"abc"), u"[    a]");
    EXPECT_EQ(Wide(u"[%*s]", 5, u"ab"), u"[   ab]");
    EXPECT_EQ(Wide(u"[%-*s]", 5, u"ab"), u"[ab   ]");
    EXPECT_EQ(Wide(u"[%*s]", -5, u"ab"), u"[ab   ]");
    EXPECT_EQ(Wide(u"[%.*s]", 1, u"ab"), u"[a]");
    EXPECT_EQ(Wide(u"[%.0s]", u"ab"), u"[]");
}

TEST(FormatterText, KeepsATextWithPercentSignsAsItIs) {
    EXPECT_EQ(Wide(u"%s", u"100%d"), u"100%d");
}

// --- integers --------------------------------------------------------------------------

TEST(FormatterInteger, PrintsSignedDecimal) {
    EXPECT_EQ(Wide(u"%d %i %d %d", 42, -42, 0, INT_MIN), u"42 -42 0 -2147483648");
}

TEST(FormatterInteger, PrintsUnsignedHexAndOctal) {
    EXPECT_EQ(Wide(u"%u", -1), u"4294967295");
    EXPECT_EQ(Wide(u"%x %X", 0xDEADBEEFu, 0xDEADBEEFu), u"deadbeef DEADBEEF");
    EXPECT_EQ(Wide(u"%o", 8), u"10");
}

TEST(FormatterInteger, CutsASixtyFourBitValueToThirtyTwoBitsWithoutASizePrefix) {
    const std::int64_t big = 0x100000005LL;
    EXPECT_EQ(Wide(u"%d", big), u"5");
    EXPECT_EQ(Wide(u"%d", std::int64_t{0x1FFFFFFFFLL}), u"-1");
    EXPECT_EQ(Wide(u"%u", std::uint64_t{0x100000001ULL}), u"1");
    EXPECT_EQ(Wide(u"%x", std::uint64_t{0x123456789ULL}), u"23456789");
}

TEST(FormatterInteger, TakesLAsThirtyTwoBits) {
    EXPECT_EQ(Wide(u"%ld", std::int64_t{0x100000005LL}), u"5");
    EXPECT_EQ(Wide(u"%lu", std::int64_t{-1}), u"4294967295");
    EXPECT_EQ(Wide(u"%lx", std::uint64_t{0xABCDEF0123ULL}), u"cdef0123");
}

TEST(FormatterInteger, TakesI64AndLlAsSixtyFourBits) {
    const std::int64_t big = 0x100000005LL;
    EXPECT_EQ(Wide(u"%I64d", big), u"4294967301");
    EXPECT_EQ(Wide(u"%lld", big), u"4294967301");
    EXPECT_EQ(Wide(u"%I64d", LLONG_MIN), u"-9223372036854775808");
    EXPECT_EQ(Wide(u"%I64u", std::uint64_t{ULLONG_MAX}), u"18446744073709551615");
    EXPECT_EQ(Wide(u"%I64x", std::uint64_t{0x123456789ABCDEFULL}), u"123456789abcdef");
    EXPECT_EQ(Wide(u"%I64X", std::uint64_t{0x123456789ABCDEFULL}), u"123456789ABCDEF");
    EXPECT_EQ(Wide(u"%llx", std::int64_t{-1}), u"ffffffffffffffff");
}

TEST(FormatterInteger, TakesI32AsThirtyTwoBits) {
    EXPECT_EQ(Wide(u"%I32d", std::int64_t{0x100000005LL}), u"5");
}

TEST(FormatterInteger, TakesHAsSixteenBits) {
    EXPECT_EQ(Wide(u"%hd", 70000), u"4464");
    EXPECT_EQ(Wide(u"%hu", -1), u"65535");
}

TEST(FormatterInteger, HonoursFlags) {
    EXPECT_EQ(Wide(u"[%-5d]", 42), u"[42   ]");
    EXPECT_EQ(Wide(u"[%+d] [%+d]", 42, -42), u"[+42] [-42]");
    EXPECT_EQ(Wide(u"[% d] [% d]", 42, -42), u"[ 42] [-42]");
    EXPECT_EQ(Wide(u"[%#x] [%#X] [%#o]", 42, 42, 42), u"[0x2a] [0X2A] [052]");
    EXPECT_EQ(Wide(u"[%#x] [%#o]", 0, 0), u"[0] [0]");
    EXPECT_EQ(Wide(u"[%05d] [%05d]", 42, -42), u"[00042] [-0042]");
    EXPECT_EQ(Wide(u"[%-05d]", 42), u"[42   ]");
    EXPECT_EQ(Wide(u"[%#08x]", 42), u"[0x00002a]");
    EXPECT_EQ(Wide(u"[%+05d]", 42), u"[+0042]");
    EXPECT_EQ(Wide(u"[%05d] [%04x]", 0, 0), u"[00000] [0000]");
    EXPECT_EQ(Wide(u"[%#06o]", 42), u"[000052]");
}

TEST(FormatterInteger, HonoursWidthAndPrecision) {
    EXPECT_EQ(Wide(u"[%5d]", 42), u"[   42]");
    EXPECT_EQ(Wide(u"[%.3d]", 42), u"[042]");
    EXPECT_EQ(Wide(u"[%8.3d]", -42), u"[    -042]");
    EXPECT_EQ(Wide(u"[%08.3d]", 42), u"[     042]");
    EXPECT_EQ(Wide(u"[%.0d]", 0), u"[]");
    EXPECT_EQ(Wide(u"[%*d]", 6, 42), u"[    42]");
    EXPECT_EQ(Wide(u"[%-*d]", 6, 42), u"[42    ]");
    EXPECT_EQ(Wide(u"[%*d]", -6, 42), u"[42    ]");
    EXPECT_EQ(Wide(u"[%.*d]", 4, 42), u"[0042]");
    EXPECT_EQ(Wide(u"[%.*d]", -4, 42), u"[42]");
}

TEST(FormatterInteger, HonoursAPrecisionOfMoreThanSixtyFourDigits) {
    char expected[128];
    std::snprintf(expected, sizeof expected, "%.70d", 5);
    EXPECT_EQ(Narrow("%.70d", 5), expected);
}

TEST(FormatterInteger, TakesEveryIntegerTypeEnumsAndBooleans) {
    enum class Colour : std::uint8_t { Red = 3 };
    const short s = -7;
    const unsigned char uc = 200;
    const long l = 12;
    EXPECT_EQ(Wide(u"%d %d %d %d %d", s, uc, l, Colour::Red, true), u"-7 200 12 3 1");
}

// --- characters and pointers -----------------------------------------------------------

TEST(FormatterCharacter, PrintsOneCharacter) {
    EXPECT_EQ(Wide(u"[%c]", u'A'), u"[A]");
    EXPECT_EQ(Wide(u"[%c]", 'x'), u"[x]");
    EXPECT_EQ(Wide(u"[%c]", u'\u00E9'), u"[\u00E9]");
    EXPECT_EQ(Wide(u"[%c]", 65), u"[A]");
    EXPECT_EQ(Wide(u"[%3c] [%-3c]", u'a', u'b'), u"[  a] [b  ]");
}

TEST(FormatterCharacter, WritesASupplementaryCharacterAsASurrogatePair) {
    EXPECT_EQ(Wide(u"%c", U'\U0001F600'), u"\U0001F600");
}

TEST(FormatterCharacter, WritesAWideCharacterAsUtf8InANarrowFormat) {
    EXPECT_EQ(Narrow("%c", u'\u00E9'), "\xC3\xA9");
    EXPECT_EQ(Narrow("%c", 'q'), "q");
}

TEST(FormatterPointer, PrintsSixteenUpperCaseHexDigits) {
    int value = 0;
    int* pointer = &value;
    char expected[32];
    std::snprintf(expected, sizeof expected, "%016llX",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(pointer)));
    EXPECT_EQ(Narrow("%p", pointer), expected);
    EXPECT_EQ(Wide(u"%p", reinterpret_cast<void*>(std::uintptr_t{0x1234ABCD})),
              u"000000001234ABCD");
    EXPECT_EQ(Wide(u"%p", nullptr), u"0000000000000000");
}

// --- percent, floating point -----------------------------------------------------------

TEST(FormatterPercent, WritesOnePercentSign) {
    EXPECT_EQ(Wide(u"100%%"), u"100%");
    EXPECT_EQ(Wide(u"%%%d%%", 5), u"%5%");
}

TEST(FormatterFloating, FollowsTheCLibrary) {
    EXPECT_EQ(Wide(u"%f", 1.5), u"1.500000");
    EXPECT_EQ(Wide(u"%.2f", 3.14159), u"3.14");
    EXPECT_EQ(Wide(u"%8.3e", 12345.678), u"1.235e+04");
    EXPECT_EQ(Wide(u"%g", 0.0001), u"0.0001");
    EXPECT_EQ(Narrow("%-8.1f|", 2.25f), "2.2     |");
}

// --- refusals --------------------------------------------------------------------------

TEST(FormatterRefusal, ATextForAnIntegerConversionIsRefused) {
    EXPECT_TRUE(WideRefused(u"%d", u"text"));
    EXPECT_TRUE(WideRefused(u"%x", "text"));
    EXPECT_TRUE(NarrowRefused("%u", "text"));
}

TEST(FormatterRefusal, ANumberForATextConversionIsRefused) {
    EXPECT_TRUE(WideRefused(u"%s", 42));
    EXPECT_TRUE(WideRefused(u"%S", 42u));
    EXPECT_TRUE(NarrowRefused("%s", 'c'));
    EXPECT_TRUE(WideRefused(u"%s", 1.5));
}

TEST(FormatterRefusal, OtherMismatchedKindsAreRefused) {
    int value = 0;
    EXPECT_TRUE(WideRefused(u"%d", &value));
    EXPECT_TRUE(WideRefused(u"%d", 1.5));
    EXPECT_TRUE(WideRefused(u"%c", u"text"));
    EXPECT_TRUE(WideRefused(u"%p", u"text"));
    EXPECT_TRUE(WideRefused(u"%f", 1));
    EXPECT_TRUE(WideRefused(u"%*d", u"5", 1));
}

TEST(FormatterRefusal, AMissingArgumentIsRefused) {
    EXPECT_TRUE(WideRefused(u"%d"));
    EXPECT_TRUE(WideRefused(u"%d %s", 1));
    EXPECT_TRUE(WideRefused(u"%*d", 5));
    EXPECT_TRUE(NarrowRefused("%.*s", 2));
}

TEST(FormatterRefusal, PercentNIsRefused) {
    int count = 0;
    EXPECT_TRUE(WideRefused(u"abc%n", &count));
    EXPECT_TRUE(NarrowRefused("abc%n", &count));
    EXPECT_EQ(count, 0);
}

TEST(FormatterRefusal, AnUnknownConversionIsRefused) {
    EXPECT_TRUE(WideRefused(u"%y", 1));
    EXPECT_TRUE(WideRefused(u"%k", 1));
    EXPECT_TRUE(WideRefused(u"%\u00E9", 1));
    EXPECT_TRUE(WideRefused(u"100%"));
    EXPECT_TRUE(WideRefused(u"%l"));
    EXPECT_TRUE(NarrowRefused("%-", 1));
}

TEST(FormatterRefusal, LeavesTheOutputAsItWasAfterPartOfTheTextWasComposed) {
    std::u16string out = u"before|";
    const auto packed = Corvane::makeFormatArgs(1, 2);
    EXPECT_FALSE(formatAppend(out, u"composed %d then %s", packed));
    EXPECT_EQ(out, u"before|");
}

TEST(FormatterRefusal, RefusesAnAbsurdWidth) {
    EXPECT_TRUE(WideRefused(u"%2000000000d", 1));
    EXPECT_TRUE(WideRefused(u"%*d", 2000000000, 1));
}

// --- appending and the length bound ----------------------------------------------------

TEST(FormatterAppend, AppendsBehindWhatIsThere) {
    std::u16string out = u"a=";
    const auto packed = Corvane::makeFormatArgs(5);
    EXPECT_TRUE(formatAppend(out, u"%d;", packed));
    EXPECT_EQ(out, u"a=5;");
}

TEST(FormatterAppend, StopsAtTheMaximumLength) {
    std::u16string out = u"xy";
    const auto packed = Corvane::makeFormatArgs(u"abcdef", 123456);
    EXPECT_TRUE(formatAppend(out, u"%s%d", packed, 5));
    EXPECT_EQ(out, u"xyabc");
    std::string narrow;
    const auto number = Corvane::makeFormatArgs(7);
    EXPECT_TRUE(formatAppend(narrow, "%010d", number, 4));
    EXPECT_EQ(narrow, "0000");
}

// --- stdstr::Format and stringFmt ------------------------------------------------------

TEST(StdstrFormat, ReplacesTheContentWithTheComposedText) {
    stdstr text(u"old content");
    text.Format(u"%s has %d items", u"list", 3);
    EXPECT_EQ(text, stdstr(u"list has 3 items"));
}

TEST(StdstrFormat, CutsTheResultAt32767Characters) {
    const std::u16string big(40000, u'z');
    stdstr text;
    text.Format(u"%s", big);
    ASSERT_EQ(text.size(), 32767u);
    EXPECT_EQ(text, stdstr(big.substr(0, 32767)));
}

TEST(StdstrFormat, CutsALongLiteralFormatToo) {
    const std::u16string format(33000, u'f');
    stdstr text;
    text.Format(format.c_str());
    EXPECT_EQ(text.size(), stdstr::FormatLimit);
}

TEST(StdstrFormat, OfANullFormatIsEmpty) {
    stdstr text(u"old");
    text.Format(nullptr, 1);
    EXPECT_EQ(text, stdstr());
}

TEST(StdstrFormat, GivesTheFallbackTextForABadFormat) {
    stdstr text;
    text.Format(u"value %d", u"text");
    EXPECT_EQ(text, stdstr(u"StringHelper::stringFmt() - Invalid message format : value %d"));
}

TEST(StringFmt, HasNoLengthLimit) {
    const std::u16string big(40000, u'z');
    const stdstr text = stringFmt(u"[%s]", big);
    ASSERT_EQ(text.size(), 40002u);
    EXPECT_EQ(text, stdstr(u"[" + big + u"]"));
}

TEST(StringFmt, ComposesATraceLine) {
    EXPECT_EQ(stringFmt(u"CRegistry::Open(0x%x, %s): failed, error (%s)", 0x80000001u,
                        u"Software\\Velloran", u"Access is denied."),
              stdstr(u"CRegistry::Open(0x80000001, Software\\Velloran): failed, error (Access is "
                     u"denied.)"));
}

TEST(StringFmt, GivesTheFallbackTextForABadFormat) {
    EXPECT_EQ(stringFmt(u"%d and %s", 1),
              stdstr(u"StringHelper::stringFmt() - Invalid message format : %d and %s"));
    EXPECT_EQ(stringFmt(u"%n", 1),
              stdstr(u"StringHelper::stringFmt() - Invalid message format : %n"));
}

TEST(StringFmt, OfANullFormatIsEmpty) {
    EXPECT_EQ(stringFmt(nullptr), stdstr());
}

// --- differential test against the C library -------------------------------------------

namespace {

// One generated conversion, composed both by snprintf and by the composer.
class Differential {
public:
    explicit Differential(unsigned start) : m_random(start) {}

    void runIntegers(int count) {
        static const char* const conversions[] = {"d", "i", "u", "x", "X", "o"};
        for (int n = 0; n < count; ++n) {
            const std::string conversion = conversions[pick(6)];
            const int size = pick(3); // 0: int, 1: "ll", 2: "h"
            Directive directive =
                makeDirective(conversion == "d" || conversion == "i" ? "-+ 0" : "-#0", 40);
            std::string format = "<%" + directive.text +
                                 (size == 1   ? "ll"
                                  : size == 2 ? "h"
                                              : "") +
                                 conversion + ">";
            if (size == 1) {
                const long long value = pickLongLong();
                if (conversion == "d" || conversion == "i")
                    check(format, directive, value, value);
                else
                    check(format, directive, static_cast<unsigned long long>(value),
                          static_cast<std::uint64_t>(value));
            } else {
                const int value = pickInt();
                if (conversion == "d" || conversion == "i")
                    check(format, directive, value, value);
                else
                    check(format, directive, static_cast<unsigned>(value),
                          static_cast<unsigned>(value));
            }
        }
    }

    void runTexts(int count) {
        static const char* const texts[] = {"", "a", "abc", "Quillgate", "with blank", "%d%s"};
        for (int n = 0; n < count; ++n) {
            Directive directive = makeDirective("-", 20);
            const char* text = texts[pick(6)];
            check("(%" + directive.text + "s)", directive, text, text);
        }
    }

    void runCharacters(int count) {
        for (int n = 0; n < count; ++n) {
            Directive directive = makeDirective("-", -1);
            const char c = static_cast<char>('!' + pick(90));
            check("(%" + directive.text + "c)", directive, static_cast<int>(c), c);
        }
    }

    void runFloating(int count) {
        static const char* const conversions[] = {"f", "e", "E", "g", "G"};
        static const double values[] = {0.0,  -0.0, 1.5,     -2.25, 3.14159265358979,
                                        1e10, 1e-5, -1e-300, 1e300, 123456789.125,
                                        0.1,  2.5,  -0.5,    1e21,  65536.0};
        for (int n = 0; n < count; ++n) {
            Directive directive = makeDirective("-+ #0", 17);
            const double value = pick(4) == 0
                                     ? std::uniform_real_distribution<double>(-1e6, 1e6)(m_random)
                                     : values[pick(15)];
            check("{%" + directive.text + conversions[pick(5)] + "}", directive, value, value);
        }
    }

    int checked() const { return m_checked; }

private:
    struct Directive {
        std::string text; // flags, width and precision, without the conversion
        std::optional<int> starWidth;
        std::optional<int> starPrecision;
    };

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

    int pickInt() {
        static const int specials[] = {0, 1, -1, 42, -42, 255, 65535, 70000, INT_MIN, INT_MAX};
        if (pick(2) == 0)
            return specials[pick(10)];
        return static_cast<int>(m_random());
    }

    long long pickLongLong() {
        static const long long specials[] = {
            0, 1, -1, LLONG_MIN, LLONG_MAX, 0x100000000LL, -0x100000001LL};
        if (pick(2) == 0)
            return specials[pick(7)];
        return static_cast<long long>((std::uint64_t{m_random()} << 32) | m_random());
    }

    // Flags from `flags`, then a width (none, digits or '*'), then a precision (none, '.',
    // digits up to maxPrecision or '*'); maxPrecision < 0 means no precision at all.
    Directive makeDirective(const std::string& flags, int maxPrecision) {
        Directive directive;
        for (char flag : flags) {
            if (pick(3) == 0)
                directive.text += flag;
        }
        switch (pick(4)) {
        case 1:
            directive.text += std::to_string(pick(25));
            break;
        case 2:
            directive.text += "*";
            directive.starWidth = pick(41) - 20;
            break;
        default:
            break;
        }
        if (maxPrecision >= 0) {
            switch (pick(5)) {
            case 1:
                directive.text += ".";
                break;
            case 2:
            case 3:
                directive.text += "." + std::to_string(pick(maxPrecision + 1));
                break;
            case 4:
                directive.text += ".*";
                directive.starPrecision = pick(maxPrecision + 4) - 3;
                break;
            default:
                break;
            }
        }
        return directive;
    }

    template <class CValue>
    static std::string cFormat(const std::string& format, const Directive& directive,
                               CValue value) {
        char buffer[1024];
        int length;
        if (directive.starWidth && directive.starPrecision)
            length = std::snprintf(buffer, sizeof buffer, format.c_str(), *directive.starWidth,
                                   *directive.starPrecision, value);
        else if (directive.starWidth)
            length =
                std::snprintf(buffer, sizeof buffer, format.c_str(), *directive.starWidth, value);
        else if (directive.starPrecision)
            length = std::snprintf(buffer, sizeof buffer, format.c_str(), *directive.starPrecision,
                                   value);
        else
            length = std::snprintf(buffer, sizeof buffer, format.c_str(), value);
        return length < 0 ? std::string("<snprintf failed>")
                          : std::string(buffer, static_cast<std::size_t>(length));
    }

    template <class CValue, class Value>
    void check(const std::string& format, const Directive& directive, CValue cValue, Value value) {
        ASSERT_EQ(format.find('%'), 1u) << "not a conversion: " << format;
        const std::string expected = cFormat(format, directive, cValue);
        std::vector<FormatArg> args;
        if (directive.starWidth)
            args.emplace_back(*directive.starWidth);
        if (directive.starPrecision)
            args.emplace_back(*directive.starPrecision);
        args.emplace_back(value);

        std::string narrow;
        ASSERT_TRUE(formatAppend(narrow, format, args)) << format;
        EXPECT_EQ(narrow, expected) << "format " << format;
        std::u16string wide;
        ASSERT_TRUE(formatAppend(wide, Widen(format), args)) << format;
        EXPECT_EQ(wide, Widen(expected)) << "wide format " << format;
        ++m_checked;
    }

    std::mt19937 m_random;
    int m_checked = 0;
};

} // namespace

TEST(FormatterDifferential, IntegersMatchSnprintf) {
    Differential differential(1);
    differential.runIntegers(20000);
    EXPECT_EQ(differential.checked(), 20000);
}

TEST(FormatterDifferential, TextsMatchSnprintf) {
    Differential differential(2);
    differential.runTexts(5000);
    EXPECT_EQ(differential.checked(), 5000);
}

TEST(FormatterDifferential, CharactersMatchSnprintf) {
    Differential differential(3);
    differential.runCharacters(2000);
    EXPECT_EQ(differential.checked(), 2000);
}

TEST(FormatterDifferential, FloatingPointMatchesSnprintf) {
    Differential differential(4);
    differential.runFloating(10000);
    EXPECT_EQ(differential.checked(), 10000);
}
