#include "messaging/LspReinstaller.h"

#include "foundation/Trace.h"
#include "localisation/QGEntString.h"
#include "messaging/InboundDialogs.h"
#include "messaging/InstallerLauncher.h"
#include "messaging/SystemReboot.h"
#include "resource.h"

LspReinstaller::LspReinstaller(InboundDialogs& dialogs, InstallerLauncher& launcher,
                               SystemReboot& reboot)
    : m_dialogs(dialogs), m_launcher(launcher), m_reboot(reboot) {}

void LspReinstaller::RunLspReinstall(const stdstr& file, const stdstr& parameters,
                                     const stdstr& folder) {
    if (m_dialogs.ReinstallPrompt() != InboundDialogs::ReinstallAllow)
        return;
    const std::optional<std::uint32_t> exitCode = m_launcher.RunAndWait(file, parameters, folder);
    if (!exitCode)
        return;
    if (*exitCode == 0) {
        const int answer = m_dialogs.MessageBox(InboundDialogs::Owner::None,
                                                QGEntString(IDS_LSP_REINSTALLED_REBOOT), stdstr(),
                                                InboundDialogs::MB_YESNO);
        if (answer == InboundDialogs::IDYES && !m_reboot.RebootComputer()) {
            const QGEntString failed(IDS_REBOOT_FAILED);
            TraceMsg(TRACE_ERROR, failed);
            m_dialogs.MessageBox(InboundDialogs::Owner::None, failed, QGEntString(IDS_PRODUCT_NAME),
                                 InboundDialogs::MB_OK);
        }
        return;
    }
    const QGEntString failed(IDS_LSP_REINSTALL_FAILED);
    m_dialogs.MessageBox(InboundDialogs::Owner::None, failed, QGEntString(IDS_PRODUCT_NAME),
                         InboundDialogs::MB_OK);
    TraceMsg(TRACE_ERROR, failed);
}
