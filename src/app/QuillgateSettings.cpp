#include "app/QuillgateSettings.h"

#include "app/ProfileReader.h"
#include "app/SharedConstants.h"
#include "foundation/PathFunctions.h"
#include "foundation/Registry.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SystemPaths.h"
#include "messaging/SendRpcMessage.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"

#include <algorithm>
#include <unistd.h>

QuillgateSettings::QuillgateSettings() {
    // The buffers get their full room once, so that later copies never move them.
    m_configPath.reserve(ConfigPathSize);
    m_language.reserve(LanguageSize);
    LoadSettings();
}

bool QuillgateSettings::ResolveConfigFile(const stdstr& fileName, stdstr& out) {
    if (!m_dataFolderKnown) {
        // The all-users data folder is asked for with "create" set: it is there when it
        // exists or can be made. Only a root whose var/lib can be neither leads to the
        // program's own folder.
        const std::string common = SystemPaths::CommonDataFolder();
        if (SystemPaths::MakeFolders(common))
            m_moduleDataFolder = stdstr::toTString(common) + DataFolderSuffix;
        else
            m_moduleDataFolder =
                stdstr::toTString(SystemPaths::ProgramFolder()) + FallbackFolderSuffix;
        m_dataFolderKnown = true;
    }
    out = AppendPathComponent(m_moduleDataFolder, fileName);
    return true;
}

void QuillgateSettings::LoadSettings() {
    stdstr file;
    ResolveConfigFile(ConfigFileName, file);
    const ProfileReader ini(file);
    const stdstr section(SectionName);
    SetFirstRun(ini.GetInt(section, u"FirstRun", 1));
    SetFilterOn(ini.GetInt(section, u"FilterOn", 1));
    SetAutoUpgrade(ini.GetInt(section, u"AutoUpgrade", 1));
    SetShowCloseWindow(ini.GetInt(section, u"ShowCloseWindow", 1));
    SetUpgradePeriod(ini.GetInt(section, u"UpgradePeriod", 5));
    SetHistoryDays(ini.GetInt(section, u"HistoryDays", 30));
    SetConfigPath(ini.GetString(section, u"ConfigPath", stdstr(), ConfigPathSize));
    SetLanguage(ini.GetString(section, u"Language", stdstr(), LanguageSize));

    if (GetLanguage().empty()) {
        std::uint32_t id = 0;
        Corvane::Registry machine(HKEY_LOCAL_MACHINE);
        if (!machine.getNumber(SharedConstants::QuillgateRegistryKey,
                               SharedConstants::LanguageIdValue, id))
            id = static_cast<std::uint32_t>(DefaultLanguageId);
        SetLanguage(stringFmt(u"%d", static_cast<std::int32_t>(id)));
    }
    if (GetConfigPath().empty()) {
        // The default path is asked for without a check that it exists, so it is always had.
        SetConfigPath(stdstr::toTString(SystemPaths::CommonDataFolder()) + DataFolderSuffix);
    }
    if (GetFirstRun() != 0)
        NotifyService();
}

bool QuillgateSettings::NotifyService() {
    enumMSG_CONFIG_CHANGE_Message msg;
    msg.SetProcessId(static_cast<std::int32_t>(::getpid()));
    msg.SetFirstRun(GetFirstRun());
    msg.SetFilterOn(GetFilterOn());
    msg.SetAutoUpgrade(GetAutoUpgrade());
    msg.SetShowCloseWindow(GetShowCloseWindow());
    msg.SetUpgradePeriod(GetUpgradePeriod());
    msg.SetHistoryDays(GetHistoryDays());
    msg.SetConfigPath(GetConfigPath());
    msg.SetLanguage(GetLanguage());
    return SendRpcMessage(msg);
}

stdstr QuillgateSettings::GetConfigPath() const {
    std::lock_guard<std::mutex> guard(m_textLock);
    return m_configPath;
}

stdstr QuillgateSettings::GetLanguage() const {
    std::lock_guard<std::mutex> guard(m_textLock);
    return m_language;
}

void QuillgateSettings::SetFirstRun(std::int32_t value) {
    m_firstRun.store(value, std::memory_order_relaxed);
}

void QuillgateSettings::SetFilterOn(std::int32_t value) {
    m_filterOn.store(value, std::memory_order_relaxed);
}

void QuillgateSettings::SetAutoUpgrade(std::int32_t value) {
    m_autoUpgrade.store(value, std::memory_order_relaxed);
}

void QuillgateSettings::SetUpgradePeriod(std::int32_t value) {
    m_upgradePeriod.store(value, std::memory_order_relaxed);
}

void QuillgateSettings::SetHistoryDays(std::int32_t value) {
    m_historyDays.store(value, std::memory_order_relaxed);
}

void QuillgateSettings::SetShowCloseWindow(std::int32_t value) {
    m_showCloseWindow.store(value, std::memory_order_relaxed);
}

void QuillgateSettings::SetConfigPath(const stdstr& value) {
    CopyText(m_configPath, value, ConfigPathSize);
}

void QuillgateSettings::SetLanguage(const stdstr& value) {
    CopyText(m_language, value, LanguageSize);
}

void QuillgateSettings::CopyText(stdstr& buffer, const stdstr& value, std::size_t size) {
    std::size_t length = std::min(value.size(), size - 1);
    const std::size_t nul = value.find(u'\0');
    if (nul != stdstr::npos)
        length = std::min(length, nul);
    std::lock_guard<std::mutex> guard(m_textLock);
    // Within the reserved room the standard string copies in place.
    buffer.assign(value.data(), length);
}

std::int32_t QuillgateSettings::GetNumber(IInfoValueHost::Number setting) const {
    switch (setting) {
    case IInfoValueHost::Number::FilterOn:
        return GetFilterOn();
    case IInfoValueHost::Number::AutoUpgrade:
        return GetAutoUpgrade();
    case IInfoValueHost::Number::UpgradePeriod:
        return GetUpgradePeriod();
    case IInfoValueHost::Number::HistoryDays:
        return GetHistoryDays();
    }
    return 0;
}

void QuillgateSettings::SetNumber(IInfoValueHost::Number setting, std::int32_t value) {
    switch (setting) {
    case IInfoValueHost::Number::FilterOn:
        SetFilterOn(value);
        break;
    case IInfoValueHost::Number::AutoUpgrade:
        SetAutoUpgrade(value);
        break;
    case IInfoValueHost::Number::UpgradePeriod:
        SetUpgradePeriod(value);
        break;
    case IInfoValueHost::Number::HistoryDays:
        SetHistoryDays(value);
        break;
    }
}

const stdstr& QuillgateSettings::GetText(IInfoValueHost::Text setting) const {
    return setting == IInfoValueHost::Text::ConfigPath ? m_configPath : m_language;
}

void QuillgateSettings::SetText(IInfoValueHost::Text setting, const stdstr& value) {
    if (setting == IInfoValueHost::Text::ConfigPath)
        SetConfigPath(value);
    else
        SetLanguage(value);
}
