// JsonText and the message log's field lists: valid JSON for any text.
#include "service/JsonText.h"
#include "service/MessageLog.h"

#include <gtest/gtest.h>

TEST(JsonText, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(JsonText::quote(std::string_view("a\"b\\c\n\r\t\x01")),
              "\"a\\\"b\\\\c\\n\\r\\t\\u0001\"");
}

TEST(JsonText, KeepsOtherCharactersAsUtf8) {
    EXPECT_EQ(JsonText::quote(std::u16string(u"\u00E9<&>")), "\"\xC3\xA9<&>\"");
    EXPECT_EQ(JsonText::quote(std::u16string(u"\xD800")), "\"\xEF\xBF\xBD\"");
}

TEST(MessageLog, WritesIntegerFieldsAsNumbersAndTextsAsStrings) {
    EXPECT_EQ(MessageLog::fieldsText({-3, stdstr(u"x y"), 0}), "[-3,\"x y\",0]");
    EXPECT_EQ(MessageLog::fieldsText({}), "[]");
}
