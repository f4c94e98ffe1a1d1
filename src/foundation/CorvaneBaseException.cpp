#include "foundation/CorvaneBaseException.h"

#include "foundation/DebugLog.h"
#include "foundation/StringHelper.h"
#include "foundation/stdstr.h"

namespace Corvane {

BaseException::BaseException(const std::u16string& file, int line, const std::u16string& message,
                             int code)
    : m_code(code), m_line(line), m_file(file), m_message(message) {
    try {
        const std::u16string where =
            StringHelper::stringFmt(u"Base Exception file = (%s), line = ", m_file);
        DebugLogPrintf("ExceptionThrown %s%d\n", StringHelper::toNarrow(where, 0), m_line);
    } catch (...) {
        m_message = stringFmt(u"BaseException() - Invalid message format. file = (%s), line = %d",
                              m_file, m_line);
    }
}

} // namespace Corvane
