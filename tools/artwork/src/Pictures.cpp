#include "Pictures.h"

#include "ArtworkOutput.h"
#include "Emblem.h"
#include "Raster.h"
#include "Style.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPen>

#include <cmath>
#include <numbers>

namespace artwork::pictures {

namespace {

const QColor taskbarTop{47, 54, 60};
const QColor taskbarBottom{34, 40, 45};
const QColor trayInk{196, 204, 209};

void drawSpeaker(QPainter& p, const QPointF& c) {
    QPainterPath body;
    body.moveTo(c.x() - 6, c.y() - 2.5);
    body.lineTo(c.x() - 3, c.y() - 2.5);
    body.lineTo(c.x() + 1, c.y() - 6);
    body.lineTo(c.x() + 1, c.y() + 6);
    body.lineTo(c.x() - 3, c.y() + 2.5);
    body.lineTo(c.x() - 6, c.y() + 2.5);
    body.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(trayInk);
    p.drawPath(body);
    p.setPen(QPen(trayInk, 1.2, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(c.x() - 2, c.y() - 4, 8, 8), -50 * 16, 100 * 16);
    p.drawArc(QRectF(c.x() - 4, c.y() - 7, 14, 14), -50 * 16, 100 * 16);
}

void drawNetwork(QPainter& p, const QPointF& c) {
    p.setPen(Qt::NoPen);
    p.setBrush(trayInk);
    for (int i = 0; i < 4; ++i) {
        const double h = 3 + i * 3;
        p.drawRect(QRectF(c.x() - 7 + i * 4, c.y() + 6 - h, 2.5, h));
    }
}

void drawClock(QPainter& p, const QRectF& r) {
    // Two light bars where the time and date would stand.
    p.setPen(Qt::NoPen);
    p.setBrush(trayInk);
    p.drawPath(roundedRect(QRectF(r.left() + 3, r.center().y() - 5, r.width() - 6, 3), 1.5));
    p.setBrush(withAlpha(trayInk, 0.6));
    p.drawPath(roundedRect(QRectF(r.left() + 5, r.center().y() + 2, r.width() - 10, 3), 1.5));
}

QImage drawUpdateMark(int scale) {
    QImage image = makeImage(16, 16, scale, true);
    fillBand(image, scale, QRect(0, 0, 16, 16), style::mainBandHeight, 34);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    // A circular arrow: a turn of the wheel, an update.
    const QPointF c(8, 8);
    const double r = 5.2;
    p.setPen(QPen(Qt::white, 1.6, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(c.x() - r, c.y() - r, 2 * r, 2 * r), 100 * 16, 290 * 16);
    const double end = 100.0 * std::numbers::pi / 180.0;
    const QPointF tip(c.x() + r * std::cos(end), c.y() - r * std::sin(end));
    QPainterPath head;
    head.moveTo(tip.x() + 3.6, tip.y() - 0.2);
    head.lineTo(tip.x() - 0.8, tip.y() - 3.4);
    head.lineTo(tip.x() - 0.6, tip.y() + 3.0);
    head.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawPath(head);
    return image;
}

QImage drawWizardBanner(int scale) {
    constexpr int w = 449;
    constexpr int h = 49;
    QImage image = makeImage(w, h, scale, true);
    fillBand(image, scale, QRect(0, 0, w, h), h, 0);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    p.setPen(Qt::NoPen);
    p.setBrush(withAlpha(Qt::white, 0.06));
    p.drawEllipse(QPointF(372, 6), 58, 58);
    p.setBrush(withAlpha(Qt::white, 0.05));
    p.drawEllipse(QPointF(446, 48), 40, 40);
    p.setBrush(withAlpha(Qt::white, 0.04));
    p.drawEllipse(QPointF(300, 60), 34, 34);
    drawBandMark(p, QRectF(w - 46, 8, 32, 32));
    p.fillRect(QRect(0, h - 2, w, 2), style::accent);
    return image;
}

QImage drawTaskPicture(int scale) {
    constexpr int w = 168;
    constexpr int h = 30;
    QImage image = makeImage(w, h, scale, true);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    drawTaskbar(p, QRectF(0, 0, w, h), scale, true);
    return image;
}

} // namespace

QRectF drawTaskbar(QPainter& p, const QRectF& bar, int scale, bool highlight) {
    p.save();
    QLinearGradient g(0, bar.top(), 0, bar.bottom());
    g.setColorAt(0, taskbarTop);
    g.setColorAt(1, taskbarBottom);
    p.fillRect(bar, g);
    p.fillRect(QRectF(bar.left(), bar.top(), bar.width(), 1), QColor(72, 82, 90));

    const double cy = std::floor(bar.center().y());
    const QRectF clock(bar.right() - 34, bar.top() + 1, 30, bar.height() - 1);
    drawClock(p, clock);
    const QRectF ours(clock.left() - 22, cy - 8, 16, 16);
    drawNetwork(p, QPointF(ours.left() - 14, cy));
    drawSpeaker(p, QPointF(ours.left() - 38, cy));
    if (highlight) {
        p.setPen(QPen(withAlpha(Qt::white, 0.35), 1.0));
        p.setBrush(withAlpha(Qt::white, 0.16));
        p.drawPath(roundedRect(ours.adjusted(-3.5, -3.5, 3.5, 3.5), 4));
    }
    p.drawImage(ours, renderTrayIcon(16 * scale, TrayState::On, 0));
    p.restore();
    return ours;
}

void write(ArtworkOutput& out) {
    out.bitmap("201", 16, 16, drawUpdateMark,
               "update mark: white circular arrow on the caption band",
               "`CMainDlg` picture control 1016, beside the update button");
    out.bitmap("304", 449, 49, drawWizardBanner,
               "wizard banner: caption band with soft circles, the product mark at the right and a "
               "green rule at the foot",
               "`WelcomeWiz` through `BackgroundBmp`");
    out.bitmap("IDB_BMP_TASK_1", 168, 30, drawTaskPicture,
               "right end of a taskbar: speaker, network, the product's tray icon on a light "
               "plate, clock",
               "`OnCloseWarnDlg` picture control (named resource, no number)");
}

} // namespace artwork::pictures
