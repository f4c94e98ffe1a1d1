#include "toolkit/TabGeometry.h"

QRect TabGeometry::PageRect(const QRect& client, const QSize& firstTab, int rows, unsigned style,
                            int margin, int padding) {
    if (client.width() <= 0 || client.height() <= 0)
        return client;
    // Edges as the window system counts them: right and bottom lie just outside.
    int left = client.left();
    int top = client.top();
    int right = client.left() + client.width();
    int bottom = client.top() + client.height();
    const int itemW = firstTab.width() * rows + padding;
    const int itemH = firstTab.height() * rows + padding;

    const bool below = (style & TabStyleBottom) != 0;
    const bool vertical = (style & TabStyleVertical) != 0;
    if (below && vertical) {
        top += margin;
        left += margin;
        bottom -= margin;
        right -= itemW;
    } else if (below) {
        top += margin;
        left += margin;
        right -= margin;
        bottom -= itemH;
    } else if (vertical) {
        top += margin;
        right -= margin;
        bottom -= margin;
        left += itemW;
    } else {
        left += margin;
        right -= margin;
        bottom -= margin;
        top += itemH;
    }
    return QRect(left, top, right - left, bottom - top);
}
