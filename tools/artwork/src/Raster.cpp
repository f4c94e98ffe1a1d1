#include "Raster.h"

#include "Style.h"

#include <QPainter>
#include <QRgb>

#include <algorithm>
#include <cmath>

namespace artwork {

QImage makeImage(int w, int h, int scale, bool opaque) {
    QImage image(w * scale, h * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(opaque ? QColor(255, 255, 255) : QColor(0, 0, 0, 0));
    return image;
}

QColor mix(const QColor& a, const QColor& b, double t) {
    const auto channel = [t](int x, int y) {
        return static_cast<int>(std::lround(x + (y - x) * t));
    };
    return QColor(channel(a.red(), b.red()), channel(a.green(), b.green()),
                  channel(a.blue(), b.blue()), channel(a.alpha(), b.alpha()));
}

QColor withAlpha(const QColor& c, double alpha) {
    QColor out = c;
    out.setAlpha(static_cast<int>(std::lround(std::clamp(alpha, 0.0, 1.0) * 255.0)));
    return out;
}

void fillBand(QImage& image, int scale, const QRect& logical, int bandHeight, int bandRow) {
    const int deviceBand = bandHeight * scale;
    const int x0 = std::max(0, logical.left() * scale);
    const int x1 = std::min(image.width(), (logical.left() + logical.width()) * scale);
    const int y0 = std::max(0, logical.top() * scale);
    const int y1 = std::min(image.height(), (logical.top() + logical.height()) * scale);
    for (int y = y0; y < y1; ++y) {
        const int bandY = y - logical.top() * scale + bandRow * scale;
        const double t = std::clamp((bandY + 0.5) / deviceBand, 0.0, 1.0);
        const QRgb rgb = mix(style::bandTop, style::bandBottom, t).rgba();
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::fill(line + x0, line + x1, rgb);
    }
}

QPainterPath roundedRect(const QRectF& r, double radius) {
    QPainterPath path;
    path.addRoundedRect(r, radius, radius);
    return path;
}

void maskToPath(QImage& image, int scale, const QPainterPath& logicalPath) {
    QImage mask(image.size(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    {
        QPainter p(&mask);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(scale, scale);
        p.fillPath(logicalPath, Qt::black);
    }
    QPainter p(&image);
    p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    p.drawImage(0, 0, mask);
}

QImage cropLogical(const QImage& image, int scale, const QRect& logical) {
    return image.copy(logical.x() * scale, logical.y() * scale, logical.width() * scale,
                      logical.height() * scale);
}

QImage forSaving(const QImage& image) {
    QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    bool opaque = true;
    for (int y = 0; y < argb.height() && opaque; ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(argb.constScanLine(y));
        opaque = std::all_of(line, line + argb.width(), [](QRgb c) { return qAlpha(c) == 255; });
    }
    QImage out = opaque ? argb.convertToFormat(QImage::Format_RGB32) : argb;
    // 96 dots per inch, written out so that nothing of the machine leaks in.
    out.setDotsPerMeterX(3780);
    out.setDotsPerMeterY(3780);
    return out;
}

} // namespace artwork
