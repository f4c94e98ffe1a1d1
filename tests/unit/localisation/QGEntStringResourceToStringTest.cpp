// QGEntString::ResourceToString: the maintainer's conversion of a resource header and the
// English string table into a language file's "QGSection".
#include "localisation/QGEntString.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class ResourceToString : public ::testing::Test {
protected:
    void SetUp() override { TraceRecorder::Instance().Clear(); }

    // Converts a header with `content`; the output file's bytes, or "<none>" when no file
    // was written.
    std::string Convert(const std::string& content, bool expectWritten = true) {
        m_root.writeFile("resource.h", content);
        const bool written = QGEntString::ResourceToString(Header(), Output());
        EXPECT_EQ(written, expectWritten);
        return written ? TestSupport::SandboxRoot::readFile(m_root.file("out.ini")) : "<none>";
    }
    stdstr Header() const { return stdstr::toTString(m_root.file("resource.h")); }
    stdstr Output() const { return stdstr::toTString(m_root.file("out.ini")); }
    // "QGEntString::ResourceToString(<header>, <output>): " and `rest`.
    std::u16string Line(const std::u16string& rest) const {
        return u"QGEntString::ResourceToString(" + Header() + u", " + Output() + u"): " + rest;
    }

    TestSupport::SandboxRoot m_root;
};

TEST_F(ResourceToString, WritesTheTableTextWithoutItsMarkerUnderTheProgramsKey) {
    EXPECT_EQ(Convert("#define IDS_TOOLTIP_MINIMIZE 130\n"),
              "[QGSection]\r\nQGSA_130=Minimize\r\n");
    EXPECT_EQ(
        TraceRecorder::Instance().Count(
            TRACE_ERROR, u"QGEntString::ResourceToString(): LoadString(130) returned (Minimize)"),
        1u);
}

TEST_F(ResourceToString, ATableTextWithoutMarkerGoesUnchanged) {
    EXPECT_EQ(Convert("#define IDS_MAIN_WINDOW_TITLE 128\n#define IDS_HELP_FILE_NAME 212\n"),
              "[QGSection]\r\nQGSA_128=Quillgate\r\nQGSA_212=eng-qghelp.html\r\n");
}

TEST_F(ResourceToString, LineBreaksAreEscaped) {
    EXPECT_EQ(Convert("#define IDS_SUMMARY_POPUP 220\n"),
              "[QGSection]\r\nQGSA_220=Quillgate Summary#\\#r#\\#nSPAM : %ld#\\#r#\\#nExamined : "
              "%ld\r\n");
}

TEST_F(ResourceToString, ADefineWithoutValueWritesNothingAndTraces) {
    EXPECT_EQ(Convert("#define IDS_X\n"), "[QGSection]\r\n");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR,
                                              Line(u"IDS with no value found in (#define IDS_X)")),
              1u);
}

TEST_F(ResourceToString, ADefineWithNothingBehindIt) {
    EXPECT_EQ(Convert("#define   \n"), "[QGSection]\r\n");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR,
                                              Line(u"Single define value found in (#define   )")),
              1u);
}

TEST_F(ResourceToString, ANameWithoutUnderscore) {
    EXPECT_EQ(Convert("#define VERSION 4\n"), "[QGSection]\r\n");
    EXPECT_EQ(
        TraceRecorder::Instance().Count(TRACE_ERROR, Line(u"'_' not found in (#define VERSION 4)")),
        1u);
}

TEST_F(ResourceToString, OnlyIDSAndFWNamesAreTaken) {
    EXPECT_EQ(Convert("#define IDC_BUTTON 128\n#define FW_TITLE 129\n#define IDD_MAIN 130\n"),
              "[QGSection]\r\nQGSA_129=Quillgate\r\n");
    EXPECT_TRUE(TraceRecorder::Instance().StartingWith(TRACE_ERROR, Line(u"")).empty());
}

TEST_F(ResourceToString, AValueWithoutDigits) {
    EXPECT_EQ(Convert("#define IDS_X IDS_Y\n"), "[QGSection]\r\n");
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, Line(u"IDS with no number value found in (#define IDS_X IDS_Y)")),
              1u);
}

TEST_F(ResourceToString, ANumberRunIntoOtherCharactersDoesNotTerminate) {
    EXPECT_EQ(Convert("#define IDS_X 0x80\n#define IDS_Y 130u\n"), "[QGSection]\r\n");
    auto& recorder = TraceRecorder::Instance();
    EXPECT_EQ(recorder.Count(TRACE_ERROR,
                             Line(u"Number value could not terminate in (#define IDS_X 0x80)")),
              1u);
    EXPECT_EQ(recorder.Count(TRACE_ERROR,
                             Line(u"Number value could not terminate in (#define IDS_Y 130u)")),
              1u);
}

TEST_F(ResourceToString, ANumberMayEndTheLineOrStandBeforeBlanksAndComments) {
    EXPECT_EQ(Convert("#define IDS_A 130\n#define IDS_B 131 \t\n#define IDS_C 132// list\n"
                      "#define IDS_D 133 /* c */\r\n#define IDS_E 134"),
              "[QGSection]\r\nQGSA_130=Minimize\r\nQGSA_131=Maximize\r\nQGSA_132=Address "
              "List\r\nQGSA_133=Advanced\r\nQGSA_134=Settings\r\n");
    EXPECT_TRUE(TraceRecorder::Instance().StartingWith(TRACE_ERROR, Line(u"")).empty());
}

TEST_F(ResourceToString, AnIdTheTableLacksIsTracedWithTheError) {
    EXPECT_EQ(Convert("#define IDS_GONE 9999\n"), "[QGSection]\r\n");
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR,
                  u"QGEntString::ResourceToString(): LoadString(9999) failed with error (1814)"),
              1u);
}

TEST_F(ResourceToString, LinesWithoutDefineArePassedOver) {
    EXPECT_EQ(Convert("// ids\n#pragma once\n\n#ifndef X\n#endif\n"), "[QGSection]\r\n");
    EXPECT_TRUE(TraceRecorder::Instance().StartingWith(TRACE_ERROR, u"QGEntString").empty());
}

TEST_F(ResourceToString, AHeaderThatCannotBeReadIsTracedAndWritesNothing) {
    const stdstr missing = stdstr::toTString(m_root.file("missing.h"));
    EXPECT_FALSE(QGEntString::ResourceToString(missing, Output()));
    const auto lines = TraceRecorder::Instance().StartingWith(
        TRACE_ERROR,
        u"QGEntString::ResourceToString(" + missing + u", " + Output() + u"): Exception (");
    EXPECT_EQ(lines.size(), 1u);
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(m_root.file("out.ini")), "");
}

} // namespace
