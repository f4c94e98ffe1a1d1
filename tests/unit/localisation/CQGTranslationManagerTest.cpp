// CQGTranslationManager: discovery of the language files, their order, selection by any of
// their names, the user's saved choice, and which character sets the installed fonts show.
#include "localisation/CQGTranslationManager.h"
#include "LanguageFileText.h"
#include "foundation/CRegistry.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SystemPaths.h"
#include "localisation/QGInternationalizationManager.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

// A charset no font can make installed: the table of the manager does not know it.
const std::string Unknown = "x-test-unknown";

std::vector<stdstr> Names(std::initializer_list<const char16_t*> names) {
    return std::vector<stdstr>(names.begin(), names.end());
}

class LanguageFiles : public ::testing::Test {
protected:
    void SetUp() override { TraceRecorder::Instance().Clear(); }

    // Writes "<root>/app/QGSaLangs/<file>".
    void AddFile(const std::string& file, const LanguageFileText::General& general) {
        m_root.writeFile("app/QGSaLangs/" + file, LanguageFileText::Make(general, {{"Key", file}}));
    }
    stdstr Folder() const { return stdstr::toTString(m_root.file("app")); }
    stdstr FilePath(const std::string& file) const {
        return stdstr::toTString(m_root.file("app/QGSaLangs/" + file));
    }
    std::vector<stdstr> Languages(CQGTranslationManager& manager) {
        std::vector<stdstr> languages;
        return manager.GetLanguages(languages);
    }
    stdstr LoadedEnglishName() {
        stdstr name;
        return CQGInternationalizationManager::Instance().GetEnglishName(name);
    }
    stdstr StoredChoice() {
        CRegistry registry;
        stdstr value;
        if (!registry.Open(HKEY_CURRENT_USER, CQGTranslationManager::ChoiceKey, KEY_READ) ||
            !registry.getString(CQGTranslationManager::ChoiceValue, value))
            return u"<none>";
        return value;
    }
    void StoreChoice(const stdstr& language) {
        CRegistry registry;
        ASSERT_TRUE(
            registry.Open(HKEY_CURRENT_USER, CQGTranslationManager::ChoiceKey, KEY_WRITE, true));
        ASSERT_TRUE(registry.setString(CQGTranslationManager::ChoiceValue, language));
    }

    TestSupport::SandboxRoot m_root;
    CQGTranslationManager m_manager;
};

using LanguageDiscovery = LanguageFiles;
using LanguageSelection = LanguageFiles;
using LanguageChoice = LanguageFiles;

TEST_F(LanguageDiscovery, EnglishLeadsThenBritishEnglishThenTheOthersByFileName) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    AddFile("b.ini", {Unknown, "English (UK)", "English British", "English British"});
    AddFile("c.ini", {Unknown, "English", "English", "English (US)"});
    AddFile("d.ini", {Unknown, "Nederlands", "Dutch", "Dutch"});
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"English", u"English British", u"German", u"Dutch"}));
    EXPECT_TRUE(TraceRecorder::Instance().StartingWith(TRACE_ERROR, u"TranslationManager").empty());
}

TEST_F(LanguageDiscovery, BritishEnglishFoundBeforeEnglishStandsSecond) {
    AddFile("a.ini", {Unknown, "English (UK)", "English British", "English British"});
    AddFile("b.ini", {Unknown, "English", "English", "English (US)"});
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"English", u"English British"}));
}

TEST_F(LanguageDiscovery, BritishEnglishFoundAfterEnglishStandsSecond) {
    AddFile("a.ini", {Unknown, "English", "English", "English (US)"});
    AddFile("b.ini", {Unknown, "English (UK)", "English British", "English British"});
    AddFile("c.ini", {Unknown, "Deutsch", "German", "German"});
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"English", u"English British", u"German"}));
}

TEST_F(LanguageDiscovery, BritishEnglishGoesBeforeOtherLanguages) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    AddFile("b.ini", {Unknown, "English (UK)", "English British", "English British"});
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"English British", u"German"}));
}

TEST_F(LanguageDiscovery, BritishEnglishAloneIsListed) {
    AddFile("a.ini", {Unknown, "English (UK)", "English British", "English British"});
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"English British"}));
}

