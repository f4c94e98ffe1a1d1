// Base64 coding of the message classes' binary parts, including the decoder's settled
// behaviour on prefixes, carriage returns and bad input.
#include "foundation/Base64.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace {

ByteArray Bytes(std::string_view text) {
    ByteArray bytes;
    bytes.set(text.data(), static_cast<std::uint32_t>(text.size()));
    return bytes;
}

std::string Text(const ByteArray& bytes) {
    if (bytes.size() == 0)
        return {};
    return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

std::string Encoded(std::string_view plain) {
    ByteArray output;
    Base64Encode(Bytes(plain), output);
    return Text(output);
}

std::string Decoded(std::string_view encoded) {
    ByteArray output;
    Base64Decode(Bytes(encoded), output);
    return Text(output);
}

} // namespace

TEST(Base64Size, CountsWholeGroupsOfFour) {
    EXPECT_EQ(Base64Size(0), 0u);
    EXPECT_EQ(Base64Size(1), 4u);
    EXPECT_EQ(Base64Size(2), 4u);
    EXPECT_EQ(Base64Size(3), 4u);
    EXPECT_EQ(Base64Size(4), 8u);
    EXPECT_EQ(Base64Size(6), 8u);
    EXPECT_EQ(Base64Size(7), 12u);
    EXPECT_EQ(Base64Size(65536), 87384u);
}

TEST(Base64DecodedSize, IsThreeBytesPerWholeGroup) {
    EXPECT_EQ(Base64DecodedSize(0), 0u);
    EXPECT_EQ(Base64DecodedSize(3), 0u);
    EXPECT_EQ(Base64DecodedSize(4), 3u);
    EXPECT_EQ(Base64DecodedSize(7), 3u);
    EXPECT_EQ(Base64DecodedSize(8), 6u);
    EXPECT_EQ(Base64DecodedSize(13), 9u);
}

TEST(Base64Encode, OfNothingGivesAnEmptyOutput) {
    ByteArray output(5, 'x');
    Base64Encode(ByteArray(), output);
    EXPECT_EQ(output.size(), 0u);
    EXPECT_EQ(output.data(), nullptr);
}

TEST(Base64Encode, OfOneByteGivesTwoCharactersAndTwoPads) {
    EXPECT_EQ(Encoded("M"), "TQ==");
    EXPECT_EQ(Encoded(std::string_view("\0", 1)), "AA==");
}

TEST(Base64Encode, MatchesTheRfc4648TestVectors) {
    EXPECT_EQ(Encoded(""), "");
    EXPECT_EQ(Encoded("f"), "Zg==");
    EXPECT_EQ(Encoded("fo"), "Zm8=");
    EXPECT_EQ(Encoded("foo"), "Zm9v");
    EXPECT_EQ(Encoded("foob"), "Zm9vYg==");
    EXPECT_EQ(Encoded("fooba"), "Zm9vYmE=");
    EXPECT_EQ(Encoded("foobar"), "Zm9vYmFy");
}

TEST(Base64Encode, UsesPlusAndSlashAndNoLineBreaks) {
    EXPECT_EQ(Encoded("\xFB\xFF\xBF"), "+/+/");
    const std::string long_(1000, 'a');
    const std::string encoded = Encoded(long_);
    EXPECT_EQ(encoded.size(), Base64Size(1000));
    EXPECT_EQ(encoded.find_first_of("\r\n"), std::string::npos);
}

TEST(Base64Encode, ReplacesALargerOutputExactly) {
    ByteArray output(100, 'z');
    Base64Encode(Bytes("foo"), output);
    EXPECT_EQ(Text(output), "Zm9v");
}

TEST(Base64Encode, MayWriteIntoItsOwnInput) {
    ByteArray bytes = Bytes("foobar");
    Base64Encode(bytes, bytes);
    EXPECT_EQ(Text(bytes), "Zm9vYmFy");
}

TEST(Base64Decode, ReadsTheRfc4648TestVectors) {
    EXPECT_EQ(Decoded("Zg=="), "f");
    EXPECT_EQ(Decoded("Zm8="), "fo");
    EXPECT_EQ(Decoded("Zm9v"), "foo");
    EXPECT_EQ(Decoded("Zm9vYg=="), "foob");
    EXPECT_EQ(Decoded("Zm9vYmE="), "fooba");
    EXPECT_EQ(Decoded("Zm9vYmFy"), "foobar");
}

TEST(Base64Decode, SkipsALeadingPlusAndBlank) {
    EXPECT_EQ(Decoded("+ QUJD"), "ABC");
    EXPECT_EQ(Decoded("QUJD"), "ABC");
    EXPECT_EQ(Decoded("+ Zm9vYmFy"), "foobar");
}

TEST(Base64Decode, TakesAPlusWithoutBlankAsAlphabet) {
    // "+/+/" is the encoding of FB FF BF; only "+ " is a prefix.
    EXPECT_EQ(Decoded("+/+/"), "\xFB\xFF\xBF");
}

TEST(Base64Decode, StopsAtACarriageReturnWithTheBytesSoFar) {
    ByteArray output;
    Base64Decode(Bytes("QUJD\r"), output);
    EXPECT_EQ(output.size(), 3u);
    EXPECT_EQ(Text(output), "ABC");
    EXPECT_EQ(Decoded("QUJD\r\nZm9v"), "ABC");
    EXPECT_EQ(Decoded("+ QUJDZm9v\rQUJD"), "ABCfoo");
}

