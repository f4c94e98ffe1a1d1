// The conversions at the system's edges (UTF-8, UTF-16, Windows code pages) and the
// in-place and copying replacements of stdstr.
#include "foundation/stdstr.h"

#include "foundation/BaseException.h"
#include "foundation/ErrorKeys.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>

namespace {

using namespace std::string_literals;

// Sets one environment variable for the life of the object.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        ::setenv(name, value, 1);
    }
    ~ScopedEnv() {
        if (m_old)
            ::setenv(m_name.c_str(), m_old->c_str(), 1);
        else
            ::unsetenv(m_name.c_str());
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_old;
};

stdstr FromUtf8(const std::string& bytes) {
    return stdstr::toTString(std::string_view(bytes));
}

} // namespace

// --- toTString -------------------------------------------------------------------------

TEST(StdstrToTString, OfAnEmptyTextIsEmpty) {
    EXPECT_EQ(stdstr::toTString(""), stdstr());
    EXPECT_EQ(stdstr::toTString(std::string_view()), stdstr());
}

TEST(StdstrToTString, OfANullPointerIsEmpty) {
    EXPECT_EQ(stdstr::toTString(static_cast<const char*>(nullptr)), stdstr());
}

TEST(StdstrToTString, DecodesEverySequenceLength) {
    EXPECT_EQ(stdstr::toTString("Quillgate"), stdstr(u"Quillgate"));
    EXPECT_EQ(stdstr::toTString("\xC3\xA9\xC3\xBC"), stdstr(u"\u00E9\u00FC"));
    EXPECT_EQ(stdstr::toTString("\xE2\x82\xAC\xE6\x97\xA5"), stdstr(u"\u20AC\u65E5"));
    EXPECT_EQ(stdstr::toTString("\xEF\xBF\xBF"), stdstr(u"\uFFFF"));
}

TEST(StdstrToTString, MakesSurrogatePairsForSupplementaryCharacters) {
    const stdstr text = stdstr::toTString("a\xF0\x9F\x98\x80z\xF4\x8F\xBF\xBF");
    ASSERT_EQ(text.size(), 6u);
    EXPECT_EQ(text, stdstr(u"a\xD83D\xDE00z\xDBFF\xDFFF"));
    EXPECT_EQ(stdstr::toTString("\xF0\x90\x80\x80"), stdstr(u"\xD800\xDC00"));
}

TEST(StdstrToTString, ReplacesEachMaximalInvalidPartWithOneReplacementCharacter) {
    // The example sequence of the Unicode standard for U+FFFD substitution.
    EXPECT_EQ(FromUtf8("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64"),
              stdstr(u"a\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd"));
}

