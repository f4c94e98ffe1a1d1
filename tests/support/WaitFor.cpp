#include "support/WaitFor.h"

#include <thread>

namespace TestSupport {

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    auto pause = std::chrono::microseconds(50);
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return condition();
        std::this_thread::sleep_for(pause);
        pause = std::min<std::chrono::microseconds>(pause * 2, std::chrono::milliseconds(20));
    }
    return true;
}

} // namespace TestSupport
