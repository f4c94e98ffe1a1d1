#pragma once
// The settings held in memory, as a Config change from the service writes them: one setter
// per field of the message that the program keeps. The settings object of the application
// implements it. The setters are called on the plug-in's thread, without a lock, as the
// settings have always been written on this path.

#include "foundation/stdstr.h"

#include <cstdint>

class SettingsPort {
public:
    virtual void SetAutoUpgrade(std::int32_t value) = 0;
    virtual void SetConfigPath(const stdstr& value) = 0;
    virtual void SetLanguage(const stdstr& value) = 0;
    virtual void SetFilterOn(std::int32_t value) = 0;
    virtual void SetFirstRun(std::int32_t value) = 0;
    virtual void SetHistoryDays(std::int32_t value) = 0;
    virtual void SetShowCloseWindow(std::int32_t value) = 0;
    virtual void SetUpgradePeriod(std::int32_t value) = 0;

    virtual ~SettingsPort() = default;

protected:
    SettingsPort() = default;
    SettingsPort(const SettingsPort&) = default;
    SettingsPort& operator=(const SettingsPort&) = default;
};
