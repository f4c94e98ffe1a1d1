#pragma once
// Corvane::Rect: a rectangle as the system's geometry rules are told: left and top inside,
// right and bottom one past the last pixel, like a Windows RECT.

#include <cstdint>

namespace Corvane {

struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    std::int32_t width() const { return right - left; }
    std::int32_t height() const { return bottom - top; }
    bool operator==(const Rect&) const = default;
};

} // namespace Corvane
