#include "foundation/FileString.h"

#include "foundation/BaseException.h"
#include "foundation/ErrorKeys.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace {

using TestSupport::SandboxRoot;

stdstr Wide(const std::string& path) {
    return stdstr::toTString(path);
}

// Runs `action`, which must throw BaseException, and hands back the exception.
template <class Action>
BaseException Thrown(Action action) {
    try {
        action();
    } catch (const BaseException& e) {
        return e;
    }
    ADD_FAILURE() << "no BaseException was thrown";
    return BaseException(u"", 0, 0, u"", u"nothing thrown");
}

} // namespace

TEST(FileString, OpenFileOfAnEmptyFileReturnsTrueAndLeavesTextAndFlagUntouched) {
    SandboxRoot root;
    root.writeFile("empty.txt", "");
    FileString text;
    text.setText(u"kept");
    text.setUnicode(true);
    EXPECT_TRUE(text.openFile(Wide(root.file("empty.txt"))));
    EXPECT_EQ(text.getText(), u"kept");
    EXPECT_TRUE(text.isUnicode());
}

TEST(FileString, AFileOfOneByteFFIsUtf8AndNotAMark) {
    SandboxRoot root;
    root.writeFile("ff.txt", "\xFF");
    FileString text;
    text.setUnicode(true);
    EXPECT_TRUE(text.openFile(Wide(root.file("ff.txt"))));
    EXPECT_FALSE(text.isUnicode());
    EXPECT_EQ(text.getText(), u"\uFFFD");
}

TEST(FileString, AMarkFFFEMakesTheRestUtf16LittleEndian) {
    SandboxRoot root;
    // "hé€" and one stray byte that does not make a character.
    root.writeFile("u16.txt", std::string("\xFF\xFEh\0\xE9\0\xAC\x20\x41", 9));
    FileString text;
    EXPECT_TRUE(text.openFile(Wide(root.file("u16.txt"))));
    EXPECT_TRUE(text.isUnicode());
    EXPECT_EQ(text.getText(), u"h\u00E9\u20AC");
}

TEST(FileString, AMarkFFFEAloneGivesAnEmptyUtf16Text) {
    SandboxRoot root;
    root.writeFile("mark.txt", "\xFF\xFE");
    FileString text;
    text.setText(u"old");
    EXPECT_TRUE(text.openFile(Wide(root.file("mark.txt"))));
    EXPECT_TRUE(text.isUnicode());
    EXPECT_EQ(text.getText(), u"");
}

TEST(FileString, AMarkEFBBBFIsDroppedAndTheRestReadAsUtf8) {
    SandboxRoot root;
    root.writeFile("u8.txt", "\xEF\xBB\xBFh\xC3\xA9\xE2\x82\xAC");
    FileString text;
    text.setUnicode(true);
    EXPECT_TRUE(text.openFile(Wide(root.file("u8.txt"))));
    EXPECT_FALSE(text.isUnicode());
    EXPECT_EQ(text.getText(), u"h\u00E9\u20AC");
}

TEST(FileString, WithoutAMarkEveryByteIsReadAsUtf8IncludingZeros) {
    SandboxRoot root;
    root.writeFile("plain.txt", std::string("a\0b\xC3\xA9\xFE", 6));
    FileString text;
    EXPECT_TRUE(text.openFile(Wide(root.file("plain.txt"))));
    EXPECT_FALSE(text.isUnicode());
    EXPECT_EQ(text.getText(), std::u16string(u"a\0b\u00E9\uFFFD", 5));
}

TEST(FileString, MaxBytesLimitsWhatIsReadAndMinusOneReadsAll) {
    SandboxRoot root;
    root.writeFile("a.txt", "0123456789");
    FileString text;
    EXPECT_TRUE(text.openFile(Wide(root.file("a.txt")), false, 4));
    EXPECT_EQ(text.getText(), u"0123");
    EXPECT_TRUE(text.openFile(Wide(root.file("a.txt")), false, 100));
    EXPECT_EQ(text.getText(), u"0123456789");
    EXPECT_TRUE(text.openFile(Wide(root.file("a.txt")), false, 4));
    EXPECT_TRUE(text.openFile(Wide(root.file("a.txt")), false, FileString::WholeFile));
    EXPECT_EQ(text.getText(), u"0123456789");
}

