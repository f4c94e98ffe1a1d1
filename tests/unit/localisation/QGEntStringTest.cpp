// QGEntString: translated strings by id and by key, the fall-backs on the English string
// table and every trace line on the way.
#include "localisation/QGEntString.h"
#include "LanguageFileText.h"
#include "StringTable.h"
#include "foundation/BaseException.h"
#include "foundation/CorvaneBaseException.h"
#include "localisation/CTranslator.h"
#include "localisation/QGInternationalizationManager.h"
#include "resource.h"
#include "support/RunInChild.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <sys/resource.h>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool UnderAddressSanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool UnderAddressSanitizer = true;
#else
constexpr bool UnderAddressSanitizer = false;
#endif
#else
constexpr bool UnderAddressSanitizer = false;
#endif

// A localizer whose TranslateKey does what the test says, and counts its calls.
class ScriptedLocalizer : public ILocalizer {
public:
    using Script = std::function<std::int32_t(const stdstr& key, char16_t* buffer,
                                              std::uint32_t bufferSize, std::uint32_t* required)>;
    explicit ScriptedLocalizer(Script script) : m_script(std::move(script)) {}

    std::int32_t Reserved1(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                           std::uint32_t) override {
        return 0;
    }
    std::uint32_t Reserved2() override { return 1; }
    std::uint32_t Reserved3() override { return 1; }
    std::int32_t TranslateKey(const char16_t* key, std::uint32_t keyLength, char16_t* buffer,
                              std::uint32_t bufferSize, std::uint32_t* required) override {
        ++calls;
        bufferSizes.push_back(bufferSize);
        return m_script(stdstr(key, keyLength), buffer, bufferSize, required);
    }

    int calls = 0;
    std::vector<std::uint32_t> bufferSizes;

private:
    Script m_script;
};

// Writes `text` with its terminator into the buffer, as a well-behaved localizer does.
std::int32_t Answer(const stdstr& text, char16_t* buffer, std::uint32_t bufferSize,
                    std::uint32_t* required) {
    if (text.size() >= bufferSize) {
        *required = static_cast<std::uint32_t>(text.size() + 1);
        return 1;
    }
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = u'\0';
    return 0;
}

stdstr Table(std::uint32_t id) {
    return stdstr(QGResources::FindEnglishString(id));
}

class TranslatedStrings : public ::testing::Test {
protected:
    void SetUp() override {
        TraceRecorder::Instance().Clear();
        QGEntString::m_pLocalizer = &m_translator;
    }
    void TearDown() override { QGEntString::m_pLocalizer = nullptr; }

    // Loads a language file with these entries into the process's store.
    void LoadLanguage(const std::vector<std::pair<std::string, std::string>>& entries) {
        m_root.writeFile("QGSaLangs/Test.ini",
                         LanguageFileText::Make({"iso-8859-1", "Test", "Test", "Test"}, entries));
        CQGInternationalizationManager::Instance().LoadTranslationFile(
            stdstr::toTString(m_root.file("QGSaLangs/Test.ini")));
        TraceRecorder::Instance().Clear();
    }

    TestSupport::SandboxRoot m_root;
    CTranslator m_translator;
};

using LoadStringById = TranslatedStrings;
using LoadStringByKey = TranslatedStrings;
using LoadStringFailures = TranslatedStrings;

TEST_F(LoadStringById, GivesTheTranslationOfTheLanguageFile) {
    LoadLanguage({{"QGSA_130", "Minimieren"}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_MINIMIZE));
    EXPECT_EQ(text.GetString(), u"Minimieren");
    EXPECT_TRUE(TraceRecorder::Instance().StartingWith(TRACE_ERROR, u"QGEntString").empty());
}

TEST_F(LoadStringById, AKeyTheFileLacksGivesTheTableTextWithItsMarker) {
    LoadLanguage({{"QGSA_130", "Minimieren"}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_MAXIMIZE));
    EXPECT_EQ(text.GetString(), u"*Maximize");
}

