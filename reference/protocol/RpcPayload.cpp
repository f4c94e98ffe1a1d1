#include "protocol/RpcPayload.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/TransportText.h"

namespace RpcPayload {

std::string RequestOf(const IMessage& message) {
    CMessageEnvelope envelope;
    return TransportText::RequestBytes(envelope.Serialize(message));
}

std::string InboundOf(const IMessage& message) {
    CMessageEnvelope envelope;
    return InboundBytes(envelope.Serialize(message));
}

stdstr TextOfRequest(std::string_view payload) {
    return stdstr::toTString(payload);
}

stdstr TextOfInbound(std::string_view payload) {
    return TransportText::InboundText(payload.data(), static_cast<std::uint32_t>(payload.size()));
}

std::string InboundBytes(std::u16string_view xml) {
    std::string bytes;
    bytes.reserve(xml.size() * 2);
    for (const char16_t unit : xml) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

} // namespace RpcPayload