TEST(FileString, MaxBytesOfZeroLeavesTheTextAsItWas) {
    SandboxRoot root;
    root.writeFile("a.txt", "0123456789");
    FileString text;
    text.setText(u"kept");
    EXPECT_TRUE(text.openFile(Wide(root.file("a.txt")), false, 0));
    EXPECT_EQ(text.getText(), u"kept");
}

TEST(FileString, OpenFileOfAMissingFileThrowsWithTheKeyThePathAndTheSystemText) {
    SandboxRoot root;
    const stdstr path = Wide(root.file("missing.txt"));
    FileString text;
    const BaseException e = Thrown([&] { text.openFile(path); });
    EXPECT_EQ(e.GetMessage(), u"QGOpenFile##" + path + u"##" + GetOSErrorText(ENOENT));
    EXPECT_EQ(e.GetMessage(),
              u"QGOpenFile##" + path + u"##Windows OS Error: No such file or directory");
    EXPECT_EQ(e.GetCode(), -1);
    // The opening path reports itself under the saving function's name.
    EXPECT_EQ(e.GetFullMessage(), u"FileString::saveFile() - " + e.GetMessage());
    // The path is remembered even though the file could not be opened.
    EXPECT_EQ(text.path(), path);
}

TEST(FileString, OpenFileOfAFolderThrowsWithTheSystemText) {
    SandboxRoot root;
    const stdstr path = Wide(root.path());
    FileString text;
    const BaseException e = Thrown([&] { text.openFile(path); });
    EXPECT_EQ(e.GetMessage(), u"QGOpenFile##" + path + u"##" + GetOSErrorText(EISDIR));
    EXPECT_EQ(e.GetFullMessage(), u"FileString::saveFile() - " + e.GetMessage());
}

TEST(FileString, OpenFileOfAnEmptyPathThrows) {
    FileString text;
    const BaseException e = Thrown([&] { text.openFile(u""); });
    EXPECT_EQ(e.GetMessage(), u"QGOpenFile####" + GetOSErrorText(ENOENT));
}

TEST(FileString, OpenFileWithCreateIfMissingCreatesAnEmptyFile) {
    SandboxRoot root;
    FileString text;
    text.setText(u"kept");
    EXPECT_TRUE(text.openFile(Wide(root.file("new.txt")), true));
    EXPECT_EQ(text.getText(), u"kept");
    EXPECT_EQ(SandboxRoot::readFile(root.file("new.txt")), "");
    EXPECT_EQ(text.path(), Wide(root.file("new.txt")));
}

TEST(FileString, GetLineSplitsAtLineFeedsAndDropsTheCarriageReturnBeforeThem) {
    FileString text;
    text.setText(u"a\r\nb");
    stdstr line;
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"a");
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"b");
    line = u"unchanged";
    EXPECT_FALSE(text.getLine(line));
    EXPECT_EQ(line, u"unchanged");
}

TEST(FileString, GetLineGivesEmptyLinesAndNoLineAfterAClosingLineFeed) {
    FileString text;
    text.setText(u"\n\r\nx\n");
    stdstr line;
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"");
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"");
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"x");
    EXPECT_FALSE(text.getLine(line));
}

TEST(FileString, GetLineKeepsACarriageReturnThatNoLineFeedFollows) {
    FileString text;
    text.setText(u"a\rb\r");
    stdstr line;
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"a\rb\r");
    EXPECT_FALSE(text.getLine(line));
}

TEST(FileString, GetLineOnAnEmptyTextIsFalse) {
    FileString text;
    stdstr line;
    EXPECT_FALSE(text.getLine(line));
}

