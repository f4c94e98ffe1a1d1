#pragma once
// Records the trace lines of a test program: one sink, listed once per program (the trace
// list owns its sinks and never gives one back), safe to read while other threads trace,
// cleared by each test that reads it.

#include "foundation/CTraceModule.h"
#include "foundation/Trace.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class TraceRecorder : public CTraceModule {
public:
    struct Line {
        std::u16string label; // "Error: ", "Func: ", ...
        std::u16string text;
    };

    // The program's recorder, listed at the first call, taking every level.
    static TraceRecorder& Instance() {
        static TraceRecorder* recorder = TraceAddModule(std::make_unique<TraceRecorder>());
        return *recorder;
    }

    TraceRecorder() { SetLevel(0xFFFFFFFFu & ~TRACE_RAW); }

    void Write(std::u16string_view text, bool endOfLine) override {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!endOfLine) {
            m_prefix.assign(text);
            return;
        }
        m_lines.push_back(Line{LabelOf(m_prefix), std::u16string(text)});
        m_prefix.clear();
    }

    void Clear() {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_lines.clear();
    }

    std::vector<Line> Lines() {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_lines;
    }

    // The texts of the lines at `level`, in order.
    std::vector<std::u16string> At(std::uint32_t level) {
        const std::u16string label(TraceLabel(level));
        std::lock_guard<std::mutex> lock(m_mutex);
        std::vector<std::u16string> found;
        for (const Line& line : m_lines) {
            if (line.label == label)
                found.push_back(line.text);
        }
        return found;
    }

    // How often `text` was traced at `level`, compared to the character.
    std::size_t Count(std::uint32_t level, const std::u16string& text) {
        const std::u16string label(TraceLabel(level));
        std::lock_guard<std::mutex> lock(m_mutex);
        return static_cast<std::size_t>(
            std::count_if(m_lines.begin(), m_lines.end(), [&](const Line& line) {
                return line.label == label && line.text == text;
            }));
    }

    // The lines at `level` that begin with `start`.
    std::vector<std::u16string> StartingWith(std::uint32_t level, const std::u16string& start) {
        const std::u16string label(TraceLabel(level));
        std::lock_guard<std::mutex> lock(m_mutex);
        std::vector<std::u16string> found;
        for (const Line& line : m_lines) {
            if (line.label == label && line.text.compare(0, start.size(), start) == 0)
                found.push_back(line.text);
        }
        return found;
    }

private:
    // The prefix is "<date> <time> <thread>: <label>"; the label follows the thread id.
    static std::u16string LabelOf(const std::u16string& prefix) {
        const std::size_t colon = prefix.find(u": ");
        return colon == std::u16string::npos ? std::u16string() : prefix.substr(colon + 2);
    }

    std::mutex m_mutex;
    std::u16string m_prefix;
    std::vector<Line> m_lines;
};
