// The RPC frame decoder on arbitrary bytes, as a peer on the service's socket may send
// them: no crash, whatever the bytes and however they are cut into reads; the frames it
// gives and the error it ends with do not depend on the cuts; every frame it gives encodes
// back to exactly the bytes it came from; and a frame built from the input survives an
// encode/decode round trip.
#include "protocol/RpcFrame.h"
#include "protocol/RpcFrameDecoder.h"
#include "protocol/RpcFrameEncoder.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

// A small limit as well as the real one, so that "oversized" is reached by short inputs.
constexpr std::uint32_t SmallLimit = 64;

struct Run {
    std::vector<RpcFrame> frames;
    RpcFrameError error = RpcFrameError::None;
    std::uint64_t errorOffset = 0;
};

Run Decode(const std::uint8_t* data, std::size_t size, std::uint32_t limit,
           std::size_t (*cut)(std::size_t step, std::size_t left)) {
    Run run;
    RpcFrameDecoder decoder(limit);
    std::size_t at = 0;
    for (std::size_t step = 0; at < size; ++step) {
        const std::size_t piece = cut(step, size - at);
        decoder.feed(data + at, piece);
        at += piece;
        while (auto frame = decoder.next()) {
            Require(frame->payload.size() <= limit);
            run.frames.push_back(std::move(*frame));
        }
        Require(decoder.buffered() <= RpcFrame::HeaderSize + limit + size);
    }
    run.error = decoder.error();
    run.errorOffset = decoder.errorOffset();
    Require(!decoder.next());
    return run;
}

std::size_t Whole(std::size_t, std::size_t left) {
    return left;
}
std::size_t Bytewise(std::size_t, std::size_t) {
    return 1;
}
std::size_t Uneven(std::size_t step, std::size_t left) {
    const std::size_t piece = step % 7 + 1;
    return piece < left ? piece : left;
}

void CheckRun(const std::uint8_t* data, std::size_t size, std::uint32_t limit) {
    const Run whole = Decode(data, size, limit, Whole);
    for (auto cut : {Bytewise, Uneven}) {
        const Run other = Decode(data, size, limit, cut);
        Require(other.frames == whole.frames);
        Require(other.error == whole.error);
        Require(other.errorOffset == whole.errorOffset);
    }
    // Re-encoding what was decoded gives the input's leading bytes back, frame by frame.
    std::string again;
    for (const RpcFrame& frame : whole.frames)
        Require(RpcFrameEncoder::append(frame, again, limit) == RpcFrameError::None);
    Require(again.size() <= size);
    Require(again == std::string(reinterpret_cast<const char*>(data), again.size()));
    if (whole.error != RpcFrameError::None)
        Require(whole.errorOffset == again.size());
}

void CheckRoundTrip(const std::uint8_t* data, std::size_t size) {
    if (size < 9)
        return;
    RpcFrame frame;
    frame.kind = static_cast<RpcFrameKind>(data[0] % 7);
    frame.correlation = data[1] | std::uint32_t{data[2]} << 8;
    frame.code = data[3] | std::uint32_t{data[4]} << 8;
    frame.payload.assign(reinterpret_cast<const char*>(data + 5), size - 5);
    const std::string bytes = RpcFrameEncoder::encode(frame);
    RpcFrameDecoder decoder;
    decoder.feed(bytes.data(), bytes.size());
    const auto decoded = decoder.next();
    // The encoder refuses exactly what the decoder would refuse.
    Require(decoded.has_value() == !bytes.empty());
    if (decoded) {
        Require(*decoded == frame);
        Require(!decoder.next() && !decoder.failed() && decoder.buffered() == 0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > (1u << 18))
        return 0;
    CheckRun(data, size, RpcFrame::MaxPayload);
    CheckRun(data, size, SmallLimit);
    CheckRoundTrip(data, size);
    return 0;
}
