#pragma once
// The whole of the shared settings, sent to the service at each change and echoed back by
// it; the fields follow the settings of QGConfig.ini, led by the sender's process id.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_CONFIG_CHANGE_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x102;
    static constexpr const char16_t* Name = u"Config change";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }

    // The sender's process id; a receiver has no use for it and stores it nowhere.
    std::int32_t GetProcessId() const { return m_processId; }
    void SetProcessId(std::int32_t value) { m_processId = value; }
    // The settings, each named as in QGConfig.ini (HistoryDays in days).
    std::int32_t GetFirstRun() const { return m_firstRun; }
    void SetFirstRun(std::int32_t value) { m_firstRun = value; }
    std::int32_t GetFilterOn() const { return m_filterOn; }
    void SetFilterOn(std::int32_t value) { m_filterOn = value; }
    std::int32_t GetAutoUpgrade() const { return m_autoUpgrade; }
    void SetAutoUpgrade(std::int32_t value) { m_autoUpgrade = value; }
    std::int32_t GetShowCloseWindow() const { return m_showCloseWindow; }
    void SetShowCloseWindow(std::int32_t value) { m_showCloseWindow = value; }
    std::int32_t GetUpgradePeriod() const { return m_upgradePeriod; }
    void SetUpgradePeriod(std::int32_t value) { m_upgradePeriod = value; }
    std::int32_t GetHistoryDays() const { return m_historyDays; }
    void SetHistoryDays(std::int32_t value) { m_historyDays = value; }
    const stdstr& GetConfigPath() const { return m_configPath; }
    void SetConfigPath(const stdstr& value) { m_configPath = value; }
    const stdstr& GetLanguage() const { return m_language; }
    void SetLanguage(const stdstr& value) { m_language = value; }

private:
    std::int32_t m_processId = 0;
    std::int32_t m_firstRun = 0;
    std::int32_t m_filterOn = 0;
    std::int32_t m_autoUpgrade = 0;
    std::int32_t m_showCloseWindow = 0;
    std::int32_t m_upgradePeriod = 0;
    std::int32_t m_historyDays = 0;
    stdstr m_configPath;
    stdstr m_language;
};
