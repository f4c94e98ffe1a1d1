// The byte buffer: quiet out-of-range access, deep copies, and the resize rule that keeps
// the block when shrinking.
#include "foundation/ByteArray.h"

#include "foundation/stdstr.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

std::vector<std::uint8_t> Content(const ByteArray& bytes) {
    std::vector<std::uint8_t> content;
    for (std::uint32_t i = 0; i < bytes.size(); ++i)
        content.push_back(bytes.getAt(i));
    return content;
}

ByteArray FromList(std::initializer_list<std::uint8_t> values) {
    ByteArray bytes;
    const std::vector<std::uint8_t> copy(values);
    bytes.set(copy.data(), static_cast<std::uint32_t>(copy.size()));
    return bytes;
}

// Records the calls of the virtual `set`, to show that assignment and copying go through it.
class CountingByteArray : public ByteArray {
public:
    void set(const void* data, std::uint32_t size) override {
        ++calls;
        ByteArray::set(data, size);
    }
    int calls = 0;
};

} // namespace

TEST(ByteArray, StartsEmptyWithNoData) {
    const ByteArray bytes;
    EXPECT_EQ(bytes.size(), 0u);
    EXPECT_EQ(bytes.data(), nullptr);
    EXPECT_EQ(bytes.getAt(0), 0);
}

TEST(ByteArray, FillConstructorRepeatsTheValue) {
    const ByteArray bytes(4, 0xAB);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{0xAB, 0xAB, 0xAB, 0xAB}));
}

TEST(ByteArray, FillConstructorOfNoBytesHoldsNoData) {
    const ByteArray bytes(0, 7);
    EXPECT_EQ(bytes.size(), 0u);
    EXPECT_EQ(bytes.data(), nullptr);
}

TEST(ByteArray, TextConstructorStoresUtf8WithoutTerminator) {
    const ByteArray bytes(stdstr(u"a\u00E9\u20AC\U0001F600"));
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{'a', 0xC3, 0xA9, 0xE2, 0x82, 0xAC, 0xF0,
                                                         0x9F, 0x98, 0x80}));
    const ByteArray empty{stdstr()};
    EXPECT_EQ(empty.size(), 0u);
    EXPECT_EQ(empty.data(), nullptr);
}

TEST(ByteArray, CopyIsDeep) {
    ByteArray original = FromList({1, 2, 3});
    const ByteArray copy(original);
    original.setAt(0, 9);
    EXPECT_EQ(Content(copy), (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_NE(copy.data(), original.data());
}

TEST(ByteArray, AssignmentIsDeepAndGoesThroughSet) {
    const ByteArray source = FromList({4, 5});
    CountingByteArray target;
    static_cast<ByteArray&>(target) = source;
    EXPECT_EQ(target.calls, 1);
    EXPECT_EQ(Content(target), (std::vector<std::uint8_t>{4, 5}));
    EXPECT_NE(target.data(), source.data());
}

TEST(ByteArray, SelfAssignmentKeepsTheContent) {
    ByteArray bytes = FromList({1, 2, 3});
    ByteArray& alias = bytes;
    bytes = alias;
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(ByteArray, SetReplacesTheContentWithACopy) {
    ByteArray bytes(10, 1);
    const char text[] = "xyz";
    bytes.set(text, 3);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{'x', 'y', 'z'}));
    EXPECT_NE(static_cast<const void*>(bytes.data()), static_cast<const void*>(text));
}

TEST(ByteArray, SetWithNoDataOrNoSizeEmptiesTheArray) {
    ByteArray bytes(3, 1);
    bytes.set(nullptr, 5);
    EXPECT_EQ(bytes.size(), 0u);
    EXPECT_EQ(bytes.data(), nullptr);
    bytes = FromList({1});
    bytes.set("abc", 0);
    EXPECT_EQ(bytes.size(), 0u);
    EXPECT_EQ(bytes.data(), nullptr);
}

TEST(ByteArray, SetMayCopyFromItsOwnBytes) {
    ByteArray bytes = FromList({1, 2, 3, 4, 5});
    bytes.set(bytes.data(2), 3);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{3, 4, 5}));
}

