#pragma once
// The string of every text a user sees. Asked for a string id, it makes the key
// "QGSA_<id>", has the process's ILocalizer translate it, and falls back on the program's
// English string table when the language file has no sentence; the table's '*' marker then
// shows the user that a translation is missing. The text itself is the stdstr base, so
// assignment and comparison are those of the string.

#include "foundation/stdstr.h"
#include "localisation/ILocalizer.h"

#include <atomic>
#include <cstdint>

class QGEntString : public stdstr {
public:
    // Room of the buffer of the first TranslateKey call; only a longer sentence costs an
    // allocation and a second call.
    static constexpr std::uint32_t StackBufferSize = 1999;
    // Key prefixes: this program's strings and the plug-in's.
    static constexpr const char16_t* ProgramKeyPrefix = u"QGSA_";
    static constexpr const char16_t* PluginKeyPrefix = u"QGPLG_";
    // The error reported when a string id is not in the table (Windows'
    // ERROR_RESOURCE_NAME_NOT_FOUND, the number a failed LoadString leaves behind, so the
    // maintainer's trace reads the same everywhere).
    static constexpr int ErrorResourceNameNotFound = 1814;

    // The translator shared by all objects of the process; null until start-up installs one
    // (the message pump's thread already runs then, hence atomic). Set once, never deleted
    // through this pointer.
    static inline std::atomic<ILocalizer*> m_pLocalizer{nullptr};

    QGEntString() = default;
    // Loads string `id` at once.
    explicit QGEntString(std::uint32_t id);
    QGEntString(const char16_t* text);
    QGEntString(const stdstr& text);
    QGEntString(const QGEntString&) = default;
    QGEntString& operator=(const QGEntString&) = default;
    QGEntString& operator=(const stdstr& text);
    QGEntString& operator=(const char16_t* text);
    virtual ~QGEntString() = default;

    // The translation of string `id`, else the table's text. False (and an empty text) only
    // when neither the language file nor the table has the id.
    bool LoadString(std::uint32_t id);
    // The translation of `key` (which may be a composed text), else the key itself. Always
    // true: there is no table to fall back on.
    bool LoadString(const stdstr& key);

    // "QGPLG_<id>": the key of one of the plug-in's own strings.
    static void MakePluginKey(stdstr& out, std::uint32_t id);

    const stdstr& GetString() const { return *this; }

    // For whoever prepares translations, never called by the running program: reads the
    // "#define IDS_... <number>" (and "FW_...") lines of a resource header and writes a
    // language file's "QGSection" with the table's text of each id, without its '*' marker,
    // line breaks escaped as "#\#r" and "#\#n". The keys are "QGSA_<number>", the form that
    // LoadString(id) asks for, because the texts come from this program's table. The file is
    // UTF-8 with "\r\n" line ends. True when the file was written.
    static bool ResourceToString(const stdstr& headerPath, const stdstr& outputPath);

private:
    enum class Outcome { Translated, Untranslated, Failed };
    struct TraceTexts;
    // The trace lines of LoadString(id) and of LoadString(key).
    static const TraceTexts IdTraceTexts;
    static const TraceTexts KeyTraceTexts;

    // Asks the localizer for `key`; on Translated the text is in `text`. Trace lines name
    // `subject`, the id or the key, in the form of `texts`.
    static Outcome Translate(ILocalizer& localizer, const stdstr& key, const TraceTexts& texts,
                             const Corvane::FormatArg& subject, stdstr& text);
    // The table's text of `id`, or an empty text and false.
    bool LoadFromTable(std::uint32_t id);
};
