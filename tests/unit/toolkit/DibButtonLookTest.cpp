// Which picture and text colour a bitmap button draws: the first rule that applies wins.

#include "toolkit/DibButtonLook.h"

#include <gtest/gtest.h>

namespace {

using Picture = DibButtonLook::Picture;
using Colour = DibButtonLook::TextColour;

DibButtonLook::Pictures All() {
    DibButtonLook::Pictures p;
    p.normal = p.pressed = p.focusedPressed = p.hover = p.disabled = p.focused = true;
    return p;
}

DibButtonLook::Input State(bool disabled, bool pressed, bool focused, bool hot) {
    DibButtonLook::Input in;
    in.disabled = disabled;
    in.pressed = pressed;
    in.focused = focused;
    in.hot = hot;
    return in;
}

} // namespace

TEST(DibButtonLook, WithoutANormalPictureNothingIsDrawnWhateverTheState) {
    DibButtonLook::Pictures p = All();
    p.normal = false;
    EXPECT_EQ(DibButtonLook::Choose(p, State(false, false, false, false)).picture, Picture::None);
    EXPECT_EQ(DibButtonLook::Choose(p, State(true, true, true, true)).picture, Picture::None);
}

TEST(DibButtonLook, DisabledPictureWinsOverEverything) {
    const auto look = DibButtonLook::Choose(All(), State(true, true, true, true));
    EXPECT_EQ(look.picture, Picture::Disabled);
    EXPECT_EQ(look.colour, Colour::Disabled);
    EXPECT_FALSE(look.drawnPressed);
    EXPECT_EQ(look.shift, 0);
}

TEST(DibButtonLook, DisabledWithoutItsPictureFallsThroughToTheNextRule) {
    DibButtonLook::Pictures p = All();
    p.disabled = false;
    EXPECT_EQ(DibButtonLook::Choose(p, State(true, false, false, true)).picture, Picture::Hover);
    EXPECT_EQ(DibButtonLook::Choose(p, State(true, false, false, false)).picture, Picture::Normal);
}

TEST(DibButtonLook, PressedAndFocusedWithTheTwinUsesItWithoutShift) {
    const auto look = DibButtonLook::Choose(All(), State(false, true, true, false));
    EXPECT_EQ(look.picture, Picture::FocusedPressed);
    EXPECT_EQ(look.colour, Colour::Pressed);
    EXPECT_TRUE(look.drawnPressed);
    EXPECT_EQ(look.shift, 0);
}

TEST(DibButtonLook, PressedWithoutFocusUsesThePressedPictureShiftedByOne) {
    const auto look = DibButtonLook::Choose(All(), State(false, true, false, true));
    EXPECT_EQ(look.picture, Picture::Pressed);
    EXPECT_EQ(look.colour, Colour::Pressed);
    EXPECT_TRUE(look.drawnPressed);
    EXPECT_EQ(look.shift, 1);
}

TEST(DibButtonLook, PressedAndFocusedWithoutTheTwinIsShiftedToo) {
    DibButtonLook::Pictures p = All();
    p.focusedPressed = false;
    const auto look = DibButtonLook::Choose(p, State(false, true, true, false));
    EXPECT_EQ(look.picture, Picture::Pressed);
    EXPECT_EQ(look.shift, 1);
}

TEST(DibButtonLook, PressedWithoutAPressedPictureIsNotDrawnPressed) {
    DibButtonLook::Pictures p = All();
    p.pressed = false;
    const auto look = DibButtonLook::Choose(p, State(false, true, false, true));
    EXPECT_EQ(look.picture, Picture::Hover);
    EXPECT_EQ(look.colour, Colour::Hover);
    EXPECT_FALSE(look.drawnPressed);
    EXPECT_EQ(look.shift, 0);
}

TEST(DibButtonLook, HotWinsOverFocused) {
    const auto look = DibButtonLook::Choose(All(), State(false, false, true, true));
    EXPECT_EQ(look.picture, Picture::Hover);
    EXPECT_EQ(look.colour, Colour::Hover);
}

TEST(DibButtonLook, FocusedPictureKeepsTheNormalColour) {
    const auto look = DibButtonLook::Choose(All(), State(false, false, true, false));
    EXPECT_EQ(look.picture, Picture::Focused);
    EXPECT_EQ(look.colour, Colour::Normal);
}

TEST(DibButtonLook, OnlyTheNormalPictureIsUsedForEveryState) {
    DibButtonLook::Pictures p;
    p.normal = true;
    for (int bits = 0; bits < 16; ++bits) {
        const auto look = DibButtonLook::Choose(
            p, State((bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0));
        EXPECT_EQ(look.picture, Picture::Normal) << bits;
        EXPECT_EQ(look.colour, Colour::Normal) << bits;
        EXPECT_EQ(look.shift, 0) << bits;
    }
}
