#include "localisation/IniFile.h"

#include "foundation/CFile.h"
#include "foundation/stdstr.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using TestSupport::SandboxRoot;

constexpr const char16_t* Missing = u"<missing>";

stdstr Wide(const std::string& text) {
    return stdstr::toTString(text);
}

std::string Narrow(const std::u16string& text) {
    return stdstr::fromTString(text);
}

// A language-file-like INI in the sandbox; returns its path.
std::string MakeIni(const SandboxRoot& root, const std::string& content,
                    const std::string& name = "test.ini") {
    root.writeFile(name, content);
    return root.file(name);
}

stdstr Get(CIniFileT<CFile>& ini, const char16_t* section, const char16_t* key) {
    stdstr out;
    ini.GetString(out, section, key, Missing);
    return out;
}

// A file whose every open for writing fails, as a file that may only be read.
class ReadOnlyFile : public CFile {
public:
    bool open(const char16_t* path, unsigned flags) override {
        if ((flags & 3u) != CFile::modeRead)
            return false;
        return CFile::open(path, flags);
    }
};

// Counts the bytes read, to see how much of the file a lookup touches.
class CountingFile : public CFile {
public:
    std::uint32_t read(void* buffer, std::uint32_t count) override {
        const std::uint32_t got = CFile::read(buffer, count);
        bytesRead += got;
        return got;
    }
    std::uint64_t bytesRead = 0;
};

// ---- cleaning of lines -----------------------------------------------------------------

TEST(IniFileRead, ALinkWithColonBeforeTheSlashesIsReadWhole) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nlink=http://host/\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"link"), u"http://host/");
}

TEST(IniFileRead, DoubleSlashWithoutColonEndsTheValue) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nv=a//b\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"a");
}

TEST(IniFileRead, ACommentBehindALinkStillCutsTheLine) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nv=http://host/x // note\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"http://host/x");
}

TEST(IniFileRead, ASingleSlashIsPartOfTheValue) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nv=a/b/c\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"a/b/c");
}

TEST(IniFileRead, ALineThatStartsWithACommentIsSkipped) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\n//v=1\r\nv=2\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"2");
}

TEST(IniFileRead, SemicolonAndHashAreNoComments) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\n;a=1\r\n#b=2\r\nc=3 ; 4 # 5\r\n")));
    EXPECT_EQ(Get(ini, u"S", u";a"), u"1");
    EXPECT_EQ(Get(ini, u"S", u"#b"), u"2");
    EXPECT_EQ(Get(ini, u"S", u"c"), u"3 ; 4 # 5");
}

TEST(IniFileRead, BlanksAroundTheEqualsSignBelongToKeyAndValue) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nkey = value\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"key"), Missing);
    EXPECT_EQ(Get(ini, u"S", u"key "), u" value");
}

TEST(IniFileRead, TrailingBlanksAndCarriageReturnsGoButTabsStay) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\nv=\tvalue\t  \r\r\nw=x \r \n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"\tvalue\t");
    EXPECT_EQ(Get(ini, u"S", u"w"), u"x");
}

TEST(IniFileRead, NothingIsTrimmedAtTheFrontOfALine) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\n  v=1\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), Missing);
    EXPECT_EQ(Get(ini, u"S", u"  v"), u"1");
}

TEST(IniFileRead, TheValueIsEverythingBehindTheFirstEqualsSign) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nv=a=b\r\ne=\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"a=b");
    EXPECT_EQ(Get(ini, u"S", u"e"), u"");
}

TEST(IniFileRead, ALineWithoutEqualsSignIsPassedOver) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\njust text\r\nv=1\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"just text"), Missing);
    EXPECT_EQ(Get(ini, u"S", u"v"), u"1");
}

TEST(IniFileRead, KeysAreComparedWithCase) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nKey=1\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"key"), Missing);
    EXPECT_EQ(Get(ini, u"S", u"Key"), u"1");
}

TEST(IniFileRead, TheFirstOfTwoEqualKeysWins) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nv=1\r\nv=2\r\n")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"1");
}

TEST(IniFileRead, TheNextSectionHeaderEndsTheSearch) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[A]\r\na=1\r\n[B]\r\nb=2\r\n")));
    EXPECT_EQ(Get(ini, u"A", u"b"), Missing);
    EXPECT_EQ(Get(ini, u"B", u"b"), u"2");
    EXPECT_EQ(Get(ini, u"B", u"a"), Missing);
}

