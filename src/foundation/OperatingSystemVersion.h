#pragma once
// OperatingSystemVersion: which system this is, for the About box: the distribution's
// PRETTY_NAME from os-release and the kernel's release and machine from uname, composed as
// "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-18-amd64, x86_64". It stands where the
// Windows version structure stood; no Windows family test can be answered from it.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class OperatingSystemVersion {
public:
    // The places of os-release, the first readable one counts.
    static std::vector<std::string> defaultOsReleasePaths();

    explicit OperatingSystemVersion(
        std::vector<std::string> osReleasePaths = defaultOsReleasePaths());

    // Reads uname and os-release again; true when uname answered.
    bool read();
    bool wasRead() const { return m_read; }

    const std::string& prettyName() const { return m_prettyName; }
    const std::string& systemName() const { return m_systemName; }
    const std::string& release() const { return m_release; }
    const std::string& machine() const { return m_machine; }
    // The composed text; the parts that could not be read are left out.
    std::u16string text() const;

    // The name that an os-release text gives: PRETTY_NAME, else NAME and VERSION, else
    // "Linux" (os-release's own default); empty for an empty text.
    static std::string prettyNameOf(std::string_view osRelease);
    // The value of `key` in an os-release text, unquoted and unescaped as a shell would.
    static std::optional<std::string> valueOf(std::string_view osRelease, std::string_view key);

private:
    std::vector<std::string> m_osReleasePaths;
    bool m_read = false;
    std::string m_prettyName;
    std::string m_systemName;
    std::string m_release;
    std::string m_machine;
};
