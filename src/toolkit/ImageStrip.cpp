#include "toolkit/ImageStrip.h"

QList<QImage> ImageStrip::Split(const QImage& strip, int width, int height, QColor maskColour) {
    QList<QImage> images;
    if (strip.isNull() || width <= 0 || height <= 0)
        return images;
    const QImage source = strip.convertToFormat(QImage::Format_ARGB32);
    const QRgb mask = maskColour.rgb() | 0xFF000000u;
    for (int left = 0; left + width <= source.width(); left += width) {
        QImage image(width, height, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        const int rows = std::min(height, source.height());
        for (int y = 0; y < rows; ++y) {
            const auto* from = reinterpret_cast<const QRgb*>(source.constScanLine(y)) + left;
            auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < width; ++x)
                to[x] = (from[x] | 0xFF000000u) == mask ? qRgba(0, 0, 0, 0) : from[x];
        }
        images.append(image);
    }
    return images;
}
