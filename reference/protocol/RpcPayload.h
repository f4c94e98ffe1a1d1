#pragma once
// The payload forms of the frames that carry envelopes. Requests and replies carry the XML as
// UTF-8, inbound calls as UTF-16 little-endian: the same split that the program's send path
// and handlers make, so that neither end can mix the two up.

#include "foundation/stdstr.h"

#include <string>
#include <string_view>

class IMessage;

namespace RpcPayload {

// The payload of a request or reply carrying `message`.
std::string RequestOf(const IMessage& message);
// The payload of an inbound call carrying `message`.
std::string InboundOf(const IMessage& message);

// The XML of a UTF-8 payload: up to its first 0 byte, bad sequences as U+FFFD.
stdstr TextOfRequest(std::string_view payload);
// The XML of a UTF-16LE payload (byte count / 2 units, an odd last byte dropped).
stdstr TextOfInbound(std::string_view payload);
// The UTF-16LE bytes of `xml`.
std::string InboundBytes(std::u16string_view xml);

} // namespace RpcPayload
