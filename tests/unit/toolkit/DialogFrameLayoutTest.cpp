// Where a framed dialog's pieces go, as numbers.

#include "toolkit/DialogFrameLayout.h"

#include <gtest/gtest.h>

namespace {

using Layout = DialogFrameLayout;
const Layout::Flags CloseOnly{true, true, false};

std::vector<QRect> RectsOf(const std::vector<Layout::Placement>& placements, int bitmap) {
    std::vector<QRect> rects;
    for (const auto& placement : placements) {
        if (placement.bitmap == bitmap)
            rects.push_back(placement.rect);
    }
    return rects;
}

Layout::Sizes WithHelp() {
    auto sizes = Layout::DialogPieces();
    sizes[Layout::HelpNormal] = sizes[Layout::HelpHover] = sizes[Layout::HelpPressed] =
        QSize(19, 19);
    return sizes;
}

} // namespace

TEST(DialogFrameLayout, TheFrameMeasuresComeFromTheirBitmaps) {
    EXPECT_EQ(Layout::CaptionHeight(Layout::DialogPieces()), 44);
    EXPECT_EQ(Layout::BottomHeight(Layout::DialogPieces()), 16);
    EXPECT_EQ(Layout::BorderWidth(Layout::DialogPieces()), 2);
}

TEST(DialogFrameLayout, TheCaptionEndsStandAtBothSides) {
    const auto frame = Layout::Layout(QSize(400, 300), Layout::DialogPieces(), CloseOnly, {});
    EXPECT_EQ(frame.captionStrip, QSize(400, 44));
    EXPECT_EQ(RectsOf(frame.caption, Layout::CaptionLeft).front(), QRect(0, 0, 17, 44));
    EXPECT_EQ(RectsOf(frame.caption, Layout::CaptionRight).front(), QRect(383, 0, 17, 44));
}

TEST(DialogFrameLayout, TilesThatFitExactlyAreNotMoved) {
    // 17 + 122 * 3 = 383: the last tile ends at the right end.
    const auto tiles =
        RectsOf(Layout::Layout(QSize(400, 300), Layout::DialogPieces(), CloseOnly, {}).caption,
                Layout::CaptionTile);
    ASSERT_EQ(tiles.size(), 122u);
    EXPECT_EQ(tiles.front(), QRect(17, 0, 3, 44));
    EXPECT_EQ(tiles.back(), QRect(380, 0, 3, 44));
}

TEST(DialogFrameLayout, TheLastCaptionTileIsMovedBackToEndAtTheLimit) {
    // Limit 384: the tile at 383 would reach 386, so it is drawn at 381.
    const auto tiles =
        RectsOf(Layout::Layout(QSize(401, 300), Layout::DialogPieces(), CloseOnly, {}).caption,
                Layout::CaptionTile);
    ASSERT_EQ(tiles.size(), 123u);
    EXPECT_EQ(tiles[121], QRect(380, 0, 3, 44));
    EXPECT_EQ(tiles.back(), QRect(381, 0, 3, 44));
    EXPECT_EQ(tiles.back().right() + 1, 401 - 17);
}

TEST(DialogFrameLayout, ANarrowGapGetsOneTileMovedBackOverTheLeftEnd) {
    // 35 wide: one pixel between the ends; the tile is moved back to 15.
    const auto tiles =
        RectsOf(Layout::Layout(QSize(35, 100), Layout::DialogPieces(), CloseOnly, {}).caption,
                Layout::CaptionTile);
    ASSERT_EQ(tiles.size(), 1u);
    EXPECT_EQ(tiles.front(), QRect(15, 0, 3, 44));
}

TEST(DialogFrameLayout, ADialogNarrowerThanItsTwoCaptionEndsDrawsNoTileAtAll) {
    for (int width : {34, 33, 20, 0}) {
        const auto frame = Layout::Layout(QSize(width, 100), Layout::DialogPieces(), CloseOnly, {});
        EXPECT_TRUE(RectsOf(frame.caption, Layout::CaptionTile).empty()) << width;
    }
}