TEST(IniFileRead, Utf8TextIsReadAsWideText) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[Général]\r\nSchlüssel=Français 日本語\r\n")));
    EXPECT_EQ(Get(ini, u"Général", u"Schlüssel"), u"Français 日本語");
}

TEST(IniFileRead, LinesWithOnlyLineFeedsWork) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\nv=1\nw=2\n")));
    EXPECT_EQ(Get(ini, u"S", u"w"), u"2");
}

// ---- sections ----------------------------------------------------------------------------

TEST(IniFileSection, AFileWithByteOrderMarkHasItsFirstSectionFound) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "\xEF\xBB\xBF[General]\r\nName=Deutsch\r\n")));
    EXPECT_EQ(Get(ini, u"General", u"Name"), u"Deutsch");
}

TEST(IniFileSection, AFirstLineBeforeAnySectionCannotBeRead) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "orphan=1\r\n[S]\r\nv=2\r\n")));
    EXPECT_EQ(Get(ini, u"", u"orphan"), Missing);
    EXPECT_EQ(Get(ini, u"S", u"orphan"), Missing);
    EXPECT_EQ(Get(ini, u"S", u"v"), u"2");
}

TEST(IniFileSection, ALastLineWithoutLineFeedIsLost) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[S]\r\nv=1\r\nlast=2")));
    EXPECT_EQ(Get(ini, u"S", u"v"), u"1");
    EXPECT_EQ(Get(ini, u"S", u"last"), Missing);
}

TEST(IniFileSection, AHeaderWithACommentBehindItIsFound) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[A]\r\n[X] // y\r\nv=1\r\n")));
    EXPECT_EQ(Get(ini, u"X", u"v"), u"1");
}

TEST(IniFileSection, ASectionNameOf300BytesIsCutAt299) {
    SandboxRoot root;
    const std::string longName(300, 'n');
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[" + longName + "]\r\nv=1\r\n")));
    EXPECT_EQ(Get(ini, Wide(longName).c_str(), u"v"), Missing);
    EXPECT_EQ(Get(ini, Wide(longName.substr(0, 299)).c_str(), u"v"), u"1");
}

TEST(IniFileSection, ASectionNameOf299BytesIsKept) {
    SandboxRoot root;
    const std::string name(299, 'n');
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[" + name + "]\r\nv=1\r\n")));
    EXPECT_EQ(Get(ini, Wide(name).c_str(), u"v"), u"1");
    EXPECT_EQ(Get(ini, Wide(name.substr(0, 298)).c_str(), u"v"), Missing);
}

TEST(IniFileSection, AnEmptyOrNullSectionNameMeansDefault) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[other]\r\nv=0\r\n[default]\r\nv=1\r\n")));
    EXPECT_EQ(Get(ini, u"", u"v"), u"1");
    EXPECT_EQ(Get(ini, nullptr, u"v"), u"1");
}

TEST(IniFileSection, WritingWithAnEmptySectionNameWritesToDefault) {
    SandboxRoot root;
    const std::string path = MakeIni(root, "");
    {
        CIniFileT<CFile> ini(Wide(path));
        ini.WriteString(u"", u"v", u"1");
    }
    EXPECT_EQ(SandboxRoot::readFile(path), "\r\n[default]\r\nv=1\r\n");
}

TEST(IniFileSection, AScanFindsASectionWhateverTheCase) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[General]\r\nv=1\r\n")));
    EXPECT_EQ(Get(ini, u"GENERAL", u"v"), u"1");
}

TEST(IniFileSection, AnIndexedSectionIsFoundAgainOnlyWithItsCase) {
    // The index compares with case and the scan goes on only behind the last indexed
    // section, so a wrong case no longer finds a section once a later one was indexed.
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[Alpha]\r\na=1\r\n[Beta]\r\nb=2\r\n")));
    EXPECT_EQ(Get(ini, u"Beta", u"b"), u"2");
    EXPECT_EQ(Get(ini, u"Alpha", u"a"), u"1");
    EXPECT_EQ(Get(ini, u"alpha", u"a"), Missing);

    CIniFileT<CFile> fresh(Wide(root.file("test.ini")));
    EXPECT_EQ(Get(fresh, u"alpha", u"a"), u"1");
}

TEST(IniFileSection, TheLastSectionFoundIsCheckedWithCase) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[Alpha]\r\na=1\r\n")));
    EXPECT_EQ(Get(ini, u"Alpha", u"a"), u"1");
    // Not the cached section (case differs) and nothing left to scan.
    EXPECT_EQ(Get(ini, u"ALPHA", u"a"), Missing);
}

