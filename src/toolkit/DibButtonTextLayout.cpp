#include "toolkit/DibButtonTextLayout.h"

int DibButtonTextLayout::LineX(int align, int xOffset, int bitmapWidth, int textWidth) {
    if (align == -1)
        return xOffset;
    if (align == 0)
        return (bitmapWidth - textWidth) / 2 + xOffset;
    return (bitmapWidth - textWidth) * 9 / 10 - xOffset;
}

DibButtonTextLayout DibButtonTextLayout::Place(const Params& params, const Metrics& metrics,
                                               const DibButtonLook& look) {
    DibButtonTextLayout layout;
    const int top = metrics.hasSecondLine
                        ? (metrics.bitmapHeight - metrics.lineHeight - metrics.secondHeight) / 2
                        : (metrics.bitmapHeight - metrics.lineHeight) * 4 / 9;
    const int dx = look.drawnPressed ? params.pressedDx : 0;
    const int dy = look.drawnPressed ? params.pressedDy : 0;

    layout.x = LineX(params.align, params.xOffset, metrics.bitmapWidth, metrics.lineWidth) -
               look.shift + dx;
    layout.y = top - look.shift + dy;
    layout.suffixX = layout.x + metrics.captionWidth + params.suffixGap;
    if (metrics.hasSecondLine) {
        layout.secondX =
            LineX(params.align, params.xOffset, metrics.bitmapWidth, metrics.secondWidth) -
            look.shift + dx;
        layout.secondY = top + metrics.lineHeight - look.shift;
    }
    return layout;
}
