#include "toolkit/CMemoryDC.h"

CMemoryDC::CMemoryDC(QPainter& target, const QRect& rect, qreal devicePixelRatio)
    : m_target(target), m_rect(rect),
      m_bitmap(QSize(qMax(1, qCeil(rect.width() * devicePixelRatio)),
                     qMax(1, qCeil(rect.height() * devicePixelRatio)))) {
    m_bitmap.setDevicePixelRatio(devicePixelRatio);
    m_bitmap.fill(Qt::transparent);
    m_painter.begin(&m_bitmap);
    m_painter.translate(-rect.topLeft());
}

CMemoryDC::~CMemoryDC() {
    m_painter.end();
    if (!m_rect.isEmpty())
        m_target.drawPixmap(m_rect.topLeft(), m_bitmap);
}
