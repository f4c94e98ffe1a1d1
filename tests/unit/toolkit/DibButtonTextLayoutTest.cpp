// Where a bitmap button's caption stands, as numbers.

#include "toolkit/DibButtonTextLayout.h"

#include <gtest/gtest.h>

namespace {

DibButtonTextLayout::Metrics OneLine(int bw, int bh, int tw, int th) {
    DibButtonTextLayout::Metrics m;
    m.bitmapWidth = bw;
    m.bitmapHeight = bh;
    m.lineWidth = tw;
    m.lineHeight = th;
    m.captionWidth = tw;
    return m;
}

DibButtonTextLayout::Params Align(int align, int xOffset) {
    DibButtonTextLayout::Params p;
    p.align = align;
    p.xOffset = xOffset;
    return p;
}

DibButtonLook Plain() {
    return {};
}

DibButtonLook PressedShifted() {
    DibButtonLook look;
    look.picture = DibButtonLook::Picture::Pressed;
    look.drawnPressed = true;
    look.shift = 1;
    return look;
}

DibButtonLook PressedTwin() {
    DibButtonLook look;
    look.picture = DibButtonLook::Picture::FocusedPressed;
    look.drawnPressed = true;
    return look;
}

} // namespace

TEST(DibButtonTextLayout, LeftAlignedLineStandsAtTheOffsetFourNinthsDown) {
    const auto l = DibButtonTextLayout::Place(Align(-1, 30), OneLine(122, 31, 50, 13), Plain());
    EXPECT_EQ(l.x, 30);
    EXPECT_EQ(l.y, 8); // (31 - 13) * 4 / 9
}

TEST(DibButtonTextLayout, CentredLineIsMovedByTheOffset) {
    const auto l = DibButtonTextLayout::Place(Align(0, 3), OneLine(78, 24, 21, 13), Plain());
    EXPECT_EQ(l.x, 31); // (78 - 21) / 2 + 3
    EXPECT_EQ(l.y, 4);  // 11 * 4 / 9
}

TEST(DibButtonTextLayout, AnyOtherAlignIsRightWeightedLessTheOffset) {
    for (int align : {1, 2, -5}) {
        const auto l =
            DibButtonTextLayout::Place(Align(align, 4), OneLine(117, 26, 40, 13), Plain());
        EXPECT_EQ(l.x, 65) << align; // 77 * 9 / 10 - 4
    }
}

TEST(DibButtonTextLayout, TooTallTextRoundsTowardZero) {
    const auto l = DibButtonTextLayout::Place(Align(0, 0), OneLine(10, 10, 15, 15), Plain());
    EXPECT_EQ(l.y, -2); // -20 / 9
    EXPECT_EQ(l.x, -2); // -5 / 2
}

TEST(DibButtonTextLayout, PressedPictureWithoutTwinOnlyMovesOnePixelUpAndLeft) {
    const auto metrics = OneLine(122, 31, 50, 13);
    const auto up = DibButtonTextLayout::Place(Align(-1, 30), metrics, Plain());
    const auto down = DibButtonTextLayout::Place(Align(-1, 30), metrics, PressedShifted());
    EXPECT_EQ(down.x, up.x - 1);
    EXPECT_EQ(down.y, up.y - 1);
}

TEST(DibButtonTextLayout, PressedOffsetsAddToTheShift) {
    auto params = Align(0, 0);
    params.pressedDx = 2;
    params.pressedDy = 3;
    const auto metrics = OneLine(78, 24, 20, 12);
    const auto up = DibButtonTextLayout::Place(params, metrics, Plain());
    const auto shifted = DibButtonTextLayout::Place(params, metrics, PressedShifted());
    const auto twin = DibButtonTextLayout::Place(params, metrics, PressedTwin());
    EXPECT_EQ(shifted.x, up.x + 2 - 1);
    EXPECT_EQ(shifted.y, up.y + 3 - 1);
    EXPECT_EQ(twin.x, up.x + 2);
    EXPECT_EQ(twin.y, up.y + 3);
}

TEST(DibButtonTextLayout, SuffixFollowsTheCaptionAfterTheGap) {
    auto params = Align(-1, 5);
    params.suffixGap = 4;
    auto metrics = OneLine(122, 31, 70, 13);
    metrics.captionWidth = 50;
    const auto l = DibButtonTextLayout::Place(params, metrics, Plain());
    EXPECT_EQ(l.suffixX, 5 + 50 + 4);
}

TEST(DibButtonTextLayout, CentringMeasuresTheCaptionWithItsSuffix) {
    auto metrics = OneLine(100, 20, 60, 10);
    metrics.captionWidth = 40;
    const auto l = DibButtonTextLayout::Place(Align(0, 0), metrics, Plain());
    EXPECT_EQ(l.x, 20); // (100 - 60) / 2, not (100 - 40) / 2
}

TEST(DibButtonTextLayout, TwoLinesShareTheHeightAndTheSecondIsNotMovedDown) {
    auto params = Align(0, 0);
    params.pressedDx = 2;
    params.pressedDy = 3;
    auto metrics = OneLine(120, 40, 60, 12);
    metrics.hasSecondLine = true;
    metrics.secondWidth = 30;
    metrics.secondHeight = 10;

    const auto up = DibButtonTextLayout::Place(params, metrics, Plain());
    EXPECT_EQ(up.y, 9); // (40 - 12 - 10) / 2
    EXPECT_EQ(up.x, 30);
    EXPECT_EQ(up.secondY, 21);
    EXPECT_EQ(up.secondX, 45);

    const auto down = DibButtonTextLayout::Place(params, metrics, PressedShifted());
    EXPECT_EQ(down.y, 9 - 1 + 3);
    EXPECT_EQ(down.x, 30 - 1 + 2);
    EXPECT_EQ(down.secondY, 21 - 1);
    EXPECT_EQ(down.secondX, 45 - 1 + 2);
}
