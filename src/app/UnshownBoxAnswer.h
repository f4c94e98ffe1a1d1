#pragma once
// The answer of a box that is not shown, because the window system is not there (before the
// application exists, after it is gone, or while the program takes it down): the answer of
// the box's way out (Cancel, No), or OK for a box that has only OK. The caller goes on as if
// the user had declined.

#include <cstdint>

class UnshownBoxAnswer {
public:
    static int For(std::uint32_t type);
};
