#pragma once
// One ordered record of what the test doubles of a messaging test were asked to do (window
// messages, boxes, prompts, launches, settings), so that a test can check the order across
// them. Safe to use from the pump's thread and the test's at once.

#include "foundation/stdstr.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

class EventJournal {
public:
    void Add(std::string line) {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_lines.push_back(std::move(line));
    }
    std::vector<std::string> Lines() const {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_lines;
    }
    std::size_t Size() const {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_lines.size();
    }
    std::size_t Count(const std::string& line) const {
        std::lock_guard<std::mutex> lock(m_mutex);
        return static_cast<std::size_t>(std::count(m_lines.begin(), m_lines.end(), line));
    }
    void Clear() {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_lines.clear();
    }

    // UTF-8 of a text, for the journal's lines.
    static std::string Narrow(const std::u16string& text) { return stdstr::fromTString(text); }

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_lines;
};
