#pragma once
// The trace sink that writes lines to a rolling UTF-16 file. Destroying one turns tracing
// off for the rest of the process: it happens at exit, when nothing may trace any more.

#include "foundation/CLogTextFile.h"
#include "foundation/CTraceModule.h"
#include "foundation/CriticalSection.h"

#include <cstdint>

class CTraceFileLog : public CTraceModule {
public:
    // Limits below this are not sensible for a log and are replaced by DefaultMaxSize.
    static constexpr std::uint32_t SmallestMaxSize = 10241;
    static constexpr std::uint32_t DefaultMaxSize = 0x500000;

    CTraceFileLog(const char16_t* path, bool flushAtEndOfLine, int openMode, std::uint32_t maxSize);
    ~CTraceFileLog() override;

    void Write(std::u16string_view text, bool endOfLine) override;

    bool IsOpen() const { return m_file.isOpen(); }
    std::uint32_t GetMaxSize() const { return m_file.GetMaxSize(); }

private:
    Corvane::CriticalSection m_lock;
    CLogTextFile m_file;
    bool m_flushAtEndOfLine;
};
