#include "foundation/CodePageConverter.h"

#include "foundation/Unicode.h"

#include <bit>
#include <cerrno>
#include <cstring>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <string>

namespace Corvane {

namespace {

// Owns one iconv descriptor.
class IconvHandle {
public:
    IconvHandle(const char* to, const char* from) : m_cd(iconv_open(to, from)) {}
    ~IconvHandle() {
        if (valid())
            iconv_close(m_cd);
    }
    IconvHandle(const IconvHandle&) = delete;
    IconvHandle& operator=(const IconvHandle&) = delete;

    bool valid() const { return m_cd != reinterpret_cast<iconv_t>(-1); }
    iconv_t get() const { return m_cd; }

private:
    iconv_t m_cd;
};

// iconv output into a growing string. `convert` returns 0 once all input is consumed, or
// EILSEQ/EINVAL with the input left at the unit that could not be converted, or another
// errno value for a real failure.
class IconvSink {
public:
    IconvSink(iconv_t cd, std::size_t expected) : m_cd(cd) { m_buffer.resize(expected + 16); }

    int convert(const char*& in, std::size_t& inLeft) {
        for (;;) {
            char* inPtr = const_cast<char*>(in);
            char* outPtr = m_buffer.data() + m_used;
            std::size_t outLeft = m_buffer.size() - m_used;
            const std::size_t result =
                iconv(m_cd, in ? &inPtr : nullptr, in ? &inLeft : nullptr, &outPtr, &outLeft);
            const int error = errno;
            m_used = static_cast<std::size_t>(outPtr - m_buffer.data());
            if (in)
                in = inPtr;
            if (result != static_cast<std::size_t>(-1))
                return 0;
            if (error != E2BIG)
                return error;
            m_buffer.resize(m_buffer.size() * 2);
        }
    }
    // Brings a stateful encoding back to its initial shift state.
    int finish() {
        const char* none = nullptr;
        std::size_t zero = 0;
        return convert(none, zero);
    }
    void appendTo(std::string& out) const { out.append(m_buffer.data(), m_used); }

private:
    iconv_t m_cd;
    std::string m_buffer;
    std::size_t m_used = 0;
};

const char* utf16Native() {
    return std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
}

bool isUtf8Name(const std::string& name) {
    return strcasecmp(name.c_str(), "UTF-8") == 0 || strcasecmp(name.c_str(), "UTF8") == 0;
}

struct CodePageName {
    unsigned codePage;
    const char* name;
};

// Windows code page numbers and the glibc converters that implement them.
constexpr CodePageName CodePageNames[] = {
    {437, "CP437"},         {737, "CP737"},         {775, "CP775"},         {850, "CP850"},
    {852, "CP852"},         {855, "CP855"},         {857, "CP857"},         {858, "CP858"},
    {860, "CP860"},         {861, "CP861"},         {862, "CP862"},         {863, "CP863"},
    {864, "CP864"},         {865, "CP865"},         {866, "CP866"},         {869, "CP869"},
    {874, "CP874"},         {932, "CP932"},         {936, "CP936"},         {949, "CP949"},
    {950, "CP950"},         {1200, "UTF-16LE"},     {1201, "UTF-16BE"},     {1250, "CP1250"},
    {1251, "CP1251"},       {1252, "CP1252"},       {1253, "CP1253"},       {1254, "CP1254"},
    {1255, "CP1255"},       {1256, "CP1256"},       {1257, "CP1257"},       {1258, "CP1258"},
    {1361, "JOHAB"},        {10000, "MACINTOSH"},   {12000, "UTF-32LE"},    {12001, "UTF-32BE"},
    {20127, "ASCII"},       {20866, "KOI8-R"},      {20932, "EUC-JP"},      {21866, "KOI8-U"},
    {28591, "ISO-8859-1"},  {28592, "ISO-8859-2"},  {28593, "ISO-8859-3"},  {28594, "ISO-8859-4"},
    {28595, "ISO-8859-5"},  {28596, "ISO-8859-6"},  {28597, "ISO-8859-7"},  {28598, "ISO-8859-8"},
    {28599, "ISO-8859-9"},  {28600, "ISO-8859-10"}, {28601, "ISO-8859-11"}, {28603, "ISO-8859-13"},
    {28604, "ISO-8859-14"}, {28605, "ISO-8859-15"}, {28606, "ISO-8859-16"}, {50220, "ISO-2022-JP"},
    {51932, "EUC-JP"},      {51936, "GB2312"},      {51949, "EUC-KR"},      {54936, "GB18030"},
    {65000, "UTF-7"},       {65001, "UTF-8"},
};

} // namespace

const char* CodePageConverter::iconvName(unsigned codePage) {
    for (const auto& entry : CodePageNames) {
        if (entry.codePage == codePage)
            return entry.name;
    }
    return nullptr;
}

std::string CodePageConverter::systemEncoding() {
    // Asked afresh each time without touching the process's own locale, which belongs to
    // the program; a copy of the environment's is enough to read its encoding.
    std::string name;
    if (locale_t locale = newlocale(LC_CTYPE_MASK, "", static_cast<locale_t>(nullptr))) {
        if (const char* codeset = nl_langinfo_l(CODESET, locale))
            name = codeset;
        freelocale(locale);
    }
    if (name.empty() || name == "ANSI_X3.4-1968" || strcasecmp(name.c_str(), "ASCII") == 0)
        name = "UTF-8";
    return name;
}

int CodePageConverter::narrow(std::u16string_view text, unsigned codePage, std::string& out) {
    std::string name;
    if (codePage == SystemCodePage) {
        name = systemEncoding();
    } else if (const char* known = iconvName(codePage)) {
        name = known;
    } else {
        return EINVAL;
    }
    if (isUtf8Name(name)) {
        Unicode::appendUtf8(out, text);
        return 0;
    }

    IconvHandle handle(name.c_str(), utf16Native());
    if (!handle.valid())
        return errno != 0 ? errno : EINVAL;

    IconvSink sink(handle.get(), text.size() * 2);
    const char* in = reinterpret_cast<const char*>(text.data());
    std::size_t inLeft = text.size() * sizeof(char16_t);
    static constexpr char16_t DefaultCharacter = u'?';
    while (inLeft > 0) {
        const int error = sink.convert(in, inLeft);
        if (error == 0)
            break;
        if (error != EILSEQ && error != EINVAL)
            return error;
        // The unit at `in` is missing from the code page, or a surrogate without its
        // partner. It becomes the default character, one per unit, as Windows' tables do;
        // converting '?' through the same descriptor keeps a shift state right.
        const char* fallback = reinterpret_cast<const char*>(&DefaultCharacter);
        std::size_t fallbackLeft = sizeof DefaultCharacter;
        if (const int fallbackError = sink.convert(fallback, fallbackLeft); fallbackError != 0)
            return fallbackError;
        in += sizeof(char16_t);
        inLeft -= sizeof(char16_t);
    }
    if (const int error = sink.finish(); error != 0)
        return error;
    sink.appendTo(out);
    return 0;
}

} // namespace Corvane
