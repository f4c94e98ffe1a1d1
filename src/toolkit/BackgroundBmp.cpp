#include "toolkit/BackgroundBmp.h"

#include "toolkit/DpiFontRule.h"
#include "toolkit/ResourceStore.h"

#include <QPainter>
#include <QWidget>

BackgroundBmp::Target BackgroundBmp::TargetFor(const QSize& client, const QSize& bitmap, int dpi,
                                               bool scale, bool scaleByDpi) {
    if (!scale || dpi == DpiFontRule::NormalDpi)
        return {QRect(QPoint(0, 0), bitmap), false};
    const int height =
        scaleByDpi ? bitmap.height() * (dpi / DpiFontRule::NormalDpi) : client.height();
    return {QRect(0, 0, client.width(), height), true};
}

bool BackgroundBmp::Load(std::uint16_t id, qreal devicePixelRatio) {
    m_bitmap = ResourceStore::Bitmap(id, devicePixelRatio);
    return !m_bitmap.isNull();
}

void BackgroundBmp::Draw(QPainter& painter, const QRect& client, QColor fill, bool doFill,
                         bool scale, bool scaleByDpi, int dpi) const {
    if (doFill)
        painter.fillRect(client, fill);
    if (m_bitmap.isNull())
        return;
    const Target target =
        TargetFor(client.size(), m_bitmap.deviceIndependentSize().toSize(), dpi, scale, scaleByDpi);
    const QRect rect = target.rect.translated(client.topLeft());
    if (target.stretch)
        painter.drawPixmap(rect, m_bitmap);
    else
        painter.drawPixmap(rect.topLeft(), m_bitmap);
}

void BackgroundBmp::Draw(const QWidget& window, QPainter& painter, QColor fill, bool doFill,
                         bool scale, bool scaleByDpi) const {
    Draw(painter, window.rect(), fill, doFill, scale, scaleByDpi, window.logicalDpiX());
}
