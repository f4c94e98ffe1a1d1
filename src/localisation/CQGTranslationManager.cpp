#include "localisation/CQGTranslationManager.h"

#include "foundation/CFile.h"
#include "foundation/CPath.h"
#include "foundation/CRegistry.h"
#include "foundation/PathFunctions.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SyncObject.h"
#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"
#include "localisation/IniFile.h"
#include "localisation/QGInternationalizationManager.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <dirent.h>
#include <fontconfig/fontconfig.h>
#include <initializer_list>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <sys/stat.h>

namespace {

// The errors a failure of the font library is reported with: E_FAIL, and E_OUTOFMEMORY
// for an object it could not make.
constexpr std::uint32_t FontLibraryFailure = 0x80004005u;
constexpr std::uint32_t OutOfMemory = 0x8007000Eu;

// Each character set by its lower-case MIME name, with the languages (fontconfig's tags)
// that are written in it. A set counts as installed when a font covers one of them: "big5"
// needs a font for zh-tw, a font for zh-cn alone does not do, since a language with a
// territory covers only itself.
struct CharsetLanguages {
    const char16_t* charset;
    std::initializer_list<const char*> languages;
};

const CharsetLanguages kCharsets[] = {
    {u"us-ascii", {"en"}},
    {u"iso-8859-1", {"en", "de", "fr", "es", "it", "nl", "pt", "da", "sv", "no", "fi"}},
    {u"windows-1252", {"en", "de", "fr", "es", "it", "nl", "pt", "da", "sv", "no", "fi"}},
    {u"iso-8859-15", {"fr", "fi", "et"}},
    {u"iso-8859-2", {"pl", "cs", "sk", "hu", "sl", "hr", "ro"}},
    {u"windows-1250", {"pl", "cs", "sk", "hu", "sl", "hr", "ro"}},
    {u"iso-8859-3", {"mt", "eo"}},
    {u"iso-8859-4", {"lt", "lv", "et"}},
    {u"iso-8859-13", {"lt", "lv", "et"}},
    {u"windows-1257", {"lt", "lv", "et"}},
    {u"iso-8859-5", {"ru", "bg", "sr", "mk"}},
    {u"windows-1251", {"ru", "bg", "sr", "mk", "uk", "be"}},
    {u"koi8-r", {"ru"}},
    {u"koi8-u", {"uk"}},
    {u"iso-8859-7", {"el"}},
    {u"windows-1253", {"el"}},
    {u"iso-8859-9", {"tr"}},
    {u"windows-1254", {"tr"}},
    {u"iso-8859-8", {"he"}},
    {u"iso-8859-8-i", {"he"}},
    {u"windows-1255", {"he"}},
    {u"iso-8859-6", {"ar"}},
    {u"windows-1256", {"ar"}},
    {u"windows-1258", {"vi"}},
    {u"windows-874", {"th"}},
    {u"tis-620", {"th"}},
    {u"iso-8859-11", {"th"}},
    {u"shift_jis", {"ja"}},
    {u"euc-jp", {"ja"}},
    {u"iso-2022-jp", {"ja"}},
    {u"gb2312", {"zh-cn"}},
    {u"gbk", {"zh-cn"}},
    {u"gb18030", {"zh-cn"}},
    {u"hz-gb-2312", {"zh-cn"}},
    {u"big5", {"zh-tw"}},
    {u"ks_c_5601-1987", {"ko"}},
    {u"euc-kr", {"ko"}},
    {u"iso-2022-kr", {"ko"}},
};

// Case folding for names and ids of languages: ASCII, Latin-1, Greek and Cyrillic capitals,
// which covers the names of every language of the product.
char16_t FoldCase(char16_t c) {
    if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return static_cast<char16_t>(c + 0x20);
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2)
        return static_cast<char16_t>(c + 0x20);
    if (c >= 0x410 && c <= 0x42F)
        return static_cast<char16_t>(c + 0x20);
    if (c >= 0x400 && c <= 0x40F)
        return static_cast<char16_t>(c + 0x50);
    return c;
}

bool EqualNoCase(const std::u16string& a, const std::u16string& b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(),
                      [](char16_t x, char16_t y) { return FoldCase(x) == FoldCase(y); });
}

