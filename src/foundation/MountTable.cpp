#include "foundation/MountTable.h"

#include "foundation/SmallTextFile.h"

namespace Corvane {
namespace {

bool IsOctal(char c) {
    return c >= '0' && c <= '7';
}

std::vector<std::string_view> Fields(std::string_view line) {
    std::vector<std::string_view> fields;
    std::size_t position = 0;
    while (position < line.size()) {
        const auto start = line.find_first_not_of(" \t", position);
        if (start == std::string_view::npos)
            break;
        auto end = line.find_first_of(" \t", start);
        if (end == std::string_view::npos)
            end = line.size();
        fields.push_back(line.substr(start, end - start));
        position = end;
    }
    return fields;
}

} // namespace

std::string MountTable::unescape(std::string_view field) {
    std::string result;
    result.reserve(field.size());
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && IsOctal(field[i + 1]) &&
            IsOctal(field[i + 2]) && IsOctal(field[i + 3])) {
            const int value =
                (field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + (field[i + 3] - '0');
            if (value <= 0xFF) {
                result += static_cast<char>(value);
                i += 3;
                continue;
            }
        }
        result += field[i];
    }
    return result;
}

std::vector<MountEntry> MountTable::parse(std::string_view text) {
    std::vector<MountEntry> entries;
    while (!text.empty()) {
        const auto lineEnd = text.find('\n');
        const std::string_view line = text.substr(0, lineEnd);
        text = lineEnd == std::string_view::npos ? std::string_view() : text.substr(lineEnd + 1);
        const auto fields = Fields(line);
        if (fields.size() < 3 || fields[0].front() == '#')
            continue;
        MountEntry entry;
        entry.device = unescape(fields[0]);
        entry.mountPoint = unescape(fields[1]);
        entry.fileSystem = unescape(fields[2]);
        if (fields.size() > 3)
            entry.options = unescape(fields[3]);
        entries.push_back(std::move(entry));
    }
    return entries;
}

bool MountTable::read(const std::string& path, std::vector<MountEntry>& entries) {
    std::string text;
    // A machine with thousands of mounts (containers, snaps) still fits well within this.
    if (!SmallTextFile::read(path, text, 64u << 20))
        return false;
    entries = parse(text);
    return true;
}

} // namespace Corvane