TEST(FileString, SetTextStartsReadingAgainAndAppendTextDoesNot) {
    FileString text;
    text.setText(u"one\ntwo");
    stdstr line;
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"one");
    text.appendText(u"\nthree");
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"two");
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"three");
    EXPECT_FALSE(text.getLine(line));

    text.setText(u"again");
    EXPECT_TRUE(text.getLine(line));
    EXPECT_EQ(line, u"again");
    EXPECT_EQ(text.getText(), u"again");
}

TEST(FileString, GetTextIsAReferenceToTheText) {
    FileString text;
    text.setText(u"abc");
    text.getText() += u"d";
    EXPECT_EQ(text.getText(), u"abcd");
}

TEST(FileString, SaveFileOfAUtf16TextWritesTheMarkAndLittleEndianUnits) {
    SandboxRoot root;
    root.writeFile("in.txt", std::string("\xFF\xFEh\0\xE9\0", 6));
    FileString text;
    ASSERT_TRUE(text.openFile(Wide(root.file("in.txt"))));
    text.appendText(u"\u20AC");
    EXPECT_TRUE(text.saveFile(Wide(root.file("out.txt"))));
    EXPECT_EQ(SandboxRoot::readFile(root.file("out.txt")),
              std::string("\xFF\xFEh\0\xE9\0\xAC\x20", 8));
}

TEST(FileString, SaveFileOfATextReadAsUtf8WritesNoMarkEvenIfTheFileHadOne) {
    SandboxRoot root;
    root.writeFile("in.txt", "\xEF\xBB\xBFh\xC3\xA9");
    FileString text;
    ASSERT_TRUE(text.openFile(Wide(root.file("in.txt"))));
    EXPECT_TRUE(text.saveFile(Wide(root.file("out.txt"))));
    EXPECT_EQ(SandboxRoot::readFile(root.file("out.txt")), "h\xC3\xA9");
}

TEST(FileString, SaveFileWithAnEmptyPathWritesTheStoredPath) {
    SandboxRoot root;
    root.writeFile("a.txt", "first version, longer");
    FileString text;
    ASSERT_TRUE(text.openFile(Wide(root.file("a.txt"))));
    text.setText(u"second");
    EXPECT_TRUE(text.saveFile(u""));
    EXPECT_EQ(SandboxRoot::readFile(root.file("a.txt")), "second");
}

TEST(FileString, SaveFileWithoutAnyPathReturnsFalse) {
    FileString text;
    text.setText(u"x");
    EXPECT_FALSE(text.saveFile(u""));
    EXPECT_FALSE(text.saveFile(u"", 65001));
    text.setUnicode(true);
    EXPECT_FALSE(text.saveFile(u""));
}

TEST(FileString, SaveFileInACodePageWritesUpToTheFirstZeroByteAndNoMark) {
    SandboxRoot root;
    FileString text;
    text.setText(std::u16string(u"ab\u00E9\0cd", 6));
    EXPECT_TRUE(text.saveFile(Wide(root.file("u8.txt")), 65001));
    EXPECT_EQ(SandboxRoot::readFile(root.file("u8.txt")), "ab\xC3\xA9");
    EXPECT_TRUE(text.saveFile(Wide(root.file("cp1252.txt")), 1252));
    EXPECT_EQ(SandboxRoot::readFile(root.file("cp1252.txt")), "ab\xE9");
}

TEST(FileString, SaveFileInACodePageIgnoresTheUtf16Flag) {
    SandboxRoot root;
    FileString text;
    text.setUnicode(true);
    text.setText(u"ab");
    EXPECT_TRUE(text.saveFile(Wide(root.file("a.txt")), 65001));
    EXPECT_EQ(SandboxRoot::readFile(root.file("a.txt")), "ab");
}

TEST(FileString, SaveFileOfAUtf16TextWritesEveryCharacterIncludingZeros) {
    SandboxRoot root;
    FileString text;
    text.setUnicode(true);
    text.setText(std::u16string(u"a\0b", 3));
    EXPECT_TRUE(text.saveFile(Wide(root.file("a.txt"))));
    EXPECT_EQ(SandboxRoot::readFile(root.file("a.txt")), std::string("\xFF\xFE"
                                                                     "a\0\0\0b\0",
                                                                     8));
}

