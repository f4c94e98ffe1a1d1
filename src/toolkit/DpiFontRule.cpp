#include "toolkit/DpiFontRule.h"

#include <cstdint>
#include <limits>

int DpiFontRule::MulDiv(int a, int b, int c) {
    if (c == 0)
        return -1;
    const std::int64_t product = static_cast<std::int64_t>(a) * b;
    const bool negative = (product < 0) != (c < 0);
    const std::int64_t magnitude = product < 0 ? -product : product;
    const std::int64_t divisor = c < 0 ? -static_cast<std::int64_t>(c) : c;
    std::int64_t result = (magnitude + divisor / 2) / divisor;
    if (result > std::numeric_limits<int>::max())
        return -1;
    return static_cast<int>(negative ? -result : result);
}
