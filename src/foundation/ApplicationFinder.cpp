#include "foundation/ApplicationFinder.h"

#include "foundation/ElfPackageNote.h"
#include "foundation/PackageMetadata.h"

#include <array>
#include <climits>
#include <cstdint>

namespace Corvane {
namespace {

// wcstok over a buffer that the caller keeps: a token is the longest run without the
// delimiter, leading delimiters are skipped, and the delimiter behind a token is replaced
// by a NUL, which ends the text for any later pass from the start.
class Tokens {
public:
    Tokens(std::u16string& buffer, char16_t delimiter) : m_buffer(buffer), m_delimiter(delimiter) {}

    const char16_t* next() {
        std::size_t i = m_next;
        while (i < m_buffer.size() && m_buffer[i] != u'\0' && m_buffer[i] == m_delimiter)
            ++i;
        if (i >= m_buffer.size() || m_buffer[i] == u'\0') {
            m_next = i;
            return nullptr;
        }
        const std::size_t start = i;
        while (i < m_buffer.size() && m_buffer[i] != u'\0' && m_buffer[i] != m_delimiter)
            ++i;
        if (i < m_buffer.size() && m_buffer[i] == m_delimiter) {
            m_buffer[i] = u'\0';
            ++i;
        }
        m_next = i;
        return m_buffer.c_str() + start;
    }

private:
    std::u16string& m_buffer;
    char16_t m_delimiter;
    std::size_t m_next = 0;
};

// _wtoi: blanks, a sign, then decimal digits; the value saturates at the ends of int.
int NumberAtStart(const char16_t* text) {
    while (*text == u' ' || *text == u'\t' || *text == u'\n' || *text == u'\v' || *text == u'\f' ||
           *text == u'\r')
        ++text;
    bool negative = false;
    if (*text == u'+' || *text == u'-') {
        negative = *text == u'-';
        ++text;
    }
    std::int64_t value = 0;
    for (; *text >= u'0' && *text <= u'9'; ++text) {
        value = value * 10 + (*text - u'0');
        if (value > static_cast<std::int64_t>(INT_MAX) + 1)
            value = static_cast<std::int64_t>(INT_MAX) + 1;
    }
    if (negative)
        return static_cast<int>(-value);
    return value > INT_MAX ? INT_MAX : static_cast<int>(value);
}

void StoreTokens(std::u16string& buffer, char16_t delimiter, const std::array<int*, 4>& numbers) {
    Tokens tokens(buffer, delimiter);
    for (int* number : numbers) {
        const char16_t* token = tokens.next();
        if (!token)
            return;
        *number = NumberAtStart(token);
    }
}

} // namespace

ApplicationFinder::~ApplicationFinder() = default;

void ApplicationFinder::parseVersionText(const std::u16string& text, int& first, int& second,
                                         int& third, int& fourth) {
    std::u16string buffer = text;
    const std::array<int*, 4> numbers{&first, &second, &third, &fourth};
    StoreTokens(buffer, u',', numbers);
    StoreTokens(buffer, u'.', numbers);
}

bool ApplicationFinder::getFileVersion(const std::u16string& path, int& first, int& second,
                                       int& third, int& fourth) const {
    const auto note = ElfPackageNote::textOfFile(stdstr::fromTString(path));
    if (!note)
        return false;
    const auto metadata = PackageMetadata::parse(*note);
    if (!metadata || !metadata->version)
        return false;
    parseVersionText(stdstr::toTString(*metadata->version), first, second, third, fourth);
    return true;
}

} // namespace Corvane

stdstr GetFileVersionText(const stdstr& path) {
    int first = 0;
    int second = 0;
    int third = 0;
    int fourth = 0;
    const Corvane::ApplicationFinder finder;
    if (!finder.getFileVersion(path, first, second, third, fourth))
        return stdstr();
    return stringFmt(u"%d.%d.%d.%d", first, second, third, fourth);
}
