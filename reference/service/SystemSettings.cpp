#include "service/SystemSettings.h"

#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"

SystemSettings SystemSettings::of(const enumMSG_CONFIG_CHANGE_Message& message) {
    SystemSettings settings;
    settings.firstRun = message.GetFirstRun();
    settings.filterOn = message.GetFilterOn();
    settings.autoUpgrade = message.GetAutoUpgrade();
    settings.showCloseWindow = message.GetShowCloseWindow();
    settings.upgradePeriod = message.GetUpgradePeriod();
    settings.historyDays = message.GetHistoryDays();
    settings.configPath = message.GetConfigPath();
    settings.language = message.GetLanguage();
    return settings;
}

void SystemSettings::fill(enumMSG_CONFIG_CHANGE_Message& message, std::int32_t pid) const {
    message.SetProcessId(pid);
    message.SetFirstRun(firstRun);
    message.SetFilterOn(filterOn);
    message.SetAutoUpgrade(autoUpgrade);
    message.SetShowCloseWindow(showCloseWindow);
    message.SetUpgradePeriod(upgradePeriod);
    message.SetHistoryDays(historyDays);
    message.SetConfigPath(configPath);
    message.SetLanguage(language);
}

std::vector<FieldValue> SystemSettings::fields(std::int32_t pid) const {
    return {pid,           firstRun,    filterOn,   autoUpgrade, showCloseWindow,
            upgradePeriod, historyDays, configPath, language};
}
