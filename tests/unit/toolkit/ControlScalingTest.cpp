// The sums of the large-font layout.

#include "toolkit/ControlScaling.h"

#include <gtest/gtest.h>

TEST(ControlScaling, GrowChangesTheSizeByRowsThenColumnsAndKeepsThePosition) {
    EXPECT_EQ(ControlScaling::Grow(QRect(10, 20, 100, 30), 5, -7), QRect(10, 20, 93, 35));
}

TEST(ControlScaling, ScaleSizeMultipliesAndCutsTowardZero) {
    EXPECT_EQ(ControlScaling::ScaleSize(QRect(4, 5, 101, 33), 1.25), QRect(4, 5, 126, 41));
    EXPECT_EQ(ControlScaling::ScaleSize(QRect(0, 0, 10, 10), 0.99), QRect(0, 0, 9, 9));
}

TEST(ControlScaling, ScalePosMultipliesTheClientPositionWhenAskedToConvert) {
    EXPECT_EQ(ControlScaling::ScalePos(QPoint(40, 30), QPoint(540, 330), 1.25, true),
              QPoint(50, 37));
}

TEST(ControlScaling, ScalePosWithoutConversionMultipliesTheScreenPosition) {
    EXPECT_EQ(ControlScaling::ScalePos(QPoint(40, 30), QPoint(540, 330), 1.25, false),
              QPoint(675, 412));
}
