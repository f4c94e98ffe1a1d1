#include "localisation/QGEntString.h"

#include "StringTable.h"
#include "foundation/BaseException.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/FileString.h"
#include "foundation/Trace.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>
#include <vector>

// The trace lines of the two LoadString forms, which differ only in how they name what
// was asked for.
struct QGEntString::TraceTexts {
    const char16_t* notSet;
    const char16_t* exception;
    const char16_t* unhandled;
    const char16_t* requiresSize;
    const char16_t* allocation;
    const char16_t* returned;
};

const QGEntString::TraceTexts QGEntString::IdTraceTexts{
    u"QGEntString::LoadString(%d): Localizer interface was not set",
    u"QGEntString::LoadString(%d): Exception 0x%x",
    u"QGEntString::LoadString(%d): Unhandled exception",
    u"QGEntString::LoadString(%d): Translation requires size of %d",
    u"QGEntString::LoadString(%d): Memory allocation problem",
    u"QGEntString::LoadString(%d): m_pLocalizer->TranslateKey returned 0x%x",
};

const QGEntString::TraceTexts QGEntString::KeyTraceTexts{
    u"QGEntString::LoadString(%s): Localizer interface was not set",
    u"QGEntString::LoadString(%s): Exception 0x%x",
    u"QGEntString::LoadString(%s): Unhandled exception",
    u"QGEntString::LoadString(%s): Translation requires size of %d",
    u"QGEntString::LoadString(%s): Memory allocation problem",
    u"QGEntString::LoadString(%s): m_pLocalizer->TranslateKey returned 0x%x",
};

namespace {

// The text in `buffer` up to its terminator, never reading past `size` characters even
// when a localizer forgot the terminator.
stdstr TerminatedText(const char16_t* buffer, std::size_t size) {
    const char16_t* end = std::find(buffer, buffer + size, u'\0');
    return stdstr(buffer, static_cast<std::size_t>(end - buffer));
}

// Calls TranslateKey and turns anything it throws into a trace line. The foundation's
// exceptions carry a code, as the structured exceptions of the Windows build did, and are
// traced with it; anything else is "Unhandled". False when it threw.
bool CallTranslateKey(ILocalizer& localizer, const stdstr& key, char16_t* buffer,
                      std::uint32_t bufferSize, std::uint32_t& required, std::int32_t& code,
                      const char16_t* exceptionText, const char16_t* unhandledText,
                      const Corvane::FormatArg& subject) {
    try {
        code = localizer.TranslateKey(key.c_str(), static_cast<std::uint32_t>(key.size()), buffer,
                                      bufferSize, &required);
        return true;
    } catch (const BaseException& e) {
        TraceFmt(TRACE_ERROR, exceptionText, subject, static_cast<std::uint32_t>(e.GetCode()));
    } catch (const Corvane::BaseException& e) {
        TraceFmt(TRACE_ERROR, exceptionText, subject, static_cast<std::uint32_t>(e.GetCode()));
    } catch (...) {
        TraceFmt(TRACE_ERROR, unhandledText, subject);
    }
    return false;
}

bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == u'\f' || c == u'\v';
}

bool IsNameCharacter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'_';
}

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

std::size_t SkipBlanks(const stdstr& line, std::size_t pos) {
    while (pos < line.size() && IsBlank(line[pos]))
        ++pos;
    return pos;
}

// The id of a digit run; a number beyond 32 bits names no string and so gives the largest
// id, which the table does not have.
std::uint32_t ParseId(const stdstr& digits) {
    std::uint64_t value = 0;
    for (char16_t c : digits) {
        value = value * 10 + static_cast<std::uint64_t>(c - u'0');
        if (value > std::numeric_limits<std::uint32_t>::max())
            return std::numeric_limits<std::uint32_t>::max();
    }
    return static_cast<std::uint32_t>(value);
}

} // namespace

QGEntString::QGEntString(std::uint32_t id) {
    LoadString(id);
}

QGEntString::QGEntString(const char16_t* text) : stdstr(text) {}

QGEntString::QGEntString(const stdstr& text) : stdstr(text) {}

QGEntString& QGEntString::operator=(const stdstr& text) {
    stdstr::operator=(text);
    return *this;
}

