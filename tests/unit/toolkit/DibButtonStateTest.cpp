// The bitmap button's state table, driven without a window: a recording host stands in for
// the widget and lists what the state asked of it, in order.

#include "toolkit/DibButtonState.h"
#include "toolkit/DibButtonHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

class RecordingHost : public DibButtonHost {
public:
    void TakeFocus() override { calls.emplace_back("focus"); }
    void PlayClickSound(int soundId) override {
        calls.push_back("sound " + std::to_string(soundId));
    }
    void SendCommand() override { calls.emplace_back("command"); }
    void SendMouseEnter() override { calls.emplace_back("enter"); }
    void SendMouseLeave() override { calls.emplace_back("leave"); }
    void TrackMouseLeave() override { calls.emplace_back("track"); }
    void Redraw() override { calls.emplace_back("redraw"); }
    void RefreshToolTip() override { calls.emplace_back("tooltip"); }

    long Count(const std::string& call) const {
        return std::count(calls.begin(), calls.end(), call);
    }
    std::vector<std::string> Without(const std::string& call) const {
        std::vector<std::string> rest;
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(rest),
                     [&call](const std::string& c) { return c != call; });
        return rest;
    }

    std::vector<std::string> calls;
};

using Key = DibButtonState::Key;
using Calls = std::vector<std::string>;

struct Button {
    explicit Button(bool hover = true, bool push = true) : state(host) {
        state.SetHasHover(hover);
        state.SetPushMode(push);
    }
    void Click() {
        state.OnMouseMove(true);
        state.OnMouseDown();
        state.OnMouseUp(true);
    }
    RecordingHost host;
    DibButtonState state;
};

} // namespace

TEST(DibButtonState, StartsAsAnUncheckedPushButtonWithoutSound) {
    Button b;
    EXPECT_TRUE(b.state.PushMode());
    EXPECT_FALSE(b.state.Latched());
    EXPECT_FALSE(b.state.Checked());
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.Hot());
    EXPECT_FALSE(b.state.SoundOn());
    EXPECT_EQ(b.state.SoundId(), 0);
    EXPECT_TRUE(b.host.calls.empty());
}

TEST(DibButtonState, FirstMoveOverAHoverButtonMakesItHotAndTellsTheParentOnce) {
    Button b;
    b.state.OnMouseMove(true);
    EXPECT_TRUE(b.state.Hot());
    EXPECT_EQ(b.host.calls, (Calls{"redraw", "enter", "track"}));
    b.state.OnMouseMove(true);
    EXPECT_EQ(b.host.Count("enter"), 1);
}

TEST(DibButtonState, LeavingSendsTheLeaveMessageBeforeTheRedraw) {
    Button b;
    b.state.OnMouseMove(true);
    b.host.calls.clear();
    b.state.OnMouseLeave();
    EXPECT_FALSE(b.state.Hot());
    EXPECT_EQ(b.host.calls, (Calls{"leave", "redraw"}));
    b.state.OnMouseLeave();
    EXPECT_EQ(b.host.Count("leave"), 1);
}

TEST(DibButtonState, ButtonWithoutHoverPictureNeverGetsHotNorTellsTheParent) {
    Button b(/*hover=*/false);
    b.state.OnMouseMove(true);
    b.state.OnMouseMove(false);
    b.state.OnMouseLeave();
    b.Click();
    b.state.OnMouseLeave();
    EXPECT_FALSE(b.state.Hot());
    EXPECT_EQ(b.host.Count("enter"), 0);
    EXPECT_EQ(b.host.Count("leave"), 0);
    EXPECT_EQ(b.host.Count("track"), 0);
}

TEST(DibButtonState, PushButtonClickedInsideSendsOneCommandAtRelease) {
    Button b;
    b.state.OnMouseMove(true);
    b.state.OnMouseDown();
    EXPECT_TRUE(b.state.Pressed());
    EXPECT_TRUE(b.state.HasCapture());
    EXPECT_EQ(b.host.Count("command"), 0);
    b.host.calls.clear();
    b.state.OnMouseUp(true);
    // The capture goes first and takes the pressed look with it, then the command.
    EXPECT_EQ(b.host.calls, (Calls{"redraw", "command", "redraw", "tooltip"}));
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.Checked());
    EXPECT_FALSE(b.state.HasCapture());
}

TEST(DibButtonState, PressTakesFocusPlaysTheSoundAndRedrawsPressed) {
    Button b;
    b.state.SetClickSound(true, 206);
    b.state.OnMouseDown();
    EXPECT_EQ(b.host.calls, (Calls{"focus", "sound 206", "redraw"}));
}

TEST(DibButtonState, SoundSwitchedOffIsNotPlayedThoughItHasAnId) {
    Button b;
    b.state.SetClickSound(false, 206);
    b.Click();
    EXPECT_EQ(b.host.Count("sound 206"), 0);
}

