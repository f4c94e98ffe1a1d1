#pragma once
// The restart of the computer, as a script: each request goes into the journal as "reboot"
// and is accepted or refused as the test says. Nothing is ever restarted.

#include "EventJournal.h"
#include "messaging/SystemReboot.h"

class ScriptedReboot : public SystemReboot {
public:
    explicit ScriptedReboot(EventJournal& journal) : m_journal(journal) {}

    bool RebootComputer() override {
        m_journal.Add("reboot");
        return accepted;
    }

    bool accepted = true;

private:
    EventJournal& m_journal;
};
