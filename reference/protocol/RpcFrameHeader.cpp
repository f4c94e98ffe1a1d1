#include "protocol/RpcFrameHeader.h"

namespace {

void PutU32(unsigned char* out, std::uint32_t value) {
    out[0] = static_cast<unsigned char>(value);
    out[1] = static_cast<unsigned char>(value >> 8);
    out[2] = static_cast<unsigned char>(value >> 16);
    out[3] = static_cast<unsigned char>(value >> 24);
}

std::uint32_t GetU32(const unsigned char* in) {
    return static_cast<std::uint32_t>(in[0]) | static_cast<std::uint32_t>(in[1]) << 8 |
           static_cast<std::uint32_t>(in[2]) << 16 | static_cast<std::uint32_t>(in[3]) << 24;
}

bool KnownKind(unsigned char kind) {
    return kind >= static_cast<unsigned char>(RpcFrameKind::Request) &&
           kind <= static_cast<unsigned char>(RpcFrameKind::ControlReply);
}

} // namespace

void RpcFrameHeader::write(const RpcFrame& frame, unsigned char (&out)[RpcFrame::HeaderSize]) {
    out[0] = RpcFrame::Magic0;
    out[1] = RpcFrame::Magic1;
    out[2] = RpcFrame::Version;
    out[3] = static_cast<unsigned char>(frame.kind);
    PutU32(out + 4, frame.correlation);
    PutU32(out + 8, frame.code);
    PutU32(out + 12, static_cast<std::uint32_t>(frame.payload.size()));
}

RpcFrameError RpcFrameHeader::checkPrefix(const unsigned char* bytes, std::size_t available) {
    if (available > 0 && bytes[0] != RpcFrame::Magic0)
        return RpcFrameError::BadMagic;
    if (available > 1 && bytes[1] != RpcFrame::Magic1)
        return RpcFrameError::BadMagic;
    if (available > 2 && bytes[2] != RpcFrame::Version)
        return RpcFrameError::BadVersion;
    if (available > 3 && !KnownKind(bytes[3]))
        return RpcFrameError::BadKind;
    return RpcFrameError::None;
}

RpcFrameError RpcFrameHeader::read(const unsigned char* bytes, std::uint32_t maxPayload,
                                   RpcFrameHeader& header) {
    if (const RpcFrameError error = checkPrefix(bytes, RpcFrame::HeaderSize);
        error != RpcFrameError::None)
        return error;
    RpcFrameHeader read;
    read.kind = static_cast<RpcFrameKind>(bytes[3]);
    read.correlation = GetU32(bytes + 4);
    read.code = GetU32(bytes + 8);
    read.length = GetU32(bytes + 12);
    if (const RpcFrameError error = check(read, maxPayload); error != RpcFrameError::None)
        return error;
    header = read;
    return RpcFrameError::None;
}

RpcFrameError RpcFrameHeader::check(const RpcFrameHeader& header, std::uint32_t maxPayload) {
    if (!KnownKind(static_cast<unsigned char>(header.kind)))
        return RpcFrameError::BadKind;
    if (header.correlation == 0)
        return RpcFrameError::ZeroCorrelation;
    switch (header.kind) {
    case RpcFrameKind::Request:
        if (header.code != 0)
            return RpcFrameError::BadCode;
        break;
    case RpcFrameKind::InboundCall:
        if (header.code == 0 || header.code > RpcFrame::MaxMessageId)
            return RpcFrameError::BadCode;
        break;
    case RpcFrameKind::Control:
        if (header.code == 0)
            return RpcFrameError::BadCode;
        break;
    case RpcFrameKind::Reply:
    case RpcFrameKind::ControlReply:
        break;
    }
    if (header.length > maxPayload)
        return RpcFrameError::Oversized;
    if (header.kind == RpcFrameKind::InboundCall && header.length % 2 != 0)
        return RpcFrameError::OddInboundPayload;
    return RpcFrameError::None;
}