TEST(DibButtonState, TakingTheCaptureEndsHoverWithALeaveMessage) {
    Button b;
    b.state.OnMouseMove(true);
    b.host.calls.clear();
    b.state.OnMouseDown();
    EXPECT_FALSE(b.state.Hot());
    EXPECT_EQ(b.host.calls, (Calls{"focus", "redraw", "leave", "redraw"}));
}

TEST(DibButtonState, DraggingOutOfAHeldButtonReleasesItsLookAndBackInPressesIt) {
    Button b;
    b.state.OnMouseMove(true);
    b.state.OnMouseDown();
    b.state.OnMouseMove(false);
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.Hot());
    b.state.OnMouseMove(true);
    EXPECT_TRUE(b.state.Pressed());
    EXPECT_FALSE(b.state.Hot());
    b.state.OnMouseUp(true);
    EXPECT_EQ(b.host.Count("command"), 1);
}

TEST(DibButtonState, PushButtonReleasedOutsideSendsNoCommand) {
    Button b;
    b.state.OnMouseMove(true);
    b.state.OnMouseDown();
    b.state.OnMouseMove(false);
    b.state.OnMouseUp(false);
    EXPECT_EQ(b.host.Count("command"), 0);
    EXPECT_FALSE(b.state.HasCapture());
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.Checked());
}

TEST(DibButtonState, PushButtonWithoutHoverClicksThroughThePlainButtonBehaviour) {
    Button b(/*hover=*/false);
    b.state.OnMouseDown();
    EXPECT_TRUE(b.state.HasCapture());
    EXPECT_TRUE(b.state.Pressed());
    b.state.OnMouseUp(true);
    EXPECT_EQ(b.host.Count("command"), 1);
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.HasCapture());
}

TEST(DibButtonState, PushButtonWithoutHoverReleasedOutsideSendsNoCommand) {
    Button b(/*hover=*/false);
    b.state.OnMouseDown();
    b.state.OnMouseMove(false);
    EXPECT_FALSE(b.state.Pressed());
    b.state.OnMouseUp(false);
    EXPECT_EQ(b.host.Count("command"), 0);
    EXPECT_FALSE(b.state.HasCapture());
}

TEST(DibButtonState, ToggleButtonSwapsPressedAgainstCheckedAtEachClick) {
    Button b(/*hover=*/true, /*push=*/false);
    b.Click();
    EXPECT_TRUE(b.state.Checked());
    EXPECT_TRUE(b.state.Pressed());
    EXPECT_TRUE(b.state.GetCheckState());
    b.state.OnMouseDown();
    EXPECT_FALSE(b.state.Pressed());
    b.state.OnMouseUp(true);
    EXPECT_FALSE(b.state.Checked());
    EXPECT_FALSE(b.state.GetCheckState());
    EXPECT_EQ(b.host.Count("command"), 2);
}

TEST(DibButtonState, ToggleButtonReportsAReleaseOutsideItToo) {
    Button b(/*hover=*/true, /*push=*/false);
    b.state.OnMouseDown();
    b.state.OnMouseMove(false);
    b.state.OnMouseUp(false);
    EXPECT_EQ(b.host.Count("command"), 1);
    EXPECT_FALSE(b.state.Checked());
}

TEST(DibButtonState, ToggleButtonWithoutHoverToggles) {
    Button b(/*hover=*/false, /*push=*/false);
    b.state.OnMouseDown();
    b.state.OnMouseUp(true);
    EXPECT_TRUE(b.state.GetCheckState());
    b.state.OnMouseDown();
    b.state.OnMouseUp(true);
    EXPECT_FALSE(b.state.GetCheckState());
    EXPECT_EQ(b.host.Count("command"), 2);
}

TEST(DibButtonState, LatchedAndSelectedButtonIgnoresClicksReturnAndSpace) {
    Button b(/*hover=*/true, /*push=*/false);
    b.state.SetLatched(true);
    b.state.SetCheckState(true);
    ASSERT_TRUE(b.state.Frozen());
    b.host.calls.clear();

    b.state.OnMouseDown();
    b.state.OnMouseUp(true);
    b.state.OnMouseDoubleClick();
    b.state.OnMouseUp(true);
    EXPECT_TRUE(b.state.OnKeyDown(Key::Return));
    EXPECT_TRUE(b.state.OnKeyUp(Key::Return));
    EXPECT_TRUE(b.state.OnKeyDown(Key::Space));
    EXPECT_TRUE(b.state.OnKeyUp(Key::Space));
    EXPECT_TRUE(b.state.OnKeyDown(Key::Other));

    EXPECT_TRUE(b.host.calls.empty());
    EXPECT_TRUE(b.state.Pressed());
    EXPECT_TRUE(b.state.Checked());
    EXPECT_FALSE(b.state.HasCapture());
}

