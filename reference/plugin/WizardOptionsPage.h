#pragma once
// The second page of the first-run wizard: automatic updates, their period and the days of
// history. Each change goes to the main window at once (set request 1051, codes 256 to 258);
// the program sends the settings to the service when the wizard ends, Finish or Cancel
// alike, so the page does not ask for that itself. Without a main window to reach the page
// shows the defaults, disabled.

#include "HostWindow.h"
#include "PluginPage.h"

class QCheckBox;
class QLabel;
class QSpinBox;

class WizardOptionsPage final : public PluginPage {
public:
    WizardOptionsPage(PluginPageId id, HostWindow host, QWidget* parent);

private:
    void Load();
    void Store(int code, std::intptr_t value);

    HostWindow m_host;
    QCheckBox* m_autoUpgrade = nullptr;
    QSpinBox* m_period = nullptr;
    QSpinBox* m_history = nullptr;
    QLabel* m_note = nullptr;
};
