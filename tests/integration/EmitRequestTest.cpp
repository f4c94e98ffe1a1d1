// EmitRequest: the arguments of "qgsasvc --emit" turned into the call to send.
#include "service/EmitRequest.h"

#include <gtest/gtest.h>

namespace {

std::optional<FieldMessage> Parse(const std::vector<std::string>& arguments, std::string& error) {
    SystemSettings stored;
    stored.language = u"1033";
    return EmitRequest::parse(arguments, stored, 777, error);
}

} // namespace

TEST(EmitRequest, SetsTheNamedFieldsOfAKnownMessage) {
    std::string error;
    const auto message = Parse({"264", "folder=/tmp", "file=/bin/setup"}, error);
    ASSERT_TRUE(message.has_value()) << error;
    EXPECT_EQ(message->GetId(), 264u);
    EXPECT_EQ(std::u16string(message->GetName()), u"Reinstall LSP");
    const std::vector<FieldValue> expected{stdstr(u"/bin/setup"), stdstr(u""), stdstr(u"/tmp")};
    EXPECT_EQ(message->values(), expected);
}

TEST(EmitRequest, TakesAHexadecimalId) {
    std::string error;
    const auto message = Parse({"0x100", "animation=-1"}, error);
    ASSERT_TRUE(message.has_value()) << error;
    EXPECT_EQ(message->GetId(), 256u);
    EXPECT_EQ(message->values(), std::vector<FieldValue>{-1});
}

TEST(EmitRequest, StartsAConfigChangeFromTheStoredSettingsAndTheServicesPid) {
    std::string error;
    const auto message = Parse({"258", "HistoryDays=7"}, error);
    ASSERT_TRUE(message.has_value()) << error;
    const std::vector<FieldValue> expected{777, 1, 1, 1, 1, 5, 7, stdstr(u""), stdstr(u"1033")};
    EXPECT_EQ(message->values(), expected);
}

TEST(EmitRequest, AppendsIntAndStrElementsToAnyId) {
    std::string error;
    const auto message = Parse({"999", "str=a=b", "int=12"}, error);
    ASSERT_TRUE(message.has_value()) << error;
    EXPECT_EQ(std::u16string(message->GetName()), u"Message 999");
    const std::vector<FieldValue> expected{stdstr(u"a=b"), 12};
    EXPECT_EQ(message->values(), expected);
}

TEST(EmitRequest, RefusesABadIdWithTheReason) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{}, {"0"}, {"1024"}, {"x1"}, {"0x"}, {"12a"}}) {
        std::string error;
        EXPECT_FALSE(Parse(arguments, error).has_value());
        EXPECT_EQ(error,
                  "expected a message id from 1 to 1023 (decimal or 0x...), then field=value");
    }
}

TEST(EmitRequest, RefusesAnUnknownFieldNamingTheKnownOnes) {
    std::string error;
    EXPECT_FALSE(Parse({"263", "reason=x"}, error).has_value());
    EXPECT_EQ(error, "message 263 has no field 'reason' (its fields: none; int=N and str=T add "
                     "elements)");
}

TEST(EmitRequest, RefusesAnIntegerFieldThatIsNotA32BitNumber) {
    std::string error;
    EXPECT_FALSE(Parse({"256", "animation=2147483648"}, error).has_value());
    EXPECT_EQ(error, "field 'animation' takes a 32-bit integer, not '2147483648'");
    EXPECT_FALSE(Parse({"256", "int="}, error).has_value());
    EXPECT_EQ(error, "'' is not a 32-bit integer");
    EXPECT_FALSE(Parse({"256", "=1"}, error).has_value());
    EXPECT_EQ(error, "'=1' is not field=value");
}
