#pragma once
// The label's gradient background: a number of vertical bands stepping from one colour to
// another in fixed point with 8 fractional bits, as the original computes them.

#include <QColor>
#include <QRect>

#include <vector>

class LabelGradient {
public:
    // How many bands a label's gradient asks for.
    static constexpr int LabelBands = 100;

    struct Band {
        QRect rect;
        QColor colour;
        bool operator==(const Band&) const = default;
    };

    // The bands over `rect` (n cut to its width). Each band is `width / n` pixels wide and
    // the last one reaches the right edge. Each is filled as a rectangle without outline
    // from (left, top) to (right + 1, bottom) would be, which leaves out the last row.
    static std::vector<Band> Bands(const QRect& rect, const QColor& start, const QColor& end,
                                   int n);
};