TEST(StdstrToTString, RejectsOverlongSurrogateAndOutOfRangeForms) {
    EXPECT_EQ(FromUtf8("\xC0\xAF"), stdstr(u"\uFFFD\uFFFD"));
    EXPECT_EQ(FromUtf8("\xC1\xBF"), stdstr(u"\uFFFD\uFFFD"));
    EXPECT_EQ(FromUtf8("\xE0\x80\xAF"), stdstr(u"\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), stdstr(u"\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(FromUtf8("\xF0\x80\x80\x80"), stdstr(u"\uFFFD\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), stdstr(u"\uFFFD\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(FromUtf8("\xF5\xF8\xFE\xFF"), stdstr(u"\uFFFD\uFFFD\uFFFD\uFFFD"));
}

TEST(StdstrToTString, ReplacesATruncatedSequenceAtTheEndOnce) {
    EXPECT_EQ(FromUtf8("ab\xE2\x82"), stdstr(u"ab\uFFFD"));
    EXPECT_EQ(FromUtf8("ab\xF0\x9F\x98"), stdstr(u"ab\uFFFD"));
    EXPECT_EQ(FromUtf8("\xC3"), stdstr(u"\uFFFD"));
}

TEST(StdstrToTString, DoesNotThrowForInvalidInput) {
    std::string everyByte;
    for (int i = 1; i < 256; ++i)
        everyByte.push_back(static_cast<char>(i));
    stdstr text;
    EXPECT_NO_THROW(text = FromUtf8(everyByte));
    // 127 ASCII characters, then one replacement for each of the 128 high bytes: in
    // ascending order no lead byte is followed by a fitting continuation byte.
    EXPECT_EQ(text.size(), 255u);
    EXPECT_EQ(text.substr(127), stdstr(std::u16string(128, u'\uFFFD')));
}

TEST(StdstrToTString, EndsTheTextAtANul) {
    EXPECT_EQ(FromUtf8("ab\0cd"s), stdstr(u"ab"));
}

TEST(StdstrToTString, ConvertsLongMixedText) {
    std::string utf8;
    std::u16string expected;
    for (int i = 0; i < 1000; ++i) {
        utf8 += "plain ascii run \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80|";
        expected += u"plain ascii run \u00E9\u20AC\U0001F600|";
    }
    EXPECT_EQ(FromUtf8(utf8), stdstr(expected));
}

// --- fromTString -----------------------------------------------------------------------

TEST(StdstrFromTString, OfAnEmptyTextIsEmpty) {
    EXPECT_EQ(stdstr::fromTString(stdstr()), "");
}

TEST(StdstrFromTString, EncodesEverySequenceLength) {
    EXPECT_EQ(stdstr::fromTString(u"Az"), "Az");
    EXPECT_EQ(stdstr::fromTString(u"\u00E9\u07FF"), "\xC3\xA9\xDF\xBF");
    EXPECT_EQ(stdstr::fromTString(u"\u0800\u20AC\uFFFF"), "\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF");
}

TEST(StdstrFromTString, JoinsSurrogatePairs) {
    EXPECT_EQ(stdstr::fromTString(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(stdstr::fromTString(u"\xD800\xDC00\xDBFF\xDFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(StdstrFromTString, ReplacesUnpairedSurrogates) {
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(stdstr::fromTString(u"a\xD83D"
                                  u"b"),
              "a" + replacement + "b");
    EXPECT_EQ(stdstr::fromTString(u"a\xDE00"
                                  u"b"),
              "a" + replacement + "b");
    EXPECT_EQ(stdstr::fromTString(u"a\xD83D"), "a" + replacement);
    EXPECT_EQ(stdstr::fromTString(u"\xDE00\xD83D"), replacement + replacement);
    EXPECT_EQ(stdstr::fromTString(u"\xD83D\xD83D\xDE00"), replacement + "\xF0\x9F\x98\x80");
}

TEST(StdstrFromTString, EndsTheTextAtANul) {
    EXPECT_EQ(stdstr::fromTString(u"ab\0cd"s), "ab");
}

TEST(StdstrConversions, RoundTripEveryCharacter) {
    std::u16string every;
    for (char32_t c = 1; c < 0x110000; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF)
            continue;
        if (c < 0x10000) {
            every.push_back(static_cast<char16_t>(c));
        } else {
            every.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
            every.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
    }
    const std::string utf8 = stdstr::fromTString(every);
    EXPECT_EQ(stdstr::toTString(std::string_view(utf8)), stdstr(every));
}

// --- fromUNICODE -----------------------------------------------------------------------

TEST(StdstrFromUNICODE, CodePage65001IsUtf8) {
    const stdstr text(u"a\u00E9\u20AC\U0001F600\xD800");
    EXPECT_EQ(stdstr::fromUNICODE(text, 65001), stdstr::fromTString(text));
}

TEST(StdstrFromUNICODE, CodePage1252MapsWesternCharacters) {
    EXPECT_EQ(stdstr::fromUNICODE(u"caf\u00E9 \u20AC5", 1252), "caf\xE9 \x80"
                                                               "5");
    EXPECT_EQ(stdstr::fromUNICODE(u"\u201Cq\u201D", 1252), "\x93q\x94");
}

TEST(StdstrFromUNICODE, CharactersTheCodePageLacksBecomeQuestionMarks) {
    EXPECT_EQ(stdstr::fromUNICODE(u"a\u0100b\u65E5c", 1252), "a?b?c");
    // Each half of a surrogate pair is looked up on its own, as Windows' tables do.
    EXPECT_EQ(stdstr::fromUNICODE(u"x\U0001F600y", 1252), "x??y");
    EXPECT_EQ(stdstr::fromUNICODE(u"x\xDC00y\xD800", 1252), "x?y?");
}

TEST(StdstrFromUNICODE, OtherCodePagesAreConverted) {
    EXPECT_EQ(stdstr::fromUNICODE(u"\u041F\u0440\u0438", 1251), "\xCF\xF0\xE8");
    EXPECT_EQ(stdstr::fromUNICODE(u"\u65E5\u672C", 932), "\x93\xFA\x96\x7B");
    EXPECT_EQ(stdstr::fromUNICODE(u"\u00E9", 28591), "\xE9");
    EXPECT_EQ(stdstr::fromUNICODE(u"\u20AC", 28605), "\xA4");
    EXPECT_EQ(stdstr::fromUNICODE(u"a\u00E9", 20127), "a?");
    EXPECT_EQ(stdstr::fromUNICODE(u"Az", 1200), "A\0z\0"s);
}

TEST(StdstrFromUNICODE, KeepsAShiftStateRightAroundTheDefaultCharacter) {
    // ISO-2022-JP: the '?' after a kanji needs the switch back to ASCII before it.
    EXPECT_EQ(stdstr::fromUNICODE(u"\u65E5\u0100a", 50220), "\x1B$BF|\x1B(B?a");
    EXPECT_EQ(stdstr::fromUNICODE(u"\u65E5", 50220), "\x1B$BF|\x1B(B");
}

TEST(StdstrFromUNICODE, OfAnEmptyTextIsEmpty) {
    EXPECT_EQ(stdstr::fromUNICODE(stdstr(), 1252), "");
    EXPECT_EQ(stdstr::fromUNICODE(stdstr(), 65001), "");
    EXPECT_EQ(stdstr::fromUNICODE(stdstr(), 0), "");
}

TEST(StdstrFromUNICODE, EndsTheTextAtANul) {
    EXPECT_EQ(stdstr::fromUNICODE(u"ab\0cd"s, 1252), "ab");
}

TEST(StdstrFromUNICODE, CodePage0FollowsAUtf8Locale) {
    const ScopedEnv locale("LC_ALL", "C.UTF-8");
    EXPECT_EQ(stdstr::fromUNICODE(u"caf\u00E9 \u20AC", 0), "caf\xC3\xA9 \xE2\x82\xAC");
}

TEST(StdstrFromUNICODE, CodePage0TakesThePlainCLocaleAsUtf8) {
    const ScopedEnv locale("LC_ALL", "C");
    EXPECT_EQ(stdstr::fromUNICODE(u"caf\u00E9", 0), "caf\xC3\xA9");
}

TEST(StdstrFromUNICODE, CodePage0TakesAnUnknownLocaleAsUtf8) {
    const ScopedEnv locale("LC_ALL", "xx_XX.NOSUCH");
    EXPECT_EQ(stdstr::fromUNICODE(u"caf\u00E9", 0), "caf\xC3\xA9");
}

TEST(StdstrFromUNICODE, AnUnknownCodePageThrowsTheFunctionFailure) {
    try {
        (void)stdstr::fromUNICODE(u"text", 12345);
        FAIL() << "no exception";
    } catch (const BaseException& e) {
        const stdstr expected =
            stdstr(u"QGFuncFailed##WideCharToMultiByte##") + GetOSErrorText(EINVAL);
        EXPECT_EQ(e.GetMessage(), expected);
        EXPECT_EQ(e.GetCode(), EINVAL);
        EXPECT_EQ(e.GetFullMessage(), stdstr(u"stdstr::fromUNICODE() - ") + expected);
    }
}

TEST(StdstrFromUNICODE, AnUnknownCodePageThrowsEvenForAnEmptyText) {
    EXPECT_THROW((void)stdstr::fromUNICODE(stdstr(), 1), BaseException);
}

// --- replacements ----------------------------------------------------------------------

TEST(StdstrReplaceChar, ReplacesEveryOccurrence) {
    stdstr text(u"a/b/c/");
    text.replaceChar(u'/', u'\\');
    EXPECT_EQ(text, stdstr(u"a\\b\\c\\"));
}

TEST(StdstrReplaceChar, LeavesATextWithoutTheCharacterAlone) {
    stdstr text(u"abc");
    text.replaceChar(u'x', u'y');
    EXPECT_EQ(text, stdstr(u"abc"));
    stdstr empty;
    empty.replaceChar(u'x', u'y');
    EXPECT_EQ(empty, stdstr());
}

TEST(StdstrReplaceText, ReplacesEveryOccurrenceWithOneCharacter) {
    stdstr text(u"a\r\nb\r\n\r\nc");
    text.replaceText(u"\r\n", u'\n');
    EXPECT_EQ(text, stdstr(u"a\nb\n\nc"));
}

TEST(StdstrReplaceText, ScansLeftToRight) {
    stdstr text(u"aaaaa");
    text.replaceText(u"aa", u'b');
    EXPECT_EQ(text, stdstr(u"bba"));
}

TEST(StdstrReplaceText, ReplacesTheWholeTextAndLeavesOtherTextAlone) {
    stdstr whole(u"##");
    whole.replaceText(u"##", u'|');
    EXPECT_EQ(whole, stdstr(u"|"));
    stdstr other(u"abc");
    other.replaceText(u"abcd", u'x');
    EXPECT_EQ(other, stdstr(u"abc"));
}

TEST(StdstrReplaceText, WithAnEmptyTextChangesNothing) {
    stdstr text(u"abc");
    text.replaceText(u"", u'x');
    EXPECT_EQ(text, stdstr(u"abc"));
}

TEST(ReplaceAll, ReplacesEveryOccurrence) {
    EXPECT_EQ(replaceAll(u"a##b##c", u"##", u", "), stdstr(u"a, b, c"));
    EXPECT_EQ(replaceAll(u"##", u"##", u"x"), stdstr(u"x"));
}

TEST(ReplaceAll, EndsWhenTheReplacementContainsTheText) {
    EXPECT_EQ(replaceAll(u"a.b.c", u".", u".."), stdstr(u"a..b..c"));
    EXPECT_EQ(replaceAll(u"%%", u"%", u"%%"), stdstr(u"%%%%"));
    EXPECT_EQ(replaceAll(u"xx", u"x", u"axb"), stdstr(u"axbaxb"));
}

TEST(ReplaceAll, ScansOnBehindEachReplacement) {
    EXPECT_EQ(replaceAll(u"aaa", u"aa", u"b"), stdstr(u"ba"));
    EXPECT_EQ(replaceAll(u"abab", u"ab", u"a"), stdstr(u"aa"));
}

TEST(ReplaceAll, WithAnEmptyReplacementRemovesTheText) {
    EXPECT_EQ(replaceAll(u"a-b-c", u"-", u""), stdstr(u"abc"));
}

TEST(ReplaceAll, WithAnEmptyTextOrNoOccurrenceReturnsTheTextUnchanged) {
    EXPECT_EQ(replaceAll(u"abc", u"", u"x"), stdstr(u"abc"));
    EXPECT_EQ(replaceAll(u"abc", u"d", u"x"), stdstr(u"abc"));
    EXPECT_EQ(replaceAll(u"", u"a", u"x"), stdstr());
}

TEST(ReplaceAll, LeavesItsArgumentAlone) {
    const stdstr text(u"a.b");
    const stdstr result = replaceAll(text, u".", u"-");
    EXPECT_EQ(text, stdstr(u"a.b"));
    EXPECT_EQ(result, stdstr(u"a-b"));
}

TEST(StdstrFromTString, EndsAtTheFirstNulWhereverItStandsInALongText) {
    // The search runs over groups of units; a NUL in any place of a group must end the text.
    for (std::size_t length = 0; length < 13; ++length) {
        for (std::size_t nul = 0; nul < length; ++nul) {
            std::u16string text(length, u'a');
            text[nul] = u'\0';
            EXPECT_EQ(stdstr::fromTString(text), std::string(nul, 'a'))
                << "length " << length << ", nul at " << nul;
        }
        EXPECT_EQ(stdstr::fromTString(std::u16string(length, u'b')), std::string(length, 'b'));
    }
}

TEST(StdstrFromTString, MixesAsciiRunsWithOtherCharacters) {
    EXPECT_EQ(stdstr::fromTString(u"abcd\u00e9fgh\u20acijklmnop\U0001F600q"),
              "abcd\xC3\xA9"
              "fgh\xE2\x82\xAC"
              "ijklmnop\xF0\x9F\x98\x80q");
}