stdstr Lower(const stdstr& text) {
    stdstr result(text);
    std::transform(result.begin(), result.end(), result.begin(), FoldCase);
    return result;
}

// The process-wide set of installed character sets, lower-case; null until it is known.
std::atomic<const std::set<stdstr>*> g_installedCharsets{nullptr};
std::once_flag g_charsetsOnce;

// Releases a C library object with its own function.
template <class T, void (*Destroy)(T*)>
struct CDeleter {
    void operator()(T* object) const { Destroy(object); }
};
using ConfigPtr = std::unique_ptr<FcConfig, CDeleter<FcConfig, FcConfigDestroy>>;
using ObjectSetPtr = std::unique_ptr<FcObjectSet, CDeleter<FcObjectSet, FcObjectSetDestroy>>;
using PatternPtr = std::unique_ptr<FcPattern, CDeleter<FcPattern, FcPatternDestroy>>;
using LangSetPtr = std::unique_ptr<FcLangSet, CDeleter<FcLangSet, FcLangSetDestroy>>;
using FontSetPtr = std::unique_ptr<FcFontSet, CDeleter<FcFontSet, FcFontSetDestroy>>;

// Whether a font of `config` covers `language`: its language set holds the language with
// the same territory, or one of the two has none. Empty when the font library failed.
std::optional<bool> SomeFontCovers(FcConfig* config, FcObjectSet* objects, const char* language) {
    const PatternPtr pattern(FcPatternCreate());
    const LangSetPtr languages(FcLangSetCreate());
    if (!pattern || !languages ||
        !FcLangSetAdd(languages.get(), reinterpret_cast<const FcChar8*>(language)) ||
        !FcPatternAddLangSet(pattern.get(), FC_LANG, languages.get()))
        return std::nullopt;
    const FontSetPtr fonts(FcFontList(config, pattern.get(), objects));
    if (!fonts)
        return std::nullopt;
    return fonts->nfont > 0;
}

// Asks fontconfig with a configuration of its own, released again at the end, so that
// nothing of the font library's state outlives the question.
std::set<stdstr> FindInstalledCharsets() {
    std::set<stdstr> installed;
    const ConfigPtr config(FcInitLoadConfigAndFonts());
    if (!config) {
        TraceFmt(TRACE_ERROR, u"GetInstalledCharset(): CoInitialize() failed with error: 0x%x",
                 FontLibraryFailure);
        return installed;
    }
    const ObjectSetPtr objects(FcObjectSetBuild(FC_FAMILY, nullptr));
    if (!objects) {
        TraceFmt(TRACE_ERROR,
                 u"GetInstalledCharset(): CoCreateInstance(__uuidof(CMultiLanguage) failed with "
                 u"error: 0x%x",
                 OutOfMemory);
        return installed;
    }
    // Several sets share a language: ask once per language.
    std::map<std::string, bool> covered;
    for (const CharsetLanguages& entry : kCharsets) {
        for (const char* language : entry.languages) {
            auto found = covered.find(language);
            if (found == covered.end()) {
                const std::optional<bool> answer =
                    SomeFontCovers(config.get(), objects.get(), language);
                if (!answer) {
                    TraceFmt(TRACE_ERROR,
                             u"GetInstalledCharset(): spMultiLanguage->EnumCodePages() failed "
                             u"with error: 0x%x",
                             FontLibraryFailure);
                    return {};
                }
                found = covered.emplace(language, *answer).first;
            }
            if (found->second) {
                installed.insert(entry.charset);
                break;
            }
        }
    }
    return installed;
}

void CloseFolder(DIR* directory) {
    closedir(directory);
}

// The regular files of `folder`, sorted by name so that discovery does not depend on the
// order in which the file system happens to list them. Folders, devices and pipes are
// passed over. 0, or the errno of a folder that cannot be listed.
int ListFiles(const stdstr& folder, std::vector<stdstr>& paths) {
    const std::string narrowFolder = stdstr::fromTString(folder);
    const std::unique_ptr<DIR, CDeleter<DIR, CloseFolder>> directory(opendir(narrowFolder.c_str()));
    if (!directory)
        return errno;
    std::vector<std::string> names;
    int error = 0;
    for (;;) {
        // readdir answers null at the end and on an error alike; only errno tells them apart.
        errno = 0;
        const dirent* entry = readdir(directory.get());
        if (entry == nullptr) {
            error = errno;
            break;
        }
        const std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        struct stat info {};
        if (stat((narrowFolder + "/" + name).c_str(), &info) != 0 || !S_ISREG(info.st_mode))
            continue;
        names.push_back(name);
    }
    if (error != 0 && names.empty())
        return error;
    std::sort(names.begin(), names.end());
    for (const std::string& name : names)
        paths.push_back(AppendPathComponent(folder, stdstr::toTString(name)));
    return 0;
}

} // namespace

