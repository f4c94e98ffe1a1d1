#include "foundation/OperatingSystemVersion.h"

#include "foundation/SmallTextFile.h"
#include "foundation/stdstr.h"

#include <sys/utsname.h>
#include <utility>

namespace {

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

// A shell-style value: "double quoted" with \" \\ \$ \` escapes, 'single quoted' as it
// stands, or bare with backslash escapes.
std::string Unquote(std::string_view value) {
    std::string result;
    if (!value.empty() && value.front() == '\'') {
        const auto close = value.find('\'', 1);
        return std::string(
            value.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
    }
    const bool quoted = !value.empty() && value.front() == '"';
    for (std::size_t i = quoted ? 1 : 0; i < value.size(); ++i) {
        const char c = value[i];
        if (quoted && c == '"')
            break;
        if (c == '\\' && i + 1 < value.size()) {
            const char next = value[i + 1];
            if (!quoted || next == '"' || next == '\\' || next == '$' || next == '`') {
                result += next;
                ++i;
                continue;
            }
        }
        result += c;
    }
    return result;
}

} // namespace

std::vector<std::string> OperatingSystemVersion::defaultOsReleasePaths() {
    return {"/etc/os-release", "/usr/lib/os-release"};
}

OperatingSystemVersion::OperatingSystemVersion(std::vector<std::string> osReleasePaths)
    : m_osReleasePaths(std::move(osReleasePaths)) {
    read();
}

bool OperatingSystemVersion::read() {
    m_prettyName.clear();
    for (const std::string& path : m_osReleasePaths) {
        std::string text;
        if (SmallTextFile::read(path, text, 64 * 1024)) {
            m_prettyName = prettyNameOf(text);
            break;
        }
    }
    utsname names{};
    m_read = ::uname(&names) == 0;
    if (m_read) {
        m_systemName = names.sysname;
        m_release = names.release;
        m_machine = names.machine;
    } else {
        m_systemName.clear();
        m_release.clear();
        m_machine.clear();
    }
    return m_read;
}

std::u16string OperatingSystemVersion::text() const {
    std::string text = m_prettyName;
    const auto add = [&text](const std::string& part) {
        if (part.empty())
            return;
        if (!text.empty())
            text += ", ";
        text += part;
    };
    std::string kernel = m_systemName;
    if (!m_release.empty())
        kernel += (kernel.empty() ? "" : " ") + m_release;
    add(kernel);
    add(m_machine);
    return stdstr::toTString(text);
}

std::optional<std::string> OperatingSystemVersion::valueOf(std::string_view osRelease,
                                                           std::string_view key) {
    std::optional<std::string> found;
    while (!osRelease.empty()) {
        const auto lineEnd = osRelease.find('\n');
        const std::string_view line = Trim(osRelease.substr(0, lineEnd));
        osRelease =
            lineEnd == std::string_view::npos ? std::string_view() : osRelease.substr(lineEnd + 1);
        if (line.empty() || line.front() == '#')
            continue;
        const auto equals = line.find('=');
        if (equals == std::string_view::npos || Trim(line.substr(0, equals)) != key)
            continue;
        // A later assignment wins, as when the file is sourced by a shell.
        found = Unquote(Trim(line.substr(equals + 1)));
    }
    return found;
}

std::string OperatingSystemVersion::prettyNameOf(std::string_view osRelease) {
    if (Trim(osRelease).empty())
        return {};
    if (auto pretty = valueOf(osRelease, "PRETTY_NAME"); pretty && !pretty->empty())
        return *pretty;
    const auto name = valueOf(osRelease, "NAME");
    const auto version = valueOf(osRelease, "VERSION");
    std::string composed = name ? *name : std::string();
    if (version && !version->empty())
        composed += (composed.empty() ? "" : " ") + *version;
    return composed.empty() ? std::string("Linux") : composed;
}
