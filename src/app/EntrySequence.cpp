#include "app/EntrySequence.h"

#include "app/CommandLineScan.h"
#include "app/IEntrySteps.h"
#include "app/ShowMainWindowAtStart.h"
#include "foundation/CorvaneBaseException.h"
#include "foundation/Trace.h"

EntrySequence::EntrySequence(IEntrySteps& steps) : m_steps(steps) {}

int EntrySequence::Run(const stdstr& commandLine) {
    m_steps.SetUpLogging();

    switch (CommandLineScan::Scan(commandLine)) {
    case CommandLineScan::Request::SilentStart:
        ShowMainWindowAtStart = 0;
        break;
    case CommandLineScan::Request::KillAll:
        // Nothing else is brought up, and nothing else is logged.
        TraceMsg(TRACE_WARN, u"Got shut down GUI command, shut down it");
        m_steps.KillGUI();
        return 0;
    case CommandLineScan::Request::NormalStart:
        break;
    }

    int exitCode = 0;
    try {
        m_steps.StartWindowSystem();
        TraceMsg(TRACE_INFO, u"Quillgate starting up... ");
        if (m_steps.Init() != 0) {
            TraceMsg(TRACE_INFO, u"Quillgate start up failed. ");
        } else if (!m_steps.LoadPlugin()) {
            exitCode = ExitFailure;
        } else {
            TraceMsg(TRACE_INFO, u"Quillgate start up completed. ");
            exitCode = m_steps.Run();
        }
        TraceMsg(TRACE_INFO, u"Quillgate shutdown...");
        m_steps.Term();
        TraceMsg(TRACE_INFO, u"Quillgate shutdown completed.");
        m_steps.StopWindowSystem();
    } catch (const Corvane::BaseException& e) {
        // Neither Term nor the window system's end: the entry returns at once.
        m_steps.ShowExceptionBox(e.GetMessage());
        exitCode = ExitFailure;
    }
    return exitCode;
}