CQGTranslationManager& CQGTranslationManager::Instance() {
    static CQGTranslationManager instance;
    instance.EnumerateCharsets();
    return instance;
}

stdstr& CQGTranslationManager::GetWebTransLink(stdstr& out) {
    return CQGInternationalizationManager::Instance().GetWebTransLink(out);
}

stdstr& CQGTranslationManager::GetBriskUpdateID(stdstr& out) {
    return CQGInternationalizationManager::Instance().GetBriskUpdateID(out);
}

void CQGTranslationManager::EnumerateCharsets() {
    Corvane::SyncObject guard(m_lock, Corvane::Infinite);
    if (m_enumerated)
        return;
    std::call_once(g_charsetsOnce, [] {
        // Built once and kept to the end of the process; readers take no lock.
        static const std::set<stdstr> charsets = FindInstalledCharsets();
        g_installedCharsets.store(&charsets, std::memory_order_release);
    });
    m_enumerated = true;
}

bool CQGTranslationManager::IsCharsetInstalled(const stdstr& charset) const {
    const std::set<stdstr>* installed = g_installedCharsets.load(std::memory_order_acquire);
    return installed != nullptr && installed->count(Lower(charset)) != 0;
}

stdstr CQGTranslationManager::LanguageFolder() const {
    const stdstr folder =
        m_folder.empty() ? stdstr::toTString(SystemPaths::ProgramFolder()) : m_folder;
    return AppendPathComponent(folder, LanguageFolderName);
}

void CQGTranslationManager::LoadLanguages(const stdstr& folder) {
    Corvane::SyncObject guard(m_lock, Corvane::Infinite);
    // CPath takes a '\' as a separator too, so a folder given either way searches alike.
    m_folder =
        folder.empty() ? stdstr::toTString(SystemPaths::ProgramFolder()) : CPath(folder).path();
    const stdstr languageFolder = LanguageFolder();

    std::vector<stdstr> files;
    if (const int error = ListFiles(languageFolder, files); error != 0) {
        TraceFmt(TRACE_ERROR,
                 u"TranslationManager::LoadLanguages(): FindFirstFile(%s) failed, error (%d)",
                 AppendPathComponent(languageFolder, u"*.*"), error);
        return;
    }

    for (const stdstr& path : files) {
        CIniFileT<CFile> file(path);
        stdstr charset;
        stdstr name;
        stdstr englishName;
        stdstr briskUpdateID;
        file.GetString(charset, u"General", u"Charset", u"");
        file.GetString(name, u"General", u"Name", u"");
        file.GetString(englishName, u"General", u"EnglishName", u"");
        file.GetString(briskUpdateID, u"General", u"BriskUpdateID", u"");

        if (charset.empty() || englishName.empty()) {
            TraceFmt(TRACE_ERROR,
                     u"TranslationManager::LoadLanguages(): Empty elements (%s, %s, %s)", charset,
                     englishName, path);
            continue;
        }
        if (name.empty()) {
            TraceFmt(TRACE_ERROR,
                     u"TranslationManager::LoadLanguages(): Empty language name for file (%s)",
                     path);
            continue;
        }
        if (briskUpdateID.empty()) {
            TraceFmt(TRACE_ERROR,
                     u"TranslationManager::LoadLanguages(): Empty Brisk Update ID for file (%s)",
                     path);
            continue;
        }
        auto language = std::make_unique<LangIdentifier>();
        language->SetName(name);
        language->SetEnglishName(englishName);
        language->SetCharset(charset);
        language->SetBriskUpdateID(briskUpdateID);
        AddLanguage(std::move(language));
    }
}