QGEntString& QGEntString::operator=(const char16_t* text) {
    stdstr::operator=(stdstr(text));
    return *this;
}

bool QGEntString::LoadString(std::uint32_t id) {
    stdstr key;
    key.Format(u"QGSA_%d", id);
    ILocalizer* localizer = m_pLocalizer.load(std::memory_order_acquire);
    if (localizer == nullptr) {
        TraceFmt(TRACE_ERROR, IdTraceTexts.notSet, id);
        return LoadFromTable(id);
    }
    stdstr text;
    switch (Translate(*localizer, key, IdTraceTexts, Corvane::FormatArg(id), text)) {
    case Outcome::Translated:
        stdstr::operator=(std::move(text));
        return true;
    case Outcome::Untranslated:
    case Outcome::Failed:
        break;
    }
    // The table's text keeps its '*': the user sees the marker only for a sentence that
    // the language file lacks.
    return LoadFromTable(id);
}

bool QGEntString::LoadString(const stdstr& key) {
    ILocalizer* localizer = m_pLocalizer.load(std::memory_order_acquire);
    if (localizer == nullptr) {
        TraceFmt(TRACE_ERROR, KeyTraceTexts.notSet, key);
        stdstr::operator=(key);
        return true;
    }
    stdstr text;
    if (Translate(*localizer, key, KeyTraceTexts, Corvane::FormatArg(key), text) ==
        Outcome::Translated) {
        stdstr::operator=(std::move(text));
    } else {
        // No table behind a key: the key itself is the text, as the store answers for a key
        // it does not have.
        stdstr::operator=(key);
    }
    return true;
}

QGEntString::Outcome QGEntString::Translate(ILocalizer& localizer, const stdstr& key,
                                            const TraceTexts& texts,
                                            const Corvane::FormatArg& subject, stdstr& text) {
    char16_t buffer[StackBufferSize];
    buffer[0] = u'\0';
    std::uint32_t required = 0;
    std::int32_t code = 0;
    if (!CallTranslateKey(localizer, key, buffer, StackBufferSize, required, code, texts.exception,
                          texts.unhandled, subject)) {
        // Whatever the buffer holds after a throw is not a translation: fall back as for a
        // failed call.
        return Outcome::Failed;
    }

    if (code == ILocalizer::TranslateOk) {
        text = TerminatedText(buffer, StackBufferSize);
        // The store answers a key it does not have with the key itself; a language file
        // whose sentence is the key's own text is treated the same way.
        return text == key ? Outcome::Untranslated : Outcome::Translated;
    }

    if (required <= StackBufferSize) {
        TraceFmt(TRACE_ERROR, texts.returned, subject, static_cast<std::uint32_t>(code));
        return Outcome::Failed;
    }

    TraceFmt(TRACE_ERROR, texts.requiresSize, subject, required);
    // One more than asked for, as a guard against a localizer that counts without the
    // terminator.
    const std::size_t size = static_cast<std::size_t>(required) + 1;
    std::vector<char16_t> large;
    try {
        large.resize(size);
    } catch (const std::bad_alloc&) {
        TraceFmt(TRACE_ERROR, texts.allocation, subject);
        return Outcome::Failed;
    } catch (const std::length_error&) {
        TraceFmt(TRACE_ERROR, texts.allocation, subject);
        return Outcome::Failed;
    }
    const auto largeSize = static_cast<std::uint32_t>(
        std::min<std::size_t>(size, std::numeric_limits<std::uint32_t>::max()));
    code = 0;
    if (!CallTranslateKey(localizer, key, large.data(), largeSize, required, code, texts.exception,
                          texts.unhandled, subject)) {
        return Outcome::Failed;
    }
    if (code != ILocalizer::TranslateOk) {
        TraceFmt(TRACE_ERROR, texts.returned, subject, static_cast<std::uint32_t>(code));
        return Outcome::Failed;
    }
    text = TerminatedText(large.data(), large.size());
    return Outcome::Translated;
}

bool QGEntString::LoadFromTable(std::uint32_t id) {
    const char16_t* text = QGResources::FindEnglishString(id);
    if (text == nullptr) {
        clear();
        return false;
    }
    stdstr::operator=(stdstr(text));
    return true;
}

