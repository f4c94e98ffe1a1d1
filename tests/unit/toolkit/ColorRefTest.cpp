// Table colours are 0x00BBGGRR.

#include "toolkit/ColorRef.h"

#include <gtest/gtest.h>

TEST(ColorRef, RedIsTheLowByte) {
    EXPECT_EQ(ColorRef::ToQColor(0x0000FF), QColor(255, 0, 0));
    EXPECT_EQ(ColorRef::ToQColor(14479600), QColor(240, 240, 220));
    EXPECT_EQ(ColorRef::ToQColor(0xC59B9B), QColor(0x9B, 0x9B, 0xC5));
}

TEST(ColorRef, ConversionsRoundTrip) {
    EXPECT_EQ(ColorRef::FromQColor(QColor(240, 240, 220)), 14479600u);
    EXPECT_EQ(ColorRef::FromQColor(ColorRef::ToQColor(9909043)), 9909043u);
}
