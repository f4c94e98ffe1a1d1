// The ids read straight from an envelope's header: the message id with its range test, and
// the unique id in its wide and narrow forms.
#include "messaging/EnvelopeIds.h"

#include <gtest/gtest.h>

#include <string>

TEST(ReadMessageId, ReadsTheIdOfAWholeHeader) {
    EXPECT_EQ(ReadMessageId(u"<VLVS>1.0.0</VLVS><VLID>258</VLID><VLNAME>Config change</VLNAME>"),
              258);
}

TEST(ReadMessageId, AcceptsOneTo1023) {
    EXPECT_EQ(ReadMessageId(u"<VLID>1</VLID>"), 1);
    EXPECT_EQ(ReadMessageId(u"<VLID>1023</VLID>"), 1023);
}

TEST(ReadMessageId, GivesZeroForZeroNegativeAnd1024Up) {
    EXPECT_EQ(ReadMessageId(u"<VLID>0</VLID>"), 0);
    EXPECT_EQ(ReadMessageId(u"<VLID>-1</VLID>"), 0);
    EXPECT_EQ(ReadMessageId(u"<VLID>-257</VLID>"), 0);
    EXPECT_EQ(ReadMessageId(u"<VLID>1024</VLID>"), 0);
    EXPECT_EQ(ReadMessageId(u"<VLID>2147483647</VLID>"), 0);
}

TEST(ReadMessageId, GivesZeroForAWordOrNothing) {
    EXPECT_EQ(ReadMessageId(u"<VLID>word</VLID>"), 0);
    EXPECT_EQ(ReadMessageId(u"<VLID></VLID>"), 0);
    EXPECT_EQ(ReadMessageId(u""), 0);
}

TEST(ReadMessageId, GivesZeroWhenATagIsMissing) {
    EXPECT_EQ(ReadMessageId(u"<VLID>258"), 0);
    EXPECT_EQ(ReadMessageId(u"258</VLID>"), 0);
    EXPECT_EQ(ReadMessageId(u"</VLID>258<VLID>"), 0);
}

TEST(ReadMessageId, ReadsTheLeadingNumberOfTheElement) {
    EXPECT_EQ(ReadMessageId(u"<VLID>257abc</VLID>"), 257);
    EXPECT_EQ(ReadMessageId(u"<VLID> 272</VLID>"), 272);
}

TEST(ReadMessageId, TakesTheFirstIdElement) {
    EXPECT_EQ(ReadMessageId(u"<VLID>256</VLID><VLID>257</VLID>"), 256);
    EXPECT_EQ(ReadMessageId(u"<VLID>0</VLID><VLID>257</VLID>"), 0);
}

TEST(ReadUniqueId, ReadsAnyValueWithoutARangeTest) {
    EXPECT_EQ(ReadUniqueId(u"<VLUNIID>123456</VLUNIID>"), 123456);
    EXPECT_EQ(ReadUniqueId(u"x<VLUNIID>-5</VLUNIID>y"), -5);
    EXPECT_EQ(ReadUniqueId(u"<VLUNIID>2147483647</VLUNIID>"), 2147483647);
}

TEST(ReadUniqueId, GivesZeroForAMissingTagOrAnEmptyElement) {
    EXPECT_EQ(ReadUniqueId(u"<VLUNIID></VLUNIID>"), 0);
    EXPECT_EQ(ReadUniqueId(u"<VLUNIID>12"), 0);
    EXPECT_EQ(ReadUniqueId(u"12</VLUNIID>"), 0);
    EXPECT_EQ(ReadUniqueId(u"<VLID>12</VLID>"), 0);
    EXPECT_EQ(ReadUniqueId(u"<VLUNIID>word</VLUNIID>"), 0);
}

TEST(ReadUniqueId, ReadsEightBitTextTheSameWay) {
    EXPECT_EQ(ReadUniqueId(std::string_view("<VLUNIID>77</VLUNIID>")), 77);
    EXPECT_EQ(ReadUniqueId(std::string_view("<VLUNIID>-77x</VLUNIID>")), -77);
    EXPECT_EQ(ReadUniqueId(std::string_view("<VLUNIID></VLUNIID>")), 0);
    EXPECT_EQ(ReadUniqueId(std::string_view("<VLUNIID>77")), 0);
    EXPECT_EQ(ReadUniqueId(std::string_view("")), 0);
}
