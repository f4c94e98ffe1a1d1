// The shipped language files: the English one made by resource-to-lang answers every
// lookup of the program with the table's text, and every hand-made file has the English
// key set with the same format conversions per key, readable as written.
#include "StringTable.h"
#include "localisation/CQGTranslationManager.h"
#include "localisation/CTranslator.h"
#include "localisation/IniFile.h"
#include "localisation/QGEntString.h"
#include "localisation/QGInternationalizationManager.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

const std::string LanguageFolder = std::string(QG_SOURCE_DIR) + "/resources/QGSaLangs";
const std::string ResourceHeader = std::string(QG_SOURCE_DIR) + "/resources/strings/resource.h";
// The foundation's error keys, whose sentences come from resources/strings/ErrorSentences.txt.
constexpr std::size_t ErrorKeyCount = 20;

// The table's text as a language file must give it back: without the '*' marker.
stdstr Unmarked(const char16_t* text) {
    stdstr result(text);
    if (!result.empty() && result.front() == u'*')
        result.erase(0, 1);
    return result;
}

std::vector<std::string> LanguageFiles() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(LanguageFolder)) {
        if (entry.is_regular_file())
            files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::map<stdstr, stdstr> Section(const std::string& path, const char16_t* section) {
    CIniFileT<CFile> file(stdstr::toTString(path));
    std::map<stdstr, stdstr> entries;
    file.GetSection(section, entries);
    return entries;
}

// The printf conversions of a text in order ("%s", "%ld", "%d"), which callers fill.
std::vector<stdstr> Conversions(const stdstr& text) {
    std::vector<stdstr> found;
    for (std::size_t i = text.find(u'%'); i != stdstr::npos; i = text.find(u'%', i + 1)) {
        std::size_t end = i + 1;
        while (end < text.size() && std::u16string_view(u"-+ #0123456789.lhI").find(text[end]) !=
                                        std::u16string_view::npos)
            ++end;
        if (end < text.size())
            found.push_back(text.substr(i, end - i + 1));
        i = end;
    }
    return found;
}

// Every "key=value" line of a section as it stands in the file, for comparison with what
// the reader makes of it.
std::map<stdstr, stdstr> RawSection(const std::string& path, const std::string& section) {
    const std::string text = TestSupport::SandboxRoot::readFile(path);
    std::map<stdstr, stdstr> entries;
    bool inside = false;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty() && line.front() == '[')
            inside = line == "[" + section + "]";
        else if (inside && line.find('=') != std::string::npos)
            entries.emplace(stdstr::toTString(line.substr(0, line.find('='))),
                            stdstr::toTString(line.substr(line.find('=') + 1)));
        start = end + 1;
    }
    return entries;
}

TEST(LanguageFiles, TheToolsOutputGivesBackEveryEnglishTextOfTheTable) {
    TestSupport::SandboxRoot root;
    const stdstr output = stdstr::toTString(root.file("English.ini"));
    ASSERT_TRUE(QGEntString::ResourceToString(stdstr::toTString(ResourceHeader), output));
    CQGInternationalizationManager store;
    store.LoadTranslationFile(output);
    for (const auto& entry : QGResources::EnglishStringTable()) {
        stdstr key;
        key.Format(u"QGSA_%d", entry.id);
        stdstr text;
        EXPECT_EQ(store.GetTranslatedString(text, key), Unmarked(entry.text)) << entry.id;
    }
}

TEST(LanguageFiles, ErrorKeysTranslateTheFoundationsComposedMessages) {
    CQGInternationalizationManager::Instance().LoadTranslationFile(
        stdstr::toTString(LanguageFolder + "/English.ini"));
    stdstr sentence;
    CQGInternationalizationManager::Instance().GetTranslatedString(
        sentence, u"QGOpenFile##/tmp/x.ini##Windows OS Error: No such file or directory");
    EXPECT_EQ(sentence, u"The file /tmp/x.ini could not be opened: Windows OS Error: No such "
                        u"file or directory");
}

