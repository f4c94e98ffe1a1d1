#include "CloseWarnAnimation.h"

#include "ArtworkOutput.h"
#include "ColourQuantiser.h"
#include "GifEncoder.h"
#include "Pictures.h"
#include "Raster.h"
#include "Style.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <array>
#include <cmath>
#include <string>

namespace artwork::closewarnanimation {

namespace {

constexpr double taskbarTop = 96;

struct Scene {
    QPointF pointer{70, 40};
    bool pointerShown = true;
    bool mouseShown = false; // the small mouse that tells which button is pressed
    bool pressed = false;
    bool iconHot = false;
    double ripple = 0; // radius of the click ring, 0 for none
    double menu = 0;   // 0 closed, 1 fully open
};

// The context menu: four items (on, off, open, exit) and two separators.
struct MenuItem {
    double top;
    double height;
    double barWidth;
    bool separator;
    bool disabled;
    bool bold;
};

const QRectF menuRect(96, 12, 100, 82);

std::array<MenuItem, 6> menuItems() {
    const double x = menuRect.top() + 4;
    return {{
        {x, 15, 50, false, true, false},       // turn filtering on: greyed while it is on
        {x + 15, 15, 56, false, false, false}, // turn filtering off
        {x + 30, 7, 0, true, false, false},
        {x + 37, 15, 60, false, false, true}, // open: the default item, bold
        {x + 52, 7, 0, true, false, false},
        {x + 59, 15, 20, false, false, false}, // exit
    }};
}

int itemUnder(const QPointF& pt) {
    if (!menuRect.contains(pt)) {
        return -1;
    }
    const auto items = menuItems();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto& it = items[i];
        if (!it.separator && !it.disabled && pt.y() >= it.top && pt.y() < it.top + it.height) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void drawMenu(QPainter& p, double openness, int hot) {
    p.save();
    // Grows out of its bottom right corner, next to the icon.
    const QPointF anchor = menuRect.bottomRight();
    const double s = 0.82 + 0.18 * openness;
    p.translate(anchor);
    p.scale(s, s);
    p.translate(-anchor);
    p.setOpacity(openness);

    p.setPen(Qt::NoPen);
    for (int i = 3; i >= 1; --i) {
        p.setBrush(withAlpha(Qt::black, 0.05));
        p.drawPath(roundedRect(menuRect.adjusted(-i + 1, -i + 2, i + 1, i + 2), 5 + i));
    }
    p.setPen(QPen(QColor(190, 202, 208), 1.0));
    p.setBrush(Qt::white);
    p.drawPath(roundedRect(menuRect.adjusted(0.5, 0.5, -0.5, -0.5), 5));

    const auto items = menuItems();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto& it = items[i];
        const double left = menuRect.left() + 4;
        const double right = menuRect.right() - 4;
        if (it.separator) {
            p.fillRect(QRectF(left + 2, it.top + 3, right - left - 4, 1), QColor(222, 228, 231));
            continue;
        }
        const bool lit = static_cast<int>(i) == hot;
        if (lit) {
            p.setPen(Qt::NoPen);
            p.setBrush(style::bandTop);
            p.drawPath(roundedRect(QRectF(left, it.top + 1, right - left, it.height - 2), 3));
        }
        QColor ink = it.disabled ? QColor(200, 207, 211) : QColor(86, 97, 106);
        if (it.bold) {
            ink = QColor(40, 48, 54);
        }
        if (lit) {
            ink = Qt::white;
        }
        const double barHeight = it.bold ? 4.0 : 3.0;
        p.setPen(Qt::NoPen);
        p.setBrush(ink);
        p.drawPath(roundedRect(
            QRectF(left + 14, it.top + (it.height - barHeight) / 2, it.barWidth, barHeight),
            barHeight / 2));
    }
    p.restore();
}

void drawPointer(QPainter& p, const QPointF& tip, bool mouseShown, bool pressed) {
    p.save();
    p.translate(tip);
    QPainterPath arrow;
    arrow.moveTo(0, 0);
    arrow.lineTo(0, 14);
    arrow.lineTo(3.6, 10.8);
    arrow.lineTo(6.2, 16.4);
    arrow.lineTo(8.4, 15.4);
    arrow.lineTo(5.8, 9.9);
    arrow.lineTo(10.4, 9.9);
    arrow.closeSubpath();
    p.setPen(QPen(QColor(20, 24, 27), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::white);
    p.drawPath(arrow);

    if (!mouseShown) {
        p.restore();
        return;
    }
    // A small mouse above and left of the pointer, its right button lit while
    // pressed: the menu comes with the right button.
    const QRectF mouse(-22, -25, 11, 15);
    p.setPen(QPen(QColor(20, 24, 27), 1.0));
    p.setBrush(Qt::white);
    p.drawPath(roundedRect(mouse, 4));
    if (pressed) {
        QPainterPath right;
        right.moveTo(mouse.center().x(), mouse.top() + 0.5);
        right.arcTo(QRectF(mouse.left() + 0.5, mouse.top() + 0.5, mouse.width() - 1, 10), 90, -90);
        right.lineTo(mouse.right() - 0.5, mouse.top() + 6);
        right.lineTo(mouse.center().x(), mouse.top() + 6);
        right.closeSubpath();
        p.setPen(Qt::NoPen);
        p.setBrush(style::accent);
        p.drawPath(right);
    }
    p.setPen(QPen(QColor(20, 24, 27), 0.8));
    p.drawLine(QPointF(mouse.left(), mouse.top() + 6), QPointF(mouse.right(), mouse.top() + 6));
    p.drawLine(QPointF(mouse.center().x(), mouse.top()),
               QPointF(mouse.center().x(), mouse.top() + 6));
    p.restore();
}

QImage render(const Scene& scene, int scale) {
    QImage image = makeImage(width, height, scale, true);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    QLinearGradient desk(0, 0, 0, taskbarTop);
    desk.setColorAt(0, QColor(232, 240, 243));
    desk.setColorAt(1, QColor(211, 226, 232));
    p.fillRect(QRectF(0, 0, width, taskbarTop), desk);

    const QRectF icon = pictures::drawTaskbar(p, QRectF(0, taskbarTop, width, height - taskbarTop),
                                              scale, scene.iconHot);
    if (scene.ripple > 0) {
        const double fade = std::clamp(1.0 - scene.ripple / 16.0, 0.0, 1.0);
        p.setPen(QPen(withAlpha(style::accent, 0.9 * fade), 1.6));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(icon.center(), scene.ripple, scene.ripple);
    }
    if (scene.menu > 0) {
        drawMenu(p, scene.menu, scene.menu >= 1 ? itemUnder(scene.pointer) : -1);
    }
    if (scene.pointerShown) {
        drawPointer(p, scene.pointer, scene.mouseShown, scene.pressed);
    }
    return image;
}

double ease(double t) {
    return t < 0.5 ? 2 * t * t : 1 - std::pow(-2 * t + 2, 2) / 2;
}

QPointF lerp(const QPointF& a, const QPointF& b, double t) {
    return a + (b - a) * t;
}

} // namespace

std::vector<TimedFrame> frames(int scale) {
    std::vector<TimedFrame> out;
    const auto add = [&](const Scene& s, int delayCs) {
        out.push_back({render(s, scale), delayCs});
    };

    const QPointF start(62, 38);
    const QPointF onIcon(156, 110);
    const QPointF onOpen(134, menuItems()[3].top + 8);

    Scene s;
    s.pointer = start;
    add(s, 70);
    for (int i = 1; i <= 9; ++i) {
        s.pointer = lerp(start, onIcon, ease(i / 9.0));
        add(s, 4);
    }
    s.iconHot = true;
    s.mouseShown = true;
    add(s, 30);
    s.pressed = true;
    add(s, 25);
    s.pressed = false;
    s.ripple = 7;
    add(s, 5);
    s.ripple = 11;
    s.menu = 0.4;
    add(s, 5);
    s.ripple = 15;
    s.menu = 0.75;
    add(s, 5);
    s.ripple = 0;
    s.menu = 1;
    s.iconHot = false;
    s.mouseShown = false;
    add(s, 60);
    for (int i = 1; i <= 8; ++i) {
        s.pointer = lerp(onIcon, onOpen, ease(i / 8.0));
        add(s, 5);
    }
    add(s, 170);
    s.menu = 0.5;
    add(s, 5);
    s.menu = 0;
    add(s, 70);
    return out;
}

void write(ArtworkOutput& out) {
    ArtworkEntry entry{Family::Animation,
                       "301",
                       {},
                       std::to_string(width) + " x " + std::to_string(height),
                       "a pointer goes to the product's icon in the taskbar, right-clicks it, the "
                       "context menu pops up and the pointer rests on the bold default item; loops",
                       "`OnCloseWarnDlg` animation control 1045"};
    for (int scale : {1, 2}) {
        const auto timed = frames(scale);
        std::vector<QImage> images;
        for (const auto& f : timed) {
            images.push_back(f.image);
        }
        const auto palette = ColourQuantiser::palette(images);
        std::vector<GifFrame> gifFrames;
        for (const auto& f : timed) {
            gifFrames.push_back({ColourQuantiser::map(f.image, palette), f.delayCs});
        }
        const std::string file = scale == 1 ? "animations/301.gif" : "animations/301@2x.gif";
        out.writeFile(file, GifEncoder::encode(width * scale, height * scale, palette, gifFrames));
        entry.files.push_back(file);
    }
    out.add(std::move(entry));
}

} // namespace artwork::closewarnanimation
