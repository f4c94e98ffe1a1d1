// QGConfig.ini read with the rules of the Windows profile functions.

#include "app/ProfileReader.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

namespace {

ProfileReader Reader(const std::string& utf8) {
    ProfileReader reader;
    reader.Parse(stdstr::toTString(utf8));
    return reader;
}

stdstr Text(const ProfileReader& reader, const char16_t* key, std::size_t size = 260) {
    return reader.GetString(u"SYSTEM", key, u"<default>", size);
}

std::int32_t Number(const ProfileReader& reader, const char16_t* key) {
    return reader.GetInt(u"SYSTEM", key, 77);
}

} // namespace

TEST(ProfileReader, PlainKeysReadAsWritten) {
    const ProfileReader ini = Reader("[SYSTEM]\nFirstRun=0\nConfigPath=/data/qg\n");
    EXPECT_EQ(Number(ini, u"FirstRun"), 0);
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"/data/qg");
}

TEST(ProfileReader, SectionAndKeyNamesMatchWithoutRegardToCase) {
    const ProfileReader ini = Reader("[system]\nfirstrun=4\nCONFIGPATH=/x\n");
    EXPECT_EQ(Number(ini, u"FirstRun"), 4);
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"/x");
    EXPECT_EQ(ini.GetInt(u"SyStEm", u"FIRSTRUN", 0), 4);
}

TEST(ProfileReader, BlanksAroundLinesKeysAndValuesAreNotPartOfThem) {
    const ProfileReader ini =
        Reader("   [SYSTEM]\t \n  \tHistoryDays \t=   12  \n Language =  1031 \t\n");
    EXPECT_EQ(Number(ini, u"HistoryDays"), 12);
    EXPECT_EQ(Text(ini, u"Language"), u"1031");
}

TEST(ProfileReader, BlanksInsideAValueStay) {
    const ProfileReader ini = Reader("[SYSTEM]\nConfigPath =  /my data / qg  \n");
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"/my data / qg");
}

TEST(ProfileReader, CarriageReturnLineEndsReadLikeLineFeeds) {
    const ProfileReader ini = Reader("[SYSTEM]\r\nFilterOn=0\r\nLanguage=1036\r\n");
    EXPECT_EQ(Number(ini, u"FilterOn"), 0);
    EXPECT_EQ(Text(ini, u"Language"), u"1036");
}

TEST(ProfileReader, OnePairOfDoubleQuotesIsRemoved) {
    const ProfileReader ini = Reader("[SYSTEM]\nConfigPath=\"  /quoted path  \"\n");
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"  /quoted path  ");
}

TEST(ProfileReader, OnePairOfSingleQuotesIsRemoved) {
    const ProfileReader ini = Reader("[SYSTEM]\nConfigPath='/single'\n");
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"/single");
}

TEST(ProfileReader, OnlyTheOuterPairOfQuotesIsRemoved) {
    const ProfileReader ini = Reader("[SYSTEM]\nConfigPath=\"\"inner\"\"\n");
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"\"inner\"");
}

TEST(ProfileReader, UnequalOrLoneQuotesStay) {
    const ProfileReader ini = Reader("[SYSTEM]\nA=\"mixed'\nB=\"\nC=\"open only\nD=close only\"\n");
    EXPECT_EQ(Text(ini, u"A"), u"\"mixed'");
    EXPECT_EQ(Text(ini, u"B"), u"\"");
    EXPECT_EQ(Text(ini, u"C"), u"\"open only");
    EXPECT_EQ(Text(ini, u"D"), u"close only\"");
}

TEST(ProfileReader, EmptyQuotesGiveAnEmptyText) {
    const ProfileReader ini = Reader("[SYSTEM]\nLanguage=\"\"\n");
    EXPECT_EQ(Text(ini, u"Language"), u"");
}

TEST(ProfileReader, MissingKeyGivesTheDefault) {
    const ProfileReader ini = Reader("[SYSTEM]\nFirstRun=0\n");
    EXPECT_EQ(Text(ini, u"Language"), u"<default>");
    EXPECT_EQ(Number(ini, u"UpgradePeriod"), 77);
}

TEST(ProfileReader, KeyWithoutEqualsSignReadsAsAbsent) {
    const ProfileReader ini = Reader("[SYSTEM]\nLanguage\nHistoryDays\n");
    EXPECT_EQ(Text(ini, u"Language"), u"<default>");
    EXPECT_EQ(Number(ini, u"HistoryDays"), 77);
}

