#pragma once
// The main window's visibility, as the dispatch of a service message asks about it; showing
// it goes into the journal as "show".

#include "EventJournal.h"
#include "messaging/MainWindowView.h"

class RecordingView : public MainWindowView {
public:
    explicit RecordingView(EventJournal& journal) : m_journal(journal) {}

    bool isVisible() override { return visible; }
    void show() override {
        m_journal.Add("show");
        visible = true;
    }

    bool visible = false;

private:
    EventJournal& m_journal;
};
