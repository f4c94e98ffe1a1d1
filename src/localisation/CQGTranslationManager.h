#pragma once
// Finds the language files in "QGSaLangs" beside the program, knows which of them the
// system can display, selects one by name into the translation store and remembers the
// user's choice. A language goes by its own name only where a font for its character set
// is installed; elsewhere by its English name, which any font can show.

#include "foundation/Mutex.h"
#include "foundation/stdstr.h"

#include <memory>
#include <vector>

class CQGTranslationManager {
public:
    // One language file's "General" fields, as found at discovery.
    class LangIdentifier {
    public:
        LangIdentifier() = default;
        virtual ~LangIdentifier() = default;

        virtual void SetName(const stdstr& name) { m_name = name; }
        virtual const stdstr& GetName() const { return m_name; }
        virtual void SetEnglishName(const stdstr& englishName) { m_englishName = englishName; }
        virtual const stdstr& GetEnglishName() const { return m_englishName; }
        virtual void SetCharset(const stdstr& charset) { m_charset = charset; }
        virtual const stdstr& GetCharset() const { return m_charset; }
        virtual void SetBriskUpdateID(const stdstr& id) { m_briskUpdateID = id; }
        virtual const stdstr& GetBriskUpdateID() const { return m_briskUpdateID; }

    private:
        stdstr m_name;
        stdstr m_englishName;
        stdstr m_charset;
        stdstr m_briskUpdateID;
    };

    // The folder of the language files, below the folder given to LoadLanguages.
    static constexpr const char16_t* LanguageFolderName = u"QGSaLangs";
    // Where the user's choice is kept, below HKEY_CURRENT_USER, as the English name.
    static constexpr const char16_t* ChoiceKey = u"SOFTWARE\\Velloran\\Quillgate";
    static constexpr const char16_t* ChoiceValue = u"Language";
    // The language when no choice is stored.
    static constexpr const char16_t* DefaultLanguage = u"English (US)";
    // The English names that lead the list.
    static constexpr const char16_t* EnglishName = u"English";
    static constexpr const char16_t* BritishEnglishName = u"English British";

    // The program's one object, made at the first call; every call also makes sure that the
    // installed character sets are known.
    static CQGTranslationManager& Instance();

    // An object with an empty list. The program uses Instance(); tests make their own.
    CQGTranslationManager() = default;
    virtual ~CQGTranslationManager() = default;
    CQGTranslationManager(const CQGTranslationManager&) = delete;
    CQGTranslationManager& operator=(const CQGTranslationManager&) = delete;

    // Forward to the translation store: the loaded language's web link and update id.
    virtual stdstr& GetWebTransLink(stdstr& out);
    stdstr& GetBriskUpdateID(stdstr& out);

    // Learns once per process which character sets the installed fonts can display.
    void EnumerateCharsets();

    // Adds the language files of `folder`/QGSaLangs to the list (an empty `folder`: the
    // program's folder). A file without "Charset" or "EnglishName", "Name" or
    // "BriskUpdateID" is passed over, as is a second file with a "Name" already listed.
    void LoadLanguages(const stdstr& folder);
    // Loads the file of `language` (its own name, English name or update id, in any case)
    // into the translation store; with `save` the choice is kept for the user. False when no
    // file has that English name. What the store's load throws is thrown on.
    bool LoadLanguage(const stdstr& language, bool save);
    // The name to show for the user's stored choice.
    stdstr& GetUsedLanguage(stdstr& out);
    // The names to show, English first, then British English, then the others in the order
    // of their file names.
    std::vector<stdstr>& GetLanguages(std::vector<stdstr>& out);

    // Whether a font for `charset` (a MIME name such as "iso-8859-1" or "big5", any case) is
    // installed. A charset this program does not know is not installed; before
    // EnumerateCharsets none is.
    bool IsCharsetInstalled(const stdstr& charset) const;

private:
    // The name a language is shown by: its own where its charset is installed.
    const stdstr& DisplayName(const LangIdentifier& language) const;
    void AddLanguage(std::unique_ptr<LangIdentifier> language);
    // The folder that holds the language files, from the stored folder.
    stdstr LanguageFolder() const;

    std::vector<std::unique_ptr<LangIdentifier>> m_languages;
    Corvane::Mutex m_lock{nullptr};
    bool m_enumerated = false;
    stdstr m_folder;
};