TEST(ProfileReader, EmptyValueIsAnEmptyTextButTheDefaultNumber) {
    const ProfileReader ini = Reader("[SYSTEM]\nLanguage=\nUpgradePeriod=   \n");
    EXPECT_EQ(Text(ini, u"Language"), u"");
    EXPECT_EQ(Number(ini, u"UpgradePeriod"), 77);
}

TEST(ProfileReader, KeysOfOtherSectionsAreNotFound) {
    const ProfileReader ini = Reader("[OTHER]\nFirstRun=9\n[SYSTEM]\nFilterOn=0\n");
    EXPECT_EQ(Number(ini, u"FirstRun"), 77);
    EXPECT_EQ(Number(ini, u"FilterOn"), 0);
    EXPECT_EQ(ini.GetInt(u"OTHER", u"FirstRun", 0), 9);
}

TEST(ProfileReader, KeysBeforeAnySectionBelongToNone) {
    const ProfileReader ini = Reader("FirstRun=9\n[SYSTEM]\n");
    EXPECT_EQ(Number(ini, u"FirstRun"), 77);
}

TEST(ProfileReader, TheFirstSectionOfANameAndItsFirstKeyCount) {
    const ProfileReader ini =
        Reader("[SYSTEM]\nHistoryDays=1\nHistoryDays=2\n[SYSTEM]\nHistoryDays=3\nFilterOn=0\n");
    EXPECT_EQ(Number(ini, u"HistoryDays"), 1);
    // The later section of the same name is never looked at.
    EXPECT_EQ(Number(ini, u"FilterOn"), 77);
}

TEST(ProfileReader, SectionNameIsTakenAsItStandsBetweenTheBrackets) {
    const ProfileReader spaced = Reader("[ SYSTEM ]\nFirstRun=0\n");
    EXPECT_EQ(Number(spaced, u"FirstRun"), 77);
    const ProfileReader trailing = Reader("[SYSTEM] ; settings\nFirstRun=0\n");
    EXPECT_EQ(Number(trailing, u"FirstRun"), 0);
}

TEST(ProfileReader, CommentLinesAreSkipped) {
    const ProfileReader ini = Reader("; written by the service\n[SYSTEM]\n;FirstRun=5\n"
                                     "  ; HistoryDays=8\nHistoryDays=9\n");
    EXPECT_EQ(Number(ini, u"FirstRun"), 77);
    EXPECT_EQ(Number(ini, u"HistoryDays"), 9);
}

TEST(ProfileReader, TextAfterAValueIsPartOfIt) {
    const ProfileReader ini = Reader("[SYSTEM]\nLanguage=1031 ; German\n");
    EXPECT_EQ(Text(ini, u"Language"), u"1031 ; German");
    EXPECT_EQ(Number(ini, u"Language"), 1031);
}

TEST(ProfileReader, TheValueRunsFromTheFirstEqualsSign) {
    const ProfileReader ini = Reader("[SYSTEM]\nConfigPath==a=b\n");
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"=a=b");
}

TEST(ProfileReader, NumbersReadTheirLeadingDigits) {
    const ProfileReader ini = Reader("[SYSTEM]\nA=102abc\nB=42A94967297\nC= 7 8\n");
    EXPECT_EQ(Number(ini, u"A"), 102);
    EXPECT_EQ(Number(ini, u"B"), 42);
    EXPECT_EQ(Number(ini, u"C"), 7);
}

TEST(ProfileReader, NonNumbersReadZero) {
    const ProfileReader ini =
        Reader("[SYSTEM]\nUpgradePeriod=weekly\nB=B4294967297\nC=-\nD=0x10\n");
    EXPECT_EQ(Number(ini, u"UpgradePeriod"), 0);
    EXPECT_EQ(Number(ini, u"B"), 0);
    EXPECT_EQ(Number(ini, u"C"), 0);
    EXPECT_EQ(Number(ini, u"D"), 0);
}

TEST(ProfileReader, NumbersTakeASign) {
    const ProfileReader ini = Reader("[SYSTEM]\nHistoryDays=-5\nB=+1\nC=-0\n");
    EXPECT_EQ(Number(ini, u"HistoryDays"), -5);
    EXPECT_EQ(Number(ini, u"B"), 1);
    EXPECT_EQ(Number(ini, u"C"), 0);
}

