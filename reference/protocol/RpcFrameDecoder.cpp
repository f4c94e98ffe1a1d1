#include "protocol/RpcFrameDecoder.h"

#include "protocol/RpcFrameHeader.h"

RpcFrameDecoder::RpcFrameDecoder(std::uint32_t maxPayload) : m_maxPayload(maxPayload) {}

void RpcFrameDecoder::feed(const void* data, std::size_t size) {
    if (failed() || size == 0)
        return;
    compact();
    m_buffer.append(static_cast<const char*>(data), size);
    // A header that is already wrong in its first bytes fails now, not when a peer that
    // speaks another protocol has sent 16 bytes.
    const std::size_t available = buffered();
    if (available < RpcFrame::HeaderSize) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(m_buffer.data() + m_start);
        if (const RpcFrameError error = RpcFrameHeader::checkPrefix(bytes, available);
            error != RpcFrameError::None)
            fail(error);
    }
}

std::optional<RpcFrame> RpcFrameDecoder::next() {
    if (failed())
        return std::nullopt;
    const std::size_t available = buffered();
    const auto* bytes = reinterpret_cast<const unsigned char*>(m_buffer.data() + m_start);
    if (available < RpcFrame::HeaderSize) {
        if (const RpcFrameError error = RpcFrameHeader::checkPrefix(bytes, available);
            error != RpcFrameError::None)
            fail(error);
        return std::nullopt;
    }
    RpcFrameHeader header;
    if (const RpcFrameError error = RpcFrameHeader::read(bytes, m_maxPayload, header);
        error != RpcFrameError::None) {
        fail(error);
        return std::nullopt;
    }
    const std::size_t total = RpcFrame::HeaderSize + header.length;
    if (available < total)
        return std::nullopt;
    RpcFrame frame;
    frame.kind = header.kind;
    frame.correlation = header.correlation;
    frame.code = header.code;
    frame.payload.assign(m_buffer, m_start + RpcFrame::HeaderSize, header.length);
    m_start += total;
    m_consumed += total;
    return frame;
}

void RpcFrameDecoder::reset() {
    m_buffer.clear();
    m_buffer.shrink_to_fit();
    m_start = 0;
    m_consumed = 0;
    m_error = RpcFrameError::None;
    m_errorOffset = 0;
}

void RpcFrameDecoder::fail(RpcFrameError error) {
    m_error = error;
    m_errorOffset = m_consumed;
    m_buffer.clear();
    m_buffer.shrink_to_fit();
    m_start = 0;
}

void RpcFrameDecoder::compact() {
    // Frames already handed out are dropped before new bytes come in, so the buffer holds
    // at most the frame being read and the bytes of one feed.
    if (m_start == 0)
        return;
    m_buffer.erase(0, m_start);
    m_start = 0;
}
