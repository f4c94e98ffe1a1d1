#pragma once
// QGConfig.ini in memory. The file belongs to the filter service: the program reads it into
// this object, works on the copy, and hands every change to the service with NotifyService,
// which sends the whole object as a Config change; the service writes the file and echoes
// the change back (the inbound handler writes it here through SettingsPort). Nothing here
// writes the file. Setters change memory only.
//
// The numbers are read and written on two threads (the GUI thread, and the plug-in's thread
// for an inbound Config change) without any promised order between the fields, so a reader
// may see a half-applied change; each number is atomic so that no single value is torn. The
// two texts live in buffers that are never moved (the plug-in is given pointers to them that
// stay valid for the life of the process); their copies are taken under a lock, the pointer
// handed to the plug-in is read without one.

#include "foundation/stdstr.h"
#include "mainwindow/IInfoValueHost.h"
#include "messaging/SettingsPort.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

class QuillgateSettings : public SettingsPort {
public:
    // Room of the two text buffers, terminator included: at most 259 and 127 characters.
    static constexpr std::size_t ConfigPathSize = 260;
    static constexpr std::size_t LanguageSize = 128;
    // The language id taken when neither the file nor the machine store names one.
    static constexpr std::int32_t DefaultLanguageId = 1033;
    static constexpr const char16_t* ConfigFileName = u"QGConfig.ini";
    static constexpr const char16_t* SectionName = u"SYSTEM";
    // Behind the all-users data folder: ModuleDataFolder, and the default of ConfigPath.
    static constexpr const char16_t* DataFolderSuffix = u"/velloran/quillgate";
    // Behind the program's folder, where the all-users data folder cannot be had.
    static constexpr const char16_t* FallbackFolderSuffix = u"/config/";

    // FirstRun 1, the data folder not yet known, then LoadSettings.
    QuillgateSettings();
    QuillgateSettings(const QuillgateSettings&) = delete;
    QuillgateSettings& operator=(const QuillgateSettings&) = delete;
    ~QuillgateSettings() override = default;

    // Fills the object from QGConfig.ini: the eight keys of "SYSTEM" with their defaults, then
    // the language from the machine store's "iLang" when the file names none, the default
    // ConfigPath when the file names none, and, while FirstRun is not 0, NotifyService. A
    // missing file gives the defaults and is no failure.
    void LoadSettings();

    // The full path of `fileName` in ModuleDataFolder, which is worked out at the first call
    // and kept for the life of the object: $ROOT/var/lib/velloran/quillgate, or, when the
    // all-users data folder ($ROOT/var/lib) is not there and cannot be made, the program's
    // folder followed by "/config/". Always true.
    bool ResolveConfigFile(const stdstr& fileName, stdstr& out);

    // Sends the whole object to the service as a Config change, led by this process's id,
    // without waiting for a reply. The result is the send path's; callers ignore it, and a
    // failure is not retried (memory keeps the new values).
    bool NotifyService();

    std::int32_t GetFirstRun() const { return m_firstRun.load(std::memory_order_relaxed); }
    std::int32_t GetFilterOn() const { return m_filterOn.load(std::memory_order_relaxed); }
    std::int32_t GetAutoUpgrade() const { return m_autoUpgrade.load(std::memory_order_relaxed); }
    std::int32_t GetUpgradePeriod() const {
        return m_upgradePeriod.load(std::memory_order_relaxed);
    }
    std::int32_t GetHistoryDays() const { return m_historyDays.load(std::memory_order_relaxed); }
    std::int32_t GetShowCloseWindow() const {
        return m_showCloseWindow.load(std::memory_order_relaxed);
    }
    stdstr GetConfigPath() const;
    stdstr GetLanguage() const;

    void SetFirstRun(std::int32_t value) override;
    void SetFilterOn(std::int32_t value) override;
    void SetAutoUpgrade(std::int32_t value) override;
    void SetUpgradePeriod(std::int32_t value) override;
    void SetHistoryDays(std::int32_t value) override;
    void SetShowCloseWindow(std::int32_t value) override;
    // Copy at most ConfigPathSize - 1 and LanguageSize - 1 characters, up to a NUL.
    void SetConfigPath(const stdstr& value) override;
    void SetLanguage(const stdstr& value) override;

    // The plug-in's set and get codes for settings (256 to 260, and 5 for FilterOn) reach
    // the object through these. GetText's text stays where it is for the object's life.
    std::int32_t GetNumber(IInfoValueHost::Number setting) const;
    void SetNumber(IInfoValueHost::Number setting, std::int32_t value);
    const stdstr& GetText(IInfoValueHost::Text setting) const;
    void SetText(IInfoValueHost::Text setting, const stdstr& value);

private:
    // Copies `value` into `buffer` the way lstrcpyn fills a buffer of `size` characters,
    // without ever moving the buffer.
    void CopyText(stdstr& buffer, const stdstr& value, std::size_t size);

    std::atomic<std::int32_t> m_firstRun{1};
    bool m_dataFolderKnown = false;
    std::atomic<std::int32_t> m_filterOn{1};
    std::atomic<std::int32_t> m_autoUpgrade{1};
    std::atomic<std::int32_t> m_upgradePeriod{5};
    std::atomic<std::int32_t> m_historyDays{30};
    std::atomic<std::int32_t> m_showCloseWindow{1};
    mutable std::mutex m_textLock;
    stdstr m_configPath;
    stdstr m_language;
    stdstr m_moduleDataFolder;
};
