#include "AddressBook.h"

#include "foundation/SystemPaths.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <sstream>

namespace {

constexpr std::string_view Header =
    "# Quillgate address lists: one address or @domain per line, under its list.";
constexpr std::string_view AllowedSection = "[Allowed]";
constexpr std::string_view BlockedSection = "[Blocked]";
// The longest address that mail allows.
constexpr std::size_t LongestEntry = 254;

std::string_view Trim(std::string_view text) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && blank(text.back()))
        text.remove_suffix(1);
    return text;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// A domain of at least two labels of letters, digits and hyphens (or bytes of UTF-8 names),
// no label empty or led or ended by a hyphen.
bool ValidDomain(std::string_view domain) {
    if (domain.empty() || domain.size() > 253 || domain.find('.') == std::string_view::npos)
        return false;
    std::size_t start = 0;
    while (start <= domain.size()) {
        const std::size_t dot = domain.find('.', start);
        const std::string_view label = domain.substr(
            start, dot == std::string_view::npos ? std::string_view::npos : dot - start);
        if (label.empty() || label.size() > 63 || label.front() == '-' || label.back() == '-')
            return false;
        for (const char c : label) {
            const auto byte = static_cast<unsigned char>(c);
            const bool ok =
                (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || byte >= 0x80;
            if (!ok)
                return false;
        }
        if (dot == std::string_view::npos)
            break;
        start = dot + 1;
    }
    return true;
}

// The local part of an address: printable, no blanks, no '@', no quotes or brackets.
bool ValidLocalPart(std::string_view local) {
    if (local.empty() || local.size() > 64 || local.front() == '.' || local.back() == '.')
        return false;
    return std::none_of(local.begin(), local.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte <= 0x20 || byte == 0x7F || c == '@' || c == '"' || c == '(' || c == ')' ||
               c == '<' || c == '>' || c == ',' || c == ';' || c == ':' || c == '[' || c == ']' ||
               c == '\\';
    });
}

} // namespace

AddressBook::AddressBook(std::string path) : m_path(std::move(path)) {}

std::string AddressBook::DefaultPath() {
    return SystemPaths::UserConfigFolder() + "/Quillgate/AddressLists.txt";
}

std::optional<std::string> AddressBook::Normalise(std::string_view text) {
    text = Trim(text);
    if (text.empty() || text.size() > LongestEntry)
        return std::nullopt;
    std::string entry(text.size(), '\0');
    std::transform(text.begin(), text.end(), entry.begin(), Lower);
    if (entry.rfind("*@", 0) == 0)
        entry.erase(0, 1);
    const std::size_t at = entry.find('@');
    if (at == std::string::npos)
        entry.insert(0, 1, '@');
    else if (entry.find('@', at + 1) != std::string::npos)
        return std::nullopt;
    const std::size_t sign = entry.find('@');
    if (sign > 0 && !ValidLocalPart(std::string_view(entry).substr(0, sign)))
        return std::nullopt;
    if (!ValidDomain(std::string_view(entry).substr(sign + 1)))
        return std::nullopt;
    return entry;
}

bool AddressBook::Load() {
    m_allowed.clear();
    m_blocked.clear();
    std::ifstream in(m_path, std::ios::binary);
    if (!in) {
        // No file yet is two empty lists; a file that exists and cannot be opened is not.
        return ::access(m_path.c_str(), F_OK) != 0 && errno == ENOENT;
    }
    std::vector<std::string>* section = nullptr;
    for (std::string line; std::getline(in, line);) {
        const std::string_view text = Trim(line);
        if (text.empty() || text.front() == '#')
            continue;
        if (text == AllowedSection) {
            section = &m_allowed;
        } else if (text == BlockedSection) {
            section = &m_blocked;
        } else if (section != nullptr) {
            // What does not read as an entry (an edit by hand gone wrong) is left out.
            std::optional<std::string> entry = Normalise(text);
            if (entry && std::find(section->begin(), section->end(), *entry) == section->end())
                section->push_back(std::move(*entry));
        }
    }
    std::sort(m_allowed.begin(), m_allowed.end());
    std::sort(m_blocked.begin(), m_blocked.end());
    return !in.bad();
}

bool AddressBook::Save() const {
    const std::size_t slash = m_path.rfind('/');
    if (slash != std::string::npos && slash > 0 &&
        !SystemPaths::MakeFolders(m_path.substr(0, slash), 0700))
        return false;
    std::ostringstream text;
    text << Header << '\n' << AllowedSection << '\n';
    for (const std::string& entry : m_allowed)
        text << entry << '\n';
    text << BlockedSection << '\n';
    for (const std::string& entry : m_blocked)
        text << entry << '\n';
    const std::string content = text.str();

    const std::string temporary = m_path + ".tmp";
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    std::size_t done = 0;
    bool written = true;
    while (done < content.size()) {
        const ssize_t n = ::write(fd, content.data() + done, content.size() - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            written = false;
            break;
        }
        done += static_cast<std::size_t>(n);
    }
    written = written && ::fsync(fd) == 0;
    written = ::close(fd) == 0 && written;
    if (!written || ::rename(temporary.c_str(), m_path.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    return true;
}

const std::vector<std::string>& AddressBook::Entries(List list) const {
    return list == List::Allowed ? m_allowed : m_blocked;
}

std::vector<std::string>& AddressBook::EntriesOf(List list) {
    return list == List::Allowed ? m_allowed : m_blocked;
}

bool AddressBook::Contains(List list, std::string_view entry) const {
    const std::optional<std::string> normal = Normalise(entry);
    if (!normal)
        return false;
    const std::vector<std::string>& entries = Entries(list);
    return std::find(entries.begin(), entries.end(), *normal) != entries.end();
}

AddressBook::AddResult AddressBook::Add(List list, std::string_view entry) {
    std::optional<std::string> normal = Normalise(entry);
    if (!normal)
        return AddResult::Invalid;
    std::vector<std::string>& entries = EntriesOf(list);
    if (std::find(entries.begin(), entries.end(), *normal) != entries.end())
        return AddResult::AlreadyThere;
    // A sender stands in one list only: the last decision counts.
    std::vector<std::string>& other =
        EntriesOf(list == List::Allowed ? List::Blocked : List::Allowed);
    const auto inOther = std::find(other.begin(), other.end(), *normal);
    const bool moved = inOther != other.end();
    if (moved)
        other.erase(inOther);
    entries.push_back(std::move(*normal));
    std::sort(entries.begin(), entries.end());
    return moved ? AddResult::Moved : AddResult::Added;
}

bool AddressBook::Remove(List list, std::string_view entry) {
    const std::optional<std::string> normal = Normalise(entry);
    if (!normal)
        return false;
    std::vector<std::string>& entries = EntriesOf(list);
    const auto found = std::find(entries.begin(), entries.end(), *normal);
    if (found == entries.end())
        return false;
    entries.erase(found);
    return true;
}
