// RpcFrameDecoder: frames out of a byte stream however it is cut, and a precise, final error
// for a stream that breaks the rules.
#include "protocol/RpcFrameDecoder.h"
#include "protocol/RpcFrameEncoder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

std::string Header(std::uint8_t kind, std::uint32_t correlation, std::uint32_t code,
                   std::uint32_t length, std::uint8_t version = 1) {
    std::string bytes = {'Q', 'G', static_cast<char>(version), static_cast<char>(kind)};
    for (const std::uint32_t value : {correlation, code, length}) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<char>((value >> shift) & 0xFF));
    }
    return bytes;
}

std::vector<RpcFrame> Drain(RpcFrameDecoder& decoder) {
    std::vector<RpcFrame> frames;
    while (auto frame = decoder.next())
        frames.push_back(std::move(*frame));
    return frames;
}

RpcFrameError ErrorOf(const std::string& bytes, std::uint32_t limit = RpcFrame::MaxPayload) {
    RpcFrameDecoder decoder(limit);
    decoder.feed(bytes.data(), bytes.size());
    Drain(decoder);
    return decoder.error();
}

const RpcFrame Ping{RpcFrameKind::Request, 1, 0, "<VLID>272</VLID>"};
const RpcFrame Call{RpcFrameKind::InboundCall, 9, 256, std::string("<\0V\0", 4)};

} // namespace

TEST(RpcFrameDecoder, GivesTheSameFramesFedWholeOrByteByByte) {
    const std::string bytes = RpcFrameEncoder::encode(Ping) + RpcFrameEncoder::encode(Call);
    RpcFrameDecoder whole;
    whole.feed(bytes.data(), bytes.size());
    const std::vector<RpcFrame> expected{Ping, Call};
    EXPECT_EQ(Drain(whole), expected);

    RpcFrameDecoder bytewise;
    std::vector<RpcFrame> frames;
    for (const char byte : bytes) {
        bytewise.feed(&byte, 1);
        for (RpcFrame& frame : Drain(bytewise))
            frames.push_back(std::move(frame));
    }
    EXPECT_EQ(frames, expected);
    EXPECT_FALSE(bytewise.failed());
    EXPECT_EQ(bytewise.buffered(), 0u);
}

TEST(RpcFrameDecoder, HoldsAHeaderUntilItsPayloadHasCome) {
    const std::string bytes = RpcFrameEncoder::encode(Ping);
    RpcFrameDecoder decoder;
    decoder.feed(bytes.data(), bytes.size() - 1);
    EXPECT_FALSE(decoder.next().has_value());
    EXPECT_FALSE(decoder.failed());
    EXPECT_EQ(decoder.buffered(), bytes.size() - 1);
    decoder.feed(bytes.data() + bytes.size() - 1, 1);
    EXPECT_EQ(decoder.next(), Ping);
}

TEST(RpcFrameDecoder, TakesAnEmptyPayload) {
    const std::string bytes = Header(2, 5, 65534, 0);
    RpcFrameDecoder decoder;
    decoder.feed(bytes.data(), bytes.size());
    const RpcFrame expected{RpcFrameKind::Reply, 5, 65534, ""};
    EXPECT_EQ(decoder.next(), expected);
}

TEST(RpcFrameDecoder, RefusesAnotherProtocolAtItsFirstByte) {
    RpcFrameDecoder decoder;
    decoder.feed("G", 1);
    EXPECT_TRUE(decoder.failed());
    EXPECT_EQ(decoder.error(), RpcFrameError::BadMagic);
    EXPECT_EQ(ErrorOf("QX"), RpcFrameError::BadMagic);
}

TEST(RpcFrameDecoder, RefusesAnotherVersionAndAnUnknownKindBeforeTheHeaderIsComplete) {
    EXPECT_EQ(ErrorOf(std::string("QG\x02", 3)), RpcFrameError::BadVersion);
    EXPECT_EQ(ErrorOf(std::string("QG\x01\x00", 4)), RpcFrameError::BadKind);
    EXPECT_EQ(ErrorOf(std::string("QG\x01\x06", 4)), RpcFrameError::BadKind);
    EXPECT_EQ(ErrorOf(Header(5, 1, 0, 0).substr(0, 15)), RpcFrameError::None);
}

TEST(RpcFrameDecoder, RefusesCorrelationIdZero) {
    EXPECT_EQ(ErrorOf(Header(1, 0, 0, 0)), RpcFrameError::ZeroCorrelation);
}

