#pragma once
// How big the shared dialog fonts are: 8 points, or 7 points on a screen above 96 dots per
// inch, turned into a pixel height with the rounding of the system's MulDiv, so that the
// text keeps about the same height in pixels on either screen.

#include <cstdint>

class DpiFontRule {
public:
    static constexpr int NormalDpi = 96;
    // The dots per inch at which dialogs switch to their large-font layout.
    static constexpr int LargeFontDpi = 120;

    // 8, or 7 above 96 dots per inch.
    static int PointsFor(int dpi) { return dpi > NormalDpi ? 7 : 8; }

    // a * b / c computed in 64 bits and rounded half away from zero; -1 when c is 0.
    static int MulDiv(int a, int b, int c);

    // The logical height of a point font: -MulDiv(points, dpiY, 72). Negative, as it gives
    // the height of the characters rather than of the cell.
    static int LogicalHeight(int points, int dpiY) { return -MulDiv(points, dpiY, 72); }

    // The height for the shared fonts on a screen of this many dots per inch.
    static int DialogFontHeight(int dpiY) { return LogicalHeight(PointsFor(dpiY), dpiY); }
};