TEST_F(LanguageDiscovery, OfTwoFilesWithTheSameNameTheOneFoundFirstStays) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    AddFile("b.ini", {Unknown, "Deutsch", "Austrian German", "Austrian"});
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"German"}));
}

TEST_F(LanguageDiscovery, DiscoveringTwiceAddsNothingTwice) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    m_manager.LoadLanguages(Folder());
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"German"}));
}

TEST_F(LanguageDiscovery, AFileWithoutEnglishNameIsIgnoredAndCannotBeLoaded) {
    AddFile("a.ini", {Unknown, "tlhIngan", "", "Klingon"});
    m_manager.LoadLanguages(Folder());
    EXPECT_TRUE(Languages(m_manager).empty());
    auto& recorder = TraceRecorder::Instance();
    EXPECT_EQ(recorder.Count(TRACE_ERROR, u"TranslationManager::LoadLanguages(): Empty elements (" +
                                              stdstr::toTString(Unknown) + u", , " +
                                              FilePath("a.ini") + u")"),
              1u);
    EXPECT_FALSE(m_manager.LoadLanguage(u"tlhIngan", false));
    EXPECT_FALSE(m_manager.LoadLanguage(u"Klingon", false));
    EXPECT_EQ(recorder.Count(TRACE_ERROR, u"TranslationManager::LoadLanguage(tlhIngan): Language "
                                          u"file could not be found"),
              1u);
}

TEST_F(LanguageDiscovery, AFileWithoutCharsetIsIgnored) {
    AddFile("a.ini", {"", "Deutsch", "German", "German"});
    m_manager.LoadLanguages(Folder());
    EXPECT_TRUE(Languages(m_manager).empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"TranslationManager::LoadLanguages(): Empty elements (, German, " +
                                   FilePath("a.ini") + u")"),
              1u);
}

TEST_F(LanguageDiscovery, AFileWithoutNameOrUpdateIdIsPassedOver) {
    AddFile("a.ini", {Unknown, "", "German", "German"});
    AddFile("b.ini", {Unknown, "Français", "French", ""});
    AddFile("c.ini", {Unknown, "Italiano", "Italian", "Italian"});
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"Italian"}));
    auto& recorder = TraceRecorder::Instance();
    EXPECT_EQ(
        recorder.Count(TRACE_ERROR,
                       u"TranslationManager::LoadLanguages(): Empty language name for file (" +
                           FilePath("a.ini") + u")"),
        1u);
    EXPECT_EQ(
        recorder.Count(TRACE_ERROR,
                       u"TranslationManager::LoadLanguages(): Empty Brisk Update ID for file (" +
                           FilePath("b.ini") + u")"),
        1u);
}

TEST_F(LanguageDiscovery, FoldersInsideTheLanguageFolderAreNotFiles) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    ASSERT_EQ(::mkdir(m_root.file("app/QGSaLangs/b.ini").c_str(), 0755), 0);
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"German"}));
    EXPECT_TRUE(TraceRecorder::Instance().StartingWith(TRACE_ERROR, u"TranslationManager").empty());
}

TEST_F(LanguageDiscovery, AFolderWithOrWithoutClosingSeparatorSearchesAlike) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    AddFile("b.ini", {Unknown, "English", "English", "English (US)"});
    CQGTranslationManager withSlash;
    CQGTranslationManager withBackslash;
    m_manager.LoadLanguages(Folder());
    withSlash.LoadLanguages(Folder() + u"/");
    withBackslash.LoadLanguages(Folder() + u"\\");
    EXPECT_EQ(Languages(m_manager), Names({u"English", u"German"}));
    EXPECT_EQ(Languages(withSlash), Languages(m_manager));
    EXPECT_EQ(Languages(withBackslash), Languages(m_manager));
    EXPECT_TRUE(withSlash.LoadLanguage(u"Deutsch", false));
    EXPECT_TRUE(withBackslash.LoadLanguage(u"English", false));
}

TEST_F(LanguageDiscovery, AMissingLanguageFolderIsTracedWithItsSearchPattern) {
    m_manager.LoadLanguages(Folder());
    EXPECT_TRUE(Languages(m_manager).empty());
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_ERROR, u"TranslationManager::LoadLanguages(): FindFirstFile(" + Folder() +
                                   u"/QGSaLangs/*.*) failed, error (2)"),
              1u);
}

