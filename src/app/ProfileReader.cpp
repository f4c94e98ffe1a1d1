#include "app/ProfileReader.h"

#include "foundation/BaseException.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/FileString.h"

#include <algorithm>

namespace {

// The blanks of the profile functions: the C locale's white space and the old end-of-file
// mark Ctrl-Z.
bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\v' || c == u'\f' || c == u'\r' ||
           c == 0x1A;
}

std::u16string_view Trim(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

char16_t FoldCase(char16_t c) {
    return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

bool SameName(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(),
                      [](char16_t x, char16_t y) { return FoldCase(x) == FoldCase(y); });
}

// What lstrcpyn leaves in a buffer of `size` characters: at most size - 1 of them, ending
// at the first NUL.
stdstr CutToBuffer(std::u16string_view text, std::size_t size) {
    if (size == 0)
        return stdstr();
    const std::size_t nul = text.find(u'\0');
    if (nul != std::u16string_view::npos)
        text = text.substr(0, nul);
    return stdstr(text.substr(0, std::min(text.size(), size - 1)));
}

// One pair of equal quotes around the whole value goes.
std::u16string_view StripQuotes(std::u16string_view value) {
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
        value.back() == value.front())
        return value.substr(1, value.size() - 2);
    return value;
}

} // namespace

ProfileReader::ProfileReader(const stdstr& path) {
    FileString file;
    try {
        file.openFile(path);
    } catch (const BaseException&) {
        return; // missing or unreadable: every lookup gives its default
    } catch (const Corvane::BaseException&) {
        return;
    }
    Parse(file.getText());
}

void ProfileReader::Parse(const stdstr& text) {
    m_sections.clear();
    // Keys before the first section belong to a section without a name, which no lookup
    // can reach (a lookup's name is never empty here).
    m_sections.push_back(Section{});
    std::u16string_view rest(text);
    if (!rest.empty() && rest.front() == 0xFEFF)
        rest.remove_prefix(1);
    while (!rest.empty()) {
        const std::size_t end = rest.find(u'\n');
        std::u16string_view line = rest.substr(0, end);
        rest = end == std::u16string_view::npos ? std::u16string_view() : rest.substr(end + 1);

        line = Trim(line);
        if (line.empty() || line.front() == u';')
            continue;
        if (line.front() == u'[') {
            const std::size_t close = line.rfind(u']');
            if (close != std::u16string_view::npos) {
                m_sections.push_back(Section{stdstr(line.substr(1, close - 1)), {}});
                continue;
            }
            // Without its ']' the line is a key like any other.
        }
        Entry entry;
        const std::size_t equals = line.find(u'=');
        if (equals == std::u16string_view::npos) {
            entry.key = stdstr(line);
        } else {
            entry.key = stdstr(Trim(line.substr(0, equals)));
            entry.value = stdstr(Trim(line.substr(equals + 1)));
        }
        m_sections.back().entries.push_back(std::move(entry));
    }
}

std::optional<stdstr> ProfileReader::Find(const stdstr& section, const stdstr& key) const {
    const std::u16string_view sectionName = Trim(section);
    const std::u16string_view keyName = Trim(key);
    // The unnamed section at the front holds keys outside every section.
    for (std::size_t i = 1; i < m_sections.size(); ++i) {
        if (!SameName(m_sections[i].name, sectionName))
            continue;
        for (const Entry& entry : m_sections[i].entries) {
            if (SameName(entry.key, keyName))
                return entry.value;
        }
        return std::nullopt;
    }
    return std::nullopt;
}

stdstr ProfileReader::GetString(const stdstr& section, const stdstr& key,
                                const stdstr& defaultValue, std::size_t size) const {
    const std::optional<stdstr> value = Find(section, key);
    if (!value)
        return CutToBuffer(defaultValue, size);
    return CutToBuffer(StripQuotes(*value), size);
}

std::int32_t ProfileReader::GetInt(const stdstr& section, const stdstr& key,
                                   std::int32_t defaultValue) const {
    const stdstr text = GetString(section, key, stdstr(), NumberTextSize);
    if (text.empty())
        return defaultValue;
    std::size_t i = 0;
    while (i < text.size() && text[i] <= u' ')
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    // Unsigned arithmetic wraps at 32 bits, as the system's conversion does.
    std::uint32_t total = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i)
        total = total * 10u + static_cast<std::uint32_t>(text[i] - u'0');
    if (negative)
        total = 0u - total;
    return static_cast<std::int32_t>(total);
}