void QGEntString::MakePluginKey(stdstr& out, std::uint32_t id) {
    out.Format(u"QGPLG_%d", id);
}

bool QGEntString::ResourceToString(const stdstr& headerPath, const stdstr& outputPath) {
    try {
        stdstr output = u"[QGSection]\r\n";
        FileString header;
        header.openFile(headerPath);

        stdstr line;
        while (header.getLine(line)) {
            std::size_t pos = line.find(u"#define");
            if (pos == stdstr::npos)
                continue;
            pos = SkipBlanks(line, pos + 7);
            if (pos == line.size()) {
                TraceFmt(TRACE_ERROR,
                         u"QGEntString::ResourceToString(%s, %s): Single define value found in "
                         u"(%s)",
                         headerPath, outputPath, line);
                continue;
            }
            const std::size_t underscore = line.find(u'_', pos);
            if (underscore == stdstr::npos) {
                TraceFmt(TRACE_ERROR,
                         u"QGEntString::ResourceToString(%s, %s): '_' not found in (%s)",
                         headerPath, outputPath, line);
                continue;
            }
            const std::u16string_view prefix(line.data() + pos, underscore - pos);
            if (prefix != u"IDS" && prefix != u"FW")
                continue;

            while (pos < line.size() && IsNameCharacter(line[pos]))
                ++pos;
            pos = SkipBlanks(line, pos);
            if (pos == line.size()) {
                TraceFmt(TRACE_ERROR,
                         u"QGEntString::ResourceToString(%s, %s): IDS with no value found in (%s)",
                         headerPath, outputPath, line);
                continue;
            }

            const std::size_t digitsStart = pos;
            while (pos < line.size() && IsDigit(line[pos]))
                ++pos;
            if (pos == digitsStart) {
                TraceFmt(TRACE_ERROR,
                         u"QGEntString::ResourceToString(%s, %s): IDS with no number value found "
                         u"in (%s)",
                         headerPath, outputPath, line);
                continue;
            }
            // The number ends at the end of the line, at a blank or where a comment begins;
            // anything else run into the digits ("0x80", "12u") is not a plain decimal id.
            if (pos < line.size() && !IsBlank(line[pos]) && line[pos] != u'/') {
                TraceFmt(TRACE_ERROR,
                         u"QGEntString::ResourceToString(%s, %s): Number value could not "
                         u"terminate in (%s)",
                         headerPath, outputPath, line);
                continue;
            }
            const stdstr digits = line.substr(digitsStart, pos - digitsStart);
            const std::uint32_t id = ParseId(digits);

            const char16_t* tableText = QGResources::FindEnglishString(id);
            if (tableText == nullptr) {
                TraceFmt(TRACE_ERROR,
                         u"QGEntString::ResourceToString(): LoadString(%d) failed with error (%d)",
                         id, ErrorResourceNameNotFound);
                continue;
            }
            stdstr text(tableText);
            if (!text.empty() && text.front() == u'*')
                text.erase(0, 1);
            TraceFmt(TRACE_ERROR, u"QGEntString::ResourceToString(): LoadString(%d) returned (%s)",
                     id, text);

            text = replaceAll(text, u"\r", u"#\\#r");
            text = replaceAll(text, u"\n", u"#\\#n");
            output += ProgramKeyPrefix;
            output += digits;
            output += u'=';
            output += text;
            output += u"\r\n";
        }

        FileString file;
        file.setText(output);
        return file.saveFile(outputPath, 65001);
    } catch (const BaseException& e) {
        TraceFmt(TRACE_ERROR, u"QGEntString::ResourceToString(%s, %s): Exception (%s)", headerPath,
                 outputPath, e.GetFullMessage());
    } catch (const Corvane::BaseException& e) {
        TraceFmt(TRACE_ERROR, u"QGEntString::ResourceToString(%s, %s): Exception (%s)", headerPath,
                 outputPath, e.GetMessage());
    } catch (...) {
        TraceFmt(TRACE_ERROR, u"QGEntString::ResourceToString(%s, %s): Unhandled exception",
                 headerPath, outputPath);
    }
    return false;
}
