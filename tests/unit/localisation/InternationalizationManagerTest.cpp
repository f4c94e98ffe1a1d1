#include "localisation/QGInternationalizationManager.h"

#include "StoreTraceRecorder.h"
#include "foundation/BaseException.h"
#include "foundation/SyncObject.h"
#include "foundation/stdstr.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <regex>
#include <string>
#include <thread>
#include <vector>

// fontconfig keeps two small blocks of its set-up for the life of the process, unreachable
// (288 bytes, the same after one call or a hundred). The leak checker is told about them
// here rather than calling FcFini, which would pull the configuration away from every other
// user of fontconfig in a process.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

namespace {

using TestSupport::SandboxRoot;
using Line = StoreTraceRecorder::Line;

stdstr Wide(const std::string& text) {
    return stdstr::toTString(text);
}

std::string Narrow(const std::u16string& text) {
    return stdstr::fromTString(text);
}

const std::string StandardFile = "\xEF\xBB\xBF[General]\r\n"
                                 "Charset=iso-8859-1\r\n"
                                 "Name=English\r\n"
                                 "EnglishName=English\r\n"
                                 "BriskUpdateID=English (US)\r\n"
                                 "WebTransLink=https://example.org/en\r\n"
                                 "\r\n"
                                 "[QGSection]\r\n"
                                 "QGFuncFailed=The function %s failed: %s\r\n"
                                 "QGInitFailed=Quillgate could not start.\r\n"
                                 "TwoLines=Line one<BR/>Line two\r\n"
                                 "Escaped=a#\\#rb#\\#nc<BR/>d\r\n"
                                 "OneParam=Value (%s)\r\n"
                                 "TwoParams=%s and %s\r\n"
                                 "Link=See http://host/page // the help page\r\n";

class InternationalizationManager : public ::testing::Test {
protected:
    void SetUp() override { StoreTraceRecorder::Get().Clear(); }

    stdstr Language(const std::string& content, const std::string& name = "lang.ini") {
        m_root.writeFile(name, content);
        return Wide(m_root.file(name));
    }
    stdstr Translate(const stdstr& text) {
        stdstr out;
        m_store.GetTranslatedString(out, text);
        return out;
    }
    void LoadStandard() {
        m_store.LoadTranslationFile(Language(StandardFile));
        StoreTraceRecorder::Get().Clear();
    }

