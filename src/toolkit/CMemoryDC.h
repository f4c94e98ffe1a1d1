#pragma once
// A painter on an off-screen picture of one rectangle, copied to the real target in one
// piece when it goes out of scope: whatever is drawn and drawn over in between (a white
// fill under a skin, a button under its text) is never seen on the screen.

#include <QPainter>
#include <QPixmap>
#include <QRect>

class CMemoryDC {
public:
    // `target` must be active. `rect` is in the target's logical coordinates; the memory
    // painter uses the same coordinates (its origin is moved to the rectangle's corner),
    // at `devicePixelRatio` pixels per logical pixel.
    CMemoryDC(QPainter& target, const QRect& rect, qreal devicePixelRatio);
    ~CMemoryDC();
    CMemoryDC(const CMemoryDC&) = delete;
    CMemoryDC& operator=(const CMemoryDC&) = delete;

    QPainter& dc() { return m_painter; }
    const QRect& rect() const { return m_rect; }

private:
    QPainter& m_target;
    QRect m_rect;
    QPixmap m_bitmap;
    QPainter m_painter;
};
