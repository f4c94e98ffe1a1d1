#pragma once
// Catches the trace lines of a test program: one sink, added once (the trace list owns
// its sinks for the life of the process), cleared by each test that reads it.

#include "foundation/CTraceModule.h"
#include "foundation/Trace.h"
#include "foundation/TraceLevels.h"

#include <memory>
#include <string>
#include <vector>

class TraceRecorder : public CTraceModule {
public:
    // The one recorder of the program, listening to every level.
    static TraceRecorder& Instance() {
        static TraceRecorder* recorder = [] {
            auto sink = std::make_unique<TraceRecorder>();
            sink->SetLevel(0x3FF);
            return TraceAddModule(std::move(sink));
        }();
        return *recorder;
    }

    void Write(std::u16string_view text, bool endOfLine) override {
        m_current += text;
        if (endOfLine) {
            lines.push_back(m_current);
            m_current.clear();
        }
    }

    // Lines that end with `text` (the prefix holds the time and the level).
    int CountEndingWith(std::u16string_view text) const {
        int count = 0;
        for (const auto& line : lines) {
            if (line.size() >= text.size() &&
                line.compare(line.size() - text.size(), text.size(), text) == 0)
                ++count;
        }
        return count;
    }

    std::vector<std::u16string> lines;

private:
    std::u16string m_current;
};