    SandboxRoot m_root;
    CQGInternationalizationManager m_store;
};

// ---- composed texts ------------------------------------------------------------------------

TEST_F(InternationalizationManager, AKeyWithTwoParametersBecomesTheSentence) {
    LoadStandard();
    EXPECT_EQ(Translate(u"QGFuncFailed##CreateFile##Access denied"),
              u"The function CreateFile failed: Access denied");
}

TEST_F(InternationalizationManager, TwoComposedSentencesAreJoinedWithNothingBetween) {
    LoadStandard();
    EXPECT_EQ(Translate(u"QGInitFailed####QGFuncFailed##A##B"),
              u"Quillgate could not start.The function A failed: B");
}

TEST_F(InternationalizationManager, AMissingKeyComesBackInItsComposedForm) {
    LoadStandard();
    EXPECT_EQ(Translate(u"NoSuchKey##A"), u"NoSuchKey##A");
    EXPECT_EQ(Translate(u"NoSuchKey"), u"NoSuchKey");
    EXPECT_EQ(Translate(u"NoSuchKey##A##"), u"NoSuchKey##A##");
}

TEST_F(InternationalizationManager, EmptySentencesBetweenSeparatorsAreSkipped) {
    LoadStandard();
    EXPECT_EQ(Translate(u"####QGInitFailed########OneParam##x####"),
              u"Quillgate could not start.Value (x)");
}

TEST_F(InternationalizationManager, AMissingSentenceInAListKeepsItsComposedForm) {
    LoadStandard();
    EXPECT_EQ(Translate(u"Nope##1####QGInitFailed"), u"Nope##1Quillgate could not start.");
}

TEST_F(InternationalizationManager, ABreakTagBecomesCarriageReturnAndLineFeed) {
    LoadStandard();
    EXPECT_EQ(Translate(u"TwoLines"), u"Line one\r\nLine two");
}

TEST_F(InternationalizationManager, EscapesAtLoadAndBreakTagsAtLookupAllGiveLineBreaks) {
    LoadStandard();
    EXPECT_EQ(Translate(u"Escaped"), u"a\rb\nc\r\nd");
}

TEST_F(InternationalizationManager, ABreakTagInAMissingKeyIsReplacedToo) {
    LoadStandard();
    EXPECT_EQ(Translate(u"No<BR/>Key##x"), u"No\r\nKey##x");
}

TEST_F(InternationalizationManager, AnEmptyTextComesBackEmptyWithANotFoundTrace) {
    LoadStandard();
    EXPECT_EQ(Translate(u""), u"");
    const auto lines = StoreTraceRecorder::Get().Lines();
    EXPECT_NE(
        std::find(lines.begin(), lines.end(),
                  Line{u"Warn: ", u"CQGInternationalizationManager::GetTranslatedString(, 0): "
                                  u"Key could not be found"}),
        lines.end());
}

TEST_F(InternationalizationManager, AKeyWithAnotherCaseIsNotFound) {
    LoadStandard();
    EXPECT_EQ(Translate(u"qginitfailed"), u"qginitfailed");
    EXPECT_EQ(Translate(u"QGINITFAILED##x"), u"QGINITFAILED##x");
}

TEST_F(InternationalizationManager, AKeyFollowedBySeparatorHasOneEmptyParameter) {
    LoadStandard();
    EXPECT_EQ(Translate(u"OneParam##"), u"Value ()");
    std::vector<stdstr> parameters;
    CQGInternationalizationManager::FillParamVector(u"", parameters);
    EXPECT_EQ(parameters, std::vector<stdstr>{u""});
}

TEST_F(InternationalizationManager, SurplusParametersAreDropped) {
    LoadStandard();
    EXPECT_EQ(Translate(u"OneParam##first##second##third"), u"Value (first)");
}

TEST_F(InternationalizationManager, ASurplusPlaceholderStays) {
    LoadStandard();
    EXPECT_EQ(Translate(u"OneParam"), u"Value (%s)");
    EXPECT_EQ(Translate(u"TwoParams##x"), u"x and %s");
}

TEST_F(InternationalizationManager, AParameterHoldingAPlaceholderIsFilledByTheNextOne) {
    LoadStandard();
    EXPECT_EQ(Translate(u"TwoParams##x%sy##z##w"), u"xzy and w");
}

TEST_F(InternationalizationManager, TheParameterTextFormSplitsAtEachSeparator) {
    LoadStandard();
    stdstr out;
    EXPECT_EQ(m_store.GetTranslatedString(out, u"QGFuncFailed", u"open##No such file"),
              u"The function open failed: No such file");
    EXPECT_EQ(out, u"The function open failed: No such file");
    EXPECT_EQ(m_store.GetTranslatedString(out, u"Nope", u"a##b"), u"Nope##a##b");
}

TEST_F(InternationalizationManager, TheVectorFormFillsParametersInOrder) {
    LoadStandard();
    stdstr out;
    m_store.GetTranslatedString(out, u"QGFuncFailed", std::vector<stdstr>{u"read", u"EIO"});
    EXPECT_EQ(out, u"The function read failed: EIO");
    m_store.GetTranslatedString(out, u"QGFuncFailed", std::vector<stdstr>{});
    EXPECT_EQ(out, u"The function %s failed: %s");
}

TEST_F(InternationalizationManager, TheOutputMayBeTheInput) {
    LoadStandard();
    stdstr text = u"QGFuncFailed##a##b";
    m_store.GetTranslatedString(text, text);
    EXPECT_EQ(text, u"The function a failed: b");
    stdstr key = u"OneParam";
    m_store.GetTranslatedString(key, key, key);
    EXPECT_EQ(key, u"Value (OneParam)");
}

TEST_F(InternationalizationManager, FillParamVectorKeepsEveryPieceAndAppends) {
    std::vector<stdstr> parameters{u"before"};
    CQGInternationalizationManager::FillParamVector(u"a####b##", parameters);
    EXPECT_EQ(parameters, (std::vector<stdstr>{u"before", u"a", u"", u"b", u""}));
}

TEST_F(InternationalizationManager, ALinkInAValueSurvivesAndAComment) {
    LoadStandard();
    EXPECT_EQ(Translate(u"Link"), u"See http://host/page");
}

TEST_F(InternationalizationManager, LookupsBeforeAnyLoadReturnTheKey) {
    EXPECT_EQ(Translate(u"QGInitFailed"), u"QGInitFailed");
    EXPECT_EQ(Translate(u"QGFuncFailed##a##b"), u"QGFuncFailed##a##b");
}

// ---- the General fields --------------------------------------------------------------------

TEST_F(InternationalizationManager, TheGeneralFieldsAreRead) {
    LoadStandard();
    stdstr out;
    EXPECT_EQ(m_store.GetCharset(out), u"iso-8859-1");
    EXPECT_EQ(m_store.GetName(out), u"English");
    EXPECT_EQ(m_store.GetEnglishName(out), u"English");
    EXPECT_EQ(m_store.GetBriskUpdateID(out), u"English (US)");
    EXPECT_EQ(m_store.GetWebTransLink(out), u"https://example.org/en");
    EXPECT_EQ(out, u"https://example.org/en");
}

TEST_F(InternationalizationManager, BeforeAnyLoadTheFieldsHaveTheirDefaults) {
    stdstr out = u"x";
    EXPECT_EQ(m_store.GetCharset(out), u"");
    EXPECT_EQ(m_store.GetName(out), u"");
    EXPECT_EQ(m_store.GetEnglishName(out), u"");
    EXPECT_EQ(m_store.GetBriskUpdateID(out), u"English (US)");
    EXPECT_EQ(m_store.GetWebTransLink(out), CQGInternationalizationManager::DefaultWebTransLink());
    EXPECT_FALSE(out.empty());
}

TEST_F(InternationalizationManager, AFileWithoutGeneralHasTheDefaults) {
    LoadStandard();
    m_store.LoadTranslationFile(Language("[QGSection]\r\nK=V\r\n", "bare.ini"));
    stdstr out;
    EXPECT_EQ(m_store.GetBriskUpdateID(out), u"English (US)");
    EXPECT_EQ(m_store.GetWebTransLink(out), CQGInternationalizationManager::DefaultWebTransLink());
    EXPECT_EQ(m_store.GetCharset(out), u"");
    EXPECT_EQ(m_store.GetName(out), u"");
    EXPECT_EQ(m_store.GetEnglishName(out), u"");
    EXPECT_EQ(Translate(u"K"), u"V");
}

TEST_F(InternationalizationManager, ALoadReplacesTheWholeLanguage) {
    LoadStandard();
    m_store.LoadTranslationFile(Language("[General]\r\nName=Deutsch\r\n[QGSection]\r\n"
                                         "QGInitFailed=Quillgate konnte nicht starten.\r\n",
                                         "de.ini"));
    EXPECT_EQ(Translate(u"QGInitFailed"), u"Quillgate konnte nicht starten.");
    EXPECT_EQ(Translate(u"TwoLines"), u"TwoLines");
    stdstr out;
    EXPECT_EQ(m_store.GetName(out), u"Deutsch");
    EXPECT_EQ(m_store.GetCharset(out), u"");
}

TEST_F(InternationalizationManager, AMissingFileInAFolderThatCannotBeWrittenLeavesTheLanguage) {
    LoadStandard();
    const stdstr missing = Wide(m_root.file("no/such/folder/fr.ini"));
    m_store.LoadTranslationFile(missing);
    const auto lines = StoreTraceRecorder::Get().Lines();
    EXPECT_EQ(Translate(u"QGInitFailed"), u"Quillgate could not start.");
    stdstr out;
    EXPECT_EQ(m_store.GetCharset(out), u"iso-8859-1");
    EXPECT_EQ(m_store.GetName(out), u"English");
    EXPECT_EQ(m_store.GetEnglishName(out), u"English");
    EXPECT_EQ(m_store.GetBriskUpdateID(out), u"English (US)");
    EXPECT_EQ(m_store.GetWebTransLink(out), u"https://example.org/en");
    const std::vector<Line> expected{
        {u"Func: ",
         u"CQGInternationalizationManager::LoadTranslationFile(" + missing + u"): Start"},
        {u"Error: ", u"CQGInternationalizationManager::LoadTranslationFile(): Could not load or "
                     u"verify the file " +
                         missing},
        {u"Func: ", u"CQGInternationalizationManager::LoadTranslationFile(" + missing + u"): End"},
    };
    EXPECT_EQ(lines, expected);
}

TEST_F(InternationalizationManager, AMissingFileInAWritableFolderIsCreatedAndGivesAnEmptyLanguage) {
    LoadStandard();
    const std::string path = m_root.file("created.ini");
    m_store.LoadTranslationFile(Wide(path));
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(Translate(u"QGInitFailed"), u"QGInitFailed");
    stdstr out;
    EXPECT_EQ(m_store.GetName(out), u"");
    EXPECT_EQ(m_store.GetBriskUpdateID(out), u"English (US)");
}

TEST_F(InternationalizationManager, TheInstanceIsOneObject) {
    EXPECT_EQ(&CQGInternationalizationManager::Instance(),
              &CQGInternationalizationManager::Instance());
    InternationalizationInterface& store = CQGInternationalizationManager::Instance();
    stdstr out;
    EXPECT_EQ(store.GetTranslatedString(out, u"NotLoaded##1"), u"NotLoaded##1");
}

// ---- trace lines ---------------------------------------------------------------------------

TEST_F(InternationalizationManager, ALoadTracesStartFieldsEachKeyAndEnd) {
    const stdstr path = Language("[General]\r\nCharset=windows-1252\r\nName=Fran\xC3\xA7"
                                 "ais\r\nEnglishName=French\r\nBriskUpdateID=French\r\n"
                                 "[QGSection]\r\nB=two#\\#nlines\r\nA=one\r\n");
    m_store.LoadTranslationFile(path);
    const std::vector<Line> expected{
        {u"Func: ", u"CQGInternationalizationManager::LoadTranslationFile(" + path + u"): Start"},
        {u"Debug: ", u"CQGInternationalizationManager::LoadTranslationFile(" + path +
                         u"): Charset (windows-1252), Name (Français, EnglishName (French), Brisk "
                         u"Update ID (French), Web link (" +
                         CQGInternationalizationManager::DefaultWebTransLink() + u")"},
        {u"", u"CQGInternationalizationManager::LoadTranslationFile(): KeyValue: A = one"},
        {u"", u"CQGInternationalizationManager::LoadTranslationFile(): KeyValue: B = two\nlines"},
        {u"Func: ", u"CQGInternationalizationManager::LoadTranslationFile(" + path + u"): End"},
    };
    EXPECT_EQ(StoreTraceRecorder::Get().Lines(), expected);
}

TEST_F(InternationalizationManager, TheKeyValueLineIsRawAndOnlyForDetail) {
    EXPECT_EQ(CQGInternationalizationManager::KeyValueTraceLevel, TRACE_RAW | TRACE_DETAIL);
}

TEST_F(InternationalizationManager, ALookupWithParametersTracesEachStep) {
    LoadStandard();
    EXPECT_EQ(Translate(u"QGFuncFailed##CreateFile##Access denied"),
              u"The function CreateFile failed: Access denied");
    const std::u16string m = u"CQGInternationalizationManager::";
    const std::vector<Line> expected{
        {u"Audit: ", m + u"FillParamVector(CreateFile##Access denied): Add param (CreateFile)"},
        {u"Audit: ", m + u"FillParamVector(CreateFile##Access denied): Add param (Access denied)"},
        {u"Audit: ", m + u"GetTranslatedString(QGFuncFailed, 2): Start"},
        {u"Audit: ", m + u"GetTranslatedString(QGFuncFailed, 2): Replace param with CreateFile"},
        {u"Audit: ", m + u"GetTranslatedString(QGFuncFailed, 2): Replace param with Access denied"},
        {u"Audit: ", m + u"GetTranslatedString(QGFuncFailed, 2): Returned (The function "
                         u"CreateFile failed: Access denied)"},
        {u"Audit: ", m + u"GetTranslatedString(QGFuncFailed, 2): End"},
    };
    EXPECT_EQ(StoreTraceRecorder::Get().Lines(), expected);
}

TEST_F(InternationalizationManager, AMissingKeyIsTracedAsAWarning) {
    LoadStandard();
    Translate(u"NoSuchKey##A");
    const std::u16string m = u"CQGInternationalizationManager::";
    const std::vector<Line> expected{
        {u"Audit: ", m + u"FillParamVector(A): Add param (A)"},
        {u"Audit: ", m + u"GetTranslatedString(NoSuchKey, 1): Start"},
        {u"Warn: ", m + u"GetTranslatedString(NoSuchKey, 1): Key could not be found"},
        {u"Audit: ", m + u"GetTranslatedString(NoSuchKey, 1): End"},
    };
    EXPECT_EQ(StoreTraceRecorder::Get().Lines(), expected);
}

TEST_F(InternationalizationManager, AReturnedSentenceIsTracedBeforeItsBreakTagsAreReplaced) {
    LoadStandard();
    Translate(u"TwoLines");
    const std::u16string m = u"CQGInternationalizationManager::";
    const std::vector<Line> expected{
        {u"Audit: ", m + u"GetTranslatedString(TwoLines, 0): Start"},
        {u"Audit: ", m + u"GetTranslatedString(TwoLines, 0): Returned (Line one<BR/>Line two)"},
        {u"Audit: ", m + u"GetTranslatedString(TwoLines, 0): End"},
    };
    EXPECT_EQ(StoreTraceRecorder::Get().Lines(), expected);
}

TEST_F(InternationalizationManager, EachSentenceOfAListIsTraced) {
    LoadStandard();
    Translate(u"QGInitFailed####Nope");
    const std::u16string m = u"CQGInternationalizationManager::";
    const auto found = StoreTraceRecorder::Get().LinesStartingWith(
        m + u"GetTranslatedString(QGInitFailed####Nope)");
    const std::vector<Line> expected{
        {u"Audit: ", m + u"GetTranslatedString(QGInitFailed####Nope): Found msg (QGInitFailed)"},
        {u"Audit: ", m + u"GetTranslatedString(QGInitFailed####Nope): Found msg (Nope)"},
    };
    EXPECT_EQ(found, expected);
}

TEST_F(InternationalizationManager, TheParameterTextFormTracesItsOwnStartAndEnd) {
    LoadStandard();
    stdstr out;
    m_store.GetTranslatedString(out, u"OneParam", u"x");
    const std::u16string m = u"CQGInternationalizationManager::";
    const std::vector<Line> expected{
        {u"Audit: ", m + u"GetTranslatedString(OneParam, x): Start"},
        {u"Audit: ", m + u"FillParamVector(x): Add param (x)"},
        {u"Audit: ", m + u"GetTranslatedString(OneParam, 1): Start"},
        {u"Audit: ", m + u"GetTranslatedString(OneParam, 1): Replace param with x"},
        {u"Audit: ", m + u"GetTranslatedString(OneParam, 1): Returned (Value (x))"},
        {u"Audit: ", m + u"GetTranslatedString(OneParam, 1): End"},
        {u"Audit: ", m + u"GetTranslatedString(OneParam, x): End"},
    };
    EXPECT_EQ(StoreTraceRecorder::Get().Lines(), expected);
}

TEST_F(InternationalizationManager, RightToLeftSupportIsTracedWithItsAnswer) {
    const bool supported = m_store.IsRightToLeftLangSupported();
    const std::vector<Line> expected{
        {u"Periodic: ",
         supported ? u"CQGInternationalizationManager::IsRightToLeftLangSupported(): Right to "
                     u"Left languages are supported"
                   : u"CQGInternationalizationManager::IsRightToLeftLangSupported(): Right to "
                     u"Left languages are not supported"}};
    EXPECT_EQ(StoreTraceRecorder::Get().Lines(), expected);
}

// ---- exceptions ----------------------------------------------------------------------------

// The lock must be free again: another thread can take it at once.
bool LockIsFree(CQGInternationalizationManager& store) {
    std::atomic<bool> taken{false};
    std::thread other([&] {
        if (store.lock(0)) {
            taken = true;
            store.unlock();
        }
    });
    other.join();
    return taken;
}

TEST_F(InternationalizationManager, AnExceptionInALookupGivesTheComposedFormAndIsTraced) {
    LoadStandard();
    const std::u16string m = u"CQGInternationalizationManager::";
    StoreTraceRecorder::Get().ThrowAt(
        m + u"GetTranslatedString(QGFuncFailed, 2): Replace param with a",
        StoreTraceRecorder::Throw::BaseException);
    EXPECT_EQ(Translate(u"QGFuncFailed##a##b<BR/>"), u"QGFuncFailed##a##b\r\n");
    const auto lines = StoreTraceRecorder::Get().Lines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2],
              (Line{u"Error: ", m + u"GetTranslatedString(QGFuncFailed, 2): Exception "
                                    u"(StoreTraceRecorder::Write() - QGWriteFile##trace sink)"}));
    EXPECT_EQ(lines.back(), (Line{u"Audit: ", m + u"GetTranslatedString(QGFuncFailed, 2): End"}));
    EXPECT_TRUE(LockIsFree(m_store));
}

