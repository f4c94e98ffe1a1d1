#include "foundation/TaskbarPlacement.h"

#include <array>
#include <cstdint>

namespace Corvane {

std::optional<TaskbarPlacement::Panel> TaskbarPlacement::panelOf(const ScreenArea& area) {
    const Rect& g = area.geometry;
    const Rect& w = area.workArea;
    const std::array<Panel, 4> strips{{
        {Bottom, Rect{g.left, w.bottom, g.right, g.bottom}},
        {Top, Rect{g.left, g.top, g.right, w.top}},
        {Left, Rect{g.left, g.top, w.left, g.bottom}},
        {Right, Rect{w.right, g.top, g.right, g.bottom}},
    }};
    std::optional<Panel> largest;
    std::int64_t largestArea = 0;
    for (const Panel& strip : strips) {
        if (strip.rect.width() <= 0 || strip.rect.height() <= 0)
            continue;
        const std::int64_t size =
            static_cast<std::int64_t>(strip.rect.width()) * strip.rect.height();
        if (size > largestArea) {
            largestArea = size;
            largest = strip;
        }
    }
    return largest;
}

Rect TaskbarPlacement::notifyAreaBeside(const Panel& panel) {
    const Rect& bar = panel.rect;
    if (panel.edge == Top || panel.edge == Bottom)
        return Rect{bar.right - 100, bar.top, bar.right - 16, bar.bottom};
    return Rect{bar.left, bar.bottom - 100, bar.right, bar.bottom - 16};
}

Rect TaskbarPlacement::cornerOf(const Rect& workArea) {
    return Rect{workArea.right - 150, workArea.bottom - 30, workArea.right, workArea.bottom};
}

} // namespace Corvane
