#pragma once
// Turns a frame into its bytes. A frame that the other end's decoder would refuse is not
// encoded at all, so a sender learns of its mistake before anything reaches the socket.

#include "protocol/RpcFrame.h"
#include "protocol/RpcFrameError.h"

#include <string>

class RpcFrameEncoder {
public:
    // Appends the bytes of `frame` to `out`, or leaves `out` as it was and returns the rule
    // that the frame breaks.
    static RpcFrameError append(const RpcFrame& frame, std::string& out,
                                std::uint32_t maxPayload = RpcFrame::MaxPayload);
    // The bytes of `frame`; empty when append would refuse it.
    static std::string encode(const RpcFrame& frame,
                              std::uint32_t maxPayload = RpcFrame::MaxPayload);
};