TEST(FileString, SaveFileEmptiesALongerExistingFile) {
    SandboxRoot root;
    root.writeFile("a.txt", "a long text that is longer than what is saved");
    FileString text;
    text.setText(u"short");
    EXPECT_TRUE(text.saveFile(Wide(root.file("a.txt"))));
    EXPECT_EQ(SandboxRoot::readFile(root.file("a.txt")), "short");
}

TEST(FileString, SaveFileIntoAMissingFolderThrowsTheOpenFailure) {
    SandboxRoot root;
    const stdstr path = Wide(root.file("no/such/folder/a.txt"));
    FileString text;
    text.setText(u"x");
    const BaseException utf8 = Thrown([&] { text.saveFile(path); });
    EXPECT_EQ(utf8.GetMessage(), u"QGOpenFile##" + path + u"##" + GetOSErrorText(ENOENT));
    EXPECT_EQ(utf8.GetCode(), -1);
    EXPECT_EQ(utf8.GetFullMessage(), u"FileString::saveFile() - " + utf8.GetMessage());

    text.setUnicode(true);
    const BaseException utf16 = Thrown([&] { text.saveFile(path); });
    EXPECT_EQ(utf16.GetMessage(), utf8.GetMessage());
}

TEST(FileString, AFailedWriteThrowsTheSameWay) {
    // /dev/full accepts the open and refuses every write with "no space".
    FileString text;
    text.setText(u"x");
    const BaseException e = Thrown([&] { text.saveFile(u"/dev/full"); });
    EXPECT_EQ(e.GetMessage(), u"QGOpenFile##/dev/full##" + GetOSErrorText(ENOSPC));
    EXPECT_EQ(e.GetCode(), -1);
    EXPECT_EQ(e.GetFullMessage(), u"FileString::saveFile() - " + e.GetMessage());
}

TEST(FileString, ACodePageThatCannotBeConvertedToThrowsAfterTheFileWasEmptied) {
    SandboxRoot root;
    root.writeFile("a.txt", "old");
    FileString text;
    text.setText(u"x");
    EXPECT_THROW(text.saveFile(Wide(root.file("a.txt")), 4242), BaseException);
    // The file is opened for saving before the text is converted.
    EXPECT_EQ(SandboxRoot::readFile(root.file("a.txt")), "");
}

TEST(FileString, CreateFileEmptiesAnExistingFileAndRemembersThePath) {
    SandboxRoot root;
    root.writeFile("a.txt", "old");
    FileString text;
    EXPECT_TRUE(text.createFile(Wide(root.file("a.txt"))));
    EXPECT_EQ(SandboxRoot::readFile(root.file("a.txt")), "");
    EXPECT_EQ(text.path(), Wide(root.file("a.txt")));

    text.setText(u"new");
    EXPECT_TRUE(text.saveFile(u""));
    EXPECT_EQ(SandboxRoot::readFile(root.file("a.txt")), "new");
}

TEST(FileString, CreateFileInAMissingFolderThrowsAsOpenFileDoes) {
    SandboxRoot root;
    const stdstr path = Wide(root.file("no/a.txt"));
    FileString text;
    const BaseException e = Thrown([&] { text.createFile(path); });
    EXPECT_EQ(e.GetMessage(), u"QGOpenFile##" + path + u"##" + GetOSErrorText(ENOENT));
    EXPECT_EQ(e.GetFullMessage(), u"FileString::saveFile() - " + e.GetMessage());
    EXPECT_EQ(text.path(), u"");
}

TEST(FileString, AUtf8TextSurvivesASaveAndAReload) {
    SandboxRoot root;
    FileString out;
    out.setText(u"Gr\u00FC\u00DFe\r\n\u65E5\u672C \U0001F600");
    ASSERT_TRUE(out.saveFile(Wide(root.file("a.txt"))));
    FileString in;
    ASSERT_TRUE(in.openFile(Wide(root.file("a.txt"))));
    EXPECT_EQ(in.getText(), out.getText());
    EXPECT_FALSE(in.isUnicode());
}
