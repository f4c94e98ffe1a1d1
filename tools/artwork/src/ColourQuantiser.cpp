#include "ColourQuantiser.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>

namespace artwork {

namespace {

struct Bin {
    std::array<int, 3> c;
    std::uint64_t count;
};

struct Box {
    std::size_t begin;
    std::size_t end;
};

int channel(QRgb rgb, int i) {
    return i == 0 ? qRed(rgb) : i == 1 ? qGreen(rgb) : qBlue(rgb);
}

// Widest channel of a box and its range.
std::pair<int, int> widest(const std::vector<Bin>& bins, const Box& box) {
    int bestAxis = 0;
    int bestRange = -1;
    for (int axis = 0; axis < 3; ++axis) {
        int lo = 255;
        int hi = 0;
        for (std::size_t i = box.begin; i < box.end; ++i) {
            lo = std::min(lo, bins[i].c[axis]);
            hi = std::max(hi, bins[i].c[axis]);
        }
        if (hi - lo > bestRange) {
            bestRange = hi - lo;
            bestAxis = axis;
        }
    }
    return {bestAxis, bestRange};
}

// A box stands for its dominant colour when that colour is most of it, so that
// large flat areas (white, the band) keep their exact colour; else its mean.
QRgb representative(const std::vector<Bin>& bins, const Box& box) {
    std::uint64_t total = 0;
    std::array<std::uint64_t, 3> sum{};
    const Bin* top = &bins[box.begin];
    for (std::size_t i = box.begin; i < box.end; ++i) {
        total += bins[i].count;
        for (int a = 0; a < 3; ++a) {
            sum[a] += bins[i].count * static_cast<std::uint64_t>(bins[i].c[a]);
        }
        if (bins[i].count > top->count) {
            top = &bins[i];
        }
    }
    if (top->count * 2 > total) {
        return qRgb(top->c[0], top->c[1], top->c[2]);
    }
    const auto mean = [&](int a) { return static_cast<int>((sum[a] + total / 2) / total); };
    return qRgb(mean(0), mean(1), mean(2));
}

} // namespace

std::vector<QRgb> ColourQuantiser::palette(const std::vector<QImage>& frames,
                                           std::size_t maxColours) {
    std::map<QRgb, std::uint64_t> histogram;
    for (const QImage& frame : frames) {
        const QImage rgb = frame.convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < rgb.height(); ++y) {
            const auto* line = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
            for (int x = 0; x < rgb.width(); ++x) {
                ++histogram[line[x] | 0xff000000u];
            }
        }
    }
    std::vector<Bin> bins;
    bins.reserve(histogram.size());
    for (const auto& [rgb, count] : histogram) {
        bins.push_back({{qRed(rgb), qGreen(rgb), qBlue(rgb)}, count});
    }
    if (bins.size() <= maxColours) {
        std::vector<QRgb> out;
        for (const auto& b : bins) {
            out.push_back(qRgb(b.c[0], b.c[1], b.c[2]));
        }
        return out;
    }

    std::vector<Box> boxes{{0, bins.size()}};
    while (boxes.size() < maxColours) {
        // Split the box with the most pixels times spread; ties go to the first.
        std::size_t pick = boxes.size();
        double bestScore = 0;
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            if (boxes[i].end - boxes[i].begin < 2) {
                continue;
            }
            std::uint64_t count = 0;
            for (std::size_t j = boxes[i].begin; j < boxes[i].end; ++j) {
                count += bins[j].count;
            }
            const double score = static_cast<double>(count) * widest(bins, boxes[i]).second;
            if (score > bestScore) {
                bestScore = score;
                pick = i;
            }
        }
        if (pick == boxes.size()) {
            break;
        }
        Box box = boxes[pick];
        const int axis = widest(bins, box).first;
        std::sort(bins.begin() + static_cast<std::ptrdiff_t>(box.begin),
                  bins.begin() + static_cast<std::ptrdiff_t>(box.end),
                  [axis](const Bin& a, const Bin& b) {
                      return a.c[axis] != b.c[axis] ? a.c[axis] < b.c[axis] : a.c < b.c;
                  });
        std::uint64_t total = 0;
        for (std::size_t j = box.begin; j < box.end; ++j) {
            total += bins[j].count;
        }
        std::uint64_t running = 0;
        std::size_t cut = box.begin + 1;
        for (std::size_t j = box.begin; j < box.end - 1; ++j) {
            running += bins[j].count;
            cut = j + 1;
            if (running * 2 >= total) {
                break;
            }
        }
        boxes[pick] = {box.begin, cut};
        boxes.push_back({cut, box.end});
    }
    std::vector<QRgb> out;
    for (const Box& box : boxes) {
        out.push_back(representative(bins, box));
    }
    return out;
}

std::vector<std::uint8_t> ColourQuantiser::map(const QImage& frame,
                                               const std::vector<QRgb>& palette) {
    const QImage rgb = frame.convertToFormat(QImage::Format_RGB32);
    std::vector<std::uint8_t> out;
    out.reserve(static_cast<std::size_t>(rgb.width()) * static_cast<std::size_t>(rgb.height()));
    std::unordered_map<QRgb, std::uint8_t> cache;
    for (int y = 0; y < rgb.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
        for (int x = 0; x < rgb.width(); ++x) {
            const QRgb c = line[x] | 0xff000000u;
            auto it = cache.find(c);
            if (it == cache.end()) {
                std::size_t best = 0;
                long bestDistance = -1;
                for (std::size_t i = 0; i < palette.size(); ++i) {
                    long d = 0;
                    for (int a = 0; a < 3; ++a) {
                        const long delta = channel(c, a) - channel(palette[i], a);
                        d += delta * delta;
                    }
                    if (bestDistance < 0 || d < bestDistance) {
                        bestDistance = d;
                        best = i;
                    }
                }
                it = cache.emplace(c, static_cast<std::uint8_t>(best)).first;
            }
            out.push_back(it->second);
        }
    }
    return out;
}

} // namespace artwork
