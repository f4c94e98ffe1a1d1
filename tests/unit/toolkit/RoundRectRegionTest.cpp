// The rounded outline of the framed windows.

#include "toolkit/RoundRectRegion.h"

#include <gtest/gtest.h>

TEST(RoundRectRegion, TheCornersAreCutOnTheEllipseAndTheMiddleRowsAreWhole) {
    const auto insets = RoundRectRegion::RowInsets(100, QSize(25, 25));
    ASSERT_EQ(insets.size(), 100u);
    EXPECT_EQ(insets[0], 9);
    EXPECT_GT(insets[0], insets[3]);
    EXPECT_EQ(insets[12], 0);
    EXPECT_EQ(insets[50], 0);
    // Top and bottom mirror each other.
    for (std::size_t row = 0; row < 13; ++row)
        EXPECT_EQ(insets[row], insets[99 - row]) << row;
    // The cut never grows toward the middle.
    for (std::size_t row = 1; row < 13; ++row)
        EXPECT_LE(insets[row], insets[row - 1]) << row;
}

TEST(RoundRectRegion, TheRegionLeavesOutTheCornersOnly) {
    const QRegion region = RoundRectRegion::Make(QSize(300, 200), QSize(25, 25));
    EXPECT_FALSE(region.contains(QPoint(0, 0)));
    EXPECT_FALSE(region.contains(QPoint(299, 0)));
    EXPECT_FALSE(region.contains(QPoint(0, 199)));
    EXPECT_FALSE(region.contains(QPoint(299, 199)));
    EXPECT_TRUE(region.contains(QPoint(150, 0)));
    EXPECT_TRUE(region.contains(QPoint(0, 100)));
    EXPECT_TRUE(region.contains(QPoint(299, 100)));
    EXPECT_TRUE(region.contains(QPoint(9, 0)));
    EXPECT_FALSE(region.contains(QPoint(8, 0)));
    EXPECT_TRUE(region.contains(QPoint(290, 0)));
    EXPECT_FALSE(region.contains(QPoint(291, 0)));
    EXPECT_EQ(region.boundingRect(), QRect(0, 0, 300, 200));
}

TEST(RoundRectRegion, ATinyWindowStillHasARegion) {
    EXPECT_FALSE(RoundRectRegion::Make(QSize(30, 10), QSize(25, 25)).isEmpty());
    EXPECT_TRUE(RoundRectRegion::Make(QSize(0, 0), QSize(25, 25)).isEmpty());
    EXPECT_EQ(RoundRectRegion::Make(QSize(30, 10), QSize(0, 0)), QRegion(0, 0, 30, 10));
}
