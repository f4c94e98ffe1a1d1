#pragma once
// IQGInfo: the configuration path that the host passes, and the two mail counts of the
// summary pop-up. The host asks for the spam count and then for the examined count; one
// question to the service answers both, and the second call takes the answer of the first
// when it is fresh. When the service does not answer, the counts last known are given and
// the call answers E_FAIL.

#include "StatisticsAnswer.h"

#include "mainwindow/PluginContract.h"

#include <chrono>
#include <optional>

class PluginContext;

class InfoObject final : public IQGInfo {
public:
    // How long an answer serves the next count.
    static constexpr std::chrono::milliseconds Freshness{2000};

    explicit InfoObject(PluginContext& context) : m_context(context) {}

    std::int32_t SetConfigPath(const char16_t* path, std::int32_t length) override;
    std::int32_t GetSpamCount(std::uint32_t* count) override;
    std::int32_t GetExaminedCount(std::uint32_t* count) override;

private:
    // Asks the service unless the last answer is fresh; true when the counts are current.
    bool Counts(bool allowFresh);

    PluginContext& m_context;
    std::uint32_t m_spam = 0;
    std::uint32_t m_examined = 0;
    std::optional<std::chrono::steady_clock::time_point> m_answeredAt;
};
