#include "foundation/PackageMetadata.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(PackageMetadata, TheNameAndTheVersionAreRead) {
    const auto metadata = PackageMetadata::parse(R"({"name":"quillgate","version":"1.0.0.1"})");
    ASSERT_TRUE(metadata.has_value());
    EXPECT_EQ(metadata->name, "quillgate");
    EXPECT_EQ(metadata->version, "1.0.0.1");
}

TEST(PackageMetadata, OtherMembersOfAnyKindAreSkipped) {
    const auto metadata = PackageMetadata::parse(
        " {\n \"type\" : \"deb\", \"os\": {\"name\": \"debian\", \"version\": [12, 1.5e3, -0.25]},"
        " \"debugInfoUrl\": null, \"stable\": true, \"old\": false,\t\"version\": \"4.5\" }\r\n");
    ASSERT_TRUE(metadata.has_value());
    EXPECT_EQ(metadata->name, std::nullopt);
    EXPECT_EQ(metadata->version, "4.5");
}

TEST(PackageMetadata, EscapesAreDecodedToUtf8) {
    const auto metadata =
        PackageMetadata::parse(R"({"name":"a\"b\\c\/d\n\u00e9\ud83d\ude00","version":"1.2"})");
    ASSERT_TRUE(metadata.has_value());
    EXPECT_EQ(metadata->name, "a\"b\\c/d\n\xc3\xa9\xf0\x9f\x98\x80");
}

TEST(PackageMetadata, AVersionThatIsNoTextIsNoVersion) {
    const auto metadata = PackageMetadata::parse(R"({"name":"x","version":1.2})");
    ASSERT_TRUE(metadata.has_value());
    EXPECT_EQ(metadata->version, std::nullopt);
}

TEST(PackageMetadata, ALaterMemberOfTheSameNameWins) {
    const auto metadata = PackageMetadata::parse(R"({"version":"1","version":"2"})");
    ASSERT_TRUE(metadata.has_value());
    EXPECT_EQ(metadata->version, "2");
}

TEST(PackageMetadata, AnythingButOneWellFormedObjectIsRefused) {
    for (const char* text : {"",
                             "[]",
                             "\"x\"",
                             "{",
                             "{\"version\":\"1\"",
                             "{\"version\":\"1\",}",
                             "{\"a\" 1}",
                             "{\"version\":\"1\"} x",
                             "{\"a\":\"\x01\"}",
                             "{\"a\":\"\\x\"}",
                             "{\"a\":\"\\ud800\"}",
                             "{\"a\":\"\\udc00\"}",
                             "{\"a\":\"\\u12\"}",
                             "{\"a\":tru}",
                             "{\"a\":01}",
                             "{\"a\":1.}",
                             "{\"a\":-}",
                             "{\"a\":1e}",
                             "{'a':1}",
                             "{\"a\":[1,]}",
                             "{\"a\":[1 2]}"})
        EXPECT_EQ(PackageMetadata::parse(text), std::nullopt) << text;
}

TEST(PackageMetadata, DeepNestingIsRefusedWithoutExhaustingTheStack) {
    const std::string deep = "{\"a\":" + std::string(100000, '[') + std::string(100000, ']') + "}";
    EXPECT_EQ(PackageMetadata::parse(deep), std::nullopt);
    const std::string fine = "{\"a\":" + std::string(32, '[') + std::string(32, ']') + "}";
    EXPECT_TRUE(PackageMetadata::parse(fine).has_value());
}

} // namespace
