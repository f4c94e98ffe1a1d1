#pragma once
// The main window's skin: nine bitmaps laid out by PaintBkgndLayout over a white fill.

#include "toolkit/PaintBkgndLayout.h"

#include <QBrush>
#include <QPixmap>

#include <array>
#include <cstdint>

class QPainter;

class PaintBkgnd {
public:
    // The fill is the white brush of the shared GUI resources.
    explicit PaintBkgnd(QBrush fill = QBrush(Qt::white)) : m_fill(std::move(fill)) {}

    // The nine bitmap ids in the order of PaintBkgndLayout::Piece; 0 or a missing id
    // leaves that piece empty, and then nothing is drawn. `devicePixelRatio` picks the
    // drawings (0: the application's).
    void Load(const std::array<std::uint16_t, PaintBkgndLayout::PieceCount>& ids,
              qreal devicePixelRatio = 0);
    // The ids of the main window: 208, 209, 268, 270, 211, 269, 213, 214, 215.
    static const std::array<std::uint16_t, PaintBkgndLayout::PieceCount>& MainWindowIds();

    // Paints the skin over `rect`, which is taken as starting at (0, 0).
    void Draw(QPainter& painter, const QRect& rect) const;

    // The pieces' layout sizes (empty for a piece that did not load).
    std::array<QSize, PaintBkgndLayout::PieceCount> PieceSizes() const;
    const QPixmap& Piece(int index) const { return m_pieces.at(index); }

private:
    QBrush m_fill;
    std::array<QPixmap, PaintBkgndLayout::PieceCount> m_pieces;
};
