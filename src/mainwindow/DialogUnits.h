#pragma once
// Dialog units to pixels, as the window system lays out a dialog template: a horizontal unit
// is a quarter of the dialog font's average character width and a vertical unit an eighth
// of its height, and every number of a control (x, y, width, height) is converted on its
// own with MulDiv's rounding. With the base units 6 by 13 of an 8-point dialog font at 96
// dots per inch, 521 by 276 units are 782 by 449 pixels.

#include <QRect>

class QFont;

class DialogUnits {
public:
    // The base units of the classic 8-point dialog font at 96 dots per inch.
    static constexpr int ClassicBaseX = 6;
    static constexpr int ClassicBaseY = 13;

    DialogUnits() : DialogUnits(ClassicBaseX, ClassicBaseY) {}
    DialogUnits(int baseX, int baseY) : m_baseX(baseX), m_baseY(baseY) {}

    // The base units of `font`: the width of the 52 letters "A".."Z", "a".."z" measured as
    // one text, and the height of a line.
    static DialogUnits FromFont(const QFont& font);
    // The same from the two measures: (extent / 26 + 1) / 2 wide, `height` high.
    static DialogUnits FromMetrics(int alphabetExtent, int height);

    int BaseX() const { return m_baseX; }
    int BaseY() const { return m_baseY; }

    int ToPixelsX(int units) const;
    int ToPixelsY(int units) const;
    // x and width horizontally, y and height vertically, each rounded on its own.
    QRect ToPixels(const QRect& units) const;

    bool operator==(const DialogUnits&) const = default;

private:
    int m_baseX;
    int m_baseY;
};
