#include "GifEncoder.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>

namespace artwork {

namespace {

class BitWriter {
public:
    void put(unsigned code, int bits) {
        acc_ |= static_cast<std::uint32_t>(code) << count_;
        count_ += bits;
        while (count_ >= 8) {
            bytes_.push_back(static_cast<std::uint8_t>(acc_ & 0xffu));
            acc_ >>= 8;
            count_ -= 8;
        }
    }
    std::vector<std::uint8_t> finish() {
        if (count_ > 0) {
            bytes_.push_back(static_cast<std::uint8_t>(acc_ & 0xffu));
        }
        acc_ = 0;
        count_ = 0;
        return std::move(bytes_);
    }

private:
    std::vector<std::uint8_t> bytes_;
    std::uint32_t acc_ = 0;
    int count_ = 0;
};

void put16(std::vector<std::uint8_t>& out, int v) {
    out.push_back(static_cast<std::uint8_t>(v & 0xff));
    out.push_back(static_cast<std::uint8_t>((v >> 8) & 0xff));
}

struct Rect {
    int x, y, w, h;
};

// Smallest rectangle holding every pixel that differs; empty when none does.
Rect changedRect(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b, int width,
                 int height) {
    int x0 = width, y0 = height, x1 = -1, y1 = -1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto i = static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                           static_cast<std::size_t>(x);
            if (a[i] != b[i]) {
                x0 = std::min(x0, x);
                y0 = std::min(y0, y);
                x1 = std::max(x1, x);
                y1 = std::max(y1, y);
            }
        }
    }
    if (x1 < 0) {
        return {0, 0, 0, 0};
    }
    return {x0, y0, x1 - x0 + 1, y1 - y0 + 1};
}

} // namespace

std::vector<std::uint8_t> GifEncoder::lzw(const std::vector<std::uint8_t>& indices,
                                          int minCodeSize) {
    const unsigned clear = 1u << minCodeSize;
    const unsigned end = clear + 1;
    BitWriter out;
    std::unordered_map<std::uint32_t, unsigned> table;
    int codeSize = minCodeSize + 1;
    unsigned next = end + 1;
    out.put(clear, codeSize);
    if (indices.empty()) {
        out.put(end, codeSize);
        return out.finish();
    }
    unsigned prefix = indices[0];
    for (std::size_t i = 1; i < indices.size(); ++i) {
        const std::uint8_t k = indices[i];
        const std::uint32_t key = (static_cast<std::uint32_t>(prefix) << 8) | k;
        const auto found = table.find(key);
        if (found != table.end()) {
            prefix = found->second;
            continue;
        }
        out.put(prefix, codeSize);
        if (next < 4096) {
            table.emplace(key, next++);
            // The decoder adds its entry one code later than we do, so it widens
            // its codes when our next free code is one past the power of two.
            if (next > (1u << codeSize) && codeSize < 12) {
                ++codeSize;
            }
        } else {
            out.put(clear, codeSize);
            table.clear();
            codeSize = minCodeSize + 1;
            next = end + 1;
        }
        prefix = k;
    }
    out.put(prefix, codeSize);
    out.put(end, codeSize);
    return out.finish();
}

std::vector<std::uint8_t> GifEncoder::encode(int width, int height,
                                             const std::vector<QRgb>& palette,
                                             const std::vector<GifFrame>& frames) {
    if (palette.empty() || palette.size() > 256 || frames.empty()) {
        throw std::invalid_argument("GIF needs 1 to 256 colours and at least one frame");
    }
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    for (const auto& f : frames) {
        if (f.indices.size() != pixels) {
            throw std::invalid_argument("GIF frame of the wrong size");
        }
    }

    // Merge runs of equal frames into one, adding up their delays.
    std::vector<GifFrame> kept;
    for (const auto& f : frames) {
        if (!kept.empty() && kept.back().indices == f.indices) {
            kept.back().delayCs += f.delayCs;
        } else {
            kept.push_back(f);
        }
    }

    std::vector<std::uint8_t> out{'G', 'I', 'F', '8', '9', 'a'};
    put16(out, width);
    put16(out, height);
    out.push_back(0xF7); // global colour table of 256 entries, 8 bits per primary
    out.push_back(0);    // background colour index
    out.push_back(0);    // no aspect ratio
    for (std::size_t i = 0; i < 256; ++i) {
        const QRgb c = i < palette.size() ? palette[i] : qRgb(0, 0, 0);
        out.push_back(static_cast<std::uint8_t>(qRed(c)));
        out.push_back(static_cast<std::uint8_t>(qGreen(c)));
        out.push_back(static_cast<std::uint8_t>(qBlue(c)));
    }
    // Loop for ever.
    const std::uint8_t loop[] = {0x21, 0xFF, 0x0B, 'N', 'E',  'T',  'S',  'C',  'A', 'P',
                                 'E',  '2',  '.',  '0', 0x03, 0x01, 0x00, 0x00, 0x00};
    out.insert(out.end(), std::begin(loop), std::end(loop));

    for (std::size_t n = 0; n < kept.size(); ++n) {
        const GifFrame& f = kept[n];
        Rect r{0, 0, width, height};
        if (n > 0) {
            r = changedRect(kept[n - 1].indices, f.indices, width, height);
        }
        // Graphic control: leave the frame in place for the next one to draw on.
        out.insert(out.end(), {0x21, 0xF9, 0x04, 0x04});
        put16(out, std::clamp(f.delayCs, 0, 65535));
        out.push_back(0);
        out.push_back(0);
        // Image descriptor, no local colour table, not interlaced.
        out.push_back(0x2C);
        put16(out, r.x);
        put16(out, r.y);
        put16(out, r.w);
        put16(out, r.h);
        out.push_back(0);
        std::vector<std::uint8_t> sub;
        sub.reserve(static_cast<std::size_t>(r.w) * static_cast<std::size_t>(r.h));
        for (int y = r.y; y < r.y + r.h; ++y) {
            const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
            sub.insert(sub.end(), f.indices.begin() + static_cast<std::ptrdiff_t>(row + r.x),
                       f.indices.begin() + static_cast<std::ptrdiff_t>(row + r.x + r.w));
        }
        out.push_back(8);
        const std::vector<std::uint8_t> data = lzw(sub, 8);
        for (std::size_t i = 0; i < data.size(); i += 255) {
            const std::size_t len = std::min<std::size_t>(255, data.size() - i);
            out.push_back(static_cast<std::uint8_t>(len));
            out.insert(out.end(), data.begin() + static_cast<std::ptrdiff_t>(i),
                       data.begin() + static_cast<std::ptrdiff_t>(i + len));
        }
        out.push_back(0);
    }
    out.push_back(0x3B);
    return out;
}

} // namespace artwork