TEST_F(LanguageDiscovery, AnEmptyFolderMeansTheProgramsFolder) {
    const stdstr programFolder = stdstr::toTString(SystemPaths::ProgramFolder());
    CQGTranslationManager named;
    m_manager.LoadLanguages(u"");
    named.LoadLanguages(programFolder);
    EXPECT_EQ(Languages(m_manager), Languages(named));
    struct stat info {};
    if (::stat((SystemPaths::ProgramFolder() + "/QGSaLangs").c_str(), &info) != 0) {
        EXPECT_EQ(TraceRecorder::Instance().Count(
                      TRACE_ERROR, u"TranslationManager::LoadLanguages(): FindFirstFile(" +
                                       programFolder + u"/QGSaLangs/*.*) failed, error (2)"),
                  2u);
    }
}

TEST_F(LanguageSelection, TheOwnNameTheEnglishNameAndTheUpdateIdReachTheSameFile) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "de-update"});
    AddFile("b.ini", {Unknown, "Français", "French", "fr-update"});
    m_manager.LoadLanguages(Folder());
    for (const char16_t* name : {u"Deutsch", u"German", u"de-update", u"DEUTSCH", u"german"}) {
        ASSERT_TRUE(m_manager.LoadLanguage(u"French", false));
        ASSERT_EQ(LoadedEnglishName(), u"French");
        EXPECT_TRUE(m_manager.LoadLanguage(name, false)) << stdstr::fromTString(name);
        EXPECT_EQ(LoadedEnglishName(), u"German") << stdstr::fromTString(name);
    }
    stdstr id;
    EXPECT_EQ(m_manager.GetBriskUpdateID(id), u"de-update");
    stdstr link;
    EXPECT_EQ(m_manager.GetWebTransLink(link), u"https://quillgate.example.org/");
}

TEST_F(LanguageSelection, ANativeNameIsMatchedWithoutRegardToCase) {
    AddFile("a.ini", {Unknown, "Français", "French", "fr-update"});
    m_manager.LoadLanguages(Folder());
    EXPECT_TRUE(m_manager.LoadLanguage(u"FRANÇAIS", false));
    EXPECT_EQ(LoadedEnglishName(), u"French");
}

TEST_F(LanguageSelection, ALanguageWhoseCharsetIsNotInstalledIsListedInEnglishButLoads) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    m_manager.EnumerateCharsets();
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"German"}));
    EXPECT_TRUE(m_manager.LoadLanguage(u"Deutsch", false));
    EXPECT_EQ(LoadedEnglishName(), u"German");
}

TEST_F(LanguageSelection, ALanguageWhoseCharsetIsInstalledIsListedByItsOwnName) {
    // Any Latin font (DejaVu is the least a desktop has) shows iso-8859-1.
    AddFile("a.ini", {"iso-8859-1", "Deutsch", "German", "German"});
    AddFile("b.ini", {Unknown, "Ελληνικά", "Greek", "Greek"});
    m_manager.EnumerateCharsets();
    m_manager.LoadLanguages(Folder());
    EXPECT_EQ(Languages(m_manager), Names({u"Deutsch", u"Greek"}));
}

TEST_F(LanguageSelection, AFileAddedAfterDiscoveryIsFoundByItsEnglishName) {
    m_manager.LoadLanguages(Folder());
    AddFile("a.ini", {Unknown, "Suomi", "Finnish", "Finnish"});
    EXPECT_TRUE(m_manager.LoadLanguage(u"finnish", false));
    EXPECT_EQ(LoadedEnglishName(), u"Finnish");
}

TEST_F(LanguageChoice, WithoutSaveNothingIsStored) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    m_manager.LoadLanguages(Folder());
    EXPECT_TRUE(m_manager.LoadLanguage(u"Deutsch", false));
    EXPECT_EQ(StoredChoice(), u"<none>");
}

