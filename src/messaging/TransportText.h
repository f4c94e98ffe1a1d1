#pragma once
// The forms in which an envelope's text travels. Requests to the service and its replies
// are UTF-8; calls that the service makes to this program arrive as UTF-16. The two paths
// are kept apart on purpose: reading a request's bytes as UTF-16, or the other way round,
// gives a text without a single tag that the reader looks for.

#include "foundation/stdstr.h"

#include <cstdint>
#include <string>

namespace TransportText {

// An outbound request: the XML as UTF-8, whose size is the length to send (no terminator).
std::string RequestBytes(const stdstr& xml);

// An inbound call: `byteLength` bytes of UTF-16 code units, little-endian, taken as
// byteLength / 2 characters (an odd last byte is no character). Nothing in the units is
// checked or cut; a null `data` is an empty text.
stdstr InboundText(const void* data, std::uint32_t byteLength);

} // namespace TransportText
