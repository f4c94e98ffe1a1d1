#pragma once
// Where the nine pieces of the main window's skin go for a window of a given size: the
// four corners, the piece under the top left corner, and the four edges tiled between
// them. A last tile is not cut: it may run on past its limit, and the corners are not
// drawn again after it, which is how the original skin behaves at odd sizes.

#include <QRect>
#include <QSize>

#include <array>
#include <vector>

class PaintBkgndLayout {
public:
    // Piece numbers, in the order of their bitmaps.
    enum Piece {
        TopLeft = 0,
        TopRight = 1,
        BottomLeft = 2,
        BottomRight = 3,
        TopEdge = 4,
        BottomEdge = 5,
        LeftEdge = 6,
        RightEdge = 7,
        UnderTopLeft = 8,
        PieceCount = 9
    };

    struct Placement {
        int piece;
        QRect rect;
        bool operator==(const Placement&) const = default;
    };

    // The placements in drawing order (after the white fill of the whole). Empty when a
    // piece has no size, in which case nothing at all is drawn, not even the fill.
    static std::vector<Placement> Layout(const QSize& window,
                                         const std::array<QSize, PieceCount>& pieces);

    // The sizes of the main window's pieces (bitmaps 208, 209, 268, 270, 211, 269, 213,
    // 214, 215), as the artwork draws them.
    static const std::array<QSize, PieceCount>& MainWindowPieces();
};
