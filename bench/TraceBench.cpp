// Cost of the trace calls: a call that no sink wants (against an empty call and a plain
// atomic test, the floor), and a line written into a rolling file sink.
#include "foundation/CTraceFileLog.h"
#include "foundation/CTraceModuleList.h"
#include "foundation/Trace.h"
#include "foundation/stdstr.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

std::atomic<std::uint32_t> g_floorMask{TRACE_ERROR};

void BM_Floor_AtomicMaskTest(benchmark::State& state) {
    int value = 42;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        if (g_floorMask.load(std::memory_order_relaxed) & TRACE_DEBUG)
            benchmark::DoNotOptimize(value += 1);
    }
}
BENCHMARK(BM_Floor_AtomicMaskTest);

void BM_TraceFmt_FilteredOut(benchmark::State& state) {
    // One sink that wants errors only, as an installed system runs by default.
    static auto* sink = [] {
        auto log = std::make_unique<CTraceFileLog>(u"/dev/null", false, 1, 0x100000);
        log->SetLevel(TRACE_ERROR | TRACE_WARN);
        return TraceAddModule(std::move(log));
    }();
    benchmark::DoNotOptimize(sink);
    int value = 42;
    const stdstr text(u"CMainDlg::OnTimer");
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        TraceFmt(TRACE_DEBUG, u"%s(%d): refresh of page %d", text, value, value + 1);
    }
}
BENCHMARK(BM_TraceFmt_FilteredOut);

std::string TempFile(const char* name) {
    const char* dir = std::getenv("TMPDIR");
    return std::string(dir && *dir ? dir : "/tmp") + "/" + name + std::to_string(::getpid());
}

void BM_TraceLine_IntoRollingFileSink(benchmark::State& state) {
    const std::string path = TempFile("qg-bench-trace-");
    CTraceModuleList list;
    auto* log = list.Add(
        std::make_unique<CTraceFileLog>(stdstr::toTString(path).c_str(), false, 0, 0x100000));
    log->SetLevel(TRACE_ERROR);
    const stdstr text(u"CRegistry::Open(0x80000002, SOFTWARE\\Velloran\\VLQGSAGui): failed");
    for (auto _ : state)
        list.Dispatch(TRACE_ERROR, text);
    state.SetItemsProcessed(state.iterations());
    ::unlink(path.c_str());
}
BENCHMARK(BM_TraceLine_IntoRollingFileSink);

void BM_TraceLine_FlushedAtEndOfLine(benchmark::State& state) {
    const std::string path = TempFile("qg-bench-trace-flush-");
    CTraceModuleList list;
    auto* log = list.Add(
        std::make_unique<CTraceFileLog>(stdstr::toTString(path).c_str(), true, 0, 0x100000));
    log->SetLevel(TRACE_ERROR);
    const stdstr text(u"CRegistry::Open(0x80000002, SOFTWARE\\Velloran\\VLQGSAGui): failed");
    for (auto _ : state)
        list.Dispatch(TRACE_ERROR, text);
    state.SetItemsProcessed(state.iterations());
    ::unlink(path.c_str());
}
BENCHMARK(BM_TraceLine_FlushedAtEndOfLine)->Iterations(2000);

// The floor for a written line: the same bytes handed to write(2) on a plain file.
void BM_Floor_RawWriteOfALine(benchmark::State& state) {
    const std::string path = TempFile("qg-bench-raw-");
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const std::u16string line =
        u"2026/11/21 01:02:03.456 12345: Error: CRegistry::Open(0x80000002, "
        u"SOFTWARE\\Velloran\\VLQGSAGui): failed\r\n";
    for (auto _ : state) {
        if (::write(fd, line.data(), line.size() * 2) < 0)
            state.SkipWithError("write failed");
    }
    state.SetItemsProcessed(state.iterations());
    ::close(fd);
    ::unlink(path.c_str());
}
BENCHMARK(BM_Floor_RawWriteOfALine);

} // namespace
