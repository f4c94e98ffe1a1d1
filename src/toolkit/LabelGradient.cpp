#include "toolkit/LabelGradient.h"

#include <algorithm>

std::vector<LabelGradient::Band> LabelGradient::Bands(const QRect& rect, const QColor& start,
                                                      const QColor& end, int n) {
    std::vector<Band> bands;
    const int width = rect.width();
    n = std::min(n, width);
    const int divisor = std::max(n, 1);
    const int stepR = ((end.red() - start.red()) * 256) / divisor;
    const int stepG = ((end.green() - start.green()) * 256) / divisor;
    const int stepB = ((end.blue() - start.blue()) * 256) / divisor;
    const int bandWidth = width / divisor;
    int r = start.red() * 256;
    int g = start.green() * 256;
    int b = start.blue() * 256;
    // Right and bottom are exclusive here, as in the original's rectangles.
    const int rectRight = rect.left() + width;
    const int bottom = rect.top() + rect.height();
    int left = rect.left();
    for (int i = 0; i < n; ++i) {
        const int right = i == n - 1 ? rectRight : left + bandWidth;
        // A rectangle drawn with no pen to (right + 1, bottom) covers up to right - 1 and
        // bottom - 2.
        const QRect band(QPoint(left, rect.top()), QPoint(right - 1, bottom - 2));
        bands.push_back({band, QColor(r >> 8, g >> 8, b >> 8)});
        r += stepR;
        g += stepG;
        b += stepB;
        left = right;
    }
    return bands;
}
