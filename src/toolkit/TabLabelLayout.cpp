#include "toolkit/TabLabelLayout.h"

#include <Qt>

TabLabelLayout TabLabelLayout::Compute(const QRect& item, bool selected, bool hasImageList,
                                       bool itemHasImage, bool bottomStyle) {
    TabLabelLayout layout;
    layout.textRect = item;
    if (hasImageList && itemHasImage) {
        int x = item.left();
        int y = 0;
        if (selected) {
            x += 3;
            y = 4;
        } else {
            y = (item.height() - ImageSize) / 2 + (bottomStyle ? 0 : 3);
        }
        layout.drawImage = true;
        layout.imagePos = QPoint(x + 5, item.top() + y);
        layout.textRect.setLeft(x + 26);
    }

    int alignment = Qt::TextSingleLine;
    if (selected) {
        // The selected tab stands taller; its text is moved down into the raised part.
        layout.textRect.setTop(layout.textRect.top() + 3);
        alignment |= Qt::AlignTop;
    } else {
        alignment |= bottomStyle ? Qt::AlignVCenter : Qt::AlignBottom;
    }
    alignment |= hasImageList ? Qt::AlignLeft : Qt::AlignHCenter;
    layout.alignment = alignment;
    return layout;
}

std::vector<TabLabelLayout::Pass> TabLabelLayout::Passes(bool enabled) {
    if (enabled)
        return {{QPoint(0, 0), Colour::ButtonText}};
    return {{QPoint(0, 0), Colour::ButtonHighlight}, {QPoint(-1, -1), Colour::GrayText}};
}
