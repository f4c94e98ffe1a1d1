#pragma once
// The 16 bytes in front of every payload, little-endian:
//   0  'Q'   1  'G'   2  version (1)   3  kind
//   4  correlation id (u32)   8  code (u32)   12  payload length (u32)
// Reading checks every rule that the header alone can break, so that a decoder refuses an
// oversized or malformed frame before a byte of its payload is buffered.

#include "protocol/RpcFrame.h"
#include "protocol/RpcFrameError.h"

#include <cstddef>
#include <cstdint>

struct RpcFrameHeader {
    RpcFrameKind kind = RpcFrameKind::Request;
    std::uint32_t correlation = 0;
    std::uint32_t code = 0;
    std::uint32_t length = 0;

    // Writes the header of `frame` (its payload's size as the length) into `out`.
    static void write(const RpcFrame& frame, unsigned char (&out)[RpcFrame::HeaderSize]);
    // Checks the first `available` bytes of a header that may not be complete yet: the magic,
    // the version and the kind can be judged as soon as they are there.
    static RpcFrameError checkPrefix(const unsigned char* bytes, std::size_t available);
    // Reads a complete header; `header` is filled only when the result is None.
    static RpcFrameError read(const unsigned char* bytes, std::uint32_t maxPayload,
                              RpcFrameHeader& header);
    // The rules on the fields, shared by the reader and the encoder.
    static RpcFrameError check(const RpcFrameHeader& header, std::uint32_t maxPayload);
};
