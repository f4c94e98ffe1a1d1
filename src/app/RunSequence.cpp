#include "app/RunSequence.h"

#include "app/IRunSteps.h"
#include "app/ShowMainWindowAtStart.h"
#include "foundation/CRegistry.h"
#include "foundation/RegistryTypes.h"
#include "foundation/Trace.h"
#include "mainwindow/PrivateMessages.h"

#include <optional>

RunSequence::RunSequence(IRunSteps& steps) : m_steps(steps) {}

int RunSequence::Run() {
    TraceMsg(TRACE_DEBUG, u"Run - start");
    m_steps.AddMessageLoop();

    TraceMsg(TRACE_DEBUG, u"Run - CMainDlg creating...");
    if (!m_steps.CreateMainWindow()) {
        TraceMsg(TRACE_DEBUG, u"Run - create failed");
        m_steps.DestroyMainWindow();
        m_steps.DestroyMessageLoop();
        return 0;
    }
    TraceMsg(TRACE_DEBUG, u"Run - CMainDlg created ok");

    // Destroyed first of the three at the end, as it was made last.
    std::optional<CRegistry> key(std::in_place);
    if (key->Open(HKEY_LOCAL_MACHINE, PopupKey, KEY_READ)) {
        std::uint32_t hidePopup = 0;
        if (!key->getNumber(HidePopupValue, hidePopup) || hidePopup == 0) {
            TraceMsg(TRACE_DEBUG, u"Show filtering summary");
            m_steps.PostToMainWindow(WM_QG_SHOW_SUMMARY, 0, 0);
        }
    }

    m_steps.ShowMainWindow(ShowMainWindowAtStart != 0);
    m_steps.PostToMainWindow(WM_QG_FILTER_STATE, static_cast<std::uintptr_t>(m_steps.FilterOn()),
                             0);

    TraceMsg(TRACE_DEBUG, u"Run - enter run loop");
    const int exitCode = m_steps.RunMessageLoop();
    TraceMsg(TRACE_DEBUG, u"Run - exit run loop");
    m_steps.RemoveMessageLoop();

    key.reset();
    m_steps.DestroyMainWindow();
    m_steps.DestroyMessageLoop();
    return exitCode;
}
