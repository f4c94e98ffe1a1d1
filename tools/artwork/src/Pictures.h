// Pictures: the single pictures of the program: the update mark beside the update
// button, the wizard's banner, the taskbar picture of the close warning, and the
// taskbar drawing that the close-warning animation shares with the latter.
#pragma once

#include <QPainter>
#include <QRectF>

namespace artwork {

class ArtworkOutput;

namespace pictures {

// Draws the right end of a taskbar into bar (logical, whole pixels) with three
// notification icons, ours the last before the clock; returns our icon's
// rectangle. With highlight, our icon stands on a light plate, as under a pointer.
QRectF drawTaskbar(QPainter& p, const QRectF& bar, int scale, bool highlight);

void write(ArtworkOutput& out);

} // namespace pictures
} // namespace artwork