TEST_F(LoadStringById, ATranslationIdenticalToTheKeyCountsAsMissing) {
    LoadLanguage({{"QGSA_131", "QGSA_131"}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_MAXIMIZE));
    EXPECT_EQ(text.GetString(), u"*Maximize");
}

TEST_F(LoadStringById, ATableTextWithoutMarkerComesUnchanged) {
    LoadLanguage({});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_MAIN_WINDOW_TITLE));
    EXPECT_EQ(text.GetString(), u"Quillgate");
}

TEST_F(LoadStringById, AnIdThatNeitherTableNorFileHasGivesFalseAndAnEmptyText) {
    LoadLanguage({{"QGSA_130", "Minimieren"}});
    QGEntString text(u"left over");
    EXPECT_FALSE(text.LoadString(9999));
    EXPECT_EQ(text.GetString(), u"");
}

TEST_F(LoadStringById, AnIdOnlyTheFileHasIsTranslated) {
    LoadLanguage({{"QGSA_9999", "Nur in der Datei"}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(9999));
    EXPECT_EQ(text.GetString(), u"Nur in der Datei");
}

TEST_F(LoadStringById, BeforeTheLocalizerIsSetGivesTheTableTextAndTracesEachTime) {
    LoadLanguage({{"QGSA_130", "Minimieren"}});
    QGEntString::m_pLocalizer = nullptr;
    QGEntString first;
    QGEntString second;
    EXPECT_TRUE(first.LoadString(IDS_TOOLTIP_MINIMIZE));
    EXPECT_TRUE(second.LoadString(IDS_TOOLTIP_MINIMIZE));
    EXPECT_EQ(first.GetString(), u"*Minimize");
    EXPECT_EQ(second.GetString(), u"*Minimize");
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"QGEntString::LoadString(130): Localizer interface was not set"),
              2u);
}

TEST_F(LoadStringById, BeforeTheLocalizerIsSetAnUnknownIdGivesFalse) {
    QGEntString::m_pLocalizer = nullptr;
    QGEntString text;
    EXPECT_FALSE(text.LoadString(9999));
    EXPECT_EQ(text.GetString(), u"");
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"QGEntString::LoadString(9999): Localizer interface was not set"),
              1u);
}

TEST_F(LoadStringById, ATextOf1998CharactersFitsTheFirstBuffer) {
    const std::string long1998(1998, 'x');
    LoadLanguage({{"QGSA_130", long1998}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_MINIMIZE));
    EXPECT_EQ(text.GetString(), stdstr(1998, u'x'));
    EXPECT_TRUE(TraceRecorder::Instance()
                    .StartingWith(TRACE_ERROR, u"QGEntString::LoadString(130): Translation")
                    .empty());
}

TEST_F(LoadStringById, ATextOf1999CharactersNeedsASecondCallThatSucceeds) {
    const std::string long1999(1999, 'y');
    LoadLanguage({{"QGSA_130", long1999}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_MINIMIZE));
    EXPECT_EQ(text.GetString(), stdstr(1999, u'y'));
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"QGEntString::LoadString(130): Translation requires size of 2000"),
              1u);
}

TEST_F(LoadStringById, TheSecondCallGetsABufferOfTheRequiredSizeAndOneMore) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t* buffer, std::uint32_t size, std::uint32_t* required) {
            return Answer(stdstr(1999, u'z'), buffer, size, required);
        });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_MINIMIZE));
    EXPECT_EQ(text.GetString(), stdstr(1999, u'z'));
    EXPECT_EQ(localizer.bufferSizes, (std::vector<std::uint32_t>{1999, 2001}));
}

TEST_F(LoadStringById, TheKeyAskedForIsQGSAWithTheIdInDecimal) {
    stdstr asked;
    ScriptedLocalizer localizer(
        [&asked](const stdstr& key, char16_t* buffer, std::uint32_t size, std::uint32_t* required) {
            asked = key;
            return Answer(u"Ja", buffer, size, required);
        });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text(IDS_SERVICE_STOPPING);
    EXPECT_EQ(asked, u"QGSA_260");
    EXPECT_EQ(text.GetString(), u"Ja");
}

