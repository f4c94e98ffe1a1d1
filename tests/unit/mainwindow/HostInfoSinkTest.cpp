// The host's sink answers the plug-in's calls with fixed values, through the interface.

#include "mainwindow/HostInfoSink.h"

#include <gtest/gtest.h>

namespace {

TEST(HostInfoSink, AnswersEveryCallWithItsFixedValue) {
    HostInfoSink host;
    IInfoSink& sink = host;

    EXPECT_EQ(sink.Reserved1(1, 2, 3, 4, 5), static_cast<std::int32_t>(0x80004001u));
    EXPECT_EQ(sink.Reserved2(), 1u);
    EXPECT_EQ(sink.Reserved3(), 1u);
    EXPECT_EQ(sink.Reserved4(), 0);
    EXPECT_EQ(sink.Reserved5(), 0);
    EXPECT_EQ(sink.Reserved6(), 0);
}

TEST(HostInfoSink, ReferenceValueNeverChanges) {
    HostInfoSink sink;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(sink.Reserved2(), 1u);
        EXPECT_EQ(sink.Reserved3(), 1u);
    }
}

} // namespace