TEST_F(InternationalizationManager, AnUnknownExceptionInALookupGivesTheComposedForm) {
    LoadStandard();
    const std::u16string m = u"CQGInternationalizationManager::";
    StoreTraceRecorder::Get().ThrowAt(m + u"GetTranslatedString(OneParam, 1): Replace param with z",
                                      StoreTraceRecorder::Throw::Other);
    EXPECT_EQ(Translate(u"OneParam##z"), u"OneParam##z");
    const auto unhandled = StoreTraceRecorder::Get().LinesStartingWith(
        m + u"GetTranslatedString(OneParam, 1): Unhandled Exception 0x");
    ASSERT_EQ(unhandled.size(), 1u);
    EXPECT_EQ(unhandled[0].label, u"Error: ");
    EXPECT_TRUE(std::regex_match(Narrow(unhandled[0].text),
                                 std::regex(".*Unhandled Exception 0x[0-9a-f]+")))
        << Narrow(unhandled[0].text);
    EXPECT_TRUE(LockIsFree(m_store));
}

TEST_F(InternationalizationManager, ABaseExceptionInALoadIsTracedAndThrownOn) {
    const stdstr path = Language("[QGSection]\r\nK=V\r\n");
    StoreTraceRecorder::Get().ThrowAt(
        u"CQGInternationalizationManager::LoadTranslationFile(): KeyValue: K = V",
        StoreTraceRecorder::Throw::BaseException);
    EXPECT_THROW(m_store.LoadTranslationFile(path), BaseException);
    const auto lines = StoreTraceRecorder::Get().Lines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(
        lines.back(),
        (Line{u"Error: ", u"CQGInternationalizationManager::LoadTranslationFile(" + path + u")"}));
    EXPECT_TRUE(LockIsFree(m_store));
}

