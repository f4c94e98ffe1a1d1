#include "toolkit/ControlScaling.h"

namespace {
int Scaled(int value, double factor) {
    return static_cast<int>(value * factor);
}
} // namespace

QRect ControlScaling::Grow(const QRect& geometry, int dy, int dx) {
    return QRect(geometry.topLeft(), QSize(geometry.width() + dx, geometry.height() + dy));
}

QRect ControlScaling::ScaleSize(const QRect& geometry, double factor) {
    return QRect(geometry.topLeft(),
                 QSize(Scaled(geometry.width(), factor), Scaled(geometry.height(), factor)));
}

QPoint ControlScaling::ScalePos(const QPoint& clientPos, const QPoint& screenPos, double factor,
                                bool toClient) {
    const QPoint from = toClient ? clientPos : screenPos;
    return QPoint(Scaled(from.x(), factor), Scaled(from.y(), factor));
}