TEST(ProfileReader, NumbersWrapAt32Bits) {
    const ProfileReader ini =
        Reader("[SYSTEM]\nA=4294967296\nB=4294967297\nC=-4294967297\nD=2147483648\n");
    EXPECT_EQ(Number(ini, u"A"), 0);
    EXPECT_EQ(Number(ini, u"B"), 1);
    EXPECT_EQ(Number(ini, u"C"), -1);
    EXPECT_EQ(Number(ini, u"D"), INT32_MIN);
}

TEST(ProfileReader, QuotedNumbersReadTheirDigits) {
    const ProfileReader ini = Reader("[SYSTEM]\nA=\"15\"\nB=' 16'\n");
    EXPECT_EQ(Number(ini, u"A"), 15);
    EXPECT_EQ(Number(ini, u"B"), 16);
}

TEST(ProfileReader, OnlyTheFirst29CharactersOfANumberAreRead) {
    // 28 zeros and a 5 fit; 29 zeros push the 5 out of the number's buffer.
    const ProfileReader ini =
        Reader("[SYSTEM]\nA=" + std::string(28, '0') + "5\nB=" + std::string(29, '0') + "5\n");
    EXPECT_EQ(Number(ini, u"A"), 5);
    EXPECT_EQ(Number(ini, u"B"), 0);
}

TEST(ProfileReader, TextsAreCutToTheBufferLessItsTerminator) {
    const std::string language(200, 'x');
    const ProfileReader ini = Reader("[SYSTEM]\nLanguage=" + language + "\n");
    EXPECT_EQ(Text(ini, u"Language", 128), stdstr(127, u'x'));
    EXPECT_EQ(Text(ini, u"Language", 1), u"");
    EXPECT_EQ(Text(ini, u"Language", 0), u"");
}

TEST(ProfileReader, AQuotedTextTooLongIsCutBehindItsOpeningQuote) {
    const ProfileReader ini = Reader("[SYSTEM]\nLanguage=\"abcdef\"\n");
    EXPECT_EQ(Text(ini, u"Language", 4), u"abc");
}

TEST(ProfileReader, TheDefaultIsCutToo) {
    const ProfileReader ini;
    EXPECT_EQ(ini.GetString(u"SYSTEM", u"Language", u"abcdef", 4), u"abc");
}

TEST(ProfileReader, Utf8TextIsRead) {
    const ProfileReader ini = Reader("[SYSTEM]\nConfigPath=/donn\xC3\xA9\x65s/\xE6\x97\xA5\n");
    EXPECT_EQ(Text(ini, u"ConfigPath"), u"/donn\u00E9es/\u65E5");
}

TEST(ProfileReader, TextsAreCountedInUtf16Units) {
    // U+1F600 takes two units: a buffer of 3 holds it, one of 2 cuts it in half.
    const ProfileReader ini = Reader("[SYSTEM]\nLanguage=\xF0\x9F\x98\x80z\n");
    EXPECT_EQ(Text(ini, u"Language", 3), u"\U0001F600");
    EXPECT_EQ(Text(ini, u"Language", 2).size(), 1u);
}

TEST(ProfileReader, FileIsReadWithItsByteOrderMark) {
    TestSupport::SandboxRoot root;
    root.writeFile("QGConfig.ini", "\xEF\xBB\xBF[SYSTEM]\nHistoryDays=14\n");
    const ProfileReader ini(stdstr::toTString(root.file("QGConfig.ini")));
    EXPECT_EQ(Number(ini, u"HistoryDays"), 14);
}

TEST(ProfileReader, MissingFileGivesEveryDefault) {
    TestSupport::SandboxRoot root;
    const ProfileReader ini(stdstr::toTString(root.file("absent.ini")));
    EXPECT_EQ(Number(ini, u"HistoryDays"), 77);
    EXPECT_EQ(Text(ini, u"Language"), u"<default>");
}

TEST(ProfileReader, AFolderInPlaceOfTheFileGivesEveryDefault) {
    TestSupport::SandboxRoot root;
    root.writeFile("folder/inside", "");
    const ProfileReader ini(stdstr::toTString(root.file("folder")));
    EXPECT_EQ(Number(ini, u"HistoryDays"), 77);
}