TEST_F(LanguageChoice, SavingStoresTheEnglishNameForTheUser) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "de-update"});
    m_manager.LoadLanguages(Folder());
    EXPECT_TRUE(m_manager.LoadLanguage(u"de-update", true));
    EXPECT_EQ(StoredChoice(), u"German");
    stdstr used;
    EXPECT_EQ(m_manager.GetUsedLanguage(used), u"German");
}

TEST_F(LanguageChoice, TheUsedLanguageGoesByItsOwnNameWhereItsCharsetIsInstalled) {
    AddFile("a.ini", {"iso-8859-1", "Deutsch", "German", "German"});
    m_manager.EnumerateCharsets();
    m_manager.LoadLanguages(Folder());
    EXPECT_TRUE(m_manager.LoadLanguage(u"German", true));
    stdstr used;
    EXPECT_EQ(m_manager.GetUsedLanguage(used), u"Deutsch");
}

TEST_F(LanguageChoice, WithoutAStoredChoiceTheLanguageIsUSEnglish) {
    AddFile("a.ini", {Unknown, "English", "English", "English (US)"});
    m_manager.LoadLanguages(Folder());
    stdstr used;
    EXPECT_EQ(m_manager.GetUsedLanguage(used), u"English (US)");
}

TEST_F(LanguageChoice, AChoiceNamingALanguageWithoutFileComesBackUnchanged) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    m_manager.LoadLanguages(Folder());
    StoreChoice(u"Klingon");
    stdstr used;
    EXPECT_EQ(m_manager.GetUsedLanguage(used), u"Klingon");
}

TEST_F(LanguageChoice, AStoreThatCannotBeWrittenIsTracedAndTheLoadStillSucceeds) {
    AddFile("a.ini", {Unknown, "Deutsch", "German", "German"});
    m_manager.LoadLanguages(Folder());
    // A file where the configuration folder should be: no store can be made below it.
    m_root.writeFile("not-a-folder", "x");
    ASSERT_EQ(::setenv("XDG_CONFIG_HOME", m_root.file("not-a-folder").c_str(), 1), 0);

    EXPECT_TRUE(m_manager.LoadLanguage(u"Deutsch", true));
    EXPECT_EQ(LoadedEnglishName(), u"German");
    stdstr used;
    EXPECT_EQ(m_manager.GetUsedLanguage(used), u"English (US)");

    auto& recorder = TraceRecorder::Instance();
    EXPECT_EQ(
        recorder.Count(TRACE_ERROR,
                       u"TranslationManager::LoadLanguages(Deutsch): Could not create registry "
                       u"key(HKEY_CURRENT_USER, SOFTWARE\\Velloran\\Quillgate)"),
        1u);
    EXPECT_EQ(recorder.Count(TRACE_ERROR,
                             u"TranslationManager::GetUsedLanguage(): Could not create registry "
                             u"key(HKEY_CURRENT_USER, SOFTWARE\\Velloran\\Quillgate)"),
              1u);
}

// What fontconfig itself says, asked in another way than the manager asks: every font's
// language set, looked through for exactly this language.
bool SomeFontHasLanguage(const char* language) {
    FcConfig* config = FcInitLoadConfigAndFonts();
    if (config == nullptr)
        return false;
    FcPattern* pattern = FcPatternCreate();
    FcObjectSet* objects = FcObjectSetBuild(FC_LANG, nullptr);
    FcFontSet* fonts = FcFontList(config, pattern, objects);
    bool found = false;
    for (int i = 0; fonts != nullptr && i < fonts->nfont && !found; ++i) {
        FcLangSet* languages = nullptr;
        if (FcPatternGetLangSet(fonts->fonts[i], FC_LANG, 0, &languages) == FcResultMatch)
            found = FcLangSetHasLang(languages, reinterpret_cast<const FcChar8*>(language)) ==
                    FcLangEqual;
    }
    if (fonts)
        FcFontSetDestroy(fonts);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    FcConfigDestroy(config);
    return found;
}

class Charsets : public ::testing::Test {
protected:
    void SetUp() override { m_manager.EnumerateCharsets(); }
    CQGTranslationManager m_manager;
};

TEST_F(Charsets, LatinCharsetsAreInstalledWithAnyLatinFont) {
    EXPECT_TRUE(m_manager.IsCharsetInstalled(u"iso-8859-1"));
    EXPECT_TRUE(m_manager.IsCharsetInstalled(u"windows-1252"));
    EXPECT_TRUE(m_manager.IsCharsetInstalled(u"us-ascii"));
}

