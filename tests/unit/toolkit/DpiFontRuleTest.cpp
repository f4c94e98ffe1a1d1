// The size of the shared dialog fonts by the screen's dots per inch.

#include "toolkit/DpiFontRule.h"

#include <gtest/gtest.h>

TEST(DpiFontRule, At96DotsPerInchTheFontsAre8Points) {
    EXPECT_EQ(DpiFontRule::PointsFor(96), 8);
    EXPECT_EQ(DpiFontRule::PointsFor(72), 8);
}

TEST(DpiFontRule, Above96DotsPerInchTheFontsAre7Points) {
    EXPECT_EQ(DpiFontRule::PointsFor(97), 7);
    EXPECT_EQ(DpiFontRule::PointsFor(120), 7);
    EXPECT_EQ(DpiFontRule::PointsFor(144), 7);
}

TEST(DpiFontRule, ThePixelHeightStaysAboutTheSameAt96And120) {
    // 8 * 96 / 72 = 10.67 and 7 * 120 / 72 = 11.67, both rounded to the nearest.
    EXPECT_EQ(DpiFontRule::DialogFontHeight(96), -11);
    EXPECT_EQ(DpiFontRule::DialogFontHeight(120), -12);
    EXPECT_LE(std::abs(DpiFontRule::DialogFontHeight(120) - DpiFontRule::DialogFontHeight(96)), 1);
}

TEST(DpiFontRule, MulDivRoundsHalfAwayFromZero) {
    EXPECT_EQ(DpiFontRule::MulDiv(8, 96, 72), 11);
    EXPECT_EQ(DpiFontRule::MulDiv(3, 1, 2), 2);
    EXPECT_EQ(DpiFontRule::MulDiv(-3, 1, 2), -2);
    EXPECT_EQ(DpiFontRule::MulDiv(5, 1, 4), 1);
    EXPECT_EQ(DpiFontRule::MulDiv(7, -120, 72), -12);
    EXPECT_EQ(DpiFontRule::MulDiv(9, 72, 72), 9);
}

TEST(DpiFontRule, MulDivByZeroOrOverflowGivesMinusOne) {
    EXPECT_EQ(DpiFontRule::MulDiv(8, 96, 0), -1);
    EXPECT_EQ(DpiFontRule::MulDiv(0x40000000, 8, 1), -1);
}

TEST(DpiFontRule, MulDivUses64BitProducts) {
    EXPECT_EQ(DpiFontRule::MulDiv(100000, 100000, 100000), 100000);
}

TEST(DpiFontRule, TheLogicalHeightIsNegativeForCharacterHeight) {
    EXPECT_EQ(DpiFontRule::LogicalHeight(12, 96), -16);
    EXPECT_EQ(DpiFontRule::LogicalHeight(8, 72), -8);
}
