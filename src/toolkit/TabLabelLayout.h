#pragma once
// How one tab's label is drawn in its rectangle: where the 16 by 16 image goes, the text's
// rectangle and alignment, and the passes of text (one for an enabled tab; an embossed
// pair, light then grey one pixel up and left, for a disabled one).

#include <QPoint>
#include <QRect>

#include <vector>

class TabLabelLayout {
public:
    enum class Colour { ButtonText, ButtonHighlight, GrayText };
    struct Pass {
        QPoint offset;
        Colour colour;
    };

    bool drawImage = false;
    QPoint imagePos;
    QRect textRect;
    int alignment = 0; // Qt::Alignment and Qt::TextSingleLine

    static constexpr int ImageSize = 16;

    // `hasImageList`: the tab control has images; `itemHasImage`: this tab names one.
    // `bottomStyle`: the tabs are below the pages.
    static TabLabelLayout Compute(const QRect& item, bool selected, bool hasImageList,
                                  bool itemHasImage, bool bottomStyle);
    static std::vector<Pass> Passes(bool enabled);
};
