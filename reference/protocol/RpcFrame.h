#pragma once
// One frame on the service's socket: a fixed 16-byte header and a payload. The header says
// what the payload is (a request, its reply, a call from the service, a control operation or
// its result), which request a reply answers, and how long the payload is. The payload of a
// request or reply is an envelope as UTF-8, that of an inbound call an envelope as UTF-16LE;
// control payloads are the service's own business. docs/rpc-protocol.md has the layout.

#include <cstdint>
#include <string>

enum class RpcFrameKind : std::uint8_t {
    Request = 1,      // program to service; code 0
    Reply = 2,        // service to program; code = the status of the request
    InboundCall = 3,  // service to program; code = the message id (1..1023), no answer
    Control = 4,      // control client to service; code = the operation (not 0)
    ControlReply = 5, // service to control client; code = the operation's result
};

struct RpcFrame {
    // "QG" in the first two bytes: a peer that speaks something else is told apart at once.
    static constexpr std::uint8_t Magic0 = 0x51;
    static constexpr std::uint8_t Magic1 = 0x47;
    static constexpr std::uint8_t Version = 1;
    static constexpr std::size_t HeaderSize = 16;
    // The largest payload either end accepts. An envelope is a few hundred bytes; the limit
    // keeps a broken or hostile peer from making the other end buffer without bound.
    static constexpr std::uint32_t MaxPayload = 64 * 1024;
    // Message ids of the envelope are 1..1023.
    static constexpr std::uint32_t MaxMessageId = 1023;

    RpcFrameKind kind = RpcFrameKind::Request;
    // Chosen by the sender of a request or control frame, never 0; a reply carries the id
    // of what it answers; an inbound call carries the service's own sequence number.
    std::uint32_t correlation = 0;
    std::uint32_t code = 0;
    std::string payload;

    bool operator==(const RpcFrame&) const = default;
};
