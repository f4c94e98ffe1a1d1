// INI lookups in a generated 5,000-line file, against a naive reader that rescans the file
// from its top for every lookup (the floor, written here with a large read buffer so that
// it is not slow for any other reason), measured in the same run:
//   - a language file ("General" and a "QGSection" of 4,992 keys): a key of "General" and
//     the last key of "QGSection";
//   - a file of 50 sections of 99 keys: a key in the last section, looked up by a fresh
//     object (first lookup: open, scan, index) and again by the same object (repeated
//     lookups, straight to the section through the index).
// And the translation store's GetTranslatedString for a plain key, against one search in a
// std::map of the same texts (the floor of "one map search").
#include "foundation/CFile.h"
#include "foundation/stdstr.h"
#include "localisation/IniFile.h"
#include "localisation/QGInternationalizationManager.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

// The generated files, in a folder of their own that is removed at exit.
class BenchFiles {
public:
    BenchFiles() {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base && *base ? base : "/tmp") + "/qg-bench-XXXXXX";
        if (!::mkdtemp(pattern.data()))
            std::abort();
        m_folder = pattern;

        std::string language = "\xEF\xBB\xBF[General]\r\nCharset=iso-8859-1\r\nName=English\r\n"
                               "EnglishName=English\r\nBriskUpdateID=English (US)\r\n"
                               "WebTransLink=https://example.org/\r\n\r\n[QGSection]\r\n";
        for (int k = 0; k < 4992; ++k)
            language += "QGSA_" + std::to_string(1000 + k) + "=The sentence number " +
                        std::to_string(k) + " of the program, as long as a real one.\r\n";
        Write("language.ini", language);

        std::string sections;
        for (int s = 0; s < 50; ++s) {
            sections += "[Section" + std::to_string(s) + "]\r\n";
            for (int k = 0; k < 99; ++k)
                sections += "Key" + std::to_string(k) + "=Value " + std::to_string(k) +
                            " of section " + std::to_string(s) + "\r\n";
        }
        Write("sections.ini", sections);
    }
    ~BenchFiles() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    std::string Path(const std::string& name) const { return m_folder + "/" + name; }

private:
    void Write(const std::string& name, const std::string& content) {
        std::ofstream(Path(name), std::ios::binary) << content;
    }
    std::string m_folder;
};

const BenchFiles& Files() {
    static const BenchFiles files;
    return files;
}

// The floor: every lookup reads the file from its top, line by line, with the same line
// rules (comment, trailing blanks, section header, exact key) and no memory of earlier
// lookups.
class NaiveIniReader {
public:
    explicit NaiveIniReader(const std::string& path) : m_fd(::open(path.c_str(), O_RDONLY)) {}
    ~NaiveIniReader() {
        if (m_fd != -1)
            ::close(m_fd);
    }
    NaiveIniReader(const NaiveIniReader&) = delete;
    NaiveIniReader& operator=(const NaiveIniReader&) = delete;

    std::string Get(std::string_view section, std::string_view key) {
        ::lseek(m_fd, 0, SEEK_SET);
        std::size_t begin = 0, end = 0;
        bool inSection = false;
        for (;;) {
            const void* feed =
                begin < end ? std::memchr(m_buffer + begin, '\n', end - begin) : nullptr;
            if (!feed) {
                std::memmove(m_buffer, m_buffer + begin, end - begin);
                end -= begin;
                begin = 0;
                const ssize_t got = ::read(m_fd, m_buffer + end, sizeof m_buffer - end);
                if (got <= 0)
                    return {};
                end += static_cast<std::size_t>(got);
                continue;
            }
            const auto at = static_cast<std::size_t>(static_cast<const char*>(feed) - m_buffer);
            std::string_view line(m_buffer + begin, at - begin);
            begin = at + 1;
            const std::size_t comment = line.find("//");
            if (comment != std::string_view::npos && (comment == 0 || line[comment - 1] != ':'))
                line = line.substr(0, comment);
            while (!line.empty() && (line.back() == ' ' || line.back() == '\r'))
                line.remove_suffix(1);
            if (line.starts_with("\xEF\xBB\xBF"))
                line.remove_prefix(3);
            if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
                if (inSection)
                    return {};
                inSection = line.substr(1, line.size() - 2) == section;
                continue;
            }
            if (!inSection)
                continue;
            const std::size_t equals = line.find('=');
            if (equals != std::string_view::npos && line.substr(0, equals) == key)
                return std::string(line.substr(equals + 1));
        }
    }

private:
    int m_fd;
    char m_buffer[64 * 1024];
};

stdstr Wide(const std::string& text) {
    return stdstr::toTString(text);
}

// ---- language file -----------------------------------------------------------------------

void BM_IniGetString_LanguageGeneral(benchmark::State& state) {
    CIniFileT<CFile> ini(Wide(Files().Path("language.ini")));
    stdstr out;
    for (auto _ : state) {
        ini.GetString(out, u"General", u"EnglishName", u"");
        benchmark::DoNotOptimize(out.data());
    }
    if (out != u"English")
        state.SkipWithError("wrong value");
}
BENCHMARK(BM_IniGetString_LanguageGeneral);

