#pragma once
// Narrows UTF-16 text into a Windows code page, given by its Windows number, the way
// WideCharToMultiByte with flags 0 and no default character does: what the code page
// lacks becomes '?'. UTF-8 is done in-house; every other code page goes through iconv.
// It reports failure by an errno value so that each caller throws its own exception.

#include <string>
#include <string_view>

namespace Corvane {

class CodePageConverter {
public:
    static constexpr unsigned SystemCodePage = 0;
    static constexpr unsigned Utf8CodePage = 65001;

    // Appends `text` in `codePage` to `out`. Returns 0, or the errno value that kept the
    // conversion from happening (EINVAL for a code page this system cannot convert to);
    // on failure `out` is left as it was.
    static int narrow(std::u16string_view text, unsigned codePage, std::string& out);

    // The iconv name of a Windows code page number; null for one this system does not know.
    static const char* iconvName(unsigned codePage);

    // The encoding of the environment's locale, which stands in for the system's ANSI code
    // page. The plain C locale counts as UTF-8: its ASCII would turn every other character
    // of a file name or a log line into '?', and UTF-8 is what Linux file names and
    // terminals use.
    static std::string systemEncoding();
};

} // namespace Corvane
