#pragma once
// One recording trace sink per test program of the translation store. The process-wide
// sink list cannot give a sink back, so the sink is added once, with every level, and each
// test clears it first. Each recorded line keeps its label ("Func: ", "Audit: "...; empty
// for a raw line), so that tests check the level of a line as well as its text. The sink
// can also throw at a chosen line, which is how tests reach the exception paths of the code
// that traces.

#include "foundation/BaseException.h"
#include "foundation/CTraceModule.h"
#include "foundation/Trace.h"
#include "foundation/Unicode.h"

#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

class StoreTraceRecorder : public CTraceModule {
public:
    struct Line {
        std::u16string label; // empty for a raw line
        std::u16string text;
        bool operator==(const Line&) const = default;
        // Readable failure messages in tests.
        friend void PrintTo(const Line& line, std::ostream* out) {
            std::string narrow;
            Corvane::Unicode::appendUtf8(narrow, line.label + u"|" + line.text);
            *out << '"' << narrow << '"';
        }
    };
    enum class Throw { Nothing, BaseException, Other };

    // The program's one recorder, listed at the first call.
    static StoreTraceRecorder& Get() {
        static StoreTraceRecorder* recorder = [] {
            auto* sink = TraceAddModule(std::make_unique<StoreTraceRecorder>());
            sink->SetLevel(0xFFFFFFFF);
            return sink;
        }();
        return *recorder;
    }

    void Write(std::u16string_view text, bool endOfLine) override {
        std::lock_guard guard(m_lock);
        if (!endOfLine) {
            m_prefix = text;
            return;
        }
        m_lines.push_back(Line{Label(m_prefix), std::u16string(text)});
        m_prefix.clear();
        if (m_throwKind != Throw::Nothing && text == m_throwAt) {
            const Throw kind = m_throwKind;
            m_throwKind = Throw::Nothing; // once
            if (kind == Throw::BaseException)
                throw BaseException(u"StoreTraceRecorder.h", __LINE__, -1,
                                    u"StoreTraceRecorder::Write()", u"%s##%s", u"QGWriteFile",
                                    u"trace sink");
            throw 42;
        }
    }

    void Clear() {
        std::lock_guard guard(m_lock);
        m_lines.clear();
        m_prefix.clear();
        m_throwKind = Throw::Nothing;
    }
    std::vector<Line> Lines() {
        std::lock_guard guard(m_lock);
        return m_lines;
    }
    // The recorded lines whose text starts with `start`.
    std::vector<Line> LinesStartingWith(std::u16string_view start) {
        std::vector<Line> found;
        for (auto& line : Lines())
            if (line.text.starts_with(start))
                found.push_back(line);
        return found;
    }
    // Throws once, from the write of the line that reads exactly `text`.
    void ThrowAt(std::u16string text, Throw kind) {
        std::lock_guard guard(m_lock);
        m_throwAt = std::move(text);
        m_throwKind = kind;
    }

private:
    // The prefix is "yyyy/mm/dd hh:mm:ss.mmm <thread>: <label>"; the time holds no ": ".
    static std::u16string Label(const std::u16string& prefix) {
        if (prefix.empty())
            return {};
        const auto threadEnd = prefix.find(u": ");
        return threadEnd == std::u16string::npos ? prefix : prefix.substr(threadEnd + 2);
    }

    std::mutex m_lock;
    std::u16string m_prefix;
    std::vector<Line> m_lines;
    std::u16string m_throwAt;
    Throw m_throwKind = Throw::Nothing;
};
