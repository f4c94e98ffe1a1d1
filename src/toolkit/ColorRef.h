#pragma once
// Colours as the program's tables give them: 0x00BBGGRR, red in the low byte. QColor's
// own integer constructor reads 0xAARRGGBB, so these two conversions are the only way a
// table colour should become a QColor.

#include <QColor>

#include <cstdint>

class ColorRef {
public:
    static QColor ToQColor(std::uint32_t colorRef) {
        return QColor(static_cast<int>(colorRef & 0xFF), static_cast<int>((colorRef >> 8) & 0xFF),
                      static_cast<int>((colorRef >> 16) & 0xFF));
    }
    static std::uint32_t FromQColor(const QColor& colour) {
        return static_cast<std::uint32_t>(colour.red()) |
               (static_cast<std::uint32_t>(colour.green()) << 8) |
               (static_cast<std::uint32_t>(colour.blue()) << 16);
    }
};
