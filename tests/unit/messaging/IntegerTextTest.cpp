// The integer rules of the envelope: plain base 10 out, a forgiving leading-number read in.
#include "messaging/IntegerText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

TEST(IntegerTextWrite, WritesBaseTenWithALeadingMinus) {
    EXPECT_EQ(IntegerText::Write(0), u"0");
    EXPECT_EQ(IntegerText::Write(7), u"7");
    EXPECT_EQ(IntegerText::Write(-7), u"-7");
    EXPECT_EQ(IntegerText::Write(3412), u"3412");
    EXPECT_EQ(IntegerText::Write(std::numeric_limits<std::int32_t>::max()), u"2147483647");
    EXPECT_EQ(IntegerText::Write(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
}

TEST(IntegerTextWrite, AppendsToWhatIsThere) {
    std::u16string out(u"id=");
    IntegerText::Append(-1, out);
    IntegerText::AppendUnsigned(4294967295u, out);
    EXPECT_EQ(out, u"id=-14294967295");
}

TEST(IntegerTextRead, ReadsTheLeadingNumberAndIgnoresTheRest) {
    EXPECT_EQ(IntegerText::Read(u"12abc"), 12);
    EXPECT_EQ(IntegerText::Read(u"12 34"), 12);
    EXPECT_EQ(IntegerText::Read(u"-5-5"), -5);
    EXPECT_EQ(IntegerText::Read(u"0x1F"), 0);
    EXPECT_EQ(IntegerText::Read(u"007"), 7);
    EXPECT_EQ(IntegerText::Read(u"1.9"), 1);
}

TEST(IntegerTextRead, GivesZeroForTextWithoutALeadingNumber) {
    EXPECT_EQ(IntegerText::Read(u"abc"), 0);
    EXPECT_EQ(IntegerText::Read(u""), 0);
    EXPECT_EQ(IntegerText::Read(u"-"), 0);
    EXPECT_EQ(IntegerText::Read(u"+"), 0);
    EXPECT_EQ(IntegerText::Read(u"- 5"), 0);
    EXPECT_EQ(IntegerText::Read(u"x12"), 0);
    EXPECT_EQ(IntegerText::Read(u"\uFF11\uFF12"), 0); // full-width digits are no digits
}

TEST(IntegerTextRead, SkipsWhiteSpaceAndTakesASign) {
    EXPECT_EQ(IntegerText::Read(u"  42"), 42);
    EXPECT_EQ(IntegerText::Read(u"\t\r\n\v\f-42"), -42);
    EXPECT_EQ(IntegerText::Read(u"+42"), 42);
    EXPECT_EQ(IntegerText::Read(u"\u00A042"), 0); // only the ASCII blanks are passed over
}

TEST(IntegerTextRead, ReadsTheWholeSigned32BitRange) {
    EXPECT_EQ(IntegerText::Read(u"2147483647"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(IntegerText::Read(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(IntegerText::Read(u"-0"), 0);
    EXPECT_EQ(IntegerText::Read(u"000000000000000000002147483647"),
              std::numeric_limits<std::int32_t>::max());
}

TEST(IntegerTextRead, GivesZeroForANumberOutsideTheRange) {
    EXPECT_EQ(IntegerText::Read(u"2147483648"), 0);
    EXPECT_EQ(IntegerText::Read(u"-2147483649"), 0);
    EXPECT_EQ(IntegerText::Read(u"99999999999999999999999999999999"), 0);
    EXPECT_EQ(IntegerText::Read(u"4294967296abc"), 0);
}

TEST(IntegerTextRead, ReadsNarrowTextTheSameWay) {
    EXPECT_EQ(IntegerText::Read(std::string_view("12abc")), 12);
    EXPECT_EQ(IntegerText::Read(std::string_view(" -2147483648")), -2147483647 - 1);
    EXPECT_EQ(IntegerText::Read(std::string_view("abc")), 0);
    EXPECT_EQ(IntegerText::Read(std::string_view("2147483648")), 0);
}

TEST(IntegerTextRead, ReadsBackWhatItWrites) {
    for (const std::int32_t value :
         {0, 1, -1, 9, 10, -10, 65535, -65536, 1000000007, std::numeric_limits<std::int32_t>::max(),
          std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min() + 1}) {
        EXPECT_EQ(IntegerText::Read(IntegerText::Write(value)), value);
    }
}
