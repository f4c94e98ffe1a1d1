#pragma once
// The repair that the service asks for with a Reinstall LSP message: the user is asked, the
// installer runs to its end, and the outcome is told; a successful reinstall offers to
// restart the computer. Its caller is blocked for as long as all of that takes, installer
// included, which is why this runs behind the inbound pump and never on a transport thread.

#include "foundation/stdstr.h"

class InboundDialogs;
class InstallerLauncher;
class SystemReboot;

class LspReinstaller {
public:
    LspReinstaller(InboundDialogs& dialogs, InstallerLauncher& launcher, SystemReboot& reboot);

    // Nothing happens unless the prompt is answered with Allow. An installer that cannot be
    // started ends it silently. Exit code 0: the restart question, and on Yes the restart,
    // whose failure is traced and shown. Any other code: the failure is shown and traced.
    void RunLspReinstall(const stdstr& file, const stdstr& parameters, const stdstr& folder);

private:
    InboundDialogs& m_dialogs;
    InstallerLauncher& m_launcher;
    SystemReboot& m_reboot;
};
