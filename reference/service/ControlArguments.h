#pragma once
// The payload of a control frame: a list of texts, each as a 32-bit little-endian byte count
// followed by its bytes, nothing between them. The service decodes what any local process
// may send, so the decoder takes nothing for granted.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ControlArguments {

inline constexpr std::size_t MaxArguments = 64;

std::string encode(const std::vector<std::string>& arguments);
// Nothing when the payload is cut short or holds more than MaxArguments texts.
std::optional<std::vector<std::string>> decode(std::string_view payload);

} // namespace ControlArguments
