#pragma once
// A mutex, unnamed for the threads of one process or named for several processes.
//
// Unnamed, it is a recursive timed mutex. Named, it is a lock file in the run folder
// ("<name>.lock"), which stands in for a Windows named mutex with three kernel locks that
// all die with the process that holds them, so a crashed or killed holder never leaves the
// name taken:
//   - every object that has the name open holds a shared flock on the file; the name
//     "exists" while somebody holds one, whatever stale file lies there;
//   - the existence test at construction takes an exclusive flock without waiting, under a
//     short guard (an open-file-description write lock on byte 0) so that two processes
//     starting together cannot both believe they came first;
//   - ownership is an open-file-description write lock on byte 1, together with the
//     in-process mutex that makes the owner's repeated locks recursive and keeps the other
//     threads of the process out.
// A Windows mutex whose owner ended without releasing it reports itself abandoned; there is
// no such state here: the next waiter simply gets it.
//
// The object that created the name (with the process's security object present) leaves a
// duplicate descriptor in a process-wide registry, so that the name stays held by this
// process until it ends or CleanupNamedMutexHandles runs, even after the object is gone.
// Descriptors are close-on-exec; a child made by fork() without exec shares them, and with
// them the name, as long as it runs.

#include "foundation/KernelObject.h"
#include "foundation/Synchronisable.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>

namespace Corvane {

class Mutex : public Synchronisable, public KernelObject {
public:
    // `name` null or empty: an unnamed mutex. Construction never throws; when the lock file
    // cannot be had, lastError() holds the errno and every lock fails.
    explicit Mutex(const char* name);
    ~Mutex() override;

    // Waits up to `timeoutMs` (Infinite: without limit). A thread that owns the mutex may
    // lock it again; it must unlock it as often.
    bool lock(std::uint32_t timeoutMs) override;
    // Gives one level of ownership back; a thread that does not own the mutex changes
    // nothing (as ReleaseMutex fails for it).
    void unlock() override;

    // The name, empty for an unnamed mutex (and for a named one whose creation failed
    // without an error).
    const std::string& name() const { return m_name; }

    // Closes the descriptors by which this process keeps the names it created.
    static void CleanupNamedMutexHandles();
    // The lock file that stands for the mutex named `name`.
    static std::string LockFilePath(const std::string& name);

private:
    using Deadline = std::chrono::steady_clock::time_point;

    void openNamed(const char* name);
    bool acquire(std::uint32_t timeoutMs);
    bool lockFileOwnership(std::uint32_t timeoutMs, Deadline deadline);
    void release();

    std::string m_name;
    // Windows "the object has a handle": always for an unnamed mutex, for a named one when
    // its lock file is open.
    bool m_usable = false;
    std::recursive_timed_mutex m_local;
    std::atomic<std::thread::id> m_owner{};
    // Levels of ownership of the owning thread; touched only by that thread.
    unsigned m_depth = 0;
};

} // namespace Corvane
