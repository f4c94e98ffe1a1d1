#pragma once
// How the trace log is set up at process start, from the machine store's values under
// "SOFTWARE\Velloran\VLQGSAGui": level mask, open mode, size limit and file.

#include "foundation/stdstr.h"

#include <cstdint>

struct TraceSetup {
    static constexpr std::uint32_t DefaultLevel = 5;
    static constexpr int DefaultOpenMode = 1;
    static constexpr std::uint32_t DefaultMaxSize = 0x500000;
    static constexpr std::uint32_t SmallestMaxSize = 0x100000;

    std::uint32_t level = DefaultLevel;
    int openMode = DefaultOpenMode;
    std::uint32_t maxSize = DefaultMaxSize;
    stdstr path;

    // Reads the values; absent ones take their defaults. Never fails.
    static TraceSetup Read();
    // The default file: "QGSAGui.txt" in the temporary folder.
    static stdstr DefaultPath();
};
