#pragma once
// The translation store: the texts of one language in memory, read from the "QGSection" of
// one language file, and the five fields of its "General" section. It turns keys, and
// composed texts with "##" between a key and its parameters and "####" between sentences,
// into sentences. One instance serves the process; its own mutex keeps a lookup from ever
// seeing a half-loaded language.

#include "foundation/Mutex.h"
#include "foundation/TraceLevels.h"
#include "foundation/stdstr.h"
#include "localisation/InternationalizationInterface.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

class CQGInternationalizationManager : public Corvane::Mutex, public InternationalizationInterface {
public:
    // Default of "BriskUpdateID" when the file has none.
    static constexpr const char16_t* DefaultBriskUpdateID = u"English (US)";
    // Default of "WebTransLink": the deployment's home page.
    static const char16_t* DefaultWebTransLink();
    // The level of the per-key line written at each load: the raw form (no date, thread or
    // label), and only for a sink that asks for details, since it repeats the whole file.
    static constexpr std::uint32_t KeyValueTraceLevel = TRACE_RAW | TRACE_DETAIL;

    // The process's store, built at the first call and destroyed at exit.
    static CQGInternationalizationManager& Instance();

    // An empty store: lookups return the key until a file is loaded. The process uses
    // Instance(); tests and tools may keep a store of their own.
    CQGInternationalizationManager();
    ~CQGInternationalizationManager() override;

    void LoadTranslationFile(const stdstr& path) override;
    stdstr& GetTranslatedString(stdstr& out, const stdstr& text) override;
    stdstr& GetTranslatedString(stdstr& out, const stdstr& key, const stdstr& parameters) override;
    stdstr& GetTranslatedString(stdstr& out, const stdstr& key,
                                const std::vector<stdstr>& parameterVector) override;
    bool IsRightToLeftLangSupported() override;
    // The getters do not wait for a load in progress (see m_fieldsLock).
    stdstr& GetCharset(stdstr& out) override;
    stdstr& GetName(stdstr& out) override;
    stdstr& GetEnglishName(stdstr& out) override;
    stdstr& GetBriskUpdateID(stdstr& out) override;
    stdstr& GetWebTransLink(stdstr& out) override;

    // Splits `text` at each "##" and appends every piece to `vector`, the last one too, even
    // when it is empty ("A##" has one empty parameter behind the key).
    static void FillParamVector(const stdstr& text, std::vector<stdstr>& vector);

private:
    stdstr& TranslateKey(stdstr& out, const stdstr& key, const std::vector<stdstr>& parameters);
    stdstr GetField(const stdstr& field);

    std::map<stdstr, stdstr> m_texts;
    stdstr m_charset;
    stdstr m_name;
    stdstr m_englishName;
    stdstr m_briskUpdateID;
    stdstr m_webTransLink;
    // The field getters take no part in the store's mutex, so they never wait for a load;
    // this small lock only keeps a getter from copying a string while a load assigns it.
    std::mutex m_fieldsLock;
};
