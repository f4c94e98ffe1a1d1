// The framed dialog's caption buttons: hit-testing, press and release.

#include "toolkit/DialogFrameState.h"

#include <gtest/gtest.h>

namespace {

using State = DialogFrameState;
using Command = DialogFrameState::Command;

// A 400-wide dialog: close button at (368, 11, 21, 21), help at (346, 12, 19, 19).
State Dialog(bool help = false) {
    State state(true, help);
    state.SetCaptionHeight(44);
    state.SetButtonRects(QRect(368, 11, 21, 21), help ? QRect(346, 12, 19, 19) : QRect());
    return state;
}

// Client points: x + 5 and y + 44 give the frame point.
const QPoint OnClose(370, -25);   // frame (375, 19)
const QPoint OnHelp(345, -25);    // frame (350, 19)
const QPoint OnCaption(100, -25); // frame (105, 19)
const QPoint InClient(100, 100);  // frame (105, 144)

} // namespace

TEST(DialogFrameState, HitTestingGivesCloseHelpOrCaption) {
    State state = Dialog(true);
    EXPECT_EQ(state.HitTestFrame(QPoint(368, 11)), State::HitClose);
    EXPECT_EQ(state.HitTestFrame(QPoint(388, 31)), State::HitClose);
    EXPECT_EQ(state.HitTestFrame(QPoint(389, 31)), State::HitCaption);
    EXPECT_EQ(state.HitTestFrame(QPoint(350, 20)), State::HitHelp);
    EXPECT_EQ(state.HitTestFrame(QPoint(5, 200)), State::HitCaption);
}

TEST(DialogFrameState, HitTestingAddsFiveAndTheCaptionHeightNotTheBorder) {
    State state = Dialog();
    // Client x 363 + 5 = 368: on the button's first column.
    EXPECT_EQ(state.NcHitTest(QPoint(363, -33)), State::HitClose);
    EXPECT_EQ(state.Hit(), State::HitClose);
    EXPECT_EQ(state.NcHitTest(QPoint(362, -33)), State::HitCaption);
    EXPECT_EQ(state.Hit(), State::HitCaption);
}

TEST(DialogFrameState, WithoutTheFlagsThereAreNoButtonsToHit) {
    State state(false, false);
    state.SetCaptionHeight(44);
    state.SetButtonRects(QRect(368, 11, 21, 21), QRect(346, 12, 19, 19));
    EXPECT_EQ(state.HitTestFrame(QPoint(370, 20)), State::HitCaption);
    EXPECT_EQ(state.HitTestFrame(QPoint(350, 20)), State::HitCaption);
}

TEST(DialogFrameState, MovingOverTheButtonLightsItAndAwayClearsIt) {
    State state = Dialog();
    auto out = state.NcMouseMove(state.NcHitTest(OnClose));
    EXPECT_TRUE(state.Over());
    EXPECT_TRUE(out.redraw);
    EXPECT_TRUE(out.passOn);
    out = state.NcMouseMove(state.NcHitTest(OnClose));
    EXPECT_FALSE(out.redraw);
    out = state.NcMouseMove(state.NcHitTest(OnCaption));
    EXPECT_FALSE(state.Over());
    EXPECT_TRUE(out.redraw);
}

TEST(DialogFrameState, AClickOnTheCloseButtonPostsCancel) {
    State state = Dialog();
    auto down = state.NcLButtonDown(state.NcHitTest(OnClose));
    EXPECT_TRUE(state.Down());
    EXPECT_EQ(state.DownHit(), State::HitClose);
    EXPECT_TRUE(down.capture);
    EXPECT_TRUE(down.redraw);
    EXPECT_FALSE(down.passOn);
    EXPECT_TRUE(state.Captured());
    const auto move = state.MouseMove(OnClose, true);
    EXPECT_TRUE(state.Over());
    EXPECT_FALSE(move.command != Command::None);
    const auto up = state.LButtonUp(OnClose);
    EXPECT_EQ(up.command, Command::Cancel);
    EXPECT_FALSE(up.passOn);
}

TEST(DialogFrameState, AClickOnTheCloseButtonReleasedOutsideItPostsNothing) {
    State state = Dialog();
    state.NcMouseMove(state.NcHitTest(OnClose));
    state.NcLButtonDown(state.NcHitTest(OnClose));
    EXPECT_TRUE(state.Over());
    const auto move = state.MouseMove(OnCaption, true);
    EXPECT_FALSE(state.Over());
    EXPECT_TRUE(state.Down());
    EXPECT_TRUE(move.redraw);
    const auto up = state.LButtonUp(OnCaption);
    EXPECT_EQ(up.command, Command::None);
    EXPECT_FALSE(state.Down());
    EXPECT_TRUE(up.releaseCapture);
    EXPECT_TRUE(up.redraw);
    EXPECT_TRUE(up.passOn);
    EXPECT_FALSE(state.Captured());
}

TEST(DialogFrameState, APressOutsideAndAReleaseOnTheCloseButtonPostsNothing) {
    State state = Dialog();
    const auto down = state.NcLButtonDown(state.NcHitTest(OnCaption));
    EXPECT_TRUE(down.passOn);
    EXPECT_FALSE(down.capture);
    EXPECT_EQ(state.DownHit(), State::HitCaption);
    EXPECT_FALSE(state.Down());
    const auto up = state.NcLButtonUp(state.NcHitTest(OnClose));
    EXPECT_EQ(up.command, Command::None);
    EXPECT_TRUE(up.passOn);
}

TEST(DialogFrameState, APressInTheClientAreaDragsToo) {
    State state = Dialog();
    const auto down = state.NcLButtonDown(state.NcHitTest(InClient));
    EXPECT_TRUE(down.passOn);
    EXPECT_EQ(state.DownHit(), State::HitCaption);
}

TEST(DialogFrameState, AClickOnTheHelpButtonPostsHelp) {
    State state = Dialog(true);
    state.NcLButtonDown(state.NcHitTest(OnHelp));
    EXPECT_EQ(state.DownHit(), State::HitHelp);
    EXPECT_EQ(state.LButtonUp(OnHelp).command, Command::Help);
}

TEST(DialogFrameState, APressOnHelpReleasedOnCloseIsNeither) {
    State state = Dialog(true);
    state.NcLButtonDown(state.NcHitTest(OnHelp));
    EXPECT_EQ(state.LButtonUp(OnClose).command, Command::None);
}

TEST(DialogFrameState, AFrameReleaseOnThePressedButtonPostsAndReleasesFirst) {
    State state = Dialog();
    state.NcLButtonDown(state.NcHitTest(OnClose));
    const auto up = state.NcLButtonUp(State::HitClose);
    EXPECT_EQ(up.command, Command::Cancel);
    EXPECT_TRUE(up.releaseCapture);
    EXPECT_FALSE(state.Down());
    EXPECT_FALSE(up.passOn);
}

TEST(DialogFrameState, MovingWithOtherButtonsHeldIsNotHoldingTheLeftOne) {
    State state = Dialog();
    state.NcLButtonDown(state.NcHitTest(OnClose));
    state.MouseMove(OnClose, false);
    EXPECT_FALSE(state.Down());
    state.MouseMove(OnClose, true);
    EXPECT_TRUE(state.Down());
}

TEST(DialogFrameState, ASecondPressWhileDownNeitherRedrawsNorCapturesAgain) {
    State state = Dialog();
    state.NcLButtonDown(State::HitClose);
    const auto again = state.NcLButtonDown(State::HitClose);
    EXPECT_FALSE(again.redraw);
    EXPECT_FALSE(again.capture);
}
