#include "protocol/RpcFrameEncoder.h"

#include "protocol/RpcFrameHeader.h"

#include <limits>

RpcFrameError RpcFrameEncoder::append(const RpcFrame& frame, std::string& out,
                                      std::uint32_t maxPayload) {
    if (frame.payload.size() > std::numeric_limits<std::uint32_t>::max())
        return RpcFrameError::Oversized;
    RpcFrameHeader header;
    header.kind = frame.kind;
    header.correlation = frame.correlation;
    header.code = frame.code;
    header.length = static_cast<std::uint32_t>(frame.payload.size());
    if (const RpcFrameError error = RpcFrameHeader::check(header, maxPayload);
        error != RpcFrameError::None)
        return error;
    unsigned char bytes[RpcFrame::HeaderSize];
    RpcFrameHeader::write(frame, bytes);
    out.reserve(out.size() + RpcFrame::HeaderSize + frame.payload.size());
    out.append(reinterpret_cast<const char*>(bytes), RpcFrame::HeaderSize);
    out.append(frame.payload);
    return RpcFrameError::None;
}

std::string RpcFrameEncoder::encode(const RpcFrame& frame, std::uint32_t maxPayload) {
    std::string out;
    append(frame, out, maxPayload);
    return out;
}
