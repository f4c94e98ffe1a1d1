#include "toolkit/DialogFrameLayout.h"

#include "toolkit/DialogFrameState.h"

namespace {

void Tile(std::vector<DialogFrameLayout::Placement>& out, int bitmap, const QSize& size,
          bool horizontal, int from, int limit, int fixed) {
    const int step = horizontal ? size.width() : size.height();
    if (step <= 0)
        return;
    for (int pos = from; pos < limit; pos += step)
        out.push_back({bitmap, horizontal ? QRect(QPoint(pos, fixed), size)
                                          : QRect(QPoint(fixed, pos), size)});
}

} // namespace

int DialogFrameLayout::ClosePicture(const Pointer& pointer) {
    if (pointer.over && pointer.hit == DialogFrameState::HitClose) {
        if (!pointer.down)
            return CloseHover;
        return pointer.downHit == DialogFrameState::HitClose ? ClosePressed : CloseNormal;
    }
    return CloseNormal;
}

int DialogFrameLayout::HelpPicture(const Pointer& pointer) {
    if (pointer.over && pointer.hit == DialogFrameState::HitHelp) {
        if (!pointer.down)
            return HelpHover;
        return pointer.downHit == DialogFrameState::HitHelp ? HelpPressed : HelpNormal;
    }
    return HelpNormal;
}

DialogFrameLayout::Frame DialogFrameLayout::Layout(const QSize& window, const Sizes& sizes,
                                                   const Flags& flags, const Pointer& pointer) {
    Frame frame;
    const int W = window.width();
    const int H = window.height();
    const int captionHeight = sizes[CaptionTile].height();
    frame.captionStrip = QSize(W, captionHeight);

    frame.caption.push_back({CaptionLeft, QRect(QPoint(0, 0), sizes[CaptionLeft])});
    frame.caption.push_back(
        {CaptionRight, QRect(QPoint(W - sizes[CaptionRight].width(), 0), sizes[CaptionRight])});
    const int tileWidth = sizes[CaptionTile].width();
    const int limit = W - sizes[CaptionRight].width();
    if (tileWidth > 0) {
        for (int x = sizes[CaptionLeft].width(); x < limit; x += tileWidth) {
            // The last tile is moved back so that it ends exactly at the right end.
            const int left = x + tileWidth > limit ? limit - tileWidth : x;
            frame.caption.push_back({CaptionTile, QRect(QPoint(left, 0), sizes[CaptionTile])});
        }
    }

    if (flags.closeButton) {
        const int picture = ClosePicture(pointer);
        const QSize size = sizes[picture];
        const int y = (captionHeight - size.height()) / 2;
        frame.closeRect = QRect(QPoint(W - y - size.width(), y), size);
        frame.caption.push_back({picture, frame.closeRect});
    }
    if (flags.helpButton) {
        const int picture = HelpPicture(pointer);
        const QSize size = sizes[picture];
        const int y = (captionHeight - size.height()) / 2;
        const int shift = sizes[ClosePicture(pointer)].width() + 2;
        frame.helpRect = QRect(QPoint(W - y - size.width() - shift, y), size);
        frame.caption.push_back({picture, frame.helpRect});
    }

    auto& edges = frame.edges;
    edges.push_back(
        {BottomLeft, QRect(QPoint(0, H - sizes[BottomLeft].height()), sizes[BottomLeft])});
    edges.push_back(
        {BottomRight, QRect(QPoint(W - sizes[BottomRight].width(), H - sizes[BottomRight].height()),
                            sizes[BottomRight])});
    Tile(edges, BottomEdge, sizes[BottomEdge], true, sizes[BottomLeft].width(),
         W - sizes[BottomRight].width(), H - sizes[BottomEdge].height());
    Tile(edges, LeftEdge, sizes[LeftEdge], false, sizes[CaptionLeft].height(),
         H - sizes[BottomLeft].height(), 0);
    Tile(edges, RightEdge, sizes[RightEdge], false, sizes[CaptionRight].height(),
         H - sizes[BottomRight].height(), W - sizes[RightEdge].width());
    return frame;
}

const DialogFrameLayout::Sizes& DialogFrameLayout::DialogPieces() {
    static const Sizes sizes{QSize(17, 44), QSize(3, 44),  QSize(17, 44), QSize(2, 6),
                             QSize(17, 16), QSize(11, 16), QSize(17, 16), QSize(2, 6),
                             QSize(21, 21), QSize(21, 21), QSize(21, 21), QSize(),
                             QSize(),       QSize()};
    return sizes;
}
