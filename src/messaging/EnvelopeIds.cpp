#include "messaging/EnvelopeIds.h"

#include "messaging/EnvelopeTexts.h"
#include "messaging/IntegerText.h"
#include "messaging/TextSearch.h"

#include <optional>

namespace {

constexpr std::int32_t MessageIdLimit = 0x400;

constexpr std::string_view NarrowUniqueIdOpen = "<VLUNIID>";
constexpr std::string_view NarrowUniqueIdClose = "</VLUNIID>";

std::size_t Find(std::u16string_view text, std::u16string_view pattern, std::size_t from) {
    return FindText(text, pattern, from);
}

std::size_t Find(std::string_view text, std::string_view pattern, std::size_t from) {
    return text.find(pattern, from);
}

// The text between the first `open` and the `close` behind it, searched from the start.
template <class Char>
std::optional<std::basic_string_view<Char>> Between(std::basic_string_view<Char> text,
                                                    std::basic_string_view<Char> open,
                                                    std::basic_string_view<Char> close) {
    const std::size_t start = Find(text, open, 0);
    if (start == std::basic_string_view<Char>::npos)
        return std::nullopt;
    const std::size_t valueStart = start + open.size();
    const std::size_t end = Find(text, close, valueStart);
    if (end == std::basic_string_view<Char>::npos)
        return std::nullopt;
    return text.substr(valueStart, end - valueStart);
}

template <class Char>
std::int32_t UniqueId(std::basic_string_view<Char> xml, std::basic_string_view<Char> open,
                      std::basic_string_view<Char> close) {
    const auto value = Between(xml, open, close);
    if (!value || value->empty())
        return 0;
    return IntegerText::Read(*value);
}

} // namespace

std::int32_t ReadMessageId(std::u16string_view xml) {
    const auto value = Between(xml, EnvelopeTexts::IdOpen, EnvelopeTexts::IdClose);
    if (!value)
        return 0;
    const std::int32_t id = IntegerText::Read(*value);
    return id > 0 && id < MessageIdLimit ? id : 0;
}

std::int32_t ReadUniqueId(std::u16string_view xml) {
    return UniqueId(xml, EnvelopeTexts::UniqueIdOpen, EnvelopeTexts::UniqueIdClose);
}

std::int32_t ReadUniqueId(std::string_view xml) {
    return UniqueId(xml, NarrowUniqueIdOpen, NarrowUniqueIdClose);
}
