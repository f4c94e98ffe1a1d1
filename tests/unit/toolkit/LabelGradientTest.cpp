// The label's gradient bands.

#include "toolkit/LabelGradient.h"

#include <gtest/gtest.h>

TEST(LabelGradient, AGradientOverTenPixelsHasTenBandsOfOnePixel) {
    const auto bands = LabelGradient::Bands(QRect(0, 0, 10, 20), QColor(0, 0, 0),
                                            QColor(100, 200, 50), LabelGradient::LabelBands);
    ASSERT_EQ(bands.size(), 10u);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(bands[static_cast<std::size_t>(i)].rect.left(), i);
        EXPECT_EQ(bands[static_cast<std::size_t>(i)].rect.width(), 1);
    }
}

TEST(LabelGradient, ColoursStepInFixedPointFromTheStart) {
    const auto bands =
        LabelGradient::Bands(QRect(0, 0, 10, 20), QColor(0, 0, 0), QColor(100, 200, 50), 100);
    // Steps of (100 << 8) / 10 = 2560, (200 << 8) / 10, (50 << 8) / 10 = 1280.
    EXPECT_EQ(bands[0].colour, QColor(0, 0, 0));
    EXPECT_EQ(bands[1].colour, QColor(10, 20, 5));
    EXPECT_EQ(bands[9].colour, QColor(90, 180, 45));
}

TEST(LabelGradient, FallingChannelsStepDown) {
    const auto bands =
        LabelGradient::Bands(QRect(0, 0, 3, 5), QColor(255, 10, 0), QColor(0, 10, 0), 3);
    // (-255 << 8) / 3 = -21760: 255, 170, 85.
    ASSERT_EQ(bands.size(), 3u);
    EXPECT_EQ(bands[0].colour.red(), 255);
    EXPECT_EQ(bands[1].colour.red(), 170);
    EXPECT_EQ(bands[2].colour.red(), 85);
    EXPECT_EQ(bands[2].colour.green(), 10);
}

TEST(LabelGradient, TheLastBandTakesTheRestOfTheWidth) {
    const auto bands =
        LabelGradient::Bands(QRect(5, 0, 250, 20), Qt::black, Qt::white, LabelGradient::LabelBands);
    ASSERT_EQ(bands.size(), 100u);
    EXPECT_EQ(bands[0].rect.left(), 5);
    EXPECT_EQ(bands[0].rect.width(), 2);
    EXPECT_EQ(bands[98].rect.left(), 5 + 98 * 2);
    EXPECT_EQ(bands[99].rect.left(), 5 + 99 * 2);
    EXPECT_EQ(bands[99].rect.right(), 254);
}

TEST(LabelGradient, BandsLeaveOutTheLastRowAsAnOutlinelessRectangleDoes) {
    const auto bands = LabelGradient::Bands(QRect(0, 3, 10, 20), Qt::black, Qt::white, 100);
    EXPECT_EQ(bands[0].rect.top(), 3);
    EXPECT_EQ(bands[0].rect.bottom(), 21);
}

TEST(LabelGradient, AnEmptyRectangleHasNoBands) {
    EXPECT_TRUE(LabelGradient::Bands(QRect(0, 0, 0, 20), Qt::black, Qt::white, 100).empty());
}
