#pragma once
// The worker of the start/stop dialog ("StartServiceThread" in its trace lines): it runs the
// service's executable with "-Start" or "-Stop" through appShellExecute, waits for its end,
// pauses 5 seconds after a run that could be made, posts WM_QG_SERVICE_THREAD_DONE (1025) to
// the dialog and returns the executable's exit code (1 when it could not be run).
//
// Two deliberate gaps are kept: when the running program's path cannot be had, and after an
// exception, nothing is posted, so the dialog's bar stops at its limit and the dialog stays
// until the program is ended from outside.
//
// A thread cannot be ended from outside, so a dialog that gives up waiting for its worker
// lets go of it instead; the worker keeps itself alive until its body has returned (make it
// with std::make_shared). It touches nothing of the dialog but the post target.

#include "app/GuardedPostTarget.h"
#include "app/IShellExecutor.h"
#include "app/SupervisionTypes.h"
#include "foundation/Event.h"
#include "foundation/Thread.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class StartServiceWorker : public Corvane::Thread,
                           public std::enable_shared_from_this<StartServiceWorker> {
public:
    struct Setup {
        // appShellExecute; must outlive the worker.
        IShellExecutor* executor = nullptr;
        // The service's executable, nothing when the running program's path cannot be had.
        std::function<std::optional<stdstr>()> serviceProgram;
        // The pause after a run that could be made.
        SleepFunction pause;
    };

    static constexpr std::chrono::milliseconds PauseAfterRun{5000};
    static constexpr const char16_t* StartWord = u"-Start";
    static constexpr const char16_t* StopWord = u"-Stop";

    StartServiceWorker(bool start, Setup setup, std::shared_ptr<GuardedPostTarget> target);
    ~StartServiceWorker() override;

    // Starts the thread; false when it could not be created.
    bool start() override;
    // Waits at most `timeout` for the body to have returned; true when it has.
    bool WaitForEnd(std::chrono::milliseconds timeout);
    // The body's result once WaitForEnd has said so.
    std::int32_t Result() const { return m_result.load(); }

    std::uint32_t run() override;

protected:
    // Announces the end to the dialog. A test may stand a slow ending in here.
    virtual void PostFinished();

private:
    std::int32_t StartServiceThread();

    const bool m_start;
    Setup m_setup;
    std::shared_ptr<GuardedPostTarget> m_target;
    // Set by start(), taken over by the body, which holds the object until it returns.
    std::shared_ptr<StartServiceWorker> m_self;
    Corvane::Event m_ended;
    std::atomic<std::int32_t> m_result{0};
};
