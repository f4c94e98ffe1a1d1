#include "foundation/ApplicationFinder.h"

#include "foundation/ElfPackageNote.h"
#include "foundation/PackageMetadata.h"

#include "ElfImage.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

using Corvane::ApplicationFinder;

struct Four {
    int first;
    int second;
    int third;
    int fourth;
    bool operator==(const Four&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Four& v) {
    return out << v.first << "," << v.second << "," << v.third << "," << v.fourth;
}

Four Parse(const std::u16string& text, Four start = {-7, -7, -7, -7}) {
    ApplicationFinder::parseVersionText(text, start.first, start.second, start.third, start.fourth);
    return start;
}

TEST(ApplicationFinder, DotsAndCommasBothSeparateTheNumbers) {
    EXPECT_EQ(Parse(u"1.2.3.4"), (Four{1, 2, 3, 4}));
    EXPECT_EQ(Parse(u"1, 2, 3, 4"), (Four{1, 2, 3, 4}));
    EXPECT_EQ(Parse(u"1,2,3,4"), (Four{1, 2, 3, 4}));
}

TEST(ApplicationFinder, AShortVersionLeavesTheOtherNumbersAsTheCallerGaveThem) {
    EXPECT_EQ(Parse(u"1.2.3", {0, 0, 0, 77}), (Four{1, 2, 3, 77}));
    EXPECT_EQ(Parse(u"9", {0, 5, 6, 7}), (Four{9, 5, 6, 7}));
    EXPECT_EQ(Parse(u"", {4, 3, 2, 1}), (Four{4, 3, 2, 1}));
}

TEST(ApplicationFinder, ATokenCountsByTheNumberAtItsStart) {
    EXPECT_EQ(Parse(u" 3 . 4b.x5.-2"), (Four{3, 4, 0, -2}));
    // Without a comma the whole text is the comma pass's one token, and it has no number.
    EXPECT_EQ(Parse(u"...", {4, 3, 2, 1}), (Four{0, 3, 2, 1}));
    EXPECT_EQ(Parse(u"2147483648.99999999999.-2147483649.+8"),
              (Four{INT_MAX, INT_MAX, INT_MIN, 8}));
}

TEST(ApplicationFinder, MoreThanFourNumbersAreIgnored) {
    EXPECT_EQ(Parse(u"10.20.30.40.50"), (Four{10, 20, 30, 40}));
}

TEST(ApplicationFinder, TheCommaPassEndsTheTextForTheDotPass) {
    // The comma pass reads 1, 2 (from "2.5") and 3; its terminators leave the dot pass only
    // "1", which it stores again.
    EXPECT_EQ(Parse(u"1,2.5,3"), (Four{1, 2, 3, -7}));
    // Leading commas are skipped by the comma pass but are part of the dot pass's first
    // token, which then starts with no number.
    EXPECT_EQ(Parse(u",,5.6"), (Four{0, 6, -7, -7}));
}

TEST(ApplicationFinder, ThisProgramHasTheProjectsVersion) {
    int first = 0;
    int second = 0;
    int third = 0;
    int fourth = 0;
    EXPECT_TRUE(
        ApplicationFinder().getFileVersion(u"/proc/self/exe", first, second, third, fourth));
    // The project's version in the top CMakeLists.txt.
    EXPECT_EQ((Four{first, second, third, fourth}), (Four{1, 0, 0, 1}));
    EXPECT_EQ(GetFileVersionText(u"/proc/self/exe"), u"1.0.0.1");
    const auto metadata = PackageMetadata::parse(*ElfPackageNote::textOfFile("/proc/self/exe"));
    ASSERT_TRUE(metadata.has_value());
    EXPECT_EQ(metadata->name, "ApplicationFinderTest");
}

TEST(ApplicationFinder, TheReferenceServiceHasItsNameAndTheProjectsVersion) {
    char self[PATH_MAX] = {};
    ASSERT_GT(::readlink("/proc/self/exe", self, sizeof self - 1), 0);
    const std::string qgsasvc =
        (std::filesystem::path(self).parent_path().parent_path().parent_path().parent_path() /
         "reference/service/qgsasvc")
            .string();
    if (::access(qgsasvc.c_str(), R_OK) != 0)
        GTEST_SKIP() << "qgsasvc is not built at " << qgsasvc;
    EXPECT_EQ(GetFileVersionText(stdstr::toTString(qgsasvc)), u"1.0.0.1");
    EXPECT_EQ(PackageMetadata::parse(*ElfPackageNote::textOfFile(qgsasvc))->name, "qgsasvc");
}

std::string Write(const TestSupport::SandboxRoot& sandbox, const std::string& name,
                  const std::vector<std::uint8_t>& bytes) {
    const std::string path = sandbox.file(name);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path;
}

std::vector<std::uint8_t> SelfImage() {
    std::ifstream in("/proc/self/exe", std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), {});
}

