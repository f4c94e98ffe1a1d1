#include "foundation/CTraceModuleList.h"

#include "foundation/CTraceModule.h"
#include "foundation/SyncObject.h"
#include "foundation/Trace.h"
#include "foundation/stdstr.h"

#include <algorithm>
#include <mutex>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

namespace {

// Lists alive in the process, so that a sink's new mask can reach their filters.
std::mutex& LiveListsLock() {
    static std::mutex lock;
    return lock;
}
std::vector<CTraceModuleList*>& LiveLists() {
    static std::vector<CTraceModuleList*> lists;
    return lists;
}

// Set when the process's list (the one that publishes the trace calls' filter) is destroyed.
std::atomic<bool> g_processListGone{false};

// The wait for the list's lock is bounded so that a trace call can never stop its caller
// for long; after the time-out the line goes out without the lock.
constexpr std::uint32_t ListLockTimeoutMs = 60000;

stdstr LinePrefix(std::uint32_t level) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    tm local{};
    ::localtime_r(&now.tv_sec, &local);
    stdstr prefix;
    prefix.Format(u"%04d/%02d/%02d %02d:%02d:%02d.%03d %05d: ", local.tm_year + 1900,
                  local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                  static_cast<int>(now.tv_nsec / 1000000), static_cast<int>(::gettid()));
    prefix += TraceLabel(level);
    return prefix;
}

} // namespace

std::u16string_view TraceLabel(std::uint32_t level) {
    if (level == 0)
        return u"None   : ";
    // The first bit in this order decides, which is why TRACE_WARN|TRACE_ERROR reads
    // "Error: " and TRACE_INFO|TRACE_LOG reads "Log: ".
    static constexpr struct {
        std::uint32_t bit;
        std::u16string_view label;
    } order[] = {
        {TRACE_ERROR, u"Error: "},       {TRACE_WARN, u"Warn: "},
        {TRACE_AUDIT, u"Audit: "},       {TRACE_PERFORMANCE, u"Performance: "},
        {TRACE_PERIODIC, u"Periodic: "}, {TRACE_FUNC, u"Func: "},
        {TRACE_LOG, u"Log: "},           {TRACE_INFO, u"Info: "},
        {TRACE_DEBUG, u"Debug: "},       {TRACE_DETAIL, u"Detail: "},
    };
    for (const auto& entry : order) {
        if (level & entry.bit)
            return entry.label;
    }
    return u"Unknown: ";
}

CTraceModuleList::CTraceModuleList(std::atomic<std::uint32_t>* publishedLevels)
    : m_published(publishedLevels) {
    std::lock_guard guard(LiveListsLock());
    LiveLists().push_back(this);
}

CTraceModuleList::~CTraceModuleList() {
    if (m_published)
        g_processListGone.store(true, std::memory_order_release);
    {
        std::lock_guard guard(LiveListsLock());
        auto& lists = LiveLists();
        lists.erase(std::remove(lists.begin(), lists.end(), this), lists.end());
    }
    if (m_published)
        m_published->store(0, std::memory_order_relaxed);
    // Sinks go in list order; the first file sink destroyed turns tracing off.
    for (auto& module : m_modules)
        module.reset();
}

CTraceModuleList& CTraceModuleList::Instance() {
    static CTraceModuleList list(&TraceDetail::g_wantedLevels);
    return list;
}

bool CTraceModuleList::ProcessListGone() {
    return g_processListGone.load(std::memory_order_acquire);
}

void CTraceModuleList::LevelsChanged(std::uint32_t mask) {
    std::lock_guard guard(LiveListsLock());
    for (CTraceModuleList* list : LiveLists()) {
        list->m_wanted.fetch_or(mask, std::memory_order_relaxed);
        if (list->m_published && !TraceDetail::TracingOff())
            list->m_published->fetch_or(mask, std::memory_order_relaxed);
    }
}

CTraceModule* CTraceModuleList::Add(CTraceModule* module) {
    if (!module)
        return nullptr;
    Corvane::SyncObject guard(m_mutex, ListLockTimeoutMs);
    if (std::none_of(m_modules.begin(), m_modules.end(),
                     [module](const auto& listed) { return listed.get() == module; }))
        m_modules.emplace_back(module);
    RefreshWanted();
    return module;
}

bool CTraceModuleList::Contains(const CTraceModule* module) {
    Corvane::SyncObject guard(m_mutex, ListLockTimeoutMs);
    return std::any_of(m_modules.begin(), m_modules.end(),
                       [module](const auto& listed) { return listed.get() == module; });
}

void CTraceModuleList::RefreshWanted() {
    // Under the lock that LevelsChanged takes: a union taken before another thread raised a
    // sink's mask must not overwrite the bits that the raise has just published.
    std::lock_guard guard(LiveListsLock());
    std::uint32_t wanted = 0;
    for (const auto& module : m_modules)
        wanted |= module->GetLevel();
    m_wanted.store(wanted, std::memory_order_relaxed);
    if (m_published && !TraceDetail::TracingOff())
        m_published->store(wanted, std::memory_order_relaxed);
}

void CTraceModuleList::Dispatch(std::uint32_t level, std::u16string_view message) {
    Corvane::SyncObject guard(m_mutex, ListLockTimeoutMs);
    auto wants = [level](const std::unique_ptr<CTraceModule>& module) {
        return (module->GetLevel() & level) != 0;
    };
    if (level != 0 && std::none_of(m_modules.begin(), m_modules.end(), wants)) {
        // The filter let this through on stale bits of a lowered mask: tighten it.
        RefreshWanted();
        return;
    }
    if (!(level & TRACE_RAW)) {
        const stdstr prefix = LinePrefix(level);
        for (const auto& module : m_modules) {
            if (wants(module))
                module->Write(prefix, false);
        }
    }
    for (const auto& module : m_modules) {
        if (wants(module))
            module->Write(message, true);
    }
}
