#pragma once
// The process-wide trace log: TraceMsg and TraceFmt hand a line to every sink whose mask
// shares a bit with the line's level. A call that no sink wants costs one atomic load.

#include "foundation/Formatter.h"
#include "foundation/TraceLevels.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

class CTraceModule;

namespace TraceDetail {
// The union of the masks of all listed sinks, 0 while tracing is off. Read before anything
// else so that a filtered-out call takes no lock and formats nothing.
extern std::atomic<std::uint32_t> g_wantedLevels;
// Set for good by the destruction of the first file sink: from then on every trace call
// returns at once.
bool TracingOff();
void SetTracingOff();
void DispatchFormatted(std::uint32_t level, const char16_t* format,
                       std::span<const Corvane::FormatArg> args);
} // namespace TraceDetail

// Writes `text` as it stands.
void TraceMsg(std::uint32_t level, std::u16string_view text);

// Composes `format` (at most 32767 characters) and writes it.
template <class... Args>
void TraceFmt(std::uint32_t level, const char16_t* format, const Args&... args) {
    if ((TraceDetail::g_wantedLevels.load(std::memory_order_relaxed) & level) == 0)
        return;
    const auto packed = Corvane::makeFormatArgs(args...);
    TraceDetail::DispatchFormatted(level, format, packed);
}

// Hands a sink to the list, which owns it from then on. A sink already listed is not added
// twice. Returns the sink, or null while tracing is off (the sink is then deleted, since
// nothing would own it).
CTraceModule* TraceAddModule(CTraceModule* module);
template <class Sink>
Sink* TraceAddModule(std::unique_ptr<Sink> module) {
    return static_cast<Sink*>(TraceAddModule(static_cast<CTraceModule*>(module.release())));
}

// The label written for a level: "Error: ", "Warn: ", ..., "None   : " for 0, "Unknown: ".
std::u16string_view TraceLabel(std::uint32_t level);

// Sets up the trace log from the machine store's values under
// "SOFTWARE\Velloran\VLQGSAGui" (the entry calls this first of all).
void SetUpLogging();
