#include "app/LanguageSetting.h"

#include "localisation/LanguageTable.h"

#include <limits>

namespace {

bool IsBlank(char16_t c) {
    // The characters that iswspace accepts in the C locale.
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

} // namespace

std::int32_t LanguageSetting::ToNumber(const stdstr& text) {
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i]))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    constexpr std::int64_t Limit = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    std::int64_t value = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        if (value <= Limit)
            value = value * 10 + (text[i] - u'0');
    }
    if (negative)
        value = -value;
    if (value > std::numeric_limits<std::int32_t>::max())
        return std::numeric_limits<std::int32_t>::max();
    if (value < std::numeric_limits<std::int32_t>::min())
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

stdstr LanguageSetting::NameOfId(std::int32_t id) {
    // A negative id is no language; as an unsigned number it is not in the table either.
    return LanguageTable::NameFromId(static_cast<std::uint32_t>(id));
}

stdstr LanguageSetting::NameOf(const stdstr& setting) {
    return NameOfId(ToNumber(setting));
}
