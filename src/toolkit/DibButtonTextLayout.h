#pragma once
// Where a bitmap button's caption stands, from the normal picture's size and the measured
// text. Positions are the top left of each text cell. One line sits a little above the
// middle (4/9 of the free height); two lines share the height evenly. The pressed look
// moves the text by the caller's offsets, the second line only sideways.

#include "toolkit/DibButtonLook.h"

class DibButtonTextLayout {
public:
    struct Params {
        int align = -1; // -1 left, 0 centred, anything else right-weighted
        int xOffset = 0;
        int pressedDx = 0;
        int pressedDy = 0;
        int suffixGap = 0;
    };
    struct Metrics {
        int bitmapWidth = 0;
        int bitmapHeight = 0;
        int lineWidth = 0;    // caption with its suffix
        int lineHeight = 0;   // height of the caption's font
        int captionWidth = 0; // caption alone, where the suffix starts
        bool hasSecondLine = false;
        int secondWidth = 0;
        int secondHeight = 0;
    };

    int x = 0;
    int y = 0;
    int suffixX = 0;
    int secondX = 0;
    int secondY = 0;

    static DibButtonTextLayout Place(const Params& params, const Metrics& metrics,
                                     const DibButtonLook& look);
    // The left edge of a line `textWidth` wide in a picture `bitmapWidth` wide.
    static int LineX(int align, int xOffset, int bitmapWidth, int textWidth);
};