TEST(Base64Decode, LeavesTheOutputUntouchedWhenTheTextStartsWithACarriageReturn) {
    ByteArray output = Bytes("keep");
    Base64Decode(Bytes("\rQUJD"), output);
    EXPECT_EQ(Text(output), "keep");
    Base64Decode(Bytes("+ \rQUJD"), output);
    EXPECT_EQ(Text(output), "keep");
}

TEST(Base64Decode, OfNothingGivesAnEmptyOutput) {
    ByteArray output = Bytes("old");
    Base64Decode(ByteArray(), output);
    EXPECT_EQ(output.size(), 0u);
    Base64Decode(Bytes("+ "), output);
    EXPECT_EQ(output.size(), 0u);
}

TEST(Base64Decode, StopsAfterAPaddedGroup) {
    EXPECT_EQ(Decoded("QQ=="), "A");
    EXPECT_EQ(Decoded("QUI="), "AB");
    EXPECT_EQ(Decoded("QQ==QUJD"), "A");
    EXPECT_EQ(Decoded("QUI=QUJD"), "AB");
}

TEST(Base64Decode, APadInTheThirdPlaceEndsTheUseOfTheGroup) {
    // One byte from the group; its fourth byte is not read, and as it is no pad the
    // decoding goes on with the next group.
    EXPECT_EQ(Decoded("QQ=B"), "A");
    EXPECT_EQ(Decoded("QQ=BQUJD"), "AABC");
}

TEST(Base64Decode, AReusedOutputShowsNothingOfWhatItHeld) {
    ByteArray output(16, 0x5A);
    Base64Decode(Bytes("QUJD!QUJD"), output);
    ASSERT_EQ(output.size(), 6u);
    EXPECT_EQ(Text(output), std::string("ABC\0\0\0", 6));
}

TEST(Base64Decode, StopsAtAnInvalidByteKeepingTheFullSize) {
    // Nine bytes of room for thirteen characters; one group was written before the '!'.
    ByteArray output;
    Base64Decode(Bytes("QUJD!QUJDQUJD"), output);
    ASSERT_EQ(output.size(), 9u);
    EXPECT_EQ(Text(output), std::string("ABC\0\0\0\0\0\0", 9));
}

TEST(Base64Decode, StopsAtALineFeedKeepingTheFullSize) {
    ByteArray output;
    Base64Decode(Bytes("QUJD\nQUJD"), output);
    ASSERT_EQ(output.size(), 6u);
    EXPECT_EQ(Text(output), std::string("ABC\0\0\0", 6));
}

TEST(Base64Decode, RejectsPaddingInTheFirstTwoPlaces) {
    ByteArray output;
    Base64Decode(Bytes("=QUJ"), output);
    EXPECT_EQ(Text(output), std::string("\0\0\0", 3));
    Base64Decode(Bytes("Q=UJQUJD"), output);
    EXPECT_EQ(Text(output), std::string(6, '\0'));
}

TEST(Base64Decode, RejectsBytesOfValue128AndAbove) {
    ByteArray output;
    Base64Decode(Bytes("QUJD\xC3\x81JD"), output);
    EXPECT_EQ(Text(output), std::string("ABC\0\0\0", 6));
}

TEST(Base64Decode, RejectsTheUrlSafeAlphabetAndBlanks) {
    EXPECT_EQ(Decoded("QUJD-_-_"), std::string("ABC\0\0\0", 6));
    EXPECT_EQ(Decoded("QUJD QUJ"), std::string("ABC\0\0\0", 6));
}

TEST(Base64Decode, StopsAtAnUnfinishedLastGroup) {
    EXPECT_EQ(Decoded("QUJDQQ"), "ABC");
    EXPECT_EQ(Decoded("QUJ"), "");
    // "+ " counts in the size: ten characters give six bytes of room, one group is whole.
    ByteArray output;
    Base64Decode(Bytes("+ QUJDQUJ\r"), output);
    EXPECT_EQ(Text(output), std::string("ABC\0\0\0", 6));
}

TEST(Base64Decode, MayWriteIntoItsOwnInput) {
    ByteArray bytes = Bytes("Zm9vYmFy");
    Base64Decode(bytes, bytes);
    EXPECT_EQ(Text(bytes), "foobar");
}

TEST(Base64, RoundTripsRandomDataOfManyLengths) {
    std::mt19937 random(20240611);
    std::uniform_int_distribution<int> byte(0, 255);
    for (std::uint32_t length = 0; length < 600; ++length) {
        ByteArray plain(length, 0);
        for (std::uint32_t i = 0; i < length; ++i)
            plain.setAt(i, static_cast<std::uint8_t>(byte(random)));
        ByteArray encoded;
        Base64Encode(plain, encoded);
        ASSERT_EQ(encoded.size(), Base64Size(length));
        ByteArray decoded;
        Base64Decode(encoded, decoded);
        ASSERT_EQ(decoded.size(), length) << "length " << length;
        EXPECT_EQ(Text(decoded), Text(plain)) << "length " << length;
    }
}

TEST(Base64, RoundTripsEveryByteValueAndALargeBuffer) {
    ByteArray plain(256 * 1024 + 1, 0);
    for (std::uint32_t i = 0; i < plain.size(); ++i)
        plain.setAt(i, static_cast<std::uint8_t>(i * 7 + (i >> 8)));
    ByteArray encoded;
    Base64Encode(plain, encoded);
    ByteArray decoded;
    Base64Decode(encoded, decoded);
    EXPECT_EQ(Text(decoded), Text(plain));
}