TEST_F(LoadStringByKey, GivesTheTranslationOfAComposedKey) {
    LoadLanguage({{"QGFuncFailed", "The function %s failed: %s"}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(stdstr(u"QGFuncFailed##CreateFile##Access denied")));
    EXPECT_EQ(text.GetString(), u"The function CreateFile failed: Access denied");
}

TEST_F(LoadStringByKey, AKeyWithoutTranslationComesBackAsItsText) {
    LoadLanguage({});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(stdstr(u"NoSuchKey##A")));
    EXPECT_EQ(text.GetString(), u"NoSuchKey##A");
}

TEST_F(LoadStringByKey, BeforeTheLocalizerIsSetTheKeyIsTheText) {
    QGEntString::m_pLocalizer = nullptr;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(stdstr(u"QGSA_130")));
    EXPECT_EQ(text.GetString(), u"QGSA_130");
    EXPECT_EQ(
        TraceRecorder::Instance().Count(
            TRACE_ERROR, u"QGEntString::LoadString(QGSA_130): Localizer interface was not set"),
        1u);
}

TEST_F(LoadStringByKey, ALongTranslationNeedsASecondCallAndNamesTheKey) {
    LoadLanguage({{"LongKey", std::string(2500, 'w')}});
    QGEntString text;
    EXPECT_TRUE(text.LoadString(stdstr(u"LongKey")));
    EXPECT_EQ(text.GetString(), stdstr(2500, u'w'));
    EXPECT_EQ(
        TraceRecorder::Instance().Count(
            TRACE_ERROR, u"QGEntString::LoadString(LongKey): Translation requires size of 2501"),
        1u);
}

TEST_F(LoadStringByKey, AFailedTranslationGivesTheKeyAndTrue) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t*, std::uint32_t, std::uint32_t*) { return 7; });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(stdstr(u"SomeKey")));
    EXPECT_EQ(text.GetString(), u"SomeKey");
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR,
                  u"QGEntString::LoadString(SomeKey): m_pLocalizer->TranslateKey returned 0x7"),
              1u);
}

TEST_F(LoadStringFailures, AnErrorCodeWithoutSizeFallsBackOnTheTable) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t*, std::uint32_t, std::uint32_t*) { return 0x2A; });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_CLOSE));
    EXPECT_EQ(text.GetString(), u"*Close");
    EXPECT_EQ(
        TraceRecorder::Instance().Count(
            TRACE_ERROR, u"QGEntString::LoadString(144): m_pLocalizer->TranslateKey returned 0x2a"),
        1u);
    EXPECT_EQ(localizer.calls, 1);
}

TEST_F(LoadStringFailures, ASecondCallThatFailsFallsBackOnTheTable) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t*, std::uint32_t, std::uint32_t* required) {
            *required = 3000;
            return 1;
        });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_CLOSE));
    EXPECT_EQ(text.GetString(), u"*Close");
    auto& recorder = TraceRecorder::Instance();
    EXPECT_EQ(recorder.Count(TRACE_ERROR,
                             u"QGEntString::LoadString(144): Translation requires size of 3000"),
              1u);
    EXPECT_EQ(
        recorder.Count(TRACE_ERROR,
                       u"QGEntString::LoadString(144): m_pLocalizer->TranslateKey returned 0x1"),
        1u);
    EXPECT_EQ(localizer.calls, 2);
}

TEST_F(LoadStringFailures, AnExceptionWithACodeIsTracedWithItAndFallsBackOnTheTable) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t*, std::uint32_t, std::uint32_t*) -> std::int32_t {
            throw BaseException(u"Test", 1, 0x57, u"Test()", u"%s", u"QGMemAlloc");
        });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_CLOSE));
    EXPECT_EQ(text.GetString(), u"*Close");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR,
                                              u"QGEntString::LoadString(144): Exception 0x57"),
              1u);
}