TEST(ByteArray, DataGivesTheAddressOfAByteAndNullOutOfRange) {
    ByteArray bytes = FromList({1, 2, 3});
    ASSERT_NE(bytes.data(), nullptr);
    EXPECT_EQ(bytes.data(2), bytes.data() + 2);
    EXPECT_EQ(*bytes.data(1), 2);
    EXPECT_EQ(bytes.data(3), nullptr);
    EXPECT_EQ(bytes.data(0xFFFFFFFF), nullptr);
    const ByteArray& constant = bytes;
    EXPECT_EQ(constant.data(1), bytes.data(1));
    EXPECT_EQ(constant.data(3), nullptr);
}

TEST(ByteArray, GetAtOutOfRangeReadsZero) {
    const ByteArray bytes = FromList({7, 8});
    EXPECT_EQ(bytes.getAt(1), 8);
    EXPECT_EQ(bytes.getAt(2), 0);
    EXPECT_EQ(bytes.getAt(0xFFFFFFFF), 0);
}

TEST(ByteArray, SetAtOutOfRangeIsIgnored) {
    ByteArray bytes = FromList({7, 8});
    bytes.setAt(0, 1);
    bytes.setAt(2, 9);
    bytes.setAt(0xFFFFFFFF, 9);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{1, 8}));
}

TEST(ByteArray, GrowingKeepsTheContentAndFillsZeros) {
    ByteArray bytes = FromList({1, 2});
    bytes.resize(5);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{1, 2, 0, 0, 0}));
}

TEST(ByteArray, GrowingAnEmptyArrayGivesZeros) {
    ByteArray bytes;
    bytes.resize(3);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{0, 0, 0}));
}

TEST(ByteArray, ShrinkingOnlyLowersTheSize) {
    ByteArray bytes = FromList({1, 2, 3, 4});
    const std::uint8_t* block = bytes.data();
    bytes.resize(2);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{1, 2}));
    EXPECT_EQ(bytes.data(), block);
    EXPECT_EQ(bytes.data(2), nullptr);
    EXPECT_EQ(bytes.getAt(2), 0);
}

TEST(ByteArray, GrowingAgainWithinTheKeptBlockShowsTheOldBytes) {
    ByteArray bytes = FromList({1, 2, 3, 4});
    bytes.resize(1);
    bytes.resize(4);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{1, 2, 3, 4}));
    bytes.resize(0);
    EXPECT_EQ(bytes.data(), nullptr);
    bytes.resize(3);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(ByteArray, GrowingPastTheKeptBlockMakesANewZeroFilledBuffer) {
    // Only the bytes within the size travel to the new buffer; what an earlier shrink hid
    // is gone.
    ByteArray bytes = FromList({1, 2, 3, 4});
    bytes.resize(2);
    bytes.resize(6);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{1, 2, 0, 0, 0, 0}));
}

TEST(ByteArray, ClearFreesTheBlock) {
    ByteArray bytes = FromList({1, 2, 3});
    bytes.clear();
    EXPECT_EQ(bytes.size(), 0u);
    EXPECT_EQ(bytes.data(), nullptr);
    bytes.resize(2);
    EXPECT_EQ(Content(bytes), (std::vector<std::uint8_t>{0, 0}));
}

TEST(ByteArray, ToStringReadsTheBytesAsUtf8) {
    const ByteArray bytes = FromList({'a', 0xC3, 0xA9, 0xF0, 0x9F, 0x98, 0x80});
    EXPECT_EQ(bytes.toString(), stdstr(u"a\u00E9\U0001F600"));
}

TEST(ByteArray, ToStringOfNothingIsEmpty) {
    EXPECT_EQ(ByteArray().toString(), stdstr());
    ByteArray shrunk = FromList({'a'});
    shrunk.resize(0);
    EXPECT_EQ(shrunk.toString(), stdstr());
}

TEST(ByteArray, ToStringReplacesInvalidUtf8) {
    const ByteArray bytes = FromList({'a', 0xFF, 'b'});
    EXPECT_EQ(bytes.toString(), stdstr(u"a\uFFFDb"));
}

TEST(ByteArray, ToStringOfAShrunkArrayReadsOnlyItsSize) {
    ByteArray bytes = FromList({'a', 'b', 'c'});
    bytes.resize(2);
    EXPECT_EQ(bytes.toString(), stdstr(u"ab"));
}

TEST(ByteArray, DestroysThroughTheBase) {
    static_assert(std::has_virtual_destructor_v<ByteArray>);
    const std::unique_ptr<ByteArray> owned = std::make_unique<CountingByteArray>();
    owned->set("ab", 2);
    EXPECT_EQ(static_cast<CountingByteArray&>(*owned).calls, 1);
}
