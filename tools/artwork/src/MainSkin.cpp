#include "MainSkin.h"

#include "ArtworkOutput.h"
#include "Emblem.h"
#include "Raster.h"
#include "Style.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <string>

namespace artwork::mainskin {

namespace {

constexpr int W = canvasWidth;
constexpr int H = canvasHeight;
constexpr int band = style::mainBandHeight;

// The home-page area of the main window: left 8, right 132, 48 above the bottom,
// 36 high. Clicking it opens the maker's home page.
void drawHomeCard(QPainter& p) {
    const QRectF card(8.5, H - 48 + 0.5, 124 - 1, 36 - 1);
    p.setPen(QPen(style::sidebarRule, 1.0));
    p.setBrush(Qt::white);
    p.drawPath(roundedRect(card, 8));

    // House in a teal disc: the home page.
    const QPointF c(card.left() + 17.5, card.center().y());
    p.setPen(Qt::NoPen);
    p.setBrush(style::bandTop);
    p.drawEllipse(c, 11, 11);
    QPainterPath house;
    house.moveTo(c.x() - 6, c.y() - 0.5);
    house.lineTo(c.x(), c.y() - 6);
    house.lineTo(c.x() + 6, c.y() - 0.5);
    house.lineTo(c.x() + 4.2, c.y() - 0.5);
    house.lineTo(c.x() + 4.2, c.y() + 5.5);
    house.lineTo(c.x() + 1.4, c.y() + 5.5);
    house.lineTo(c.x() + 1.4, c.y() + 2);
    house.lineTo(c.x() - 1.4, c.y() + 2);
    house.lineTo(c.x() - 1.4, c.y() + 5.5);
    house.lineTo(c.x() - 4.2, c.y() + 5.5);
    house.lineTo(c.x() - 4.2, c.y() - 0.5);
    house.closeSubpath();
    p.setBrush(Qt::white);
    p.drawPath(house);

    // Globe, standing for the web, between house and arrow.
    const QPointF g(card.left() + 62, card.center().y());
    QPen line(style::bandTop, 1.3);
    p.setPen(line);
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(g, 8, 8);
    p.drawEllipse(g, 3.4, 8);
    p.drawLine(QPointF(g.x() - 8, g.y()), QPointF(g.x() + 8, g.y()));
    p.drawLine(QPointF(g.x() - 7, g.y() - 4), QPointF(g.x() + 7, g.y() - 4));
    p.drawLine(QPointF(g.x() - 7, g.y() + 4), QPointF(g.x() + 7, g.y() + 4));

    // Arrow out of a box: the link leaves the program.
    const QPointF a(card.right() - 20, card.center().y());
    QPen arrow(withAlpha(style::bandBottom, 0.9), 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(arrow);
    QPainterPath box;
    box.moveTo(a.x() + 1, a.y() - 6);
    box.lineTo(a.x() - 6, a.y() - 6);
    box.lineTo(a.x() - 6, a.y() + 6);
    box.lineTo(a.x() + 6, a.y() + 6);
    box.lineTo(a.x() + 6, a.y() - 1);
    p.drawPath(box);
    QPainterPath head;
    head.moveTo(a.x() - 1, a.y() + 1);
    head.lineTo(a.x() + 7, a.y() - 7);
    head.moveTo(a.x() + 2.5, a.y() - 7);
    head.lineTo(a.x() + 7, a.y() - 7);
    head.lineTo(a.x() + 7, a.y() - 2.5);
    p.drawPath(head);
}

} // namespace

QImage drawCanvas(int scale) {
    QImage image = makeImage(W, H, scale, true);
    {
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(scale, scale);
        p.fillRect(QRect(0, band, sidebarWidth, H - band), style::sidebar);
        p.fillRect(QRect(sidebarWidth, band, 1, H - band), style::sidebarRule);
        drawHomeCard(p);
    }
    fillBand(image, scale, QRect(0, 0, W, band), band, 0);
    {
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(scale, scale);
        drawBandMark(p, QRectF(14, 13, 36, 36));
    }
    maskToPath(image, scale, roundedRect(QRectF(0, 0, W, H), style::mainCornerRadius));
    {
        // Outline: dark teal along the band, grey along the body.
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(scale, scale);
        const QPainterPath outline =
            roundedRect(QRectF(0.5, 0.5, W - 1, H - 1), style::mainCornerRadius - 0.5);
        p.setBrush(Qt::NoBrush);
        p.setClipRect(QRect(0, 0, W, band));
        p.setPen(QPen(style::bandOutline, 1.0));
        p.drawPath(outline);
        p.setClipRect(QRect(0, band, W, H - band));
        p.setPen(QPen(style::bodyOutline, 1.0));
        p.drawPath(outline);
    }
    return image;
}

void write(ArtworkOutput& out) {
    struct Piece {
        int id;
        QRect rect;
        const char* shows;
    };
    // Tiles are cut from the middle of their edge, where the canvas is uniform
    // along the direction of tiling.
    const Piece pieces[] = {
        {208, QRect(0, 0, 292, 69),
         "top left corner: caption band with the product mark, top of the left column"},
        {209, QRect(W - 331, 0, 331, 63),
         "top right corner: caption band under the window buttons, update and help"},
        {268, QRect(0, H - 53, 146, 53),
         "bottom left corner: foot of the left column with the home-page card"},
        {270, QRect(W - 19, H - 19, 19, 19), "bottom right corner: rounded outline"},
        {211, QRect(400, 0, 2, 62), "top edge tile: caption band"},
        {269, QRect(400, H - 7, 2, 7), "bottom edge tile: body and outline"},
        {213, QRect(0, 200, 146, 2), "left edge tile: outline, left column, its rule, body"},
        {214, QRect(W - 6, 200, 6, 2), "right edge tile: body and outline"},
        {215, QRect(0, 69, 146, 24), "piece under the top left corner: left column"},
    };
    const QImage canvas1 = drawCanvas(1);
    const QImage canvas2 = drawCanvas(2);
    for (const auto& piece : pieces) {
        out.bitmap(
            std::to_string(piece.id), piece.rect.width(), piece.rect.height(),
            [&](int scale) {
                return cropLogical(scale == 1 ? canvas1 : canvas2, scale, piece.rect);
            },
            piece.shows, "`CMainDlg` background through `PaintBkgnd`");
    }
}

} // namespace artwork::mainskin
