#include "foundation/CLogTextFile.h"

#include "foundation/SystemPaths.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using TestSupport::SandboxRoot;

std::u16string Wide(const std::string& path) {
    return stdstr::toTString(path);
}

std::string Bytes(const std::u16string& text) {
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2);
}

// What a roll keeps, worked out plainly on the bytes, to compare with the file.
std::string ExpectedAfterRoll(const std::string& before, std::uint32_t limit,
                              std::uint32_t margin) {
    const std::size_t keepFrom = before.size() - limit + margin;
    const std::size_t window = std::min<std::size_t>(300, before.size() - keepFrom);
    std::size_t skip = window;
    for (std::size_t i = 0; i < window; ++i) {
        if (before[keepFrom + i] == '\x0A') {
            skip = i + 1;
            break;
        }
    }
    return before.substr(keepFrom + skip);
}

TEST(CLogTextFile, ANewFileStartsWithTheByteOrderMark) {
    SandboxRoot root;
    CLogTextFile file;
    ASSERT_TRUE(file.Open(Wide(root.file("log.txt")).c_str(), 1));
    file.WriteText(u"A");
    file.close();
    EXPECT_EQ(SandboxRoot::readFile(root.file("log.txt")), std::string("\xFF\xFE"
                                                                       "A\0",
                                                                       4));
}

TEST(CLogTextFile, OpenModeOneKeepsTheFileAndWritesNoSecondMark) {
    SandboxRoot root;
    root.writeFile("log.txt", std::string("\xFF\xFE"
                                          "A\0",
                                          4));
    CLogTextFile file;
    ASSERT_TRUE(file.Open(Wide(root.file("log.txt")).c_str(), 1));
    file.WriteText(u"B");
    file.close();
    EXPECT_EQ(SandboxRoot::readFile(root.file("log.txt")), std::string("\xFF\xFE"
                                                                       "A\0B\0",
                                                                       6));
}

TEST(CLogTextFile, OpenModesZeroAndTwoEmptyTheFileAndWriteAFreshMark) {
    for (int mode : {0, 2}) {
        SandboxRoot root;
        root.writeFile("log.txt", std::string("\xFF\xFE"
                                              "A\0B\0",
                                              6));
        CLogTextFile file;
        ASSERT_TRUE(file.Open(Wide(root.file("log.txt")).c_str(), mode));
        file.WriteText(u"C");
        file.close();
        EXPECT_EQ(SandboxRoot::readFile(root.file("log.txt")), std::string("\xFF\xFE"
                                                                           "C\0",
                                                                           4))
            << "open mode " << mode;
    }
}

TEST(CLogTextFile, ANullPathFails) {
    CLogTextFile file;
    EXPECT_FALSE(file.Open(nullptr, 1));
}

TEST(CLogTextFile, AFileThatCannotBeOpenedDropsText) {
    SandboxRoot root;
    CLogTextFile file;
    EXPECT_FALSE(file.Open(Wide(root.file("no/such/folder/log.txt")).c_str(), 1));
    file.WriteText(u"lost"); // must not crash
    EXPECT_FALSE(file.isOpen());
}

TEST(CLogTextFile, SetMaxSizeTakesTenPerCentAsMargin) {
    CLogTextFile file;
    EXPECT_EQ(file.GetMaxSize(), 0xA00000u);
    EXPECT_EQ(file.GetMargin(), 0u);
    file.SetMaxSize(1005);
    EXPECT_EQ(file.GetMargin(), 100u);
    file.SetMaxSize(0x100000);
    EXPECT_EQ(file.GetMargin(), 0x19999u);
}