TEST_F(Charsets, AreComparedWithoutRegardToCase) {
    EXPECT_TRUE(m_manager.IsCharsetInstalled(u"ISO-8859-1"));
    EXPECT_TRUE(m_manager.IsCharsetInstalled(u"Windows-1252"));
}

TEST_F(Charsets, ACharsetTheTableDoesNotKnowIsNotInstalled) {
    EXPECT_FALSE(m_manager.IsCharsetInstalled(stdstr::toTString(Unknown)));
    EXPECT_FALSE(m_manager.IsCharsetInstalled(u"utf-8"));
    EXPECT_FALSE(m_manager.IsCharsetInstalled(u""));
}

TEST_F(Charsets, Big5FollowsWhatFontconfigSaysOfTraditionalChinese) {
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"big5"), SomeFontHasLanguage("zh-tw"));
}

TEST_F(Charsets, Gb2312FollowsWhatFontconfigSaysOfSimplifiedChinese) {
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"gb2312"), SomeFontHasLanguage("zh-cn"));
}

TEST_F(Charsets, ShiftJisAndKoreanFollowWhatFontconfigSays) {
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"shift_jis"), SomeFontHasLanguage("ja"));
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"ks_c_5601-1987"), SomeFontHasLanguage("ko"));
}

TEST_F(Charsets, GreekHebrewArabicAndThaiFollowWhatFontconfigSays) {
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"windows-1253"), SomeFontHasLanguage("el"));
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"windows-1255"), SomeFontHasLanguage("he"));
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"windows-1256"), SomeFontHasLanguage("ar"));
    EXPECT_EQ(m_manager.IsCharsetInstalled(u"tis-620"), SomeFontHasLanguage("th"));
}

// The installed sets are built once per process: these cases run in a process of their
// own (a death test re-executes the program), so that nothing was enumerated before them.
class CharsetsInAFreshProcess : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(CharsetsInAFreshProcess, NoneIsInstalledBeforeEnumerationAndInstanceEnumerates) {
    EXPECT_EXIT(
        {
            CQGTranslationManager manager;
            if (manager.IsCharsetInstalled(u"iso-8859-1"))
                std::_Exit(1);
            if (!CQGTranslationManager::Instance().IsCharsetInstalled(u"iso-8859-1"))
                std::_Exit(2);
            std::_Exit(manager.IsCharsetInstalled(u"iso-8859-1") ? 0 : 3);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(CharsetsInAFreshProcess, WithoutFontsEveryLanguageGoesByItsEnglishName) {
    TestSupport::SandboxRoot root;
    root.writeFile("fonts.conf", "<?xml version=\"1.0\"?>\n"
                                 "<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n"
                                 "<fontconfig></fontconfig>\n");
    root.writeFile("app/QGSaLangs/a.ini",
                   LanguageFileText::Make({"iso-8859-1", "Deutsch", "German", "German"}));
    const char* saved = std::getenv("FONTCONFIG_FILE");
    const std::string previous = saved ? saved : "";
    ::setenv("FONTCONFIG_FILE", root.file("fonts.conf").c_str(), 1);
    EXPECT_EXIT(
        {
            CQGTranslationManager manager;
            manager.EnumerateCharsets();
            manager.LoadLanguages(stdstr::toTString(root.file("app")));
            std::vector<stdstr> languages;
            manager.GetLanguages(languages);
            const bool noneInstalled = !manager.IsCharsetInstalled(u"iso-8859-1") &&
                                       !manager.IsCharsetInstalled(u"us-ascii");
            const bool englishNames = languages == std::vector<stdstr>{u"German"};
            // _Exit skips the sandbox's destructor: remove this process's folder here.
            std::filesystem::remove_all(root.path());
            std::_Exit(!noneInstalled ? 1 : englishNames ? 0 : 2);
        },
        ::testing::ExitedWithCode(0), "");
    if (saved)
        ::setenv("FONTCONFIG_FILE", previous.c_str(), 1);
    else
        ::unsetenv("FONTCONFIG_FILE");
}

} // namespace