TEST(IniFileSection, AMissingSectionGivesTheDefault) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[A]\r\nv=1\r\n")));
    stdstr out = u"old";
    ini.GetString(out, u"B", u"v", u"dflt");
    EXPECT_EQ(out, u"dflt");
    ini.GetString(out, u"B", u"v", nullptr);
    EXPECT_EQ(out, u"");
}

TEST(IniFileSection, RepeatedLookupsDoNotRescanTheFile) {
    SandboxRoot root;
    std::string content;
    for (int s = 0; s < 50; ++s) {
        content += "[Section" + std::to_string(s) + "]\r\n";
        for (int k = 0; k < 100; ++k)
            content += "Key" + std::to_string(k) + "=Value of key " + std::to_string(k) + "\r\n";
    }
    const std::string path = MakeIni(root, content);
    CIniFileT<CountingFile> ini(Wide(path));
    stdstr out;
    ini.GetString(out, u"Section49", u"Key5", Missing);
    ASSERT_EQ(out, u"Value of key 5");
    const std::uint64_t firstLookup = ini.File().bytesRead;
    EXPECT_GE(firstLookup, content.size() * 95 / 100);

    ini.File().bytesRead = 0;
    ini.GetString(out, u"Section49", u"Key6", Missing);
    EXPECT_EQ(out, u"Value of key 6");
    ini.GetString(out, u"Section10", u"Key6", Missing); // indexed on the way
    EXPECT_EQ(out, u"Value of key 6");
    ini.GetString(out, u"Section49", u"Key7", Missing);
    EXPECT_EQ(out, u"Value of key 7");
    EXPECT_LT(ini.File().bytesRead, content.size() / 10);
}

TEST(IniFileSection, AMissingSectionIsAnsweredFromTheIndexOnceTheFileWasScanned) {
    SandboxRoot root;
    std::string content;
    for (int s = 0; s < 20; ++s)
        content += "[S" + std::to_string(s) + "]\r\nv=1\r\n" + std::string(500, ';') + "\r\n";
    // A long last section: a scan that went on behind its header would read all of it.
    for (int k = 0; k < 200; ++k)
        content += "k" + std::to_string(k) + "=some value\r\n";
    CIniFileT<CountingFile> ini(Wide(MakeIni(root, content)));
    stdstr out;
    ini.GetString(out, u"Nope", u"v", Missing);
    EXPECT_EQ(out, Missing);
    ini.File().bytesRead = 0;
    ini.GetString(out, u"Nope", u"v", Missing);
    EXPECT_EQ(out, Missing);
    EXPECT_LT(ini.File().bytesRead, 2048u);
}

// ---- GetSection ----------------------------------------------------------------------------

TEST(IniFileGetSection, EveryEntryOfTheSectionIsReturned) {
    SandboxRoot root;
    CIniFileT<CFile> ini(
        Wide(MakeIni(root, "[A]\r\nx=0\r\n[B]\r\nb=2\r\n// c=3\r\nno equals\r\na=1 // note\r\n"
                           "b=second\r\nk\r\n=empty key\r\n[C]\r\nc=4\r\n")));
    std::map<stdstr, stdstr> entries;
    ini.GetSection(u"B", entries);
    const std::map<stdstr, stdstr> expected{{u"a", u"1"}, {u"b", u"2"}, {u"", u"empty key"}};
    EXPECT_EQ(entries, expected);
}

TEST(IniFileGetSection, AMissingSectionAddsNothing) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(MakeIni(root, "[A]\r\nx=0\r\n")));
    std::map<stdstr, stdstr> entries{{u"kept", u"1"}};
    ini.GetSection(u"B", entries);
    EXPECT_EQ(entries.size(), 1u);
}

// ---- opening -----------------------------------------------------------------------------

TEST(IniFileOpen, AMissingFileIsCreatedEmpty) {
    SandboxRoot root;
    const std::string path = root.file("new.ini");
    CIniFileT<CFile> ini(Wide(path));
    EXPECT_TRUE(ini.IsOpen());
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    EXPECT_EQ(Get(ini, u"S", u"v"), Missing);
}

TEST(IniFileOpen, AFileThatCannotBeOpenedGivesDefaultsAndNothing) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(root.file("no/such/folder/x.ini")));
    EXPECT_FALSE(ini.IsOpen());
    EXPECT_EQ(Get(ini, u"S", u"v"), Missing);
    std::map<stdstr, stdstr> entries;
    ini.GetSection(u"S", entries);
    EXPECT_TRUE(entries.empty());
    ini.WriteString(u"S", u"v", u"1"); // tries to open again, fails quietly
    EXPECT_FALSE(ini.IsOpen());
}

