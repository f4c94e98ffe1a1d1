#pragma once
// The messages that reached the debug log since an object of this class was made, as the
// callers wrote them: without the time and thread head of each line and without the line
// end. Lines written by forked children count too, since they share the file.

#include "foundation/DebugLog.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <vector>

class SyncTestLog {
public:
    SyncTestLog() : m_start(Size()) {}

    std::vector<std::string> messages() const {
        std::ifstream in(DebugLogPath(), std::ios::binary);
        in.seekg(static_cast<std::streamoff>(m_start));
        std::vector<std::string> result;
        std::string line;
        while (std::getline(in, line)) {
            // "2024/5/1  10:2:3:45 | 1234 | message"
            const auto first = line.find(" | ");
            const auto second = first == std::string::npos ? first : line.find(" | ", first + 3);
            result.push_back(second == std::string::npos ? line : line.substr(second + 3));
        }
        return result;
    }

    bool contains(const std::string& message) const {
        const auto all = messages();
        return std::find(all.begin(), all.end(), message) != all.end();
    }

    std::size_t count(const std::string& message) const {
        const auto all = messages();
        return static_cast<std::size_t>(std::count(all.begin(), all.end(), message));
    }

private:
    static std::size_t Size() {
        struct stat st {};
        return ::stat(DebugLogPath().c_str(), &st) == 0 ? static_cast<std::size_t>(st.st_size) : 0;
    }

    std::size_t m_start;
};
