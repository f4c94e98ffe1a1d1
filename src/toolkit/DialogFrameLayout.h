#pragma once
// Where the fourteen pieces of a framed dialog go: the caption strip (two ends, a tile
// between them, the close and help buttons) and the bottom, left and right edges. The
// caption's last tile is moved back to end exactly at the right end; the edge tiles are
// not cut and may run on.

#include <QRect>
#include <QSize>

#include <array>
#include <vector>

class DialogFrameLayout {
public:
    enum Bitmap {
        CaptionLeft = 0,
        CaptionTile = 1,
        CaptionRight = 2,
        RightEdge = 3,
        BottomRight = 4,
        BottomEdge = 5,
        BottomLeft = 6,
        LeftEdge = 7,
        CloseNormal = 8,
        CloseHover = 9,
        ClosePressed = 10,
        HelpNormal = 11,
        HelpHover = 12,
        HelpPressed = 13,
        BitmapCount = 14
    };
    using Sizes = std::array<QSize, BitmapCount>;

    struct Flags {
        bool captionText = true;
        bool closeButton = true;
        bool helpButton = false;
    };

    // What the pointer and the left button are doing, as the frame's state keeps it.
    struct Pointer {
        bool over = false;
        int hit = 0;
        bool down = false;
        int downHit = 0;
    };

    struct Placement {
        int bitmap;
        QRect rect;
        bool operator==(const Placement&) const = default;
    };

    struct Frame {
        // The caption strip: W wide and as high as the caption tile; drawn off screen,
        // then the button and the text over it, then copied to the window at (0, 0).
        QSize captionStrip;
        std::vector<Placement> caption;
        // Empty when the flag is off.
        QRect closeRect;
        QRect helpRect;
        // Drawn straight on the window after the caption.
        std::vector<Placement> edges;
    };

    static Frame Layout(const QSize& window, const Sizes& sizes, const Flags& flags,
                        const Pointer& pointer);

    // The close picture: hover over the button, pressed while held there after a press on
    // it, normal otherwise (also while held after a press elsewhere).
    static int ClosePicture(const Pointer& pointer);
    static int HelpPicture(const Pointer& pointer);

    // The caption text's left edge and top for a text of `textHeight` pixels.
    static constexpr int CaptionTextX = 10;
    static int CaptionTextY(int captionHeight, int textHeight) {
        return (captionHeight - textHeight) / 2;
    }

    // The three measures of the frame: the caption tile's height, the bottom edge tile's
    // height and the left edge tile's width.
    static int CaptionHeight(const Sizes& sizes) { return sizes[CaptionTile].height(); }
    static int BottomHeight(const Sizes& sizes) { return sizes[BottomEdge].height(); }
    static int BorderWidth(const Sizes& sizes) { return sizes[LeftEdge].width(); }

    // The sizes of the dialogs' frame (bitmaps 285, 284, 286, 283, 281, 279, 280, 282,
    // 287, 288, 289), without a help button.
    static const Sizes& DialogPieces();
};