TEST(CLogTextFile, AFileOfExactlyTheLimitDoesNotRollTheNextWriteDoes) {
    SandboxRoot root;
    const std::string path = root.file("log.txt");
    CLogTextFile file;
    file.SetMaxSize(1000);
    ASSERT_TRUE(file.Open(Wide(path).c_str(), 0));
    std::u16string text;
    while (text.size() < 499) {
        const std::u16string line =
            u"line " + stdstr::toTString(std::to_string(text.size())) + u"\r\n";
        text += line;
    }
    text.resize(499); // two mark bytes and 499 characters: exactly 1000 bytes
    file.WriteText(text);
    EXPECT_EQ(file.getLength(), 1000);
    const std::string before = SandboxRoot::readFile(path);

    file.WriteText(u"Z");
    const std::string expected = ExpectedAfterRoll(before + std::string("Z\0", 2), 1000, 100);
    EXPECT_EQ(SandboxRoot::readFile(path), expected);
    // About limit - margin + what was written, less the skip.
    EXPECT_LE(file.getLength(), 1000 - 100 + 2);
    EXPECT_GT(file.getLength(), 1000 - 100 + 2 - 300);
}

TEST(CLogTextFile, TheRollStartsBehindTheLineFeedByteSoTheHighByteLeads) {
    SandboxRoot root;
    const std::string path = root.file("log.txt");
    CLogTextFile file;
    file.SetMaxSize(1000);
    ASSERT_TRUE(file.Open(Wide(path).c_str(), 0));
    for (int i = 0; i < 100; ++i)
        file.WriteText(u"abcdefghi\r\n");
    const std::string content = SandboxRoot::readFile(path);
    ASSERT_FALSE(content.empty());
    // The byte order mark is gone and no new one is written.
    EXPECT_EQ(content[0], '\0');
    EXPECT_NE(content.substr(0, 2), std::string("\xFF\xFE"));
    // From the second byte on the text is whole lines.
    std::u16string rest(reinterpret_cast<const char16_t*>(content.data() + 1),
                        (content.size() - 1) / 2);
    EXPECT_EQ(rest.substr(0, 11), u"abcdefghi\r\n");
    EXPECT_LE(content.size(), 1000u);
}

TEST(CLogTextFile, WithoutALineFeedInTheScanTheKeptPartStartsThreeHundredBytesOn) {
    SandboxRoot root;
    const std::string path = root.file("log.txt");
    CLogTextFile file;
    file.SetMaxSize(1000);
    ASSERT_TRUE(file.Open(Wide(path).c_str(), 0));
    file.WriteText(std::u16string(499, u'a'));
    ASSERT_EQ(file.getLength(), 1000);
    file.WriteText(std::u16string(10, u'b'));
    // L = 1020; the scan starts at 1020 - 1000 + 100 = 120 and finds nothing in 300 bytes.
    EXPECT_EQ(file.getLength(), 1020 - 120 - 300);
    const std::string content = SandboxRoot::readFile(path);
    EXPECT_EQ(content, Bytes(std::u16string(290, u'a') + std::u16string(10, u'b')));
}

TEST(CLogTextFile, RollingMovesFilesLargerThanOnePiece) {
    SandboxRoot root;
    const std::string path = root.file("log.txt");
    CLogTextFile file;
    file.SetMaxSize(0x20000);
    ASSERT_TRUE(file.Open(Wide(path).c_str(), 0));
    std::string everything("\xFF\xFE", 2);
    std::string expected;
    std::uint32_t rolls = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::u16string line =
            u"entry number " + stdstr::toTString(std::to_string(i)) + u"\r\n";
        const std::int64_t before = file.getLength();
        everything += Bytes(line);
        file.WriteText(line);
        if (file.getLength() < before) {
            ++rolls;
            everything = ExpectedAfterRoll(everything, 0x20000, file.GetMargin());
        }
    }
    EXPECT_GT(rolls, 0u);
    EXPECT_EQ(SandboxRoot::readFile(path), everything);
}

TEST(CLogTextFile, ARelativePathLandsInTheProgramFolder) {
    CLogTextFile file;
    // The test program's folder is the build folder, which is writable.
    const std::u16string name = u"qg-relative-log-test.txt";
    ASSERT_TRUE(file.Open(name.c_str(), 0));
    file.close();
    const std::string full = SystemPaths::ProgramFolder() + "/qg-relative-log-test.txt";
    EXPECT_EQ(SandboxRoot::readFile(full), std::string("\xFF\xFE"));
    std::remove(full.c_str());
}

} // namespace
