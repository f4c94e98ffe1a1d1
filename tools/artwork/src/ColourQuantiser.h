// ColourQuantiser: reduces the frames of an animation to one shared palette of at
// most 256 colours (median cut over all frames together) and maps each frame to
// palette indices. Deterministic: the same frames give the same palette.
#pragma once

#include <QImage>
#include <QRgb>

#include <cstdint>
#include <vector>

namespace artwork {

class ColourQuantiser {
public:
    // Palette for all the frames (opaque colours; alpha is ignored).
    static std::vector<QRgb> palette(const std::vector<QImage>& frames,
                                     std::size_t maxColours = 256);

    // Index of the nearest palette colour for every pixel, row by row.
    static std::vector<std::uint8_t> map(const QImage& frame, const std::vector<QRgb>& palette);
};

} // namespace artwork