TEST_F(LoadStringFailures, AFoundationExceptionIsTracedWithItsCode) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t*, std::uint32_t, std::uint32_t*) -> std::int32_t {
            throw Corvane::BaseException(u"Test", 1, u"broken", 0x1F);
        });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(stdstr(u"AnyKey")));
    EXPECT_EQ(text.GetString(), u"AnyKey");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR,
                                              u"QGEntString::LoadString(AnyKey): Exception 0x1f"),
              1u);
}

TEST_F(LoadStringFailures, AnyOtherExceptionIsUnhandledAndFallsBackOnTheTable) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t* buffer, std::uint32_t, std::uint32_t*) -> std::int32_t {
            buffer[0] = u'Q';
            buffer[1] = u'\0';
            throw 42;
        });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_CLOSE));
    EXPECT_EQ(text.GetString(), u"*Close");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR,
                                              u"QGEntString::LoadString(144): Unhandled exception"),
              1u);
}

TEST_F(LoadStringFailures, AnExceptionInTheSecondCallFallsBackOnTheTable) {
    ScriptedLocalizer localizer(
        [](const stdstr&, char16_t*, std::uint32_t size, std::uint32_t* required) -> std::int32_t {
            if (size == QGEntString::StackBufferSize) {
                *required = 2100;
                return 1;
            }
            throw 1;
        });
    QGEntString::m_pLocalizer = &localizer;
    QGEntString text;
    EXPECT_TRUE(text.LoadString(IDS_TOOLTIP_CLOSE));
    EXPECT_EQ(text.GetString(), u"*Close");
    EXPECT_EQ(TraceRecorder::Instance().Count(TRACE_ERROR,
                                              u"QGEntString::LoadString(144): Unhandled exception"),
              1u);
}

TEST_F(LoadStringFailures, ABufferThatCannotBeHadIsTracedAndFallsBackOnTheTable) {
    if (UnderAddressSanitizer)
        GTEST_SKIP() << "an address-space limit cannot be set under AddressSanitizer";
    // A size that no address space of 1 GiB can hold: the allocation must fail.
    const int code = TestSupport::RunInChild([] {
        rlimit limit{};
        limit.rlim_cur = limit.rlim_max = 1024ul * 1024ul * 1024ul;
        if (setrlimit(RLIMIT_AS, &limit) != 0)
            return 10;
        ScriptedLocalizer localizer(
            [](const stdstr&, char16_t*, std::uint32_t, std::uint32_t* required) {
                *required = 0x7FFFFFF0u;
                return 1;
            });
        QGEntString::m_pLocalizer = &localizer;
        TraceRecorder::Instance().Clear();
        QGEntString text;
        const bool loaded = text.LoadString(IDS_TOOLTIP_CLOSE);
        QGEntString::m_pLocalizer = nullptr;
        if (!loaded || text.GetString() != u"*Close")
            return 11;
        if (TraceRecorder::Instance().Count(
                TRACE_ERROR, u"QGEntString::LoadString(144): Memory allocation problem") != 1)
            return 12;
        return localizer.calls == 1 ? 0 : 13;
    });
    EXPECT_EQ(code, 0);
}

TEST(QGEntStringConstruction, FromAnIdLoadsAtOnce) {
    QGEntString::m_pLocalizer = nullptr;
    const QGEntString text(IDS_STRING_URL_HOMEPAGE);
    EXPECT_EQ(text.GetString(), Table(IDS_STRING_URL_HOMEPAGE));
}

TEST(QGEntStringConstruction, FromATextAndByCopyHoldsTheText) {
    const QGEntString text(u"Hallo");
    const QGEntString copy(text);
    QGEntString assigned;
    assigned = stdstr(u"Welt");
    EXPECT_EQ(text.GetString(), u"Hallo");
    EXPECT_EQ(copy.GetString(), u"Hallo");
    EXPECT_EQ(assigned, u"Welt");
    EXPECT_TRUE(QGEntString().GetString().empty());
}

TEST(QGEntStringPluginKey, IsQGPLGWithTheIdInDecimal) {
    stdstr key;
    QGEntString::MakePluginKey(key, 4711);
    EXPECT_EQ(key, u"QGPLG_4711");
}

} // namespace
