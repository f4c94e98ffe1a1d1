#include "messaging/TextSearch.h"

#include <bit>
#include <cstring>

std::size_t FindText(std::u16string_view text, std::u16string_view pattern, std::size_t from) {
    constexpr std::size_t npos = std::u16string_view::npos;
    const char16_t first = pattern.empty() ? u'\0' : pattern[0];
    if (pattern.empty() || first > 0xFF)
        return text.find(pattern, from);
    if (from >= text.size() || text.size() - from < pattern.size())
        return npos;

    // Where in a unit its low byte lies; a byte hit elsewhere is a high byte and no match.
    constexpr std::size_t lowOffset = std::endian::native == std::endian::little ? 0 : 1;
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    const std::size_t last = text.size() - pattern.size();
    std::size_t position = from;
    while (position <= last) {
        const std::size_t startByte = position * 2 + lowOffset;
        const std::size_t byteCount = (last - position) * 2 + 1;
        const void* hit = std::memchr(bytes + startByte, first, byteCount);
        if (hit == nullptr)
            return npos;
        const auto byteIndex =
            static_cast<std::size_t>(static_cast<const unsigned char*>(hit) - bytes);
        if (byteIndex % 2 != lowOffset) {
            // The high byte of a unit: go on with the first unit whose low byte is unsearched.
            position = (byteIndex + 1 - lowOffset) / 2;
            continue;
        }
        const std::size_t unit = (byteIndex - lowOffset) / 2;
        if (text[unit] == first && text.substr(unit, pattern.size()) == pattern)
            return unit;
        position = unit + 1;
    }
    return npos;
}