TEST(IniFileOpen, AFolderIsNotAFile) {
    SandboxRoot root;
    CIniFileT<CFile> ini(Wide(root.path()));
    EXPECT_FALSE(ini.IsOpen());
}

TEST(IniFileOpen, AFileThatMayOnlyBeReadIsReadAndNotChanged) {
    SandboxRoot root;
    const std::string content = "[S]\r\nv=1\r\n";
    const std::string path = MakeIni(root, content);
    CIniFileT<ReadOnlyFile> ini(Wide(path));
    ASSERT_TRUE(ini.IsOpen());
    stdstr out;
    EXPECT_EQ(ini.GetString(out, u"S", u"v", Missing), u"1");
    ini.WriteString(u"S", u"v", u"22");
    ini.WriteString(u"S", u"w", u"3");
    ini.WriteString(u"T", u"w", u"3");
    ini.WriteString(u"S", u"v", nullptr);
    EXPECT_EQ(SandboxRoot::readFile(path), content);
    EXPECT_EQ(ini.GetString(out, u"S", u"v", Missing), u"1");
}

// ---- writing ------------------------------------------------------------------------------

class IniFileWrite : public ::testing::Test {
protected:
    std::string Write(const std::string& content,
                      const std::function<void(CIniFileT<CFile>&)>& edit) {
        const std::string path = MakeIni(m_root, content);
        {
            CIniFileT<CFile> ini(Wide(path));
            edit(ini);
        }
        return SandboxRoot::readFile(path);
    }
    SandboxRoot m_root;
};

TEST_F(IniFileWrite, AValueOfTheSameLengthIsReplacedInPlace) {
    EXPECT_EQ(Write("[S]\r\na=1\r\nb=2\r\n", [](auto& ini) { ini.WriteString(u"S", u"a", u"9"); }),
              "[S]\r\na=9\r\nb=2\r\n");
}

TEST_F(IniFileWrite, ALongerValueMovesTheRestDown) {
    EXPECT_EQ(Write("[S]\r\na=1\r\nb=2\r\n[T]\r\nc=3\r\n",
                    [](auto& ini) { ini.WriteString(u"S", u"a", u"longer value"); }),
              "[S]\r\na=longer value\r\nb=2\r\n[T]\r\nc=3\r\n");
}

TEST_F(IniFileWrite, AShorterValueMovesTheRestUp) {
    EXPECT_EQ(Write("[S]\r\na=long value\r\nb=2\r\n[T]\r\nc=3\r\n",
                    [](auto& ini) { ini.WriteString(u"S", u"a", u"x"); }),
              "[S]\r\na=x\r\nb=2\r\n[T]\r\nc=3\r\n");
}

TEST_F(IniFileWrite, AWholeOldLineIsReplacedWithItsCommentAndLineEnd) {
    EXPECT_EQ(Write("[S]\na=1 // why\nb=2\n", [](auto& ini) { ini.WriteString(u"S", u"a", u"3"); }),
              "[S]\na=3\r\nb=2\n");
}

TEST_F(IniFileWrite, ANewKeyBecomesTheFirstLineOfItsSection) {
    EXPECT_EQ(Write("[S]\r\na=1\r\n[T]\r\nc=3\r\n",
                    [](auto& ini) { ini.WriteString(u"T", u"new", u"x"); }),
              "[S]\r\na=1\r\n[T]\r\nnew=x\r\nc=3\r\n");
}

TEST_F(IniFileWrite, AMissingSectionIsAppendedWithLineEndsAroundItsHeader) {
    EXPECT_EQ(Write("[S]\r\na=1\r\n", [](auto& ini) { ini.WriteString(u"New", u"k", u"v"); }),
              "[S]\r\na=1\r\n\r\n[New]\r\nk=v\r\n");
}

TEST_F(IniFileWrite, AnAppendedSectionEndsALastLineThatHadNoLineFeed) {
    EXPECT_EQ(Write("[S]\r\na=1", [](auto& ini) { ini.WriteString(u"S", u"b", u"2"); }),
              "[S]\r\nb=2\r\na=1");
    EXPECT_EQ(Write("[S]", [](auto& ini) { ini.WriteString(u"S", u"b", u"2"); }),
              "[S]\r\n[S]\r\nb=2\r\n");
}

