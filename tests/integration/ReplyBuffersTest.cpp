// The reply buffers handed to the host: the bytes with a 0 behind them, freed once each.
#include "ReplyBuffers.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(ReplyBuffers, ABufferHoldsThePayloadAndATerminatingZero) {
    ReplyBuffers buffers;
    std::uint8_t* buffer = buffers.Keep("<reply/>");
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(std::memcmp(buffer, "<reply/>", 8), 0);
    EXPECT_EQ(buffer[8], 0);
    EXPECT_EQ(buffers.Outstanding(), 1u);
}

TEST(ReplyBuffers, EachBufferIsFreedOnceAndForeignPointersAreLeftAlone) {
    ReplyBuffers buffers;
    std::uint8_t* first = buffers.Keep("one");
    std::uint8_t* second = buffers.Keep("two");
    std::uint8_t foreign[4] = {};
    EXPECT_FALSE(buffers.Free(foreign));
    EXPECT_TRUE(buffers.Free(first));
    EXPECT_FALSE(buffers.Free(first));
    EXPECT_EQ(buffers.Outstanding(), 1u);
    EXPECT_TRUE(buffers.Free(second));
    EXPECT_EQ(buffers.Outstanding(), 0u);
}

TEST(ReplyBuffers, BuffersNeverGivenBackAreFreedWithTheObject) {
    // Under the leak checker this test fails if they are not.
    ReplyBuffers buffers;
    buffers.Keep(std::string(1000, 'x'));
    buffers.Keep("");
    EXPECT_EQ(buffers.Outstanding(), 2u);
}
