#pragma once
// Cuts a byte stream into frames, however the bytes arrive: one at a time, several frames
// at once, or a header now and its payload later. The header is judged as soon as its bytes
// are there, so a malformed or oversized frame is refused before its payload is buffered.
// The first error is final: the decoder then holds no frame and takes no more bytes, and
// the connection is to be closed. Not thread-safe: one reader feeds it.

#include "protocol/RpcFrame.h"
#include "protocol/RpcFrameError.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

class RpcFrameDecoder {
public:
    explicit RpcFrameDecoder(std::uint32_t maxPayload = RpcFrame::MaxPayload);

    // Takes the next bytes of the stream. Call next() until it gives nothing before feeding
    // more, so that no more than one frame and one read are ever buffered.
    void feed(const void* data, std::size_t size);
    // The next complete frame, or nothing when more bytes are needed or the stream failed.
    std::optional<RpcFrame> next();

    bool failed() const { return m_error != RpcFrameError::None; }
    RpcFrameError error() const { return m_error; }
    // Where in the stream the frame that failed begins (bytes fed before it).
    std::uint64_t errorOffset() const { return m_errorOffset; }
    // Bytes held that belong to no complete frame yet.
    std::size_t buffered() const { return m_buffer.size() - m_start; }
    // Forgets everything, the error included: a new stream begins (a new connection).
    void reset();

private:
    void fail(RpcFrameError error);
    void compact();

    std::uint32_t m_maxPayload;
    std::string m_buffer;
    std::size_t m_start = 0;      // first byte of the frame being read
    std::uint64_t m_consumed = 0; // stream offset of m_start
    RpcFrameError m_error = RpcFrameError::None;
    std::uint64_t m_errorOffset = 0;
};
