#include "Emblem.h"

#include "Raster.h"
#include "Style.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPen>

#include <cmath>

namespace artwork {

namespace {

int snap(double v) {
    return static_cast<int>(std::lround(v));
}

QRectF tileRect(int px) {
    return QRectF(0, 0, px, px);
}

double tileRadius(int px) {
    return px * 0.22;
}

// Envelope placed on whole pixels, so that its edges stay sharp at 16 pixels.
QRectF envelopeRect(int px) {
    const int left = snap(px * 3.0 / 16.0);
    const int top = snap(px * 4.6 / 16.0);
    const int bottom = px - snap(px * 4.0 / 16.0);
    return QRectF(left, top, px - 2 * left, bottom - top);
}

void fillTile(QPainter& p, int px, const QColor& top, const QColor& bottom) {
    QLinearGradient g(0, 0, 0, px);
    g.setColorAt(0, top);
    g.setColorAt(1, bottom);
    p.fillPath(roundedRect(tileRect(px), tileRadius(px)), g);
    // A faint light rim keeps the tile's outline visible on dark panels.
    QPen rim(withAlpha(Qt::white, 0.22), 1.0);
    p.setPen(rim);
    p.setBrush(Qt::NoBrush);
    p.drawPath(roundedRect(QRectF(0.5, 0.5, px - 1, px - 1), tileRadius(px) - 0.5));
}

void drawScanLight(QPainter& p, int px, int frame) {
    const double centre = px * (frame / 8.0);
    const double half = px * 0.24;
    QLinearGradient g(0, centre - half, 0, centre + half);
    g.setColorAt(0.0, withAlpha(QColor(190, 250, 240), 0.0));
    g.setColorAt(0.5, withAlpha(QColor(190, 250, 240), 0.75));
    g.setColorAt(1.0, withAlpha(QColor(190, 250, 240), 0.0));
    p.fillRect(QRectF(0, centre - half, px, 2 * half), g);
}

} // namespace

void drawEnvelope(QPainter& p, const QRectF& r, const QColor& paper, const QColor& fold,
                  double foldWidth) {
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(paper);
    p.drawPath(roundedRect(r, std::max(0.5, r.height() * 0.1)));
    QPen pen(fold, foldWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    const double inset = foldWidth * 0.5 + r.width() * 0.04;
    QPainterPath flap;
    flap.moveTo(r.left() + inset, r.top() + inset);
    flap.lineTo(r.center().x(), r.top() + r.height() * 0.56);
    flap.lineTo(r.right() - inset, r.top() + inset);
    p.drawPath(flap);
    p.restore();
}

void drawCheckBadge(QPainter& p, const QPointF& centre, double radius, double ring,
                    const QColor& ringColour) {
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(ringColour);
    p.drawEllipse(centre, radius + ring, radius + ring);
    p.setBrush(style::accent);
    p.drawEllipse(centre, radius, radius);
    QPen pen(Qt::white, radius * 0.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    QPainterPath check;
    check.moveTo(centre.x() - radius * 0.45, centre.y() + radius * 0.02);
    check.lineTo(centre.x() - radius * 0.1, centre.y() + radius * 0.38);
    check.lineTo(centre.x() + radius * 0.48, centre.y() - radius * 0.32);
    p.setBrush(Qt::NoBrush);
    p.drawPath(check);
    p.restore();
}

QImage renderTrayIcon(int px, TrayState state, int frame) {
    QImage image = makeImage(px, px, 1, false);
    {
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        const double unit = px / 16.0;
        if (state == TrayState::Off) {
            fillTile(p, px, style::trayOffTop, style::trayOffBottom);
            drawEnvelope(p, envelopeRect(px), QColor(226, 230, 232), QColor(120, 129, 134),
                         1.3 * unit);
        } else {
            fillTile(p, px, style::trayTop, style::trayBottom);
            drawEnvelope(p, envelopeRect(px), Qt::white, style::trayBottom, 1.3 * unit);
            if (state == TrayState::Scanning) {
                drawScanLight(p, px, frame);
            }
        }
    }
    maskToPath(image, 1, roundedRect(tileRect(px), tileRadius(px)));
    if (state == TrayState::Off) {
        // The slash crosses the whole tile, with a dark halo, so that "off" reads
        // at a glance on a light or a dark panel.
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        const double unit = px / 16.0;
        const QPointF a(2.2 * unit, 2.2 * unit);
        const QPointF b(px - 2.2 * unit, px - 2.2 * unit);
        p.setPen(QPen(QColor(70, 76, 80), 3.4 * unit, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(a, b);
        p.setPen(QPen(style::traySlash, 1.8 * unit, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(a, b);
    }
    return image;
}

QImage renderAppIcon(int px) {
    QImage image = makeImage(px, px, 1, false);
    {
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        fillTile(p, px, style::trayTop, style::bandBottom);
        if (px < 24) {
            drawEnvelope(p, envelopeRect(px), Qt::white, style::trayBottom, 1.3 * px / 16.0);
        } else {
            const QRectF env(snap(px * 0.17), snap(px * 0.27), px - 2 * snap(px * 0.17),
                             snap(px * 0.47));
            if (px >= 48) {
                p.setPen(Qt::NoPen);
                p.setBrush(withAlpha(Qt::black, 0.16));
                p.drawPath(roundedRect(env.translated(0, px * 0.025), env.height() * 0.1));
            }
            drawEnvelope(p, env, Qt::white, style::trayBottom, std::max(1.3, px * 0.055));
            drawCheckBadge(p, QPointF(px * 0.73, px * 0.72), px * 0.165, px * 0.045,
                           style::bandBottom);
        }
    }
    maskToPath(image, 1, roundedRect(tileRect(px), tileRadius(px)));
    return image;
}

void drawBandMark(QPainter& p, const QRectF& r) {
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(withAlpha(Qt::black, 0.14));
    p.drawPath(roundedRect(r.translated(0, 1.0), r.width() * 0.22));
    p.setBrush(Qt::white);
    p.drawPath(roundedRect(r, r.width() * 0.22));
    const double w = r.width();
    const QRectF env(r.left() + w * 0.17, r.top() + w * 0.27, w * 0.66, w * 0.47);
    drawEnvelope(p, env, style::bandTop, Qt::white, w * 0.055);
    drawCheckBadge(p, QPointF(r.left() + w * 0.73, r.top() + w * 0.72), w * 0.165, w * 0.045,
                   Qt::white);
    p.restore();
}

} // namespace artwork
