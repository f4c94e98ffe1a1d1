#pragma once
// Where the pages of the main window stand. The host calls SetPageMetrics once with five
// values whose meaning is this plug-in's (0, 143, 2, 65, 18), and passes the main window's
// whole client size to ResizePage; a page takes the rectangle that these leave:
//   style   0 for pages inside the main window's skin (nothing else is defined)
//   left    the page area's left edge, right of the section buttons
//   gap     the space kept free at the right edge
//   top     the page area's top edge, below the title row
//   bottom  the space kept free at the bottom edge

#include <QRect>

#include <cstdint>

class PageMetrics {
public:
    PageMetrics() = default;
    PageMetrics(std::int32_t style, std::int32_t left, std::int32_t gap, std::int32_t top,
                std::int32_t bottom);

    // The page's rectangle in a main window whose client area is `width` by `height`; never
    // of negative size.
    QRect PageRect(int width, int height) const;

    std::int32_t Style() const { return m_style; }
    std::int32_t Left() const { return m_left; }
    std::int32_t Gap() const { return m_gap; }
    std::int32_t Top() const { return m_top; }
    std::int32_t Bottom() const { return m_bottom; }

private:
    // The values that the host passes, so that a page made before SetPageMetrics stands
    // where it will stand after.
    std::int32_t m_style = 0;
    std::int32_t m_left = 143;
    std::int32_t m_gap = 2;
    std::int32_t m_top = 65;
    std::int32_t m_bottom = 18;
};
