#pragma once
// Waiting for a condition with a deadline, instead of sleeping for a fixed time.

#include <chrono>
#include <functional>

namespace TestSupport {

// Polls `condition` until it holds or `deadline` has passed; returns its last answer.
bool WaitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds deadline = std::chrono::seconds(10));

} // namespace TestSupport
