// Where the main window's skin pieces go, as numbers.

#include "toolkit/PaintBkgndLayout.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Layout = PaintBkgndLayout;

std::vector<QRect> RectsOf(const std::vector<Layout::Placement>& placements, int piece) {
    std::vector<QRect> rects;
    for (const auto& placement : placements) {
        if (placement.piece == piece)
            rects.push_back(placement.rect);
    }
    return rects;
}

} // namespace

TEST(PaintBkgndLayout, TheCornersStandAtTheirPlacesAt780By420) {
    const auto out = Layout::Layout(QSize(780, 420), Layout::MainWindowPieces());
    ASSERT_GE(out.size(), 5u);
    EXPECT_EQ(out[0], (Layout::Placement{Layout::TopLeft, QRect(0, 0, 292, 69)}));
    EXPECT_EQ(out[1], (Layout::Placement{Layout::UnderTopLeft, QRect(0, 69, 146, 24)}));
    EXPECT_EQ(out[2], (Layout::Placement{Layout::TopRight, QRect(449, 0, 331, 63)}));
    EXPECT_EQ(out[3], (Layout::Placement{Layout::BottomLeft, QRect(0, 367, 146, 53)}));
    EXPECT_EQ(out[4], (Layout::Placement{Layout::BottomRight, QRect(761, 401, 19, 19)}));
}

TEST(PaintBkgndLayout, TheEdgesAreTiledBetweenTheCornersAt780By420) {
    const auto out = Layout::Layout(QSize(780, 420), Layout::MainWindowPieces());
    const auto top = RectsOf(out, Layout::TopEdge);
    ASSERT_EQ(top.size(), 79u);
    EXPECT_EQ(top.front(), QRect(292, 0, 2, 62));
    // The last tile starts at 448 and runs one column into the top right corner, which is
    // not drawn again.
    EXPECT_EQ(top.back(), QRect(448, 0, 2, 62));

    const auto bottom = RectsOf(out, Layout::BottomEdge);
    ASSERT_EQ(bottom.size(), 308u);
    EXPECT_EQ(bottom.front(), QRect(146, 413, 2, 7));
    EXPECT_EQ(bottom.back(), QRect(760, 413, 2, 7));

    const auto left = RectsOf(out, Layout::LeftEdge);
    ASSERT_EQ(left.size(), 137u);
    EXPECT_EQ(left.front(), QRect(0, 93, 146, 2));
    EXPECT_EQ(left.back(), QRect(0, 365, 146, 2));

    const auto right = RectsOf(out, Layout::RightEdge);
    ASSERT_EQ(right.size(), 169u);
    EXPECT_EQ(right.front(), QRect(774, 63, 6, 2));
    EXPECT_EQ(right.back(), QRect(774, 399, 6, 2));
}

TEST(PaintBkgndLayout, AtAnOddSizeTheLastTilesEndExactlyAtTheirLimits) {
    const auto out = Layout::Layout(QSize(781, 421), Layout::MainWindowPieces());
    const auto top = RectsOf(out, Layout::TopEdge);
    ASSERT_EQ(top.size(), 79u);
    EXPECT_EQ(top.back().right() + 1, 781 - 331);
    const auto right = RectsOf(out, Layout::RightEdge);
    EXPECT_EQ(right.front(), QRect(775, 63, 6, 2));
    EXPECT_EQ(right.back(), QRect(775, 401, 6, 2));
}

TEST(PaintBkgndLayout, AWindowNarrowerThanTheTopCornersHasNoTopTiles) {
    const auto out = Layout::Layout(QSize(600, 200), Layout::MainWindowPieces());
    EXPECT_TRUE(RectsOf(out, Layout::TopEdge).empty());
    // The corners still go where the rule puts them, overlapping.
    EXPECT_EQ(RectsOf(out, Layout::TopRight).front(), QRect(269, 0, 331, 63));
    // Bottom: 146..581 in steps of 2.
    EXPECT_EQ(RectsOf(out, Layout::BottomEdge).size(), 218u);
}

TEST(PaintBkgndLayout, TheDrawingOrderIsCornersThenTopBottomLeftRight) {
    const auto out = Layout::Layout(QSize(780, 420), Layout::MainWindowPieces());
    std::vector<int> order;
    for (const auto& placement : out) {
        if (order.empty() || order.back() != placement.piece)
            order.push_back(placement.piece);
    }
    EXPECT_EQ(order, (std::vector<int>{Layout::TopLeft, Layout::UnderTopLeft, Layout::TopRight,
                                       Layout::BottomLeft, Layout::BottomRight, Layout::TopEdge,
                                       Layout::BottomEdge, Layout::LeftEdge, Layout::RightEdge}));
}

TEST(PaintBkgndLayout, APieceWithoutSizeMeansNothingIsDrawn) {
    auto pieces = Layout::MainWindowPieces();
    pieces[Layout::RightEdge] = QSize();
    EXPECT_TRUE(Layout::Layout(QSize(780, 420), pieces).empty());
}
