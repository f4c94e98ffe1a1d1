#include "toolkit/DibButtonLook.h"

DibButtonLook DibButtonLook::Choose(const Pictures& pictures, const Input& state) {
    DibButtonLook look;
    if (!pictures.normal)
        return look;
    if (state.disabled && pictures.disabled) {
        look.picture = Picture::Disabled;
        look.colour = TextColour::Disabled;
    } else if (state.pressed && pictures.pressed) {
        look.drawnPressed = true;
        look.colour = TextColour::Pressed;
        if (state.focused && pictures.focusedPressed) {
            look.picture = Picture::FocusedPressed;
        } else {
            look.picture = Picture::Pressed;
            look.shift = 1;
        }
    } else if (state.hot && pictures.hover) {
        look.picture = Picture::Hover;
        look.colour = TextColour::Hover;
    } else if (state.focused && pictures.focused) {
        look.picture = Picture::Focused;
    } else {
        look.picture = Picture::Normal;
    }
    return look;
}
