#include "localisation/QGInternationalizationManager.h"

#include "StringTable.h"
#include "foundation/BaseException.h"
#include "foundation/SyncObject.h"
#include "foundation/Trace.h"
#include "localisation/FontLanguageCoverage.h"
#include "localisation/IniFile.h"

#include <cerrno>

namespace {

constexpr std::u16string_view FieldSeparator = u"##";
constexpr std::u16string_view SentenceSeparator = u"####";

// What the user sees for a key without a sentence: the key and its parameters, composed
// again, so that nothing of the message is lost.
stdstr ComposedForm(const stdstr& key, const std::vector<stdstr>& parameters) {
    stdstr composed = key;
    for (const auto& parameter : parameters) {
        composed += FieldSeparator;
        composed += parameter;
    }
    return composed;
}

unsigned LastError() {
    return static_cast<unsigned>(errno);
}

} // namespace

const char16_t* CQGInternationalizationManager::DefaultWebTransLink() {
    return u"" QG_HOME_PAGE;
}

CQGInternationalizationManager& CQGInternationalizationManager::Instance() {
    static CQGInternationalizationManager instance;
    return instance;
}

CQGInternationalizationManager::CQGInternationalizationManager()
    : Corvane::Mutex(nullptr), m_briskUpdateID(DefaultBriskUpdateID),
      m_webTransLink(DefaultWebTransLink()) {}

CQGInternationalizationManager::~CQGInternationalizationManager() = default;

void CQGInternationalizationManager::LoadTranslationFile(const stdstr& path) {
    TraceFmt(TRACE_FUNC, u"CQGInternationalizationManager::LoadTranslationFile(%s): Start", path);
    {
        Corvane::SyncObject guard(*this, Corvane::Infinite);
        try {
            // Opening creates a missing file where the folder is writable, so such a path
            // gives an empty language rather than a failure. Opening is the whole check: a
            // language file carries no signature.
            CIniFileT<CFile> file(path);
            if (!file.IsOpen()) {
                TraceFmt(TRACE_ERROR,
                         u"CQGInternationalizationManager::LoadTranslationFile(): Could not load "
                         u"or verify the file %s",
                         path);
            } else {
                // Every field gets its default when the key is missing, so nothing of the
                // previous language survives.
                stdstr charset, name, englishName, briskUpdateID, webTransLink;
                file.GetString(charset, u"General", u"Charset", u"");
                file.GetString(name, u"General", u"Name", u"");
                file.GetString(englishName, u"General", u"EnglishName", u"");
                file.GetString(briskUpdateID, u"General", u"BriskUpdateID", DefaultBriskUpdateID);
                file.GetString(webTransLink, u"General", u"WebTransLink", DefaultWebTransLink());
                {
                    std::lock_guard fields(m_fieldsLock);
                    m_charset = charset;
                    m_name = name;
                    m_englishName = englishName;
                    m_briskUpdateID = briskUpdateID;
                    m_webTransLink = webTransLink;
                }
                // The bracket missing after the name belongs to the line as it has always
                // been written; log readers match it.
                TraceFmt(TRACE_DEBUG,
                         u"CQGInternationalizationManager::LoadTranslationFile(%s): Charset (%s), "
                         u"Name (%s, EnglishName (%s), Brisk Update ID (%s), Web link (%s)",
                         path, charset, name, englishName, briskUpdateID, webTransLink);

                m_texts.clear();
                file.GetSection(u"QGSection", m_texts);
                for (auto& [key, value] : m_texts) {
                    value = replaceAll(replaceAll(value, u"#\\#r", u"\r"), u"#\\#n", u"\n");
                    TraceMsg(KeyValueTraceLevel,
                             stdstr(u"CQGInternationalizationManager::LoadTranslationFile(): "
                                    u"KeyValue: ") +
                                 key + u" = " + value);
                }
            }
        } catch (const BaseException&) {
            TraceFmt(TRACE_ERROR, u"CQGInternationalizationManager::LoadTranslationFile(%s)", path);
            throw;
        } catch (...) {
            TraceFmt(TRACE_ERROR,
                     u"CQGInternationalizationManager::LoadTranslationFile(%s): Unhandled "
                     u"Exception 0x%x",
                     path, LastError());
            throw;
        }
    }
    TraceFmt(TRACE_FUNC, u"CQGInternationalizationManager::LoadTranslationFile(%s): End", path);
}

stdstr& CQGInternationalizationManager::TranslateKey(stdstr& out, const stdstr& key,
                                                     const std::vector<stdstr>& parameters) {
    const int count = static_cast<int>(parameters.size());
    const auto found = m_texts.find(key);
    if (found == m_texts.end()) {
        TraceFmt(TRACE_WARN,
                 u"CQGInternationalizationManager::GetTranslatedString(%s, %d): Key could not be "
                 u"found",
                 key, count);
        out = ComposedForm(key, parameters);
        return out;
    }
    out = found->second;
    for (const auto& parameter : parameters) {
        // Searched from the start each time: a parameter that holds "%s" itself is filled by
        // the next one. Surplus parameters find no place and are dropped; surplus "%s" stay.
        const std::size_t place = out.find(u"%s");
        if (place == stdstr::npos)
            continue;
        out.replace(place, 2, parameter);
        TraceFmt(TRACE_AUDIT,
                 u"CQGInternationalizationManager::GetTranslatedString(%s, %d): Replace param "
                 u"with %s",
                 key, count, parameter);
    }
    TraceFmt(TRACE_AUDIT,
             u"CQGInternationalizationManager::GetTranslatedString(%s, %d): Returned (%s)", key,
             count, out);
    return out;
}