TEST_F(IniFileWrite, TheKeyOfAWriteIsComparedWithoutCase) {
    SandboxRoot& root = m_root;
    const std::string path = MakeIni(root, "[S]\r\nKey=1\r\n");
    CIniFileT<CFile> ini(Wide(path));
    ini.WriteString(u"S", u"key", u"2");
    EXPECT_EQ(SandboxRoot::readFile(path), "[S]\r\nkey=2\r\n");
    // The file now spells it "key"; the read compares with case.
    EXPECT_EQ(Get(ini, u"S", u"key"), u"2");
    EXPECT_EQ(Get(ini, u"S", u"Key"), Missing);
}

TEST_F(IniFileWrite, AKeyUpdatedThroughAnotherCaseIsNotFoundByItsOldSpelling) {
    SandboxRoot& root = m_root;
    const std::string path = MakeIni(root, "[S]\r\nKey=1\r\n");
    CIniFileT<CFile> ini(Wide(path));
    ini.WriteString(u"S", u"KEY", u"2");
    EXPECT_EQ(Get(ini, u"S", u"Key"), Missing);
    EXPECT_EQ(Get(ini, u"S", u"KEY"), u"2");
}

TEST_F(IniFileWrite, ANullValueDeletesTheKeyWhateverItsCase) {
    EXPECT_EQ(Write("[S]\r\na=1\r\nKey=2\r\nb=3\r\n[T]\r\nkey=4\r\n",
                    [](auto& ini) { ini.WriteString(u"S", u"key", nullptr); }),
              "[S]\r\na=1\r\nb=3\r\n[T]\r\nkey=4\r\n");
}

TEST_F(IniFileWrite, DeletingAMissingKeyChangesNothing) {
    const std::string content = "[S]\r\na=1\r\n[T]\r\nb=2\r\n";
    EXPECT_EQ(Write(content, [](auto& ini) { ini.WriteString(u"S", u"b", nullptr); }), content);
}

TEST_F(IniFileWrite, DeletingAKeyOfAMissingSectionDoesNotCreateTheSection) {
    const std::string content = "[S]\r\na=1\r\n";
    EXPECT_EQ(Write(content, [](auto& ini) { ini.WriteString(u"Missing", u"a", nullptr); }),
              content);
    EXPECT_EQ(Write("", [](auto& ini) { ini.WriteString(u"Missing", u"a", nullptr); }), "");
}

TEST_F(IniFileWrite, WriteIntFormatsTheNumberInDecimal) {
    EXPECT_EQ(Write("[S]\r\n",
                    [](auto& ini) {
                        ini.WriteInt(u"S", u"n", -42);
                        ini.WriteInt(u"S", u"m", 2147483647);
                    }),
              "[S]\r\nm=2147483647\r\nn=-42\r\n");
}

TEST_F(IniFileWrite, WideTextIsWrittenAsUtf8) {
    EXPECT_EQ(Write("", [](auto& ini) { ini.WriteString(u"Général", u"Schlüssel", u"日本語"); }),
              "\r\n[Général]\r\nSchlüssel=日本語\r\n");
}

TEST_F(IniFileWrite, ReadsAfterWritesSeeTheMovedSections) {
    const std::string path = MakeIni(m_root, "[A]\r\na=1\r\n[B]\r\nb=2\r\n[C]\r\nc=3\r\n");
    CIniFileT<CFile> ini(Wide(path));
    // Index all three, then move B and C around by writes in A.
    EXPECT_EQ(Get(ini, u"C", u"c"), u"3");
    ini.WriteString(u"A", u"a", u"a much longer value than before");
    EXPECT_EQ(Get(ini, u"B", u"b"), u"2");
    EXPECT_EQ(Get(ini, u"C", u"c"), u"3");
    ini.WriteString(u"A", u"a", nullptr);
    EXPECT_EQ(Get(ini, u"C", u"c"), u"3");
    EXPECT_EQ(Get(ini, u"B", u"b"), u"2");
    ini.WriteString(u"A", u"new", u"x");
    EXPECT_EQ(Get(ini, u"C", u"c"), u"3");
    EXPECT_EQ(Get(ini, u"A", u"new"), u"x");
    ini.WriteString(u"D", u"d", u"4");
    EXPECT_EQ(Get(ini, u"D", u"d"), u"4");
    EXPECT_EQ(Get(ini, u"B", u"b"), u"2");
    EXPECT_EQ(SandboxRoot::readFile(path),
              "[A]\r\nnew=x\r\n[B]\r\nb=2\r\n[C]\r\nc=3\r\n\r\n[D]\r\nd=4\r\n");
}

