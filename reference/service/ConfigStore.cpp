#include "service/ConfigStore.h"

#include "foundation/SystemPaths.h"
#include "messaging/IntegerText.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <sstream>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::string_view Section = "SYSTEM";
constexpr std::array<std::string_view, 8> Keys = {"FirstRun",        "FilterOn",      "AutoUpgrade",
                                                  "ShowCloseWindow", "UpgradePeriod", "HistoryDays",
                                                  "ConfigPath",      "Language"};

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
        if (lower(a[i]) != lower(b[i]))
            return false;
    }
    return true;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// The section name of a header line, if it is one.
std::optional<std::string_view> HeaderName(std::string_view line) {
    line = Trim(line);
    if (line.size() < 2 || line.front() != '[' || line.back() != ']')
        return std::nullopt;
    return Trim(line.substr(1, line.size() - 2));
}

// The index of the key in Keys that `line` sets, if any.
std::optional<std::size_t> KeyOf(std::string_view line) {
    const auto equals = line.find('=');
    if (equals == std::string_view::npos)
        return std::nullopt;
    const std::string_view key = Trim(line.substr(0, equals));
    for (std::size_t i = 0; i < Keys.size(); ++i) {
        if (EqualNoCase(key, Keys[i]))
            return i;
    }
    return std::nullopt;
}

std::string TextValue(const stdstr& value) {
    std::string text = stdstr::fromTString(value);
    text = text.substr(0, text.find_first_of("\r\n"));
    const bool quote =
        !text.empty() &&
        (text.front() == ' ' || text.back() == ' ' || text.front() == '\t' || text.back() == '\t' ||
         (text.size() >= 2 && text.front() == '"' && text.back() == '"'));
    return quote ? "\"" + text + "\"" : text;
}

std::string ValueOf(std::size_t key, const SystemSettings& s) {
    switch (key) {
    case 0:
        return std::to_string(s.firstRun);
    case 1:
        return std::to_string(s.filterOn);
    case 2:
        return std::to_string(s.autoUpgrade);
    case 3:
        return std::to_string(s.showCloseWindow);
    case 4:
        return std::to_string(s.upgradePeriod);
    case 5:
        return std::to_string(s.historyDays);
    case 6:
        return TextValue(s.configPath);
    default:
        return TextValue(s.language);
    }
}

void Apply(std::size_t key, std::string_view value, SystemSettings& s) {
    value = Trim(value);
    if (key >= 6) {
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        (key == 6 ? s.configPath : s.language) = stdstr::toTString(value);
        return;
    }
    const std::int32_t number = IntegerText::Read(value);
    std::int32_t* fields[] = {&s.firstRun,        &s.filterOn,      &s.autoUpgrade,
                              &s.showCloseWindow, &s.upgradePeriod, &s.historyDays};
    *fields[key] = number;
}

bool WriteAll(int fd, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += static_cast<std::size_t>(n);
    }
    return true;
}

std::string Folder(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

} // namespace

ConfigStore::ConfigStore(std::string path) : m_path(std::move(path)) {}

void ConfigStore::load() {
    std::ifstream file(m_path, std::ios::binary);
    std::ostringstream text;
    if (file)
        text << file.rdbuf();
    m_settings = parse(text.str());
}

SystemSettings ConfigStore::parse(const std::string& text) {
    SystemSettings settings;
    bool inSection = false;
    std::array<bool, Keys.size()> seen{};
    for (const std::string& line : Lines(text)) {
        if (const auto name = HeaderName(line)) {
            inSection = EqualNoCase(*name, Section);
            continue;
        }
        if (!inSection)
            continue;
        // The first line of a key counts, as the profile reader finds the first one.
        if (const auto key = KeyOf(line); key && !seen[*key]) {
            seen[*key] = true;
            Apply(*key, std::string_view(line).substr(line.find('=') + 1), settings);
        }
    }
    return settings;
}

std::string ConfigStore::compose(const std::string& current, const SystemSettings& settings) {
    std::array<bool, Keys.size()> written{};
    std::optional<std::size_t> header; // where the section's header stands in `out`
    bool inSection = false;
    std::vector<std::string> out;
    // The keys that the section lacks go behind its last line, before the blank lines that
    // part it from the next section.
    auto closeSection = [&] {
        std::vector<std::string> blanks;
        while (out.size() > *header + 1 && Trim(out.back()).empty()) {
            blanks.push_back(out.back());
            out.pop_back();
        }
        for (std::size_t i = 0; i < Keys.size(); ++i) {
            if (!written[i])
                out.push_back(std::string(Keys[i]) + "=" + ValueOf(i, settings));
            written[i] = true;
        }
        out.insert(out.end(), blanks.rbegin(), blanks.rend());
    };
    for (const std::string& line : Lines(current)) {
        if (const auto name = HeaderName(line)) {
            if (inSection)
                closeSection();
            // Only the first section of the name is the one read.
            inSection = !header && EqualNoCase(*name, Section);
            if (inSection)
                header = out.size();
            out.push_back(line);
            continue;
        }
        if (inSection) {
            if (const auto key = KeyOf(line)) {
                // A key given twice keeps its first line only: that is the one read.
                if (!written[*key])
                    out.push_back(std::string(Keys[*key]) + "=" + ValueOf(*key, settings));
                written[*key] = true;
                continue;
            }
        }
        out.push_back(line);
    }
    if (inSection)
        closeSection();
    if (!header) {
        if (!out.empty() && !Trim(out.back()).empty())
            out.emplace_back();
        header = out.size();
        out.push_back("[" + std::string(Section) + "]");
        closeSection();
    }
    std::string text;
    for (const std::string& line : out)
        text += line + "\n";
    return text;
}

bool ConfigStore::store(const SystemSettings& settings, std::string& error) {
    const std::string folder = Folder(m_path);
    if (!SystemPaths::MakeFolders(folder)) {
        error = "cannot create " + folder + ": " + std::strerror(errno);
        return false;
    }
    std::string current;
    {
        std::ifstream file(m_path, std::ios::binary);
        std::ostringstream text;
        if (file)
            text << file.rdbuf();
        current = text.str();
    }
    const std::string text = compose(current, settings);
    const std::string temporary = m_path + ".tmp-" + std::to_string(::getpid());
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        error = "cannot create " + temporary + ": " + std::strerror(errno);
        return false;
    }
    const bool written = WriteAll(fd, text) && ::fsync(fd) == 0;
    const int writeError = errno;
    ::close(fd);
    if (!written || ::rename(temporary.c_str(), m_path.c_str()) != 0) {
        error = "cannot write " + m_path + ": " + std::strerror(written ? errno : writeError);
        ::unlink(temporary.c_str());
        return false;
    }
    // The rename itself reaches the disk only with the folder.
    if (const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    m_settings = settings;
    return true;
}
