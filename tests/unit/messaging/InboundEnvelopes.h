#pragma once
// The service's messages as their envelopes, ready to be handed to a handler.

#include "messaging/CMessageEnvelope.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"

#include <string>

namespace InboundEnvelopes {

inline std::u16string Of(const IMessage& msg) {
    CMessageEnvelope envelope;
    return envelope.Serialize(msg);
}

inline enumMSG_FAILED_TO_LOAD_LSP_Message FailedToLoad(const stdstr& component) {
    enumMSG_FAILED_TO_LOAD_LSP_Message msg;
    msg.SetComponentName(component);
    return msg;
}

inline enumMSG_REINSTALL_LSP_Message Reinstall(const stdstr& file, const stdstr& parameters,
                                               const stdstr& folder) {
    enumMSG_REINSTALL_LSP_Message msg;
    msg.SetFile(file);
    msg.SetParameters(parameters);
    msg.SetFolder(folder);
    return msg;
}

// Little-endian UTF-16 bytes of `text`, as an inbound call carries them.
inline std::string Utf16Bytes(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

} // namespace InboundEnvelopes
