// GifEncoder: writes a looping GIF89a animation from palette-indexed frames of
// one size, with LZW compression. After the first frame only the rectangle that
// changed is stored, and a frame equal to the one before lengthens that one.
#pragma once

#include <QRgb>

#include <cstdint>
#include <vector>

namespace artwork {

struct GifFrame {
    std::vector<std::uint8_t> indices; // width * height palette indices, row by row
    int delayCs = 10;                  // how long it stays, in hundredths of a second
};

class GifEncoder {
public:
    static std::vector<std::uint8_t> encode(int width, int height, const std::vector<QRgb>& palette,
                                            const std::vector<GifFrame>& frames);

    // LZW code stream of the GIF format for indices with the given minimum code
    // size, packed into bytes (least significant bit first), without sub-blocks.
    static std::vector<std::uint8_t> lzw(const std::vector<std::uint8_t>& indices, int minCodeSize);
};

} // namespace artwork
