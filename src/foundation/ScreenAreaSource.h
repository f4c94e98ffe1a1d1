#pragma once
// Corvane::ScreenAreaSource: the primary screen as the window system sees it (its geometry,
// the work area that the desktop's panels leave free, its colour depth). This library has
// no window system of its own: the GUI layer installs one source at start, and SystemInfo
// asks it. Without a source nothing is known about the screen.

#include "foundation/Rect.h"

#include <memory>
#include <optional>

namespace Corvane {

struct ScreenArea {
    Rect geometry;
    Rect workArea;
    int bitsPerPixel = 0;
};

class ScreenAreaSource {
public:
    virtual ~ScreenAreaSource() = default;

    // Empty when there is no screen (yet).
    virtual std::optional<ScreenArea> primaryScreen() const = 0;

    // Makes `source` the one that the process asks; null removes it.
    static void install(std::shared_ptr<const ScreenAreaSource> source);
    static std::shared_ptr<const ScreenAreaSource> installed();
};

} // namespace Corvane
