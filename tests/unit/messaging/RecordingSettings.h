#pragma once
// The settings in memory as a Config change writes them: each setter goes into the journal
// as "set <Field> <value>".

#include "EventJournal.h"
#include "messaging/SettingsPort.h"

#include <string>

class RecordingSettings : public SettingsPort {
public:
    explicit RecordingSettings(EventJournal& journal) : m_journal(journal) {}

    void SetAutoUpgrade(std::int32_t value) override { Set("AutoUpgrade", std::to_string(value)); }
    void SetConfigPath(const stdstr& value) override {
        Set("ConfigPath", EventJournal::Narrow(value));
    }
    void SetLanguage(const stdstr& value) override { Set("Language", EventJournal::Narrow(value)); }
    void SetFilterOn(std::int32_t value) override { Set("FilterOn", std::to_string(value)); }
    void SetFirstRun(std::int32_t value) override { Set("FirstRun", std::to_string(value)); }
    void SetHistoryDays(std::int32_t value) override { Set("HistoryDays", std::to_string(value)); }
    void SetShowCloseWindow(std::int32_t value) override {
        Set("ShowCloseWindow", std::to_string(value));
    }
    void SetUpgradePeriod(std::int32_t value) override {
        Set("UpgradePeriod", std::to_string(value));
    }

private:
    void Set(const char* field, const std::string& value) {
        m_journal.Add(std::string("set ") + field + " " + value);
    }

    EventJournal& m_journal;
};