void BM_Floor_NaiveGetString_LanguageGeneral(benchmark::State& state) {
    NaiveIniReader ini(Files().Path("language.ini"));
    std::string out;
    for (auto _ : state) {
        out = ini.Get("General", "EnglishName");
        benchmark::DoNotOptimize(out.data());
    }
    if (out != "English")
        state.SkipWithError("wrong value");
}
BENCHMARK(BM_Floor_NaiveGetString_LanguageGeneral);

void BM_IniGetString_LanguageLastKey(benchmark::State& state) {
    CIniFileT<CFile> ini(Wide(Files().Path("language.ini")));
    stdstr out;
    for (auto _ : state) {
        ini.GetString(out, u"QGSection", u"QGSA_5991", u"");
        benchmark::DoNotOptimize(out.data());
    }
    if (out.empty())
        state.SkipWithError("not found");
}
BENCHMARK(BM_IniGetString_LanguageLastKey);

void BM_Floor_NaiveGetString_LanguageLastKey(benchmark::State& state) {
    NaiveIniReader ini(Files().Path("language.ini"));
    std::string out;
    for (auto _ : state) {
        out = ini.Get("QGSection", "QGSA_5991");
        benchmark::DoNotOptimize(out.data());
    }
    if (out.empty())
        state.SkipWithError("not found");
}
BENCHMARK(BM_Floor_NaiveGetString_LanguageLastKey);

// ---- 50 sections ---------------------------------------------------------------------------

void BM_IniGetString_FirstLookupOfLastSection(benchmark::State& state) {
    const stdstr path = Wide(Files().Path("sections.ini"));
    stdstr out;
    for (auto _ : state) {
        CIniFileT<CFile> ini(path);
        ini.GetString(out, u"Section49", u"Key50", u"");
        benchmark::DoNotOptimize(out.data());
    }
    if (out != u"Value 50 of section 49")
        state.SkipWithError("wrong value");
}
BENCHMARK(BM_IniGetString_FirstLookupOfLastSection);

void BM_Floor_NaiveGetString_FirstLookupOfLastSection(benchmark::State& state) {
    const std::string path = Files().Path("sections.ini");
    std::string out;
    for (auto _ : state) {
        NaiveIniReader ini(path);
        out = ini.Get("Section49", "Key50");
        benchmark::DoNotOptimize(out.data());
    }
    if (out != "Value 50 of section 49")
        state.SkipWithError("wrong value");
}
BENCHMARK(BM_Floor_NaiveGetString_FirstLookupOfLastSection);

void BM_IniGetString_RepeatedLookupsInLastSection(benchmark::State& state) {
    CIniFileT<CFile> ini(Wide(Files().Path("sections.ini")));
    stdstr out;
    ini.GetString(out, u"Section49", u"Key0", u""); // indexed before the measurement
    for (auto _ : state) {
        ini.GetString(out, u"Section49", u"Key50", u"");
        benchmark::DoNotOptimize(out.data());
    }
    if (out != u"Value 50 of section 49")
        state.SkipWithError("wrong value");
}
BENCHMARK(BM_IniGetString_RepeatedLookupsInLastSection);

void BM_IniGetString_RepeatedLookupsAlternatingSections(benchmark::State& state) {
    CIniFileT<CFile> ini(Wide(Files().Path("sections.ini")));
    stdstr out;
    ini.GetString(out, u"Section49", u"Key0", u"");
    bool odd = false;
    for (auto _ : state) {
        ini.GetString(out, odd ? u"Section49" : u"Section25", u"Key50", u"");
        odd = !odd;
        benchmark::DoNotOptimize(out.data());
    }
    if (out.empty())
        state.SkipWithError("not found");
}
BENCHMARK(BM_IniGetString_RepeatedLookupsAlternatingSections);

void BM_Floor_NaiveGetString_RepeatedLookupsInLastSection(benchmark::State& state) {
    NaiveIniReader ini(Files().Path("sections.ini"));
    std::string out;
    for (auto _ : state) {
        out = ini.Get("Section49", "Key50");
        benchmark::DoNotOptimize(out.data());
    }
    if (out != "Value 50 of section 49")
        state.SkipWithError("wrong value");
}
BENCHMARK(BM_Floor_NaiveGetString_RepeatedLookupsInLastSection);

// ---- the translation store -----------------------------------------------------------------

void BM_StoreGetTranslatedString_PlainKey(benchmark::State& state) {
    static CQGInternationalizationManager store;
    store.LoadTranslationFile(Wide(Files().Path("language.ini")));
    stdstr out;
    const stdstr key = u"QGSA_3500";
    for (auto _ : state) {
        store.GetTranslatedString(out, key);
        benchmark::DoNotOptimize(out.data());
    }
    if (out == key)
        state.SkipWithError("not found");
}
BENCHMARK(BM_StoreGetTranslatedString_PlainKey);

void BM_Floor_MapFindAndCopy(benchmark::State& state) {
    std::map<std::u16string, std::u16string> texts;
    for (int k = 0; k < 4992; ++k)
        texts.emplace(Wide("QGSA_" + std::to_string(1000 + k)),
                      Wide("The sentence number " + std::to_string(k) +
                           " of the program, as long as a real one."));
    const std::u16string key = u"QGSA_3500";
    std::u16string out;
    for (auto _ : state) {
        const auto found = texts.find(key);
        out = found == texts.end() ? key : found->second;
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(BM_Floor_MapFindAndCopy);

} // namespace
