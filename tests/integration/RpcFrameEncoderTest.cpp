// RpcFrameEncoder: the header's bytes, and refusal of the frames a decoder would refuse.
#include "protocol/RpcFrameEncoder.h"

#include <gtest/gtest.h>

TEST(RpcFrameEncoder, WritesTheHeaderLittleEndianBeforeThePayload) {
    const RpcFrame frame{RpcFrameKind::Reply, 0x04030201, 0xFFFE, "ok"};
    const std::string expected("QG\x01\x02"
                               "\x01\x02\x03\x04"
                               "\xFE\xFF\x00\x00"
                               "\x02\x00\x00\x00"
                               "ok",
                               18);
    EXPECT_EQ(RpcFrameEncoder::encode(frame), expected);
}

TEST(RpcFrameEncoder, AppendsBehindWhatIsThere) {
    std::string out = "before";
    EXPECT_EQ(RpcFrameEncoder::append(RpcFrame{RpcFrameKind::Request, 1, 0, ""}, out),
              RpcFrameError::None);
    EXPECT_EQ(out.size(), 6u + RpcFrame::HeaderSize);
    EXPECT_EQ(out.substr(0, 6), "before");
}

TEST(RpcFrameEncoder, RefusesWhatTheDecoderWouldRefuseAndLeavesTheOutputAlone) {
    const std::pair<RpcFrame, RpcFrameError> cases[] = {
        {{RpcFrameKind::Request, 0, 0, ""}, RpcFrameError::ZeroCorrelation},
        {{RpcFrameKind::Request, 1, 3, ""}, RpcFrameError::BadCode},
        {{RpcFrameKind::InboundCall, 1, 0, ""}, RpcFrameError::BadCode},
        {{RpcFrameKind::InboundCall, 1, 1024, ""}, RpcFrameError::BadCode},
        {{RpcFrameKind::InboundCall, 1, 256, "odd"}, RpcFrameError::OddInboundPayload},
        {{RpcFrameKind::Control, 1, 0, ""}, RpcFrameError::BadCode},
        {{static_cast<RpcFrameKind>(6), 1, 0, ""}, RpcFrameError::BadKind},
        {{RpcFrameKind::Request, 1, 0, std::string(RpcFrame::MaxPayload + 1, 'x')},
         RpcFrameError::Oversized},
    };
    for (const auto& [frame, error] : cases) {
        std::string out = "kept";
        EXPECT_EQ(RpcFrameEncoder::append(frame, out), error);
        EXPECT_EQ(out, "kept");
        EXPECT_EQ(RpcFrameEncoder::encode(frame), "");
    }
}

TEST(RpcFrameEncoder, TakesASmallerLimitWhenGivenOne) {
    const RpcFrame frame{RpcFrameKind::Reply, 1, 1, std::string(11, 'x')};
    EXPECT_EQ(RpcFrameEncoder::encode(frame, 10), "");
    EXPECT_EQ(RpcFrameEncoder::encode(frame, 11).size(), RpcFrame::HeaderSize + 11);
}