TEST(DibButtonState, LatchedButtonThatIsNotSelectedStillClicks) {
    Button b(/*hover=*/true, /*push=*/false);
    b.state.SetLatched(true);
    b.Click();
    EXPECT_EQ(b.host.Count("command"), 1);
    // Now down, checked and latched: the next click is ignored.
    EXPECT_TRUE(b.state.Frozen());
    b.Click();
    EXPECT_EQ(b.host.Count("command"), 1);
}

TEST(DibButtonState, SpaceHeldAndReleasedSendsExactlyOneCommandAtRelease) {
    Button b;
    for (int repeat = 0; repeat < 5; ++repeat) {
        EXPECT_TRUE(b.state.OnKeyDown(Key::Space));
        EXPECT_TRUE(b.state.Pressed());
    }
    EXPECT_EQ(b.host.Count("command"), 0);
    EXPECT_TRUE(b.state.OnKeyUp(Key::Space));
    EXPECT_EQ(b.host.Count("command"), 1);
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.Checked());
}

TEST(DibButtonState, ReturnClicksLikeSpace) {
    Button b;
    b.state.OnKeyDown(Key::Return);
    b.state.OnKeyUp(Key::Return);
    EXPECT_EQ(b.host.Count("command"), 1);
}

TEST(DibButtonState, OtherKeysAreLeftToTheParent) {
    Button b;
    EXPECT_FALSE(b.state.OnKeyDown(Key::Other));
    EXPECT_FALSE(b.state.OnKeyUp(Key::Other));
    EXPECT_TRUE(b.host.calls.empty());
}

TEST(DibButtonState, ToggleButtonByKeyboardTogglesAtRelease) {
    Button b(/*hover=*/true, /*push=*/false);
    b.state.OnKeyDown(Key::Space);
    b.state.OnKeyDown(Key::Space);
    EXPECT_FALSE(b.state.Checked());
    b.state.OnKeyUp(Key::Space);
    EXPECT_TRUE(b.state.GetCheckState());
    b.state.OnKeyDown(Key::Space);
    b.state.OnKeyUp(Key::Space);
    EXPECT_FALSE(b.state.GetCheckState());
}

TEST(DibButtonState, CheckingTakesTheFocusAndShowsItDown) {
    Button b;
    b.state.SetCheckState(true);
    EXPECT_EQ(b.host.calls, (Calls{"focus", "redraw"}));
    EXPECT_TRUE(b.state.Focused());
    EXPECT_TRUE(b.state.Pressed());
    EXPECT_TRUE(b.state.Checked());
    EXPECT_TRUE(b.state.GetCheckState());
}

TEST(DibButtonState, UncheckingLeavesTheInputFocusAlone) {
    Button b;
    b.state.SetCheckState(true);
    b.host.calls.clear();
    b.state.SetCheckState(false);
    EXPECT_EQ(b.host.calls, (Calls{"redraw"}));
    EXPECT_FALSE(b.state.Focused());
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.Checked());
}

TEST(DibButtonState, LostCaptureLetsAHeldPushButtonUpWithoutCommand) {
    Button b;
    b.state.OnMouseDown();
    b.state.OnCaptureLost();
    EXPECT_FALSE(b.state.Pressed());
    EXPECT_FALSE(b.state.HasCapture());
    b.state.OnMouseUp(true);
    EXPECT_EQ(b.host.Count("command"), 0);
}

TEST(DibButtonState, LostCaptureKeepsAHeldToggleDown) {
    Button b(/*hover=*/true, /*push=*/false);
    b.state.OnMouseDown();
    b.state.OnCaptureLost();
    EXPECT_TRUE(b.state.Pressed());
}

TEST(DibButtonState, DoubleClickCountsAsASecondPress) {
    Button b;
    b.state.OnMouseDown();
    b.state.OnMouseUp(true);
    b.state.OnMouseDoubleClick();
    EXPECT_TRUE(b.state.Pressed());
    EXPECT_TRUE(b.state.HasCapture());
    b.state.OnMouseUp(true);
    EXPECT_EQ(b.host.Count("command"), 2);
}

TEST(DibButtonState, FocusAndEnableChangesRedraw) {
    Button b;
    b.state.OnFocusIn();
    EXPECT_TRUE(b.state.Focused());
    b.state.OnFocusOut();
    EXPECT_FALSE(b.state.Focused());
    b.state.OnEnableChanged();
    EXPECT_EQ(b.host.calls, (Calls{"redraw", "redraw", "redraw"}));
}

TEST(DibButtonState, ReleaseWithoutAPressBeforeItSendsNothing) {
    Button b;
    b.state.OnMouseUp(true);
    EXPECT_EQ(b.host.Count("command"), 0);
    EXPECT_EQ(b.host.Without("tooltip"), (Calls{"redraw"}));
}