TEST(RpcFrameDecoder, RefusesCodesThatTheKindDoesNotAllow) {
    EXPECT_EQ(ErrorOf(Header(1, 1, 1, 0)), RpcFrameError::BadCode);
    EXPECT_EQ(ErrorOf(Header(3, 1, 0, 0)), RpcFrameError::BadCode);
    EXPECT_EQ(ErrorOf(Header(3, 1, 1024, 0)), RpcFrameError::BadCode);
    EXPECT_EQ(ErrorOf(Header(3, 1, 1023, 0)), RpcFrameError::None);
    EXPECT_EQ(ErrorOf(Header(4, 1, 0, 0)), RpcFrameError::BadCode);
    EXPECT_EQ(ErrorOf(Header(2, 1, 0xFFFFFFFF, 0)), RpcFrameError::None);
    EXPECT_EQ(ErrorOf(Header(5, 1, 1, 0)), RpcFrameError::None);
}

TEST(RpcFrameDecoder, RefusesAnInboundCallWithAnOddLength) {
    EXPECT_EQ(ErrorOf(Header(3, 1, 256, 3) + "abc"), RpcFrameError::OddInboundPayload);
}

TEST(RpcFrameDecoder, RefusesAnOversizedPayloadFromTheHeaderAlone) {
    RpcFrameDecoder decoder;
    const std::string header = Header(1, 1, 0, RpcFrame::MaxPayload + 1);
    decoder.feed(header.data(), header.size());
    EXPECT_FALSE(decoder.next().has_value());
    EXPECT_EQ(decoder.error(), RpcFrameError::Oversized);
    EXPECT_EQ(decoder.buffered(), 0u);
}

TEST(RpcFrameDecoder, TakesAPayloadOfExactlyTheLimit) {
    const std::string bytes =
        Header(1, 1, 0, RpcFrame::MaxPayload) + std::string(RpcFrame::MaxPayload, 'x');
    RpcFrameDecoder decoder;
    decoder.feed(bytes.data(), bytes.size());
    const auto frame = decoder.next();
    ASSERT_TRUE(frame.has_value());
    EXPECT_EQ(frame->payload.size(), RpcFrame::MaxPayload);
}

TEST(RpcFrameDecoder, AppliesASmallerLimitWhenGivenOne) {
    EXPECT_EQ(ErrorOf(Header(2, 1, 1, 11) + std::string(11, 'x'), 10), RpcFrameError::Oversized);
    EXPECT_EQ(ErrorOf(Header(2, 1, 1, 10) + std::string(10, 'x'), 10), RpcFrameError::None);
}

TEST(RpcFrameDecoder, GivesTheFramesBeforeAnErrorAndNothingAfterIt) {
    const std::string good = RpcFrameEncoder::encode(Ping);
    const std::string bytes = good + "junk" + RpcFrameEncoder::encode(Ping);
    RpcFrameDecoder decoder;
    decoder.feed(bytes.data(), bytes.size());
    EXPECT_EQ(decoder.next(), Ping);
    EXPECT_FALSE(decoder.next().has_value());
    EXPECT_EQ(decoder.error(), RpcFrameError::BadMagic);
    EXPECT_EQ(decoder.errorOffset(), good.size());
    decoder.feed(good.data(), good.size());
    EXPECT_FALSE(decoder.next().has_value());
    EXPECT_EQ(decoder.buffered(), 0u);
}

TEST(RpcFrameDecoder, StartsOverAfterAReset) {
    RpcFrameDecoder decoder;
    decoder.feed("xx", 2);
    ASSERT_TRUE(decoder.failed());
    decoder.reset();
    const std::string bytes = RpcFrameEncoder::encode(Ping);
    decoder.feed(bytes.data(), bytes.size());
    EXPECT_EQ(decoder.next(), Ping);
    EXPECT_EQ(decoder.error(), RpcFrameError::None);
}

TEST(RpcFrameError, IsDescribedInWords) {
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::None), "no error");
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::BadMagic),
                 "not a Quillgate frame (bad magic)");
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::BadVersion), "unknown frame version");
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::BadKind), "unknown frame kind");
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::ZeroCorrelation), "correlation id 0");
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::BadCode),
                 "code not allowed for the frame kind");
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::Oversized), "payload larger than the limit");
    EXPECT_STREQ(DescribeRpcFrameError(RpcFrameError::OddInboundPayload),
                 "inbound call with an odd payload length");
}