TEST_F(InternationalizationManager, AnUnknownExceptionInALoadIsTracedAndThrownOn) {
    const stdstr path = Language("[QGSection]\r\nK=V\r\n");
    StoreTraceRecorder::Get().ThrowAt(
        u"CQGInternationalizationManager::LoadTranslationFile(): KeyValue: K = V",
        StoreTraceRecorder::Throw::Other);
    EXPECT_THROW(m_store.LoadTranslationFile(path), int);
    const auto lines = StoreTraceRecorder::Get().Lines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back().label, u"Error: ");
    EXPECT_TRUE(
        std::regex_match(Narrow(lines.back().text),
                         std::regex("CQGInternationalizationManager::LoadTranslationFile\\(" +
                                    Narrow(path) + "\\): Unhandled Exception 0x[0-9a-f]+")))
        << Narrow(lines.back().text);
    EXPECT_TRUE(LockIsFree(m_store));
}

// ---- threads -------------------------------------------------------------------------------

TEST_F(InternationalizationManager, ALookupNeverSeesAHalfLoadedLanguage) {
    std::string first = "[QGSection]\r\n";
    std::string second = "[QGSection]\r\n";
    for (int k = 0; k < 300; ++k) {
        first += "K" + std::to_string(k) + "=first\r\n";
        second += "K" + std::to_string(k) + "=second\r\n";
    }
    const stdstr one = Language(first, "one.ini");
    const stdstr two = Language(second, "two.ini");
    m_store.LoadTranslationFile(one);

    std::atomic<bool> stop{false};
    std::atomic<int> lookups{0};
    std::atomic<int> bad{0};
    std::thread reader([&] {
        while (!stop) {
            stdstr out;
            m_store.GetTranslatedString(out, u"K299");
            if (out != u"first" && out != u"second")
                ++bad;
            ++lookups;
        }
    });
    for (int load = 0; load < 20; ++load)
        m_store.LoadTranslationFile(load % 2 ? one : two);
    // Let the reader overlap a few more loads if it started late.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (lookups < 50 && std::chrono::steady_clock::now() < deadline)
        m_store.LoadTranslationFile(two);
    stop = true;
    reader.join();
    EXPECT_GE(lookups.load(), 50);
    EXPECT_EQ(bad.load(), 0);
}

} // namespace