// The whole file after many changes, inserts and deletes in a large file, byte for byte,
// against the same edits made on a list of lines.
TEST_F(IniFileWrite, ManyWritesInALargeFileGiveExactlyTheExpectedText) {
    constexpr int Sections = 10;
    constexpr int KeysPerSection = 499; // with the headers: 5,000 lines
    std::vector<std::string> lines;
    auto keyName = [](int s, int k) {
        return "Key_" + std::to_string(s) + "_" + std::to_string(k);
    };
    for (int s = 0; s < Sections; ++s) {
        lines.push_back("[Section" + std::to_string(s) + "]");
        for (int k = 0; k < KeysPerSection; ++k)
            lines.push_back(keyName(s, k) + "=The sentence number " + std::to_string(k) +
                            " of section " + std::to_string(s) + ", long enough to move.");
    }
    ASSERT_EQ(lines.size(), 5000u);
    auto join = [](const std::vector<std::string>& all) {
        std::string text;
        for (const auto& line : all)
            text += line + "\r\n";
        return text;
    };
    const std::string path = MakeIni(m_root, join(lines));
    ASSERT_GT(std::filesystem::file_size(path), 3u * 64 * 1024); // several move pieces

    auto findLine = [&](int s, int k) {
        const std::string start = keyName(s, k) + "=";
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (lines[i].starts_with(start))
                return i;
        return lines.size();
    };
    auto headerLine = [&](int s) {
        const std::string header = "[Section" + std::to_string(s) + "]";
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (lines[i] == header)
                return i;
        return lines.size();
    };

    {
        CIniFileT<CFile> ini(Wide(path));
        for (int round = 0; round < 60; ++round) {
            const int s = (round * 7) % Sections;
            const int k = (round * 37) % KeysPerSection;
            const std::string key = keyName(s, k);
            switch (round % 4) {
            case 0: { // longer
                const std::string value = "changed in round " + std::to_string(round) +
                                          std::string(static_cast<std::size_t>(round), '+');
                ini.WriteString(Wide("Section" + std::to_string(s)).c_str(), Wide(key).c_str(),
                                Wide(value).c_str());
                const std::size_t at = findLine(s, k);
                if (at < lines.size())
                    lines[at] = key + "=" + value;
                else
                    lines.insert(lines.begin() + static_cast<long>(headerLine(s)) + 1,
                                 key + "=" + value);
                break;
            }
            case 1: { // shorter
                ini.WriteString(Wide("Section" + std::to_string(s)).c_str(), Wide(key).c_str(),
                                u"s");
                const std::size_t at = findLine(s, k);
                if (at < lines.size())
                    lines[at] = key + "=s";
                else
                    lines.insert(lines.begin() + static_cast<long>(headerLine(s)) + 1, key + "=s");
                break;
            }
            case 2: { // delete
                ini.WriteString(Wide("Section" + std::to_string(s)).c_str(), Wide(key).c_str(),
                                nullptr);
                const std::size_t at = findLine(s, k);
                if (at < lines.size())
                    lines.erase(lines.begin() + static_cast<long>(at));
                break;
            }
            case 3: { // insert a new key
                const std::string fresh = "Added_" + std::to_string(round);
                ini.WriteString(Wide("Section" + std::to_string(s)).c_str(), Wide(fresh).c_str(),
                                Wide("new " + std::to_string(round)).c_str());
                lines.insert(lines.begin() + static_cast<long>(headerLine(s)) + 1,
                             fresh + "=new " + std::to_string(round));
                break;
            }
            }
            // Reads in between keep the index busy with moved sections.
            const int readSection = Sections - 1 - round % 3;
            const int readKey = (round * 13) % KeysPerSection;
            const std::size_t at = findLine(readSection, readKey);
            const std::string expected =
                at < lines.size() ? lines[at].substr(keyName(readSection, readKey).size() + 1)
                                  : Narrow(Missing);
            stdstr out;
            ini.GetString(out, Wide("Section" + std::to_string(readSection)).c_str(),
                          Wide(keyName(readSection, readKey)).c_str(), Missing);
            ASSERT_EQ(Narrow(out), expected) << "round " << round;
        }
    }
    const std::string actual = SandboxRoot::readFile(path);
    const std::string expected = join(lines);
    ASSERT_EQ(actual.size(), expected.size());
    EXPECT_TRUE(actual == expected);
}

} // namespace
