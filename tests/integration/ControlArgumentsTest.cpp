// ControlArguments: the text list of a control frame, and a decoder that takes nothing for
// granted.
#include "service/ControlArguments.h"

#include <gtest/gtest.h>

TEST(ControlArguments, AreEachALittleEndianLengthAndTheBytes) {
    EXPECT_EQ(ControlArguments::encode({"ab", ""}), std::string("\x02\0\0\0ab\0\0\0\0", 10));
    EXPECT_EQ(ControlArguments::encode({}), "");
}

TEST(ControlArguments, ComeBackAsTheyWent) {
    const std::vector<std::string> arguments{"256", "animation=1", "", std::string("a\0b", 3)};
    EXPECT_EQ(ControlArguments::decode(ControlArguments::encode(arguments)), arguments);
}

TEST(ControlArguments, RefuseAPayloadCutShort) {
    const std::string whole = ControlArguments::encode({"abc"});
    for (std::size_t size = 1; size < whole.size(); ++size)
        EXPECT_FALSE(ControlArguments::decode(whole.substr(0, size)).has_value()) << size;
    EXPECT_FALSE(ControlArguments::decode(std::string("\xFF\xFF\xFF\xFF", 4)).has_value());
}

TEST(ControlArguments, RefuseMoreThanTheLimit) {
    const std::vector<std::string> many(ControlArguments::MaxArguments + 1, "x");
    EXPECT_FALSE(ControlArguments::decode(ControlArguments::encode(many)).has_value());
    const std::vector<std::string> enough(ControlArguments::MaxArguments, "x");
    EXPECT_EQ(ControlArguments::decode(ControlArguments::encode(enough)), enough);
}
