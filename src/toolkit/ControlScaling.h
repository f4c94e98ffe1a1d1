#pragma once
// The sums behind the large-font layout of the dialogs: growing a control by deltas and
// scaling its size or position by a factor. Products are cut toward zero, as the integer
// conversion of the original sums does.

#include <QPoint>
#include <QRect>
#include <QSize>

class ControlScaling {
public:
    // The size changed by the deltas (note the order: rows first), position kept.
    static QRect Grow(const QRect& geometry, int dy, int dx);
    // Width and height multiplied by `factor`, position kept.
    static QRect ScaleSize(const QRect& geometry, double factor);
    // The new position in the parent's client coordinates. With `toClient` the position
    // in client coordinates is multiplied; without, the position on the screen is
    // multiplied and then used as if it were a client position, as the original does.
    static QPoint ScalePos(const QPoint& clientPos, const QPoint& screenPos, double factor,
                           bool toClient);
};
