#pragma once
// The rounded outline of a window: the region that a round-cornered rectangle covers,
// with the corners cut on an ellipse of the given width and height, row by row, as a
// window region is. Used as the widget's mask.

#include <QRegion>
#include <QSize>

#include <vector>

class RoundRectRegion {
public:
    // How many pixels the outline leaves out at the start (and, mirrored, at the end) of
    // each row of a window `height` rows high, for an ellipse of `ellipse` size.
    static std::vector<int> RowInsets(int height, const QSize& ellipse);
    // The region of a `size` window with corners on an `ellipse`.
    static QRegion Make(const QSize& size, const QSize& ellipse);
};
