#pragma once
// The installer of a reinstall, as a script: each launch goes into the journal as
// "launch [<file>] [<parameters>] [<folder>]" and is answered with the scripted exit code.

#include "EventJournal.h"
#include "messaging/InstallerLauncher.h"

#include <optional>

class ScriptedLauncher : public InstallerLauncher {
public:
    explicit ScriptedLauncher(EventJournal& journal) : m_journal(journal) {}

    std::optional<std::uint32_t> RunAndWait(const stdstr& file, const stdstr& parameters,
                                            const stdstr& folder) override {
        m_journal.Add("launch [" + EventJournal::Narrow(file) + "] [" +
                      EventJournal::Narrow(parameters) + "] [" + EventJournal::Narrow(folder) +
                      "]");
        return exitCode;
    }

    // Nothing: the installer could not be started.
    std::optional<std::uint32_t> exitCode = 0;

private:
    EventJournal& m_journal;
};
