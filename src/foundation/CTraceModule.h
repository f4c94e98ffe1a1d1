#pragma once
// The base of every trace sink: a level mask and one operation that writes a piece of a
// line. The process-wide list calls Write twice per line, prefix first, then the message.

#include <atomic>
#include <cstdint>
#include <string_view>

class CTraceModule {
public:
    CTraceModule() = default;
    CTraceModule(const CTraceModule&) = delete;
    CTraceModule& operator=(const CTraceModule&) = delete;
    virtual ~CTraceModule() = default;

    virtual void Write(std::u16string_view text, bool endOfLine) = 0;

    void SetLevel(std::uint32_t mask);
    std::uint32_t GetLevel() const { return m_level.load(std::memory_order_relaxed); }

private:
    // TRACE_ERROR | TRACE_WARN until told otherwise.
    std::atomic<std::uint32_t> m_level{5};
};
