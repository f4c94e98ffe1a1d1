#pragma once
// The Settings page: automatic updates and their period, the days of history that the
// service keeps, and the program's language. It reads the settings from the main window
// (get request 1052, codes 256 to 260) and, on Apply, writes them back (set request 1051,
// codes 256 to 258 and 260), has them sent to the service (code 261) and, for a new
// language, asks the main window to change it (1055). Private message 1061 (the settings
// changed elsewhere) reads them again.

#include "HostWindow.h"
#include "LanguageChoices.h"
#include "PluginPage.h"

#include <cstdint>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

class SettingsPage final : public PluginPage {
public:
    struct Values {
        bool autoUpgrade = true;
        int upgradePeriod = 5;
        int historyDays = 30;
        std::uint32_t language = 1033;
        bool operator==(const Values&) const = default;
    };

    SettingsPage(PluginPageId id, HostWindow host, QWidget* parent);

    void Activate() override;
    void LanguageChanged(const QString& name) override;
    // Shows the main window's values; edits not yet applied are dropped.
    void Load();
    // Writes the values shown to the main window and has them sent to the service.
    void Apply();
    bool Dirty() const;

protected:
    PrivateMessageEvent::Result OnPrivateMessage(int message, PrivateMessageEvent::WParam wParam,
                                                 PrivateMessageEvent::LParam lParam) override;

private:
    Values ReadHost() const;
    Values Shown() const;
    void Show(const Values& values);
    void SelectLanguage(std::uint32_t id);
    void UpdateButtons();

    HostWindow m_host;
    Values m_loaded;
    bool m_everLoaded = false;
    std::vector<LanguageChoice> m_languages;

    QCheckBox* m_autoUpgrade = nullptr;
    QSpinBox* m_period = nullptr;
    QSpinBox* m_history = nullptr;
    QComboBox* m_language = nullptr;
    QLabel* m_configPath = nullptr;
    QLabel* m_message = nullptr;
    QPushButton* m_revert = nullptr;
    QPushButton* m_apply = nullptr;
};
