#pragma once
// Which of a bitmap button's six pictures is drawn and in which text colour, the first rule
// that applies winning: disabled, pressed (with its focused twin), hover, focused, normal.
// A state without a picture of its own falls through to the next rule; without a normal
// picture nothing is drawn at all.

#include <cstdint>

class DibButtonLook {
public:
    enum class Picture { None, Normal, Pressed, FocusedPressed, Hover, Disabled, Focused };
    enum class TextColour { Normal, Pressed, Hover, Disabled };

    // Which state records hold a picture.
    struct Pictures {
        bool normal = false;
        bool pressed = false;
        bool focusedPressed = false;
        bool hover = false;
        bool disabled = false;
        bool focused = false;
    };
    struct Input {
        bool disabled = false;
        bool pressed = false;
        bool focused = false;
        bool hot = false;
    };

    Picture picture = Picture::None;
    TextColour colour = TextColour::Normal;
    // Drawn as pressed: the caption takes the pressed offsets.
    bool drawnPressed = false;
    // The pressed picture without its focused twin moves the caption one pixel up and left.
    int shift = 0;

    static DibButtonLook Choose(const Pictures& pictures, const Input& state);
};
