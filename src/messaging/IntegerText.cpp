#include "messaging/IntegerText.h"

#include <charconv>
#include <limits>

namespace {

// The white space that "%d" passes over before a number.
template <class Char>
bool IsBlank(Char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

template <class Char>
std::int32_t ReadLeadingNumber(std::basic_string_view<Char> text) {
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i]))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    // The magnitude is gathered in 64 bits and checked at each digit, so that no length of
    // digits can overflow; the negative side has room for one more than the positive.
    const std::int64_t limit = negative ? -std::int64_t{std::numeric_limits<std::int32_t>::min()}
                                        : std::int64_t{std::numeric_limits<std::int32_t>::max()};
    std::int64_t magnitude = 0;
    std::size_t digits = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i, ++digits) {
        magnitude = magnitude * 10 + (text[i] - '0');
        if (magnitude > limit)
            return 0;
    }
    if (digits == 0)
        return 0;
    return static_cast<std::int32_t>(negative ? -magnitude : magnitude);
}

template <class Integer>
void AppendDecimal(Integer value, std::u16string& out) {
    // A sign and ten digits fit easily; the buffer keeps the width the service's writer has.
    char buffer[260];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    if (result.ec != std::errc() || result.ptr == buffer) {
        out += u'0';
        return;
    }
    out.append(buffer, result.ptr);
}

} // namespace

namespace IntegerText {

void Append(std::int32_t value, std::u16string& out) {
    AppendDecimal(value, out);
}

void AppendUnsigned(std::uint32_t value, std::u16string& out) {
    AppendDecimal(value, out);
}

stdstr Write(std::int32_t value) {
    stdstr text;
    Append(value, text);
    return text;
}

std::int32_t Read(std::u16string_view text) {
    return ReadLeadingNumber(text);
}

std::int32_t Read(std::string_view text) {
    return ReadLeadingNumber(text);
}

} // namespace IntegerText