TEST(DialogFrameLayout, TheCloseButtonIsCentredInTheCaptionAsFarFromTheRightAsFromTheTop) {
    const auto frame = Layout::Layout(QSize(400, 300), Layout::DialogPieces(), CloseOnly, {});
    EXPECT_EQ(frame.closeRect, QRect(368, 11, 21, 21));
    EXPECT_TRUE(frame.helpRect.isNull());
    EXPECT_EQ(RectsOf(frame.caption, Layout::CloseNormal).front(), frame.closeRect);
}

TEST(DialogFrameLayout, WithoutTheCloseFlagThereIsNoCloseButton) {
    const auto frame =
        Layout::Layout(QSize(400, 300), Layout::DialogPieces(), {true, false, false}, {});
    EXPECT_TRUE(frame.closeRect.isNull());
    EXPECT_TRUE(RectsOf(frame.caption, Layout::CloseNormal).empty());
}

TEST(DialogFrameLayout, TheHelpButtonStandsLeftOfTheCloseButtonByItsWidthAndTwo) {
    const auto frame = Layout::Layout(QSize(400, 300), WithHelp(), {true, true, true}, {});
    // y = (44 - 19) / 2 = 12; right edge = 400 - 12 - (21 + 2) = 365.
    EXPECT_EQ(frame.helpRect, QRect(346, 12, 19, 19));
    EXPECT_EQ(RectsOf(frame.caption, Layout::HelpNormal).front(), frame.helpRect);
}

TEST(DialogFrameLayout, TheClosePictureFollowsThePointer) {
    using P = Layout::Pointer;
    EXPECT_EQ(Layout::ClosePicture(P{false, 20, false, 0}), Layout::CloseNormal);
    EXPECT_EQ(Layout::ClosePicture(P{true, 20, false, 0}), Layout::CloseHover);
    EXPECT_EQ(Layout::ClosePicture(P{true, 20, true, 20}), Layout::ClosePressed);
    // Held after a press elsewhere: normal.
    EXPECT_EQ(Layout::ClosePicture(P{true, 20, true, 2}), Layout::CloseNormal);
    // Over the help button: the close button stays normal.
    EXPECT_EQ(Layout::ClosePicture(P{true, 21, false, 0}), Layout::CloseNormal);
    EXPECT_EQ(Layout::HelpPicture(P{true, 21, false, 0}), Layout::HelpHover);
    EXPECT_EQ(Layout::HelpPicture(P{true, 21, true, 21}), Layout::HelpPressed);
    EXPECT_EQ(Layout::HelpPicture(P{true, 21, true, 20}), Layout::HelpNormal);
}

TEST(DialogFrameLayout, TheBottomAndSideEdgesAreTiledAndMayRunOn) {
    const auto frame = Layout::Layout(QSize(400, 300), Layout::DialogPieces(), CloseOnly, {});
    EXPECT_EQ(frame.edges[0], (Layout::Placement{Layout::BottomLeft, QRect(0, 284, 17, 16)}));
    EXPECT_EQ(frame.edges[1], (Layout::Placement{Layout::BottomRight, QRect(383, 284, 17, 16)}));
    const auto bottom = RectsOf(frame.edges, Layout::BottomEdge);
    ASSERT_EQ(bottom.size(), 34u);
    EXPECT_EQ(bottom.front(), QRect(17, 284, 11, 16));
    // The last one starts at 380 and runs on over the bottom right corner.
    EXPECT_EQ(bottom.back(), QRect(380, 284, 11, 16));
    const auto left = RectsOf(frame.edges, Layout::LeftEdge);
    ASSERT_EQ(left.size(), 40u);
    EXPECT_EQ(left.front(), QRect(0, 44, 2, 6));
    EXPECT_EQ(left.back(), QRect(0, 278, 2, 6));
    const auto right = RectsOf(frame.edges, Layout::RightEdge);
    ASSERT_EQ(right.size(), 40u);
    EXPECT_EQ(right.front(), QRect(398, 44, 2, 6));
}

TEST(DialogFrameLayout, TheCaptionTextStandsTenInAndCentredInHeight) {
    EXPECT_EQ(Layout::CaptionTextX, 10);
    EXPECT_EQ(Layout::CaptionTextY(44, 19), 12);
    EXPECT_EQ(Layout::CaptionTextY(44, 20), 12);
}
