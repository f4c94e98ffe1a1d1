// The INI reader and writer on arbitrary file bytes: lookups of sections and keys named in
// the input and of fixed names, a whole-section read, and writes. It never crashes, and a
// key written to a section that the input cannot hold lands exactly where it must: the
// input stays as it was, followed by the new section and its line.
#include "foundation/CFile.h"
#include "foundation/stdstr.h"
#include "localisation/IniFile.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

// The file lives in memory: a memfd, opened again by its /proc path as any file would be.
class MemoryFile {
public:
    MemoryFile() : m_fd(::memfd_create("fuzz_inifile", MFD_CLOEXEC)) {
        Require(m_fd != -1);
        m_path = stdstr::toTString("/proc/self/fd/" + std::to_string(m_fd));
    }
    void Set(std::string_view bytes) {
        Require(::ftruncate(m_fd, 0) == 0);
        Require(::pwrite(m_fd, bytes.data(), bytes.size(), 0) ==
                static_cast<ssize_t>(bytes.size()));
    }
    std::string Get() const {
        std::string bytes(static_cast<std::size_t>(::lseek(m_fd, 0, SEEK_END)), '\0');
        Require(::pread(m_fd, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
        return bytes;
    }
    const stdstr& Path() const { return m_path; }

private:
    int m_fd;
    stdstr m_path;
};

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

// Section and key names as the input spells them: what stands between '[' and ']', and
// before '=' on a line.
void NamesOf(std::string_view bytes, std::vector<stdstr>& sections, std::vector<stdstr>& keys) {
    std::size_t start = 0;
    while (start < bytes.size() && sections.size() + keys.size() < 16) {
        std::size_t end = bytes.find('\n', start);
        if (end == std::string_view::npos)
            end = bytes.size();
        const std::string_view line = bytes.substr(start, end - start);
        const std::size_t open = line.find('[');
        const std::size_t close = line.rfind(']');
        if (open != std::string_view::npos && close != std::string_view::npos && close > open)
            sections.push_back(stdstr::toTString(line.substr(open + 1, close - open - 1)));
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            keys.push_back(stdstr::toTString(line.substr(0, equals)));
        start = end + 1;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MemoryFile file;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    file.Set(bytes);

    std::vector<stdstr> sections{u"", u"default", u"General", u"QGSection", u"general"};
    std::vector<stdstr> keys{u"", u"Name", u"key", u"a"};
    NamesOf(bytes, sections, keys);

    {
        CIniFileT<CFile> ini(file.Path());
        Require(ini.IsOpen());
        stdstr out;
        for (const auto& section : sections) {
            for (const auto& key : keys)
                ini.GetString(out, section.c_str(), key.c_str(), u"dflt");
            std::map<stdstr, stdstr> entries;
            ini.GetSection(section.c_str(), entries);
        }
        // Asked again: now through the index and the last section found.
        for (const auto& section : sections)
            ini.GetString(out, section.c_str(), keys.back().c_str(), nullptr);
    }

    // A section that the input cannot hold, whatever the case: it is appended, the key
    // becomes its first line, and nothing before it moves.
    std::string fresh = "Fz";
    while (Lower(bytes).find(Lower(fresh)) != std::string::npos)
        fresh += 'z';
    const stdstr freshSection = stdstr::toTString(fresh);
    {
        CIniFileT<CFile> ini(file.Path());
        ini.WriteString(freshSection.c_str(), u"FuzzKey", u"value 1");
        stdstr out;
        Require(ini.GetString(out, freshSection.c_str(), u"FuzzKey", nullptr) == u"value 1");
        Require(file.Get() == std::string(bytes) + "\r\n[" + fresh + "]\r\nFuzzKey=value 1\r\n");
        ini.WriteString(freshSection.c_str(), u"FUZZKEY", u"v");
        Require(file.Get() == std::string(bytes) + "\r\n[" + fresh + "]\r\nFUZZKEY=v\r\n");
        ini.WriteString(freshSection.c_str(), u"fuzzkey", nullptr);
        Require(file.Get() == std::string(bytes) + "\r\n[" + fresh + "]\r\n");
        Require(ini.GetString(out, freshSection.c_str(), u"FUZZKEY", u"gone") == u"gone");
    }

    // Writes into the input's own sections: only that nothing breaks.
    {
        CIniFileT<CFile> ini(file.Path());
        stdstr out;
        for (std::size_t i = 0; i < sections.size() && i < 6; ++i) {
            const stdstr& key = keys[i % keys.size()];
            ini.WriteString(sections[i].c_str(), key.c_str(), u"a much longer value than before");
            ini.GetString(out, sections[(i + 1) % sections.size()].c_str(), key.c_str(), nullptr);
            ini.WriteString(sections[i].c_str(), key.c_str(), u"s");
            ini.WriteInt(sections[i].c_str(), keys[(i + 1) % keys.size()].c_str(), -7);
            ini.WriteString(sections[i].c_str(), key.c_str(), nullptr);
            ini.GetString(out, sections[i].c_str(), key.c_str(), nullptr);
        }
    }
    return 0;
}