void CQGTranslationManager::AddLanguage(std::unique_ptr<LangIdentifier> language) {
    for (const auto& listed : m_languages) {
        if (listed->GetName() == language->GetName())
            return; // the file found first stays
    }
    if (language->GetEnglishName() == EnglishName) {
        m_languages.insert(m_languages.begin(), std::move(language));
    } else if (language->GetEnglishName() == BritishEnglishName) {
        if (m_languages.empty())
            m_languages.push_back(std::move(language));
        else if (m_languages.front()->GetEnglishName() == EnglishName)
            m_languages.insert(m_languages.begin() + 1, std::move(language));
        else
            m_languages.insert(m_languages.begin(), std::move(language));
    } else {
        m_languages.push_back(std::move(language));
    }
}

bool CQGTranslationManager::LoadLanguage(const stdstr& language, bool save) {
    Corvane::SyncObject guard(m_lock, Corvane::Infinite);
    stdstr target = language;
    for (const auto& listed : m_languages) {
        if (EqualNoCase(listed->GetName(), language) ||
            EqualNoCase(listed->GetEnglishName(), language) ||
            EqualNoCase(listed->GetBriskUpdateID(), language)) {
            target = listed->GetEnglishName();
            break;
        }
    }

    // The folder is read again: the file is found by its English name, whatever it is
    // called, so a file added since discovery can be chosen too.
    std::vector<stdstr> files;
    ListFiles(LanguageFolder(), files);
    for (const stdstr& path : files) {
        stdstr englishName;
        {
            CIniFileT<CFile> file(path);
            file.GetString(englishName, u"General", u"EnglishName", u"");
        }
        if (!EqualNoCase(englishName, target))
            continue;

        CQGInternationalizationManager::Instance().LoadTranslationFile(path);
        if (save) {
            CRegistry registry;
            if (!registry.keyExists(HKEY_CURRENT_USER, ChoiceKey, true)) {
                TraceFmt(TRACE_ERROR,
                         u"TranslationManager::LoadLanguages(%s): Could not create registry "
                         u"key(HKEY_CURRENT_USER, %s)",
                         language, ChoiceKey);
            } else if (!registry.Open(HKEY_CURRENT_USER, ChoiceKey, KEY_ALL_ACCESS)) {
                TraceFmt(TRACE_ERROR,
                         u"TranslationManager::LoadLanguages(%s): Failed to open Quillgate "
                         u"registry key",
                         language);
            } else if (!registry.setString(ChoiceValue, target)) {
                TraceFmt(TRACE_ERROR,
                         u"TranslationManager::LoadLanguages(%s): Failed to set language in "
                         u"registry",
                         language);
            }
        }
        return true;
    }
    TraceFmt(TRACE_ERROR, u"TranslationManager::LoadLanguage(%s): Language file could not be found",
             language);
    return false;
}

stdstr& CQGTranslationManager::GetUsedLanguage(stdstr& out) {
    stdstr language = DefaultLanguage;
    CRegistry registry;
    if (!registry.keyExists(HKEY_CURRENT_USER, ChoiceKey, true)) {
        TraceFmt(TRACE_ERROR,
                 u"TranslationManager::GetUsedLanguage(): Could not create registry "
                 u"key(HKEY_CURRENT_USER, %s)",
                 ChoiceKey);
    } else if (registry.Open(HKEY_CURRENT_USER, ChoiceKey, KEY_READ)) {
        stdstr stored;
        if (registry.getString(ChoiceValue, stored))
            language = stored;
    }

    Corvane::SyncObject guard(m_lock, Corvane::Infinite);
    for (const auto& listed : m_languages) {
        if (listed->GetEnglishName() == language) {
            out = DisplayName(*listed);
            return out;
        }
    }
    out = language;
    return out;
}

std::vector<stdstr>& CQGTranslationManager::GetLanguages(std::vector<stdstr>& out) {
    Corvane::SyncObject guard(m_lock, Corvane::Infinite);
    out.clear();
    for (const auto& listed : m_languages)
        out.push_back(DisplayName(*listed));
    return out;
}

const stdstr& CQGTranslationManager::DisplayName(const LangIdentifier& language) const {
    return IsCharsetInstalled(language.GetCharset()) ? language.GetName()
                                                     : language.GetEnglishName();
}
