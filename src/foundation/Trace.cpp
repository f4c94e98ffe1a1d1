#include "foundation/Trace.h"

#include "foundation/CTraceModule.h"
#include "foundation/CTraceModuleList.h"
#include "foundation/stdstr.h"

#include <memory>

namespace TraceDetail {

std::atomic<std::uint32_t> g_wantedLevels{0};

namespace {
std::atomic<bool> g_tracingOff{false};
} // namespace

bool TracingOff() {
    return g_tracingOff.load(std::memory_order_acquire);
}

void SetTracingOff() {
    g_tracingOff.store(true, std::memory_order_release);
    g_wantedLevels.store(0, std::memory_order_relaxed);
}

void DispatchFormatted(std::uint32_t level, const char16_t* format,
                       std::span<const Corvane::FormatArg> args) {
    if (TracingOff())
        return;
    // Composed before the lock, so that other threads only wait for the write itself.
    stdstr text;
    text.FormatArgs(format, args);
    CTraceModuleList::Instance().Dispatch(level, text);
}

} // namespace TraceDetail

void TraceMsg(std::uint32_t level, std::u16string_view text) {
    if ((TraceDetail::g_wantedLevels.load(std::memory_order_relaxed) & level) == 0 ||
        TraceDetail::TracingOff())
        return;
    CTraceModuleList::Instance().Dispatch(level, text);
}

CTraceModule* TraceAddModule(CTraceModule* module) {
    // After the list has been destroyed at exit it must not be reached again; every sink it
    // held went with it, so whatever is handed in then is a new one.
    const bool listGone = CTraceModuleList::ProcessListGone();
    if (TraceDetail::TracingOff() || listGone) {
        // Nothing will own a sink handed in now; one already listed stays the list's.
        if (module && (listGone || !CTraceModuleList::Instance().Contains(module)))
            std::unique_ptr<CTraceModule> discarded(module);
        return nullptr;
    }
    return CTraceModuleList::Instance().Add(module);
}
