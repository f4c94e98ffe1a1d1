#include "PageMetrics.h"

#include <algorithm>

PageMetrics::PageMetrics(std::int32_t style, std::int32_t left, std::int32_t gap, std::int32_t top,
                         std::int32_t bottom)
    : m_style(style), m_left(std::max(0, left)), m_gap(std::max(0, gap)), m_top(std::max(0, top)),
      m_bottom(std::max(0, bottom)) {}

QRect PageMetrics::PageRect(int width, int height) const {
    const int pageWidth = std::max(0, width - m_left - m_gap);
    const int pageHeight = std::max(0, height - m_top - m_bottom);
    return QRect(m_left, m_top, pageWidth, pageHeight);
}
