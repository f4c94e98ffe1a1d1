#pragma once
// What the supervision classes are given instead of reaching for globals: the translated
// text of a string id, and a way to wait. The running program passes the defaults below;
// tests pass their own, so that two minutes of waiting run in milliseconds and every text
// can be compared.

#include "foundation/stdstr.h"

#include <chrono>
#include <cstdint>
#include <functional>

using StringLookup = std::function<stdstr(std::uint32_t id)>;
using SleepFunction = std::function<void(std::chrono::milliseconds duration)>;

// The user's text of string `id` (QGEntString).
stdstr TranslatedString(std::uint32_t id);
// Blocks the calling thread for `duration`.
void SystemSleep(std::chrono::milliseconds duration);
