#pragma once
// Corvane::TaskbarPlacement: where the desktop's panel (the taskbar) and its notification
// area are taken to be. A panel is the strip that the work area leaves free at one edge of
// the screen; with several, the largest counts. The notification area is guessed from the
// panel as the taskbar's was: at the panel's far end, 16 pixels in, 84 long. Without a
// panel it is the last 150 by 30 pixels of the work area.

#include "foundation/Rect.h"
#include "foundation/ScreenAreaSource.h"

#include <optional>

namespace Corvane {

class TaskbarPlacement {
public:
    // The edges as the taskbar reports them.
    enum Edge : int { Left = 0, Top = 1, Right = 2, Bottom = 3 };

    struct Panel {
        int edge = Bottom;
        Rect rect;
    };

    // The largest strip between the screen's geometry and its work area, none when the work
    // area covers the screen. Equal strips are taken in the order bottom, top, left, right.
    static std::optional<Panel> panelOf(const ScreenArea& area);
    static Rect notifyAreaBeside(const Panel& panel);
    static Rect cornerOf(const Rect& workArea);
};

} // namespace Corvane
