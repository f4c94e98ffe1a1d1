#pragma once
// One bitmap as a window's background (the wizard's banner): copied at its own size, or
// stretched to the window's width on a screen that is not at 96 dots per inch.

#include <QColor>
#include <QPixmap>
#include <QRect>

#include <cstdint>

class QPainter;
class QWidget;

class BackgroundBmp {
public:
    BackgroundBmp() = default;
    BackgroundBmp(const BackgroundBmp&) = delete;
    BackgroundBmp& operator=(const BackgroundBmp&) = delete;
    virtual ~BackgroundBmp() = default;

    // Where the bitmap goes and whether it is stretched there.
    struct Target {
        QRect rect;
        bool stretch = false;
        bool operator==(const Target&) const = default;
    };

    // The rule: at 96 dots per inch, or without `scale`, the bitmap's own size at (0, 0).
    // Otherwise the client's width, and a height of bitmap height * (dpi / 96) in integer
    // division with `scaleByDpi` (so 120 dots per inch give a factor of 1), or the client's
    // height without it.
    static Target TargetFor(const QSize& client, const QSize& bitmap, int dpi, bool scale,
                            bool scaleByDpi);

    virtual bool Load(std::uint16_t id, qreal devicePixelRatio = 0);
    // Fills the client with `fill` if `doFill`, then draws the bitmap (if any) by the rule,
    // for a screen of `dpi` dots per inch.
    virtual void Draw(QPainter& painter, const QRect& client, QColor fill, bool doFill, bool scale,
                      bool scaleByDpi, int dpi) const;

    // The same for a window: its client rectangle and its screen's dots per inch.
    void Draw(const QWidget& window, QPainter& painter, QColor fill, bool doFill, bool scale,
              bool scaleByDpi) const;

    const QPixmap& Bitmap() const { return m_bitmap; }

private:
    QPixmap m_bitmap;
};
