#pragma once
// The primary screen for the foundation's system enquiry (Corvane::ScreenAreaSource), read
// from the window system each time it is asked: the screen's geometry, the work area that
// the desktop's panels leave free, and its colour depth. Asked on the GUI thread.

#include "foundation/ScreenAreaSource.h"

class QtScreenAreaSource : public Corvane::ScreenAreaSource {
public:
    std::optional<Corvane::ScreenArea> primaryScreen() const override;
};
