#pragma once
// Where a point of the main window grabs it. The window has no frame of its own, so this
// supplies one: thin bands along the four sides resize it, a square in each corner resizes
// it diagonally, and a band across the top, three caption heights high, moves it. The rules
// are tried in order and the first that fits wins; the sides come before the corners, so a
// corner only takes effect in the part of its square beyond the side bands.
//
// Coordinates are those of the screen; the client rectangle's right and bottom lie one past
// its last pixel, as a window rectangle's do.

#include <Qt>

class MainDlgHitTest {
public:
    // The hit-test codes, with the window system's numbers.
    enum class Code {
        Client = 1,
        Caption = 2,
        Left = 10,
        Right = 11,
        Top = 12,
        TopLeft = 13,
        TopRight = 14,
        Bottom = 15,
        BottomLeft = 16,
        BottomRight = 17,
    };

    struct Bounds {
        int left;
        int top;
        int right;
        int bottom;
    };

    // The system measures that size the bands, with the values of the classic look at 96 dots
    // per inch that the skin was drawn for: the move band (border, frame and three caption
    // heights, 5 + 57 pixels) ends where the skin's top edge ends, 62 pixels down.
    struct Metrics {
        int borderX = 1;  // SM_CXBORDER
        int frameX = 4;   // SM_CXFRAME
        int borderY = 1;  // SM_CYBORDER
        int frameY = 4;   // SM_CYFRAME
        int caption = 19; // SM_CYCAPTION
        int cornerX = 17; // SM_CXVSCROLL
        int cornerY = 17; // SM_CYHSCROLL
    };

    static Code HitTest(int x, int y, const Bounds& client, const Metrics& metrics);
    // With the classic measures.
    static Code HitTest(int x, int y, const Bounds& client);

    // The window edges that a resize from this code moves; none for the other codes.
    static Qt::Edges EdgesOf(Code code);
    static bool IsResize(Code code) { return EdgesOf(code) != Qt::Edges(); }
};
