// The transport forms of an envelope's text: UTF-8 requests, UTF-16 inbound calls.
#include "messaging/TransportText.h"

#include <gtest/gtest.h>

#include <string>

TEST(TransportTextRequest, IsTheUtf8OfTheTextWithoutATerminator) {
    const std::string bytes = TransportText::RequestBytes(u"<VLE>\u00E9\U0001F600</VLE>");
    EXPECT_EQ(bytes, "<VLE>\xC3\xA9\xF0\x9F\x98\x80</VLE>");
    EXPECT_EQ(bytes.size(), 17u);
}

TEST(TransportTextRequest, OfAnEmptyTextIsEmpty) {
    EXPECT_EQ(TransportText::RequestBytes(u""), "");
}

TEST(TransportTextInbound, TakesLittleEndianUnitsOfHalfTheByteLength) {
    const char bytes[] = {'<', 0, 'A', 0, '>', 0, '\x3D', '\xD8', '\x00', '\xDE'};
    EXPECT_EQ(TransportText::InboundText(bytes, sizeof bytes), u"<A>\U0001F600");
    EXPECT_EQ(TransportText::InboundText(bytes, 4), u"<A");
}

TEST(TransportTextInbound, DropsAnOddLastByte) {
    const char bytes[] = {'a', 0, 'b'};
    EXPECT_EQ(TransportText::InboundText(bytes, 3), u"a");
    EXPECT_EQ(TransportText::InboundText(bytes, 1), u"");
}

TEST(TransportTextInbound, KeepsZeroUnitsAndUnpairedSurrogates) {
    const char bytes[] = {'a', 0, 0, 0, 'b', 0, '\x00', '\xD8'};
    const std::u16string text = TransportText::InboundText(bytes, sizeof bytes);
    EXPECT_EQ(text, std::u16string(u"a\0b\xD800", 4));
}

TEST(TransportTextInbound, OfNullIsEmpty) {
    EXPECT_EQ(TransportText::InboundText(nullptr, 100), u"");
}
