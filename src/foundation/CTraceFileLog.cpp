#include "foundation/CTraceFileLog.h"

#include "foundation/SyncLock.h"
#include "foundation/Trace.h"

CTraceFileLog::CTraceFileLog(const char16_t* path, bool flushAtEndOfLine, int openMode,
                             std::uint32_t maxSize)
    : m_flushAtEndOfLine(flushAtEndOfLine) {
    if (maxSize < SmallestMaxSize)
        maxSize = DefaultMaxSize;
    m_file.SetLimitActive(true);
    m_file.SetMaxSize(maxSize);
    // A file that cannot be opened is no error: Write then drops the text.
    m_file.Open(path, openMode);
}

CTraceFileLog::~CTraceFileLog() {
    TraceDetail::SetTracingOff();
}

void CTraceFileLog::Write(std::u16string_view text, bool endOfLine) {
    SyncLock guard(m_lock);
    if (!m_file.isOpen())
        return;
    m_file.WriteText(text);
    if (endOfLine) {
        m_file.WriteText(u"\r\n");
        if (m_flushAtEndOfLine)
            m_file.flush();
    }
}
