#include "InfoObject.h"

#include "JournalLine.h"
#include "PluginContext.h"
#include "StatisticsQuery.h"

#include <algorithm>

std::int32_t InfoObject::SetConfigPath(const char16_t* path, std::int32_t length) {
    if (path != nullptr && length >= 0)
        m_context.configPath = QString::fromUtf16(path, length);
    JournalLine("SetConfigPath").Text(path).Number(length).Write();
    return 0;
}

bool InfoObject::Counts(bool allowFresh) {
    const auto now = std::chrono::steady_clock::now();
    if (allowFresh && m_answeredAt && now - *m_answeredAt < Freshness)
        return true;
    StatisticsAnswer answer;
    try {
        answer = StatisticsQuery::Ask(m_context.Rpc());
    } catch (...) {
        return false;
    }
    if (!answer.answered)
        return false;
    m_spam = static_cast<std::uint32_t>(std::max(0, answer.spam));
    m_examined = static_cast<std::uint32_t>(std::max(0, answer.examined));
    m_answeredAt = now;
    return true;
}

std::int32_t InfoObject::GetSpamCount(std::uint32_t* count) {
    // The spam count comes first: it always asks, so that each summary has current counts.
    const bool current = Counts(false);
    if (count != nullptr)
        *count = m_spam;
    const std::int32_t result = current && count != nullptr ? 0 : E_FAIL;
    JournalLine("GetSpamCount").Arrow().Number(m_spam).Write();
    return result;
}

std::int32_t InfoObject::GetExaminedCount(std::uint32_t* count) {
    const bool current = Counts(true);
    if (count != nullptr)
        *count = m_examined;
    const std::int32_t result = current && count != nullptr ? 0 : E_FAIL;
    JournalLine("GetExaminedCount").Arrow().Number(m_examined).Write();
    return result;
}
