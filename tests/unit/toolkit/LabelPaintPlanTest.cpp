// What a label's paint draws, worked out without a window.

#include "toolkit/LabelPaintPlan.h"
#include "toolkit/LabelTextFlags.h"

#include <gtest/gtest.h>

namespace {

LabelPaintPlan::Look Plain() {
    LabelPaintPlan::Look look;
    look.text = QColor(0, 0, 0);
    look.defaultBrush = QColor(0xF0, 0xF0, 0xF0);
    return look;
}

const QRect Client(0, 0, 200, 30);

} // namespace

TEST(LabelPaintPlan, APlainLabelFillsWithTheDefaultBrushOffscreen) {
    const auto plan = LabelPaintPlan::Make(Plain(), Client, QStringLiteral("Hello"), 30);
    EXPECT_TRUE(plan.offscreen);
    ASSERT_TRUE(plan.fill.has_value());
    EXPECT_EQ(*plan.fill, QColor(0xF0, 0xF0, 0xF0));
    EXPECT_TRUE(plan.bands.empty());
    ASSERT_EQ(plan.runs.size(), 1u);
    EXPECT_EQ(plan.runs[0], (LabelPaintPlan::TextRun{Client, QColor(0, 0, 0), "Hello"}));
    EXPECT_EQ(plan.flags, LabelTextFlags::DT_WORDBREAK);
}

TEST(LabelPaintPlan, AUserBrushIsUsedBeforeTheDefault) {
    auto look = Plain();
    look.userBrush = QColor(10, 20, 30);
    const auto plan = LabelPaintPlan::Make(look, Client, QStringLiteral("Hello"), 30);
    EXPECT_EQ(*plan.fill, QColor(10, 20, 30));
}

TEST(LabelPaintPlan, AGradientPaintsAHundredBandsInsteadOfAFill) {
    auto look = Plain();
    look.gradient = true;
    look.gradientStart = Qt::black;
    look.gradientEnd = Qt::white;
    const auto plan = LabelPaintPlan::Make(look, Client, QStringLiteral("Hello"), 30);
    EXPECT_FALSE(plan.fill.has_value());
    EXPECT_EQ(plan.bands.size(), 100u);
}

TEST(LabelPaintPlan, ATransparentLabelDrawsNoBackgroundAndDirectly) {
    auto look = Plain();
    look.transparent = true;
    look.userBrush = QColor(10, 20, 30);
    look.textHidden = true;
    const auto plan = LabelPaintPlan::Make(look, Client, QStringLiteral("Hello"), 30);
    EXPECT_FALSE(plan.offscreen);
    EXPECT_FALSE(plan.fill.has_value());
    EXPECT_TRUE(plan.bands.empty());
    // Nor does it blink: the user brush is not read.
    EXPECT_EQ(plan.runs[0].colour, QColor(0, 0, 0));
}

TEST(LabelPaintPlan, InTheHiddenPhaseTheTextTakesTheUserBrushColour) {
    auto look = Plain();
    look.userBrush = QColor(10, 20, 30);
    look.textHidden = true;
    EXPECT_EQ(LabelPaintPlan::Make(look, Client, QStringLiteral("x"), 5).runs[0].colour,
              QColor(10, 20, 30));
    // Without a user brush the text stays.
    look.userBrush.reset();
    EXPECT_EQ(LabelPaintPlan::Make(look, Client, QStringLiteral("x"), 5).runs[0].colour,
              QColor(0, 0, 0));
}

TEST(LabelPaintPlan, ThreeDTextIsDrawnAgainOnePixelOff) {
    auto look = Plain();
    look.threeDText = true;
    look.threeD = QColor(200, 200, 200);
    auto plan = LabelPaintPlan::Make(look, Client, QStringLiteral("x"), 5);
    ASSERT_EQ(plan.runs.size(), 2u);
    EXPECT_EQ(plan.runs[1],
              (LabelPaintPlan::TextRun{Client.translated(-1, -1), QColor(200, 200, 200), "x"}));
    look.threeDSunken = true;
    plan = LabelPaintPlan::Make(look, Client, QStringLiteral("x"), 5);
    EXPECT_EQ(plan.runs[1].rect, Client.translated(1, 1));
}

TEST(LabelPaintPlan, TheSuffixStandsAfterTheTextAndTheGap) {
    auto look = Plain();
    look.suffix = QStringLiteral("(3)");
    look.suffixColour = QColor(1, 2, 3);
    look.suffixGap = 4;
    const auto plan = LabelPaintPlan::Make(look, QRect(10, 0, 200, 30), QStringLiteral("Spam"), 27);
    ASSERT_EQ(plan.runs.size(), 2u);
    EXPECT_EQ(plan.runs[1].rect, QRect(41, 0, 169, 30));
    EXPECT_EQ(plan.runs[1].colour, QColor(1, 2, 3));
    EXPECT_EQ(plan.runs[1].text, QStringLiteral("(3)"));
}

TEST(LabelPaintPlan, RotatedTextStartsAtTheCentre) {
    auto look = Plain();
    look.rotated = true;
    look.threeDText = true;
    const auto plan = LabelPaintPlan::Make(look, QRect(0, 0, 100, 40), QStringLiteral("x"), 5);
    EXPECT_TRUE(plan.rotated);
    EXPECT_EQ(plan.rotatedOrigin, QPoint(50, 20));
    // No 3D copy for rotated text.
    EXPECT_EQ(plan.runs.size(), 1u);
}

TEST(LabelPaintPlan, AtMost2000CharactersAreDrawn) {
    const auto plan = LabelPaintPlan::Make(Plain(), Client, QString(2500, QLatin1Char('a')), 0);
    EXPECT_EQ(plan.runs[0].text.size(), 2000);
}

TEST(LabelPaintPlan, CentreImageWithCrLfGivesNoVerticalCentring) {
    auto look = Plain();
    look.style = LabelTextFlags::SS_CENTERIMAGE;
    EXPECT_EQ(LabelPaintPlan::Make(look, Client, QStringLiteral("a\r\nb"), 5).flags,
              LabelTextFlags::DT_CENTER);
}
