#include "toolkit/PaintBkgnd.h"

#include "toolkit/ResourceStore.h"

#include <QPainter>

void PaintBkgnd::Load(const std::array<std::uint16_t, PaintBkgndLayout::PieceCount>& ids,
                      qreal devicePixelRatio) {
    for (std::size_t i = 0; i < ids.size(); ++i)
        m_pieces[i] = ids[i] != 0 ? ResourceStore::Bitmap(ids[i], devicePixelRatio) : QPixmap();
}

const std::array<std::uint16_t, PaintBkgndLayout::PieceCount>& PaintBkgnd::MainWindowIds() {
    static const std::array<std::uint16_t, PaintBkgndLayout::PieceCount> ids{
        208, 209, 268, 270, 211, 269, 213, 214, 215};
    return ids;
}

std::array<QSize, PaintBkgndLayout::PieceCount> PaintBkgnd::PieceSizes() const {
    std::array<QSize, PaintBkgndLayout::PieceCount> sizes;
    for (std::size_t i = 0; i < m_pieces.size(); ++i)
        sizes[i] = m_pieces[i].isNull() ? QSize() : m_pieces[i].deviceIndependentSize().toSize();
    return sizes;
}

void PaintBkgnd::Draw(QPainter& painter, const QRect& rect) const {
    const QSize window = rect.size();
    const auto placements = PaintBkgndLayout::Layout(window, PieceSizes());
    if (placements.empty())
        return;
    painter.save();
    painter.translate(rect.topLeft());
    painter.fillRect(QRect(QPoint(0, 0), window), m_fill);
    // The corner pieces carry alpha only outside the window's rounded outline, which the
    // window's mask cuts away; over the white fill they look the same either way.
    for (const auto& placement : placements)
        painter.drawPixmap(placement.rect.topLeft(), m_pieces[placement.piece]);
    painter.restore();
}
