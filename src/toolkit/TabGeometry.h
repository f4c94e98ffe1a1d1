#pragma once
// Where a tab control puts its pages: inside its client rectangle, clear of the row of tabs
// on whichever side the tab style puts them, with a small margin on the other three sides.

#include <QRect>
#include <QSize>

class TabGeometry {
public:
    // Style bits of the tab control: tabs below, tabs at the side (left, or right together
    // with TabStyleBottom).
    static constexpr unsigned TabStyleBottom = 0x0002;
    static constexpr unsigned TabStyleVertical = 0x0080;
    static constexpr int DefaultMargin = 2;
    static constexpr int DefaultPadding = 4;

    // `firstTab` is the size of the first tab and `rows` the number of rows of tabs; the tab
    // side gives up rows times the tab's extent plus the padding. An empty client stays so.
    static QRect PageRect(const QRect& client, const QSize& firstTab, int rows, unsigned style,
                          int margin = DefaultMargin, int padding = DefaultPadding);
};
