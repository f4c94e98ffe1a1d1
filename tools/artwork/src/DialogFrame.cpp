#include "DialogFrame.h"

#include "ArtworkOutput.h"
#include "Raster.h"
#include "Style.h"

#include <QPainter>
#include <QPen>

#include <string>

namespace artwork::dialogframe {

namespace {

constexpr int W = 240;
constexpr int H = 120;
constexpr int band = style::dialogBandHeight;

const char* const users =
    "`CCustomDrawDialogImp` frame of `AboutDlg`, `OnCloseWarnDlg` and `CQGStatusDlg`";

} // namespace

QImage drawCanvas(int scale) {
    QImage image = makeImage(W, H, scale, true);
    fillBand(image, scale, QRect(0, 0, W, band), band, 0);
    maskToPath(image, scale, roundedRect(QRectF(0, 0, W, H), style::dialogCornerRadius));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    const QPainterPath outline =
        roundedRect(QRectF(0.5, 0.5, W - 1, H - 1), style::dialogCornerRadius - 0.5);
    p.setBrush(Qt::NoBrush);
    p.setClipRect(QRect(0, 0, W, band));
    p.setPen(QPen(style::bandOutline, 1.0));
    p.drawPath(outline);
    p.setClipRect(QRect(0, band, W, H - band));
    p.setPen(QPen(style::bodyOutline, 1.0));
    p.drawPath(outline);
    return image;
}

void write(ArtworkOutput& out) {
    struct Piece {
        int id;
        QRect rect;
        const char* shows;
    };
    const Piece pieces[] = {
        {285, QRect(0, 0, 17, 44), "caption left end: band with the rounded top left corner"},
        {284, QRect(120, 0, 3, 44), "caption tile: band"},
        {286, QRect(W - 17, 0, 17, 44),
         "caption right end: band with the rounded top right corner"},
        {283, QRect(W - 2, 60, 2, 6), "right edge tile: body and outline"},
        {281, QRect(W - 17, H - 16, 17, 16), "bottom right corner: body, rounded outline"},
        {279, QRect(120, H - 16, 11, 16), "bottom edge tile: body and outline"},
        {280, QRect(0, H - 16, 17, 16), "bottom left corner: body, rounded outline"},
        {282, QRect(0, 60, 2, 6), "left edge tile: outline and body"},
    };
    const QImage canvas1 = drawCanvas(1);
    const QImage canvas2 = drawCanvas(2);
    for (const auto& piece : pieces) {
        std::string usedBy = users;
        if (piece.id == 282) {
            usedBy +=
                "; also loaded by `QuillgateGUIRes` (`m_hBitmap282`, source of `m_hImageList16`)";
        }
        out.bitmap(
            std::to_string(piece.id), piece.rect.width(), piece.rect.height(),
            [&](int scale) {
                return cropLogical(scale == 1 ? canvas1 : canvas2, scale, piece.rect);
            },
            piece.shows, usedBy);
    }
}

} // namespace artwork::dialogframe
