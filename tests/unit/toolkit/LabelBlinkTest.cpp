// The label's blinking state.

#include "toolkit/LabelBlink.h"

#include <gtest/gtest.h>

TEST(LabelBlink, FlashTextStartsAtPhaseZeroWithTheTimerAndModeOne) {
    LabelBlink blink;
    EXPECT_FALSE(blink.TimerRunning());
    EXPECT_EQ(blink.BlinkMode(), LabelBlink::None);
    blink.FlashText(true);
    EXPECT_TRUE(blink.TimerRunning());
    EXPECT_EQ(blink.BlinkMode(), LabelBlink::Text);
    EXPECT_FALSE(blink.Phase());
    EXPECT_TRUE(blink.TextHidden());
    EXPECT_EQ(LabelBlink::PeriodMs, 500);
    EXPECT_EQ(LabelBlink::TimerId, 1);
}

TEST(LabelBlink, EachTickFlipsThePhase) {
    LabelBlink blink;
    blink.FlashText(true);
    blink.Tick();
    EXPECT_TRUE(blink.Phase());
    EXPECT_FALSE(blink.TextHidden());
    blink.Tick();
    EXPECT_FALSE(blink.Phase());
    EXPECT_TRUE(blink.TextHidden());
}

TEST(LabelBlink, FlashTextFalseDuringABlinkLeavesThePhaseReachedWithModeZero) {
    LabelBlink blink;
    blink.FlashText(true);
    blink.Tick();
    blink.Tick();
    blink.Tick(); // phase 1
    blink.FlashText(false);
    EXPECT_FALSE(blink.TimerRunning());
    EXPECT_EQ(blink.BlinkMode(), LabelBlink::None);
    EXPECT_TRUE(blink.Phase());
    EXPECT_FALSE(blink.TextHidden());

    LabelBlink hiddenPhase;
    hiddenPhase.FlashText(true); // phase 0: the text is hidden
    hiddenPhase.FlashText(false);
    EXPECT_FALSE(hiddenPhase.Phase());
    EXPECT_FALSE(hiddenPhase.TextHidden());
}

TEST(LabelBlink, FlashTextRestartsAtPhaseZero) {
    LabelBlink blink;
    blink.FlashText(true);
    blink.Tick();
    blink.FlashText(true);
    EXPECT_FALSE(blink.Phase());
}

TEST(LabelBlink, FlashBackgroundUsesModeTwoAndNeverHidesTheText) {
    LabelBlink blink;
    blink.FlashBackground(true);
    EXPECT_TRUE(blink.TimerRunning());
    EXPECT_EQ(blink.BlinkMode(), LabelBlink::Background);
    EXPECT_FALSE(blink.TextHidden());
    blink.Tick();
    EXPECT_FALSE(blink.TextHidden());
}

TEST(LabelBlink, FlashBackgroundFalseStopsTheTimerAndKeepsTheMode) {
    LabelBlink blink;
    blink.FlashText(true);
    blink.FlashBackground(false);
    EXPECT_FALSE(blink.TimerRunning());
    EXPECT_EQ(blink.BlinkMode(), LabelBlink::Text);
    EXPECT_TRUE(blink.TextHidden());
}
