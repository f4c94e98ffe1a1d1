// Where one tab's image and text go, and how a disabled tab's text is embossed.

#include "toolkit/TabLabelLayout.h"

#include <gtest/gtest.h>

namespace {
const QRect Item(10, 2, 80, 24);
constexpr int Single = Qt::TextSingleLine;
using Colour = TabLabelLayout::Colour;
} // namespace

TEST(TabLabelLayout, WithoutImagesAnUnselectedTabCentresItsTextAtTheBottom) {
    const auto l = TabLabelLayout::Compute(Item, false, false, false, false);
    EXPECT_FALSE(l.drawImage);
    EXPECT_EQ(l.textRect, Item);
    EXPECT_EQ(l.alignment, Single | Qt::AlignBottom | Qt::AlignHCenter);
}

TEST(TabLabelLayout, WithTabsBelowAnUnselectedTabCentresItsTextVertically) {
    const auto l = TabLabelLayout::Compute(Item, false, false, false, true);
    EXPECT_EQ(l.textRect, Item);
    EXPECT_EQ(l.alignment, Single | Qt::AlignVCenter | Qt::AlignHCenter);
}

TEST(TabLabelLayout, SelectedTabHasItsTextThreeDownFromTheTop) {
    const auto l = TabLabelLayout::Compute(Item, true, false, false, false);
    EXPECT_EQ(l.textRect, QRect(10, 5, 80, 21));
    EXPECT_EQ(l.alignment, Single | Qt::AlignTop | Qt::AlignHCenter);
}

TEST(TabLabelLayout, SelectedTabWithAnImageMovesRightByThree) {
    const auto l = TabLabelLayout::Compute(Item, true, true, true, false);
    EXPECT_TRUE(l.drawImage);
    EXPECT_EQ(l.imagePos, QPoint(18, 6));                        // x + 3 + 5, top + 4
    EXPECT_EQ(l.textRect, QRect(QPoint(39, 5), QPoint(89, 25))); // x + 3 + 26
    EXPECT_EQ(l.alignment, Single | Qt::AlignTop | Qt::AlignLeft);
}

TEST(TabLabelLayout, UnselectedTabWithAnImageCentresItThreeLower) {
    const auto l = TabLabelLayout::Compute(Item, false, true, true, false);
    EXPECT_EQ(l.imagePos, QPoint(15, 9)); // (24 - 16) / 2 + 3
    EXPECT_EQ(l.textRect.left(), 36);
    EXPECT_EQ(l.textRect.top(), 2);
    EXPECT_EQ(l.alignment, Single | Qt::AlignBottom | Qt::AlignLeft);
}

TEST(TabLabelLayout, UnselectedTabBelowWithAnImageCentresItExactly) {
    const auto l = TabLabelLayout::Compute(Item, false, true, true, true);
    EXPECT_EQ(l.imagePos, QPoint(15, 6));
    EXPECT_EQ(l.alignment, Single | Qt::AlignVCenter | Qt::AlignLeft);
}

TEST(TabLabelLayout, TabWithoutImageInAControlWithImagesIsNotCentred) {
    const auto l = TabLabelLayout::Compute(Item, false, true, false, false);
    EXPECT_FALSE(l.drawImage);
    EXPECT_EQ(l.textRect, Item);
    EXPECT_EQ(l.alignment, Single | Qt::AlignBottom | Qt::AlignLeft);
}

TEST(TabLabelLayout, EnabledTabIsDrawnOnceInButtonText) {
    const auto passes = TabLabelLayout::Passes(true);
    ASSERT_EQ(passes.size(), 1u);
    EXPECT_EQ(passes[0].offset, QPoint(0, 0));
    EXPECT_EQ(passes[0].colour, Colour::ButtonText);
}

TEST(TabLabelLayout, DisabledTabIsDrawnLightThenGreyOnePixelUpAndLeft) {
    const auto passes = TabLabelLayout::Passes(false);
    ASSERT_EQ(passes.size(), 2u);
    EXPECT_EQ(passes[0].offset, QPoint(0, 0));
    EXPECT_EQ(passes[0].colour, Colour::ButtonHighlight);
    EXPECT_EQ(passes[1].offset, QPoint(-1, -1));
    EXPECT_EQ(passes[1].colour, Colour::GrayText);
}
