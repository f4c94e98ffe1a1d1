// Where a point grabs the main window: the eleven rules in their order, the sides before the
// corners, and the edges that each resize moves.

#include "mainwindow/MainDlgHitTest.h"

#include <gtest/gtest.h>

namespace {

using Code = MainDlgHitTest::Code;

// A client area from (100, 50) to (900, 500). With the classic measures the side bands are
// 5 pixels wide, the corner squares 17, and the move band runs from y 55 to 112.
const MainDlgHitTest::Bounds Client{100, 50, 900, 500};

Code At(int x, int y) {
    return MainDlgHitTest::HitTest(x, y, Client);
}

} // namespace

TEST(MainDlgHitTest, Rule1TheRightBandResizesTheRightEdge) {
    EXPECT_EQ(At(895, 300), Code::Right);
    EXPECT_EQ(At(900, 300), Code::Right);
    EXPECT_EQ(At(894, 300), Code::Client);
}

TEST(MainDlgHitTest, Rule2TheLeftBandResizesTheLeftEdge) {
    EXPECT_EQ(At(100, 300), Code::Left);
    EXPECT_EQ(At(105, 300), Code::Left);
    EXPECT_EQ(At(106, 300), Code::Client);
}

TEST(MainDlgHitTest, Rule3TheTopBandResizesTheTopEdge) {
    EXPECT_EQ(At(500, 50), Code::Top);
    EXPECT_EQ(At(500, 55), Code::Top);
}

TEST(MainDlgHitTest, Rule4TheBottomBandResizesTheBottomEdge) {
    EXPECT_EQ(At(500, 495), Code::Bottom);
    EXPECT_EQ(At(500, 500), Code::Bottom);
    EXPECT_EQ(At(500, 494), Code::Client);
}

TEST(MainDlgHitTest, Rule5TheBottomRightSquare) {
    EXPECT_EQ(At(883, 483), Code::BottomRight);
    EXPECT_EQ(At(894, 494), Code::BottomRight);
    EXPECT_EQ(At(882, 490), Code::Client);
}

TEST(MainDlgHitTest, Rule6TheBottomLeftSquare) {
    EXPECT_EQ(At(117, 483), Code::BottomLeft);
    EXPECT_EQ(At(106, 494), Code::BottomLeft);
    EXPECT_EQ(At(118, 490), Code::Client);
}

TEST(MainDlgHitTest, Rule7TheTopLeftSquare) {
    EXPECT_EQ(At(106, 56), Code::TopLeft);
    EXPECT_EQ(At(117, 67), Code::TopLeft);
}

TEST(MainDlgHitTest, Rule8TheTopRightSquare) {
    EXPECT_EQ(At(894, 56), Code::TopRight);
    EXPECT_EQ(At(883, 67), Code::TopRight);
}

TEST(MainDlgHitTest, Rule9APointBesideTheClientAreaIsClient) {
    // Even at the height of the move band.
    EXPECT_EQ(At(901, 80), Code::Client);
    EXPECT_EQ(At(99, 80), Code::Client);
}

TEST(MainDlgHitTest, Rule10TheBandUnderTheTopMovesTheWindow) {
    EXPECT_EQ(At(500, 56), Code::Caption);
    EXPECT_EQ(At(500, 112), Code::Caption);
    EXPECT_EQ(At(118, 80), Code::Caption);
}

TEST(MainDlgHitTest, Rule11EverythingElseIsClient) {
    EXPECT_EQ(At(500, 113), Code::Client);
    EXPECT_EQ(At(500, 300), Code::Client);
    // Above the client area, beside no band.
    EXPECT_EQ(At(500, 40), Code::Client);
}

TEST(MainDlgHitTest, SidesComeBeforeCorners) {
    // Inside a corner square but on a side band: the side wins.
    EXPECT_EQ(At(897, 60), Code::Right);
    EXPECT_EQ(At(103, 490), Code::Left);
    EXPECT_EQ(At(110, 52), Code::Top);
    EXPECT_EQ(At(890, 497), Code::Bottom);
    // The very corner is the right (then left) band, never a diagonal.
    EXPECT_EQ(At(900, 500), Code::Right);
    EXPECT_EQ(At(100, 50), Code::Left);
}

TEST(MainDlgHitTest, OtherMeasuresMoveTheBands) {
    MainDlgHitTest::Metrics metrics;
    metrics.frameX = 9;
    metrics.caption = 10;
    EXPECT_EQ(MainDlgHitTest::HitTest(110, 300, Client, metrics), Code::Left);
    EXPECT_EQ(MainDlgHitTest::HitTest(500, 85, Client, metrics), Code::Caption);
    EXPECT_EQ(MainDlgHitTest::HitTest(500, 86, Client, metrics), Code::Client);
}

TEST(MainDlgHitTest, EachResizeCodeMovesItsEdges) {
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::Left), Qt::Edges(Qt::LeftEdge));
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::Right), Qt::Edges(Qt::RightEdge));
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::Top), Qt::Edges(Qt::TopEdge));
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::Bottom), Qt::Edges(Qt::BottomEdge));
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::TopLeft), Qt::TopEdge | Qt::LeftEdge);
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::TopRight), Qt::TopEdge | Qt::RightEdge);
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::BottomLeft), Qt::BottomEdge | Qt::LeftEdge);
    EXPECT_EQ(MainDlgHitTest::EdgesOf(Code::BottomRight), Qt::BottomEdge | Qt::RightEdge);
    EXPECT_FALSE(MainDlgHitTest::IsResize(Code::Caption));
    EXPECT_FALSE(MainDlgHitTest::IsResize(Code::Client));
}

TEST(MainDlgHitTest, CodesKeepTheWindowSystemsNumbers) {
    EXPECT_EQ(static_cast<int>(Code::Client), 1);
    EXPECT_EQ(static_cast<int>(Code::Caption), 2);
    EXPECT_EQ(static_cast<int>(Code::Left), 10);
    EXPECT_EQ(static_cast<int>(Code::BottomRight), 17);
}
