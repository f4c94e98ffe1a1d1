#pragma once
// The list of trace sinks. It owns its sinks and hands each line to those whose mask shares
// a bit with the line's level, prefix and message under one lock so that lines of different
// threads never mix. The process has one such list (Instance); tests may make their own.

#include "foundation/Mutex.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

class CTraceModule;

class CTraceModuleList {
public:
    // `publishedLevels`, when given, is kept equal to (or a superset of) the union of the
    // sinks' masks, for the trace calls' lock-free filter.
    explicit CTraceModuleList(std::atomic<std::uint32_t>* publishedLevels = nullptr);
    ~CTraceModuleList();
    CTraceModuleList(const CTraceModuleList&) = delete;
    CTraceModuleList& operator=(const CTraceModuleList&) = delete;

    static CTraceModuleList& Instance();
    // True once the process's list has been destroyed at exit: from then on Instance() must
    // not be called.
    static bool ProcessListGone();
    // Called when a sink's mask changes: the new bits open the filter of every live list
    // (a superset is harmless; the exact test happens under the lock).
    static void LevelsChanged(std::uint32_t mask);

    // Takes ownership of `module` unless it is listed already. Returns it.
    CTraceModule* Add(CTraceModule* module);
    template <class Sink>
    Sink* Add(std::unique_ptr<Sink> module) {
        return static_cast<Sink*>(Add(static_cast<CTraceModule*>(module.release())));
    }
    void Dispatch(std::uint32_t level, std::u16string_view message);
    std::uint32_t WantedLevels() const { return m_wanted.load(std::memory_order_relaxed); }
    bool Contains(const CTraceModule* module);

private:
    void RefreshWanted();

    std::vector<std::unique_ptr<CTraceModule>> m_modules;
    Corvane::Mutex m_mutex{nullptr};
    std::atomic<std::uint32_t> m_wanted{0};
    std::atomic<std::uint32_t>* m_published;
};