TEST(LanguageFiles, TheProgramsLookupsFindEveryTextInTheEnglishFile) {
    CQGInternationalizationManager::Instance().LoadTranslationFile(
        stdstr::toTString(LanguageFolder + "/English.ini"));
    CTranslator translator;
    QGEntString::m_pLocalizer = &translator;
    for (const auto& entry : QGResources::EnglishStringTable()) {
        QGEntString text;
        EXPECT_TRUE(text.LoadString(entry.id)) << entry.id;
        // Found in the file, not in the table: the marker would show otherwise.
        EXPECT_EQ(text.GetString(), Unmarked(entry.text)) << entry.id;
    }
    QGEntString::m_pLocalizer = nullptr;
}

TEST(LanguageFiles, EveryFileHasTheEnglishKeysWithTheSameConversions) {
    const auto english = Section(LanguageFolder + "/English.ini", u"QGSection");
    // One key per string of the table, and the sentences of the error keys.
    ASSERT_EQ(english.size(), QGResources::EnglishStringTable().size() + ErrorKeyCount);
    EXPECT_EQ(english.at(u"QGFuncFailed"), u"The function %s failed: %s");
    const auto files = LanguageFiles();
    ASSERT_GE(files.size(), 3u);
    for (const std::string& path : files) {
        const auto entries = Section(path, u"QGSection");
        EXPECT_EQ(entries.size(), english.size()) << path;
        for (const auto& [key, text] : english) {
            const auto found = entries.find(key);
            ASSERT_NE(found, entries.end()) << path << ": " << stdstr::fromTString(key);
            EXPECT_EQ(Conversions(found->second), Conversions(text))
                << path << ": " << stdstr::fromTString(key);
            EXPECT_FALSE(found->second.empty()) << path << ": " << stdstr::fromTString(key);
        }
    }
}

TEST(LanguageFiles, EveryValueReadsAsItIsWritten) {
    // The reader cuts a value at "//" without a ':' before it and drops blanks at its end:
    // a value it would change is a value the file cannot hold.
    for (const std::string& path : LanguageFiles()) {
        for (const char* section : {"General", "QGSection"}) {
            const auto raw = RawSection(path, section);
            const auto read = Section(path, stdstr::toTString(section).c_str());
            EXPECT_EQ(read, raw) << path << " [" << section << "]";
            for (const auto& [key, value] : raw)
                EXPECT_EQ(value.find(u'\uFFFD'), stdstr::npos) << path << ": not UTF-8";
        }
    }
}

TEST(LanguageFiles, EveryFileHasTheFiveGeneralFields) {
    for (const std::string& path : LanguageFiles()) {
        const auto general = Section(path, u"General");
        for (const char16_t* field :
             {u"Charset", u"Name", u"EnglishName", u"BriskUpdateID", u"WebTransLink"}) {
            const auto found = general.find(field);
            ASSERT_NE(found, general.end()) << path << ": " << stdstr::fromTString(field);
            EXPECT_FALSE(found->second.empty()) << path << ": " << stdstr::fromTString(field);
        }
    }
}

TEST(LanguageFiles, EveryShippedLanguageIsFoundAndLoadsByTheNamesOfTheSetting) {
    CQGTranslationManager manager;
    manager.LoadLanguages(stdstr::toTString(std::string(QG_SOURCE_DIR) + "/resources"));
    std::vector<stdstr> languages;
    manager.GetLanguages(languages);
    ASSERT_EQ(languages.size(), LanguageFiles().size());
    // English leads, and its own name and its English name are the same.
    EXPECT_EQ(languages.front(), u"English");

    // The names that the language ids of the setting map to.
    const std::pair<const char16_t*, const char16_t*> byName[] = {
        {u"English (US)", u"English"}, {u"German", u"German"}, {u"French", u"French"}};
    for (const auto& [name, englishName] : byName) {
        EXPECT_TRUE(manager.LoadLanguage(name, false)) << stdstr::fromTString(name);
        stdstr loaded;
        EXPECT_EQ(CQGInternationalizationManager::Instance().GetEnglishName(loaded), englishName);
    }
}

} // namespace
