#pragma once
// Whether the main window is shown at start: 1 unless the command line asked for a silent
// start ("-s"). The entry writes it once, before the start-up reads it (the run loop for the
// window, the service wait for its patience); nothing writes it afterwards.

#include <cstdint>

inline std::int32_t ShowMainWindowAtStart = 1;