TEST(ApplicationFinder, AFileWithoutVersionHasAnEmptyVersionText) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("readme.txt", "no version here\n");
    EXPECT_EQ(GetFileVersionText(stdstr::toTString(sandbox.file("readme.txt"))), u"");
    EXPECT_EQ(GetFileVersionText(stdstr::toTString(sandbox.file("missing"))), u"");
    // This program with its note's owner renamed: an ELF file without the note.
    std::vector<std::uint8_t> image = SelfImage();
    const std::string owner("FDO\0", 4);
    const auto at = std::search(image.begin(), image.end(), owner.begin(), owner.end());
    ASSERT_NE(at, image.end());
    *at = 'X';
    EXPECT_EQ(GetFileVersionText(stdstr::toTString(Write(sandbox, "renamed", image))), u"");
}

TEST(ApplicationFinder, ANoteWithoutAVersionGivesNone) {
    TestSupport::SandboxRoot sandbox;
    for (const char* json : {R"({"name":"x"})", R"({"name":"x","version":3})", "not json"}) {
        ElfImageShape shape;
        shape.json = json;
        int first = 5;
        int fourth = 8;
        int other = 0;
        EXPECT_FALSE(ApplicationFinder().getFileVersion(
            stdstr::toTString(Write(sandbox, "image", ElfImage(shape).bytes())), first, other,
            other, fourth))
            << json;
        EXPECT_EQ(first, 5);
        EXPECT_EQ(fourth, 8);
    }
}

TEST(ApplicationFinder, AShortVersionInTheNoteLeavesTheFourthNumberAlone) {
    TestSupport::SandboxRoot sandbox;
    ElfImageShape shape;
    shape.json = R"({"name":"x","version":"1.2.3"})";
    const std::string path = Write(sandbox, "image", ElfImage(shape).bytes());
    int first = 0;
    int second = 0;
    int third = 0;
    int fourth = 42;
    EXPECT_TRUE(
        ApplicationFinder().getFileVersion(stdstr::toTString(path), first, second, third, fourth));
    EXPECT_EQ((Four{first, second, third, fourth}), (Four{1, 2, 3, 42}));
    EXPECT_EQ(GetFileVersionText(stdstr::toTString(path)), u"1.2.3.0");
}

TEST(ApplicationFinder, ATruncatedOrGarbledProgramGivesFalseWithoutCrashing) {
    TestSupport::SandboxRoot sandbox;
    const std::vector<std::uint8_t> image = SelfImage();
    ASSERT_GT(image.size(), 4096u);
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{3}, std::size_t{16}, std::size_t{63}, std::size_t{64},
          std::size_t{200}, std::size_t{700}}) {
        const std::vector<std::uint8_t> cut(image.begin(),
                                            image.begin() + static_cast<long>(length));
        int first = -1;
        int other = -1;
        EXPECT_FALSE(ApplicationFinder().getFileVersion(
            stdstr::toTString(Write(sandbox, "cut", cut)), first, other, other, other))
            << length;
        EXPECT_EQ(first, -1);
    }
    // Headers that point outside the file.
    std::vector<std::uint8_t> garbled = image;
    for (std::size_t i = 32; i < 64; ++i)
        garbled[i] = 0xff;
    EXPECT_EQ(GetFileVersionText(stdstr::toTString(Write(sandbox, "garbled", garbled))), u"");
}

} // namespace
