#include "toolkit/PaintBkgndLayout.h"

std::vector<PaintBkgndLayout::Placement>
PaintBkgndLayout::Layout(const QSize& window, const std::array<QSize, PieceCount>& pieces) {
    std::vector<Placement> out;
    for (const QSize& piece : pieces) {
        if (piece.width() <= 0 || piece.height() <= 0)
            return out;
    }
    const int W = window.width();
    const int H = window.height();
    const auto at = [&](int piece, int x, int y) {
        out.push_back({piece, QRect(QPoint(x, y), pieces[piece])});
    };

    at(TopLeft, 0, 0);
    at(UnderTopLeft, 0, pieces[TopLeft].height());
    at(TopRight, W - pieces[TopRight].width(), 0);
    at(BottomLeft, 0, H - pieces[BottomLeft].height());
    at(BottomRight, W - pieces[BottomRight].width(), H - pieces[BottomRight].height());

    for (int x = pieces[TopLeft].width(); x < W - pieces[TopRight].width();
         x += pieces[TopEdge].width())
        at(TopEdge, x, 0);
    for (int x = pieces[BottomLeft].width(); x < W - pieces[BottomRight].width();
         x += pieces[BottomEdge].width())
        at(BottomEdge, x, H - pieces[BottomEdge].height());
    for (int y = pieces[TopLeft].height() + pieces[UnderTopLeft].height();
         y < H - pieces[BottomLeft].height(); y += pieces[LeftEdge].height())
        at(LeftEdge, 0, y);
    for (int y = pieces[TopRight].height(); y < H - pieces[BottomRight].height();
         y += pieces[RightEdge].height())
        at(RightEdge, W - pieces[RightEdge].width(), y);
    return out;
}

const std::array<QSize, PaintBkgndLayout::PieceCount>& PaintBkgndLayout::MainWindowPieces() {
    static const std::array<QSize, PieceCount> sizes{
        QSize(292, 69), QSize(331, 63), QSize(146, 53), QSize(19, 19), QSize(2, 62),
        QSize(2, 7),    QSize(146, 2),  QSize(6, 2),    QSize(146, 24)};
    return sizes;
}