stdstr&
CQGInternationalizationManager::GetTranslatedString(stdstr& out, const stdstr& key,
                                                    const std::vector<stdstr>& parameterVector) {
    const int count = static_cast<int>(parameterVector.size());
    TraceFmt(TRACE_AUDIT, u"CQGInternationalizationManager::GetTranslatedString(%s, %d): Start",
             key, count);
    stdstr result;
    {
        Corvane::SyncObject guard(*this, Corvane::Infinite);
        // A lookup never fails: whatever goes wrong, the user gets the composed text.
        try {
            TranslateKey(result, key, parameterVector);
        } catch (const BaseException& e) {
            TraceFmt(TRACE_ERROR,
                     u"CQGInternationalizationManager::GetTranslatedString(%s, %d): Exception (%s)",
                     key, count, e.GetFullMessage());
            result = ComposedForm(key, parameterVector);
        } catch (...) {
            TraceFmt(TRACE_ERROR,
                     u"CQGInternationalizationManager::GetTranslatedString(%s, %d): Unhandled "
                     u"Exception 0x%x",
                     key, count, LastError());
            result = ComposedForm(key, parameterVector);
        }
    }
    if (result.find(u"<BR/>") != stdstr::npos)
        result = replaceAll(result, u"<BR/>", u"\r\n");
    TraceFmt(TRACE_AUDIT, u"CQGInternationalizationManager::GetTranslatedString(%s, %d): End", key,
             count);
    out = std::move(result);
    return out;
}

stdstr& CQGInternationalizationManager::GetTranslatedString(stdstr& out, const stdstr& key,
                                                            const stdstr& parameters) {
    // Copies: `out` may be the caller's key or parameters.
    const stdstr keyText = key;
    const stdstr parameterText = parameters;
    TraceFmt(TRACE_AUDIT, u"CQGInternationalizationManager::GetTranslatedString(%s, %s): Start",
             keyText, parameterText);
    std::vector<stdstr> parameterVector;
    FillParamVector(parameterText, parameterVector);
    GetTranslatedString(out, keyText, parameterVector);
    TraceFmt(TRACE_AUDIT, u"CQGInternationalizationManager::GetTranslatedString(%s, %s): End",
             keyText, parameterText);
    return out;
}

stdstr& CQGInternationalizationManager::GetTranslatedString(stdstr& out, const stdstr& text) {
    const stdstr composed = text; // `out` may be the caller's text
    if (composed.find(SentenceSeparator) != stdstr::npos) {
        stdstr sentences;
        std::size_t start = 0;
        for (;;) {
            const std::size_t end = composed.find(SentenceSeparator, start);
            const stdstr piece =
                composed.substr(start, end == stdstr::npos ? stdstr::npos : end - start);
            TraceFmt(TRACE_AUDIT,
                     u"CQGInternationalizationManager::GetTranslatedString(%s): Found msg (%s)",
                     composed, piece);
            if (!piece.empty()) {
                stdstr sentence;
                sentences += GetTranslatedString(sentence, piece);
            }
            if (end == stdstr::npos)
                break;
            start = end + SentenceSeparator.size();
        }
        out = std::move(sentences);
        return out;
    }
    const std::size_t field = composed.find(FieldSeparator);
    if (field != stdstr::npos) {
        std::vector<stdstr> parameters;
        FillParamVector(composed.substr(field + FieldSeparator.size()), parameters);
        return GetTranslatedString(out, stdstr(composed.substr(0, field)), parameters);
    }
    return GetTranslatedString(out, composed, std::vector<stdstr>());
}

void CQGInternationalizationManager::FillParamVector(const stdstr& text,
                                                     std::vector<stdstr>& vector) {
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = text.find(FieldSeparator, start);
        stdstr piece = text.substr(start, end == stdstr::npos ? stdstr::npos : end - start);
        TraceFmt(TRACE_AUDIT,
                 u"CQGInternationalizationManager::FillParamVector(%s): Add param (%s)", text,
                 piece);
        vector.push_back(std::move(piece));
        if (end == stdstr::npos)
            return;
        start = end + FieldSeparator.size();
    }
}

bool CQGInternationalizationManager::IsRightToLeftLangSupported() {
    // Windows' language groups 12 (Hebrew) and 13 (Arabic): installed here when a font
    // covers the language.
    const bool supported =
        FontLanguageCoverage::IsCovered("he") || FontLanguageCoverage::IsCovered("ar");
    TraceFmt(TRACE_PERIODIC,
             supported ? u"CQGInternationalizationManager::IsRightToLeftLangSupported(): Right to "
                         u"Left languages are supported"
                       : u"CQGInternationalizationManager::IsRightToLeftLangSupported(): Right to "
                         u"Left languages are not supported");
    return supported;
}

stdstr CQGInternationalizationManager::GetField(const stdstr& field) {
    std::lock_guard fields(m_fieldsLock);
    return field;
}

stdstr& CQGInternationalizationManager::GetCharset(stdstr& out) {
    return out = GetField(m_charset);
}

stdstr& CQGInternationalizationManager::GetName(stdstr& out) {
    return out = GetField(m_name);
}

stdstr& CQGInternationalizationManager::GetEnglishName(stdstr& out) {
    return out = GetField(m_englishName);
}

stdstr& CQGInternationalizationManager::GetBriskUpdateID(stdstr& out) {
    return out = GetField(m_briskUpdateID);
}

stdstr& CQGInternationalizationManager::GetWebTransLink(stdstr& out) {
    return out = GetField(m_webTransLink);
}
