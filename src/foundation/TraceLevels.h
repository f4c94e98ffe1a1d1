#pragma once
// Trace levels: a call names one bit, a sink holds a mask of any bits.

#include <cstdint>

enum TraceLevel : std::uint32_t {
    TRACE_ERROR = 0x00000001,
    TRACE_LOG = 0x00000002,
    TRACE_WARN = 0x00000004,
    TRACE_INFO = 0x00000008,
    TRACE_DEBUG = 0x00000010,
    TRACE_FUNC = 0x00000020,
    TRACE_DETAIL = 0x00000040,
    TRACE_AUDIT = 0x00000080,
    TRACE_PERIODIC = 0x00000100,
    TRACE_PERFORMANCE = 0x00000200,
    // Written without date, thread and label.
    TRACE_RAW = 0x80000000,
};
