#include "toolkit/RoundRectRegion.h"

#include <algorithm>
#include <cmath>

std::vector<int> RoundRectRegion::RowInsets(int height, const QSize& ellipse) {
    std::vector<int> insets(static_cast<std::size_t>(std::max(height, 0)), 0);
    const double rx = ellipse.width() / 2.0;
    const double ry = ellipse.height() / 2.0;
    if (rx <= 0 || ry <= 0)
        return insets;
    const int cornerRows = static_cast<int>(std::ceil(ry));
    for (int row = 0; row < cornerRows && row < height; ++row) {
        // Measured at the middle of the pixel row, from the ellipse's centre.
        const double dy = ry - (row + 0.5);
        const double ratio = std::clamp(1.0 - (dy * dy) / (ry * ry), 0.0, 1.0);
        const int inset = static_cast<int>(std::lround(rx - rx * std::sqrt(ratio)));
        insets[static_cast<std::size_t>(row)] =
            std::max(insets[static_cast<std::size_t>(row)], inset);
        const auto mirrored = static_cast<std::size_t>(height - 1 - row);
        insets[mirrored] = std::max(insets[mirrored], inset);
    }
    return insets;
}

QRegion RoundRectRegion::Make(const QSize& size, const QSize& ellipse) {
    QRegion region;
    const auto insets = RowInsets(size.height(), ellipse);
    // Rows with the same inset are joined into one rectangle, so the region stays small.
    int start = 0;
    for (int row = 1; row <= size.height(); ++row) {
        if (row < size.height() &&
            insets[static_cast<std::size_t>(row)] == insets[static_cast<std::size_t>(start)])
            continue;
        const int inset = insets[static_cast<std::size_t>(start)];
        const int width = size.width() - 2 * inset;
        if (width > 0)
            region += QRect(inset, start, width, row - start);
        start = row;
    }
    return region;
}
