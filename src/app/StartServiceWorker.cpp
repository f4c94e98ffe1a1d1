#include "app/StartServiceWorker.h"

#include "foundation/CorvaneBaseException.h"
#include "foundation/Trace.h"
#include "mainwindow/PrivateMessages.h"

#include <cerrno>

StartServiceWorker::StartServiceWorker(bool start, Setup setup,
                                       std::shared_ptr<GuardedPostTarget> target)
    : Corvane::Thread(false), m_start(start), m_setup(std::move(setup)),
      m_target(std::move(target)) {}

StartServiceWorker::~StartServiceWorker() = default;

bool StartServiceWorker::start() {
    m_self = shared_from_this();
    if (Corvane::Thread::start())
        return true;
    m_self.reset();
    return false;
}

bool StartServiceWorker::WaitForEnd(std::chrono::milliseconds timeout) {
    return m_ended.wait(static_cast<std::uint32_t>(timeout.count()));
}

std::uint32_t StartServiceWorker::run() {
    // Whoever else lets go of the object, it lives until the body is done.
    const std::shared_ptr<StartServiceWorker> self = std::move(m_self);
    const std::int32_t result = StartServiceThread();
    m_result.store(result);
    m_ended.set();
    return static_cast<std::uint32_t>(result);
}

void StartServiceWorker::PostFinished() {
    if (m_target)
        m_target->Post(WM_QG_SERVICE_THREAD_DONE);
}

std::int32_t StartServiceWorker::StartServiceThread() {
    std::int32_t result = 1;
    try {
        const std::optional<stdstr> program =
            m_setup.serviceProgram ? m_setup.serviceProgram() : std::nullopt;
        if (!program) {
            TraceMsg(TRACE_ERROR,
                     u"Faild to GetModuleFileName in CStartSvcDlg::StartServiceThread");
            return 0;
        }
        const stdstr& file = *program;
        const stdstr parameter(m_start ? StartWord : StopWord);
        TraceFmt(TRACE_DEBUG,
                 u"CStartSvcDlg::StartServiceThread(): Calling _Module.appShellExecute(%s, %s)",
                 file, parameter);
        ShellOpenInfo info;
        int exitCode = 0;
        if (m_setup.executor->appShellExecute(file, parameter, true, &info, &exitCode,
                                              IShellExecutor::SW_HIDE)) {
            TraceFmt(TRACE_DEBUG,
                     u"CStartSvcDlg::StartServiceThread(): _Module.appShellExecute(%s, %s, true), "
                     u"returned %d",
                     file, parameter, exitCode);
            if (m_setup.pause)
                m_setup.pause(PauseAfterRun);
            result = exitCode;
        } else {
            TraceFmt(TRACE_ERROR,
                     u"CStartSvcDlg::StartServiceThread(): _Module.appShellExecute(%s, %s, true), "
                     u"failed",
                     file, parameter);
        }
        PostFinished();
    } catch (const Corvane::BaseException& e) {
        TraceFmt(TRACE_ERROR, u"CStartSvcDlg::StartServiceThread(): Exception (%s)",
                 e.GetMessage());
    } catch (...) {
        // No exception code exists here; errno stands in for it, as in the other such lines.
        TraceFmt(TRACE_ERROR, u"CStartSvcDlg::StartServiceThread: Unhandled exception (0x%x)",
                 errno);
    }
    TraceMsg(TRACE_INFO, u"CStartSvcDlg::StartServiceThread(): End");
    return result;
}
