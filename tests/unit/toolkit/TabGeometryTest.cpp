// The pages' rectangle of the tab control for each tab style, as numbers.

#include "toolkit/TabGeometry.h"

#include <gtest/gtest.h>

namespace {
const QRect Client(0, 0, 400, 300);
constexpr unsigned Bottom = TabGeometry::TabStyleBottom;
constexpr unsigned Vertical = TabGeometry::TabStyleVertical;
} // namespace

TEST(TabGeometry, TabsOnTopGiveUpTheTabHeightAndPaddingAtTheTop) {
    // itemH = 24 * 1 + 4; margin 2 on the three other sides.
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(80, 24), 1, 0), QRect(2, 28, 396, 270));
}

TEST(TabGeometry, TabsBelowGiveUpTheTabHeightAndPaddingAtTheBottom) {
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(80, 24), 1, Bottom), QRect(2, 2, 396, 270));
}

TEST(TabGeometry, VerticalTabsGiveUpTheTabWidthAndPaddingOnTheLeft) {
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(30, 90), 1, Vertical), QRect(34, 2, 364, 296));
}

TEST(TabGeometry, VerticalTabsBelowStandOnTheRight) {
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(30, 90), 1, Bottom | Vertical),
              QRect(2, 2, 364, 296));
}

TEST(TabGeometry, EveryRowOfTabsCounts) {
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(80, 24), 2, 0), QRect(2, 52, 396, 246));
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(30, 90), 3, Vertical), QRect(94, 2, 304, 296));
}

TEST(TabGeometry, MarginAndPaddingCanBeChanged) {
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(80, 24), 1, 0, 5, 10), QRect(5, 34, 390, 261));
}

TEST(TabGeometry, ClientWithoutWidthOrHeightIsLeftAsItIs) {
    EXPECT_EQ(TabGeometry::PageRect(QRect(0, 0, 0, 300), QSize(80, 24), 1, 0), QRect(0, 0, 0, 300));
    EXPECT_EQ(TabGeometry::PageRect(QRect(0, 0, 400, 0), QSize(80, 24), 1, Bottom),
              QRect(0, 0, 400, 0));
}

TEST(TabGeometry, NoTabYetStillKeepsThePadding) {
    EXPECT_EQ(TabGeometry::PageRect(Client, QSize(0, 0), 1, 0), QRect(2, 4, 396, 294));
}
