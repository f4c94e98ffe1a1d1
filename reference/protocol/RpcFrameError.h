#pragma once
// Why a byte stream is not a valid run of frames. Every error is final for the stream: a
// frame boundary cannot be found again, so the connection is closed.

#include <cstdint>

enum class RpcFrameError : std::uint8_t {
    None = 0,
    BadMagic,          // the first two bytes are not "QG"
    BadVersion,        // a version this end does not speak
    BadKind,           // a kind outside 1..5
    ZeroCorrelation,   // correlation id 0
    BadCode,           // a request with a code, an inbound call outside 1..1023, control 0
    Oversized,         // a payload length above the limit
    OddInboundPayload, // an inbound call whose UTF-16 payload has an odd byte count
};

// A short English description ("payload larger than the limit", ...), for logs.
const char* DescribeRpcFrameError(RpcFrameError error);
