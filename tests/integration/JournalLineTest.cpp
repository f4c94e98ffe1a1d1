// The journal's lines: their form, the quoting of texts, appending to the file named by
// QGPLUGIN_JOURNAL, and nothing at all when it names none.
#include "JournalLine.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <cstdlib>

class JournalLineTest : public ::testing::Test {
protected:
    void SetUp() override { ::setenv("QGPLUGIN_JOURNAL", m_path.c_str(), 1); }
    void TearDown() override { ::unsetenv("QGPLUGIN_JOURNAL"); }

    std::string Journal() const { return TestSupport::SandboxRoot::readFile(m_path); }

    TestSupport::SandboxRoot m_sandbox;
    std::string m_path = m_sandbox.file("journal.txt");
};

TEST_F(JournalLineTest, ALineHasTheOperationItsArgumentsAndItsResult) {
    JournalLine("CreatePage")
        .Named("record", 9)
        .Named("show", 1)
        .Arrow()
        .Named("page", 1)
        .Word("Status")
        .Write();
    JournalLine("GetPageCount").Arrow().Number(13).Write();
    JournalLine("TermGUI").Write();
    EXPECT_EQ(Journal(), "CreatePage record=9 show=1 -> page=1 Status\n"
                         "GetPageCount -> 13\n"
                         "TermGUI\n");
}

TEST_F(JournalLineTest, TextsAreQuotedWithQuotesBackslashesAndControlsEscaped) {
    JournalLine("SetConfigPath").Text(u"C:\\\"Data\"\tx\u00E9").Number(12).Write();
    JournalLine("InitGUI").Text(static_cast<const char16_t*>(nullptr)).Write();
    EXPECT_EQ(Journal(), "SetConfigPath \"C:\\\\\\\"Data\\\"\\x09x\xC3\xA9\" 12\n"
                         "InitGUI null\n");
}

TEST_F(JournalLineTest, NegativeResultsAreWrittenAsSignedNumbers) {
    JournalLine("Enabled").Number(0).Arrow().Number(static_cast<std::int32_t>(0x80004005u)).Write();
    EXPECT_EQ(Journal(), "Enabled 0 -> -2147467259\n");
}

TEST_F(JournalLineTest, WithoutAJournalNothingIsBuiltOrWritten) {
    ::unsetenv("QGPLUGIN_JOURNAL");
    JournalLine line("GetPageCount");
    line.Arrow().Number(13);
    EXPECT_FALSE(line.Active());
    EXPECT_EQ(line.Line(), "");
    line.Write();
    EXPECT_EQ(Journal(), "");
}

TEST_F(JournalLineTest, EachLineGoesToTheFileNamedWhenItIsWritten) {
    JournalLine("First").Write();
    const std::string other = m_sandbox.file("other.txt");
    ::setenv("QGPLUGIN_JOURNAL", other.c_str(), 1);
    JournalLine("Second").Write();
    EXPECT_EQ(Journal(), "First\n");
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(other), "Second\n");
}
