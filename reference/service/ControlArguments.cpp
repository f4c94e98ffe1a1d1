#include "service/ControlArguments.h"

#include <cstdint>

namespace ControlArguments {

std::string encode(const std::vector<std::string>& arguments) {
    std::string payload;
    for (const std::string& argument : arguments) {
        const auto size = static_cast<std::uint32_t>(argument.size());
        for (int shift = 0; shift < 32; shift += 8)
            payload.push_back(static_cast<char>((size >> shift) & 0xFF));
        payload += argument;
    }
    return payload;
}

std::optional<std::vector<std::string>> decode(std::string_view payload) {
    std::vector<std::string> arguments;
    while (!payload.empty()) {
        if (payload.size() < 4 || arguments.size() == MaxArguments)
            return std::nullopt;
        std::uint32_t size = 0;
        for (int i = 0; i < 4; ++i)
            size |= static_cast<std::uint32_t>(static_cast<unsigned char>(payload[i])) << (8 * i);
        payload.remove_prefix(4);
        if (size > payload.size())
            return std::nullopt;
        arguments.emplace_back(payload.substr(0, size));
        payload.remove_prefix(size);
    }
    return arguments;
}

} // namespace ControlArguments
