#include "PanelButtons.h"

#include "ArtworkOutput.h"
#include "Raster.h"
#include "Style.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPen>

#include <string>

namespace artwork::panelbuttons {

namespace {

constexpr int sectionW = 122;
constexpr int sectionH = 31;
constexpr int linkW = 90;
constexpr int linkH = 21;

void fillGradientPlate(QPainter& p, const QRectF& r, double radius, const QColor& top,
                       const QColor& bottom, const QColor& border) {
    QLinearGradient g(0, r.top(), 0, r.bottom());
    g.setColorAt(0, top);
    g.setColorAt(1, bottom);
    p.setPen(QPen(border, 1.0));
    p.setBrush(g);
    p.drawPath(roundedRect(r, radius));
}

const char* stateName(State s) {
    switch (s) {
    case State::Normal:
        return "normal";
    case State::Pressed:
        return "pressed";
    case State::Hover:
        return "hover";
    case State::Disabled:
        return "disabled";
    }
    return "";
}

} // namespace

QImage drawSection(State state, int scale) {
    QImage image = makeImage(sectionW, sectionH, scale, true);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    p.fillRect(QRect(0, 0, sectionW, sectionH), style::sidebar);
    const QRectF plate(0.5, 0.5, sectionW - 1, sectionH - 1);
    if (state == State::Hover) {
        // Dark blue text on white.
        fillGradientPlate(p, plate, 6, Qt::white, QColor(246, 250, 251), QColor(201, 215, 220));
    } else if (state == State::Pressed) {
        // White text on the brand colour: the selected section.
        fillGradientPlate(p, plate, 6, QColor(26, 140, 153), style::bandBottom, style::bandOutline);
        p.setPen(QPen(withAlpha(Qt::white, 0.18), 1.0));
        p.drawLine(QPointF(6, 1.5), QPointF(sectionW - 6, 1.5));
        p.setPen(Qt::NoPen);
        p.setBrush(style::accent);
        p.drawPath(roundedRect(QRectF(3, 8, 3, sectionH - 16), 1.5));
    }
    return image;
}

QImage drawBandLink(State state, int scale) {
    QImage image = makeImage(linkW, linkH, scale, true);
    fillBand(image, scale, QRect(0, 0, linkW, linkH), style::mainBandHeight, 31);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    const QRectF plate(0.5, 0.5, linkW - 1, linkH - 1);
    if (state == State::Hover) {
        // Yellow text on a slightly lighter band.
        p.setPen(QPen(withAlpha(Qt::white, 0.28), 1.0));
        p.setBrush(withAlpha(Qt::white, 0.13));
        p.drawPath(roundedRect(plate, linkH / 2.0));
    } else if (state == State::Pressed) {
        // Black text on a light plate.
        p.setPen(QPen(withAlpha(Qt::white, 0.6), 1.0));
        p.setBrush(QColor(226, 242, 244));
        p.drawPath(roundedRect(plate, linkH / 2.0));
    }
    return image;
}

QImage drawPush(State state, int w, int h, int scale) {
    QImage image = makeImage(w, h, scale, true);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    const QRectF plate(0.5, 0.5, w - 1, h - 1);
    switch (state) {
    case State::Normal:
        fillGradientPlate(p, plate, 4, Qt::white, QColor(235, 240, 242), QColor(168, 184, 191));
        break;
    case State::Hover:
        fillGradientPlate(p, plate, 4, QColor(244, 251, 252), QColor(216, 238, 241),
                          style::trayBottom);
        break;
    case State::Pressed:
        fillGradientPlate(p, plate, 4, QColor(208, 226, 230), QColor(226, 237, 240),
                          style::bandBottom);
        break;
    case State::Disabled:
        fillGradientPlate(p, plate, 4, QColor(247, 248, 249), QColor(247, 248, 249),
                          QColor(221, 227, 230));
        break;
    }
    if (state == State::Normal || state == State::Hover) {
        p.setPen(QPen(withAlpha(Qt::white, 0.9), 1.0));
        p.drawLine(QPointF(4, 1.5), QPointF(w - 4, 1.5));
    }
    return image;
}

void write(ArtworkOutput& out) {
    const std::pair<int, State> sections[] = {
        {256, State::Normal}, {259, State::Pressed}, {260, State::Hover}, {261, State::Disabled}};
    const char* const sectionUse =
        "`CMainDlg` section buttons 1000, 1001, 1002, 1003, 1010, 1017 (`CDibButtonCtrl`, "
        "grouped by `CDibRadioButtonCtrl`)";
    for (const auto& [id, state] : sections) {
        std::string shows = std::string("section button, ") + stateName(state);
        shows += state == State::Pressed ? ": selected, brand colour plate with an accent mark"
                 : state == State::Hover ? ": white plate on the left column"
                                         : ": left column only";
        std::string use = sectionUse;
        use += id == 256   ? " (normal and focused)"
               : id == 259 ? " (pressed and focused-pressed)"
                           : "";
        out.bitmap(
            std::to_string(id), sectionW, sectionH,
            [state = state](int scale) { return drawSection(state, scale); }, shows, use);
    }

    const std::pair<int, State> links[] = {
        {262, State::Hover}, {263, State::Normal}, {264, State::Pressed}};
    for (const auto& [id, state] : links) {
        std::string shows = std::string("caption band link button, ") + stateName(state);
        shows += state == State::Pressed ? ": light pill"
                 : state == State::Hover ? ": translucent pill on the band"
                                         : ": band only";
        std::string use =
            "`CMainDlg` buttons 1009 help, 1008 update, 1012, 1014 (`CDibButtonCtrl`)";
        use += id == 263 ? " (normal, disabled and focused)" : "";
        out.bitmap(
            std::to_string(id), linkW, linkH,
            [state = state](int scale) { return drawBandLink(state, scale); }, shows, use);
    }

    const State order[] = {State::Normal, State::Pressed, State::Hover, State::Disabled};
    for (int i = 0; i < 4; ++i) {
        const State state = order[i];
        out.bitmap(
            std::to_string(275 + i), 78, 24,
            [state](int scale) { return drawPush(state, 78, 24, scale); },
            std::string("push button, ") + stateName(state),
            "OK of `AboutDlg` (1257) and `OnCloseWarnDlg` (1); update button 1266 of "
            "`FreshUpdatePage`; Back, Next, Cancel of `WelcomeWiz` (`CDibButtonCtrl`)");
        out.bitmap(
            std::to_string(291 + i), 117, 26,
            [state](int scale) { return drawPush(state, 117, 26, scale); },
            std::string("wide push button, ") + stateName(state),
            "page-level buttons of the About box pages (`CDibButtonCtrl`)");
    }
}

} // namespace artwork::panelbuttons
