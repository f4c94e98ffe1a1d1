#include "messaging/TransportText.h"

namespace TransportText {

std::string RequestBytes(const stdstr& xml) {
    return stdstr::fromTString(xml);
}

stdstr InboundText(const void* data, std::uint32_t byteLength) {
    if (data == nullptr)
        return stdstr();
    const auto* bytes = static_cast<const unsigned char*>(data);
    const std::uint32_t units = byteLength / 2;
    stdstr text(units, u'\0');
    for (std::uint32_t i = 0; i < units; ++i)
        text[i] = static_cast<char16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
    return text;
}

} // namespace TransportText
