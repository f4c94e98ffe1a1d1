#include "CaptionButtons.h"

#include "ArtworkOutput.h"
#include "Raster.h"
#include "Style.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <cmath>
#include <string>

namespace artwork::captionbuttons {

namespace {

// Glyphs are drawn in a 9 by 9 box whose lines fall on pixel centres.
void drawGlyph(QPainter& p, Glyph glyph, const QPointF& topLeft, const QColor& colour) {
    const double x = topLeft.x();
    const double y = topLeft.y();
    QPen pen(colour, 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    p.setBrush(Qt::NoBrush);
    switch (glyph) {
    case Glyph::Minimise:
        pen.setWidthF(1.2);
        p.setPen(pen);
        p.drawLine(QPointF(x, y + 4.5), QPointF(x + 9, y + 4.5));
        break;
    case Glyph::Maximise:
        p.setPen(pen);
        p.drawRect(QRectF(x + 0.5, y + 0.5, 8, 8));
        p.drawLine(QPointF(x + 0.5, y + 1.5), QPointF(x + 8.5, y + 1.5));
        break;
    case Glyph::Restore: {
        p.setPen(pen);
        p.drawRect(QRectF(x + 0.5, y + 2.5, 6, 6));
        QPainterPath back;
        back.moveTo(x + 2.5, y + 2.5);
        back.lineTo(x + 2.5, y + 0.5);
        back.lineTo(x + 8.5, y + 0.5);
        back.lineTo(x + 8.5, y + 6.5);
        back.lineTo(x + 6.5, y + 6.5);
        p.drawPath(back);
        break;
    }
    case Glyph::Close:
        pen.setWidthF(1.25);
        pen.setCapStyle(Qt::RoundCap);
        p.setPen(pen);
        p.drawLine(QPointF(x + 0.5, y + 0.5), QPointF(x + 8.5, y + 8.5));
        p.drawLine(QPointF(x + 8.5, y + 0.5), QPointF(x + 0.5, y + 8.5));
        break;
    }
}

QImage drawButton(Glyph glyph, State state, int scale, int w, int h, int bandHeight, int bandRow) {
    QImage image = makeImage(w, h, scale, true);
    fillBand(image, scale, QRect(0, 0, w, h), bandHeight, bandRow);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    const QRectF plate(1, 1, w - 2, h - 2);
    const bool close = glyph == Glyph::Close;
    p.setPen(Qt::NoPen);
    if (state == State::Hover) {
        p.setBrush(close ? style::closeHover : withAlpha(Qt::white, 0.2));
        p.drawPath(roundedRect(plate, 4));
    } else if (state == State::Pressed) {
        p.setBrush(close ? style::closePressed : withAlpha(Qt::black, 0.24));
        p.drawPath(roundedRect(plate, 4));
    }
    const QColor ink = state == State::Disabled ? withAlpha(Qt::white, 0.38) : QColor(Qt::white);
    const QPointF box(std::floor((w - 9) / 2.0), std::floor((h - 9) / 2.0));
    drawGlyph(p, glyph, box, ink);
    return image;
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

QImage drawMainButton(Glyph glyph, State state, int scale) {
    return drawButton(glyph, state, scale, 21, 18, style::mainBandHeight, 5);
}

QImage drawDialogClose(State state, int scale) {
    return drawButton(Glyph::Close, state, scale, 21, 21, style::dialogBandHeight, 11);
}

void write(ArtworkOutput& out) {
    struct Set {
        int firstId;
        Glyph glyph;
        const char* name;
        const char* control;
    };
    // Ids in the order the buttons take them: normal, pressed, hover, disabled.
    const Set sets[] = {
        {240, Glyph::Minimise, "minimise", "1005"},
        {244, Glyph::Maximise, "maximise", "1006"},
        {248, Glyph::Close, "close", "1007"},
        {252, Glyph::Restore, "restore", "1011"},
    };
    const State order[] = {State::Normal, State::Pressed, State::Hover, State::Disabled};
    for (const auto& set : sets) {
        for (int i = 0; i < 4; ++i) {
            const State state = order[i];
            const int id = set.firstId + i;
            std::string usedBy =
                std::string("`CMainDlg` caption button ") + set.control + " (`CDibButtonCtrl`)";
            if (id == 254) {
                usedBy +=
                    "; also loaded by `QuillgateGUIRes` (`m_hBitmap254`, source of `m_hImageList`)";
            }
            out.bitmap(
                std::to_string(id), 21, 18,
                [&](int scale) { return drawMainButton(set.glyph, state, scale); },
                std::string(set.name) + " button, " + stateName(state) +
                    ": white glyph on the caption band",
                usedBy);
        }
    }
    const std::pair<int, State> closes[] = {
        {287, State::Normal}, {288, State::Hover}, {289, State::Pressed}};
    for (const auto& [id, state] : closes) {
        out.bitmap(
            std::to_string(id), 21, 21,
            [state = state](int scale) { return drawDialogClose(state, scale); },
            std::string("dialog close button, ") + stateName(state) +
                ": white cross on the caption band",
            "`CCustomDrawDialogImp` close button of `AboutDlg` and `OnCloseWarnDlg` "
            "(loaded, not drawn, by `CQGStatusDlg`)");
    }
}

} // namespace artwork::captionbuttons
