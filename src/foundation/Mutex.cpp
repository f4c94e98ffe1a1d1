#include "foundation/Mutex.h"

#include "foundation/DebugLog.h"
#include "foundation/SecurityObject.h"
#include "foundation/SystemPaths.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace Corvane {
namespace {

// Byte 0 guards the existence test, byte 1 is the ownership of the mutex.
constexpr off_t GuardByte = 0;
constexpr off_t OwnershipByte = 1;

// Without the process's security object a lock file is for its creator only, as a Windows
// mutex made without security attributes gets the creator's default access list.
constexpr mode_t CreatorOnlyMode = 0600;

struct NamedMutexRegistry {
    std::mutex mutex;
    std::vector<int> handles;
};

NamedMutexRegistry& Registry() {
    static NamedMutexRegistry registry;
    return registry;
}

bool SetRangeLock(int fd, short type, off_t byte, int command) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = byte;
    range.l_len = 1;
    range.l_pid = 0; // open-file-description locks want 0 here
    while (::fcntl(fd, command, &range) != 0) {
        if (errno != EINTR)
            return false;
    }
    return true;
}

int OpenExisting(const std::string& path) {
    return ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOCTTY);
}

// Creates the lock file with `mode` regardless of the umask. With `openIfRaced`, a file that
// appeared since the first open failed is opened instead: creating a Windows mutex opens the
// one that already exists.
int CreateLockFile(const std::string& path, mode_t mode, bool openIfRaced) {
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, mode);
    if (fd >= 0) {
        ::fchmod(fd, mode);
        return fd;
    }
    if (errno == EEXIST && openIfRaced)
        return OpenExisting(path);
    return -1;
}

// Joins the named object through `fd`: the shared flock is held from here on. Answers
// whether somebody else had the object open already, or nothing (errno set) when the file
// cannot be locked at all.
std::optional<bool> JoinNamedObject(int fd) {
    // The step from the exclusive test down to shared is not atomic: without the guard, a
    // second process could test in that gap, and both would believe they came first.
    const bool guarded = SetRangeLock(fd, F_WRLCK, GuardByte, F_OFD_SETLKW);
    std::optional<bool> existed;
    if (::flock(fd, LOCK_EX | LOCK_NB) == 0)
        existed = false;
    else if (errno == EWOULDBLOCK)
        existed = true;
    int error = errno;
    if (existed) {
        // Only exclusive tests, all under the guard, conflict with this, so it never waits
        // for long.
        while (::flock(fd, LOCK_SH) != 0) {
            if (errno != EINTR) {
                error = errno;
                existed.reset();
                break;
            }
        }
    }
    if (guarded)
        SetRangeLock(fd, F_UNLCK, GuardByte, F_OFD_SETLK);
    errno = error;
    return existed;
}

} // namespace

Mutex::Mutex(const char* name) {
    if (name == nullptr || *name == '\0') {
        m_usable = true;
        DebugLogPrintf("Mutex: %s %s Mutex\n", "Created", "empty");
        return;
    }
    openNamed(name);
}

void Mutex::openNamed(const char* name) {
    SecurityObject* security = g_securityObject.load();
    const char* state = "Created";
    const std::string path = LockFilePath(name);
    SystemPaths::MakeFolders(SystemPaths::RunFolder());

    // Open before create: with fs.protected_regular, O_CREAT on another user's file in a
    // sticky folder fails even though the file exists.
    int fd = OpenExisting(path);
    int error = fd >= 0 ? 0 : errno;
    if (fd < 0) {
        if (security && error != ENOENT)
            DebugLogPrintf("Open Mutex %s Failed with error %d. This is OK we will create it\n",
                           name, error);
        fd = CreateLockFile(path, security ? security->creationMode() : CreatorOnlyMode,
                            error == ENOENT);
        error = fd >= 0 ? 0 : errno;
    }

    if (fd >= 0) {
        const std::optional<bool> existed = JoinNamedObject(fd);
        if (!existed) {
            error = errno;
            ::close(fd);
            fd = -1;
        } else if (security && *existed) {
            setLastError(ErrorAlreadyExists);
            state = "Opened";
        } else if (security) {
            // The creator's descriptor goes to the registry and the object works on a
            // duplicate, so the name outlives the object for the life of the process.
            const int duplicate = ::fcntl(fd, F_DUPFD_CLOEXEC, 0);
            error = duplicate >= 0 ? 0 : errno;
            {
                NamedMutexRegistry& registry = Registry();
                std::lock_guard<std::mutex> guard(registry.mutex);
                registry.handles.push_back(fd);
            }
            fd = duplicate;
        }
    }

    if (fd >= 0) {
        setHandle(fd);
        m_usable = true;
        m_name = name;
        DebugLogPrintf("Mutex: %s %s Mutex\n", state, m_name);
        return;
    }
    setLastError(static_cast<std::uint32_t>(error));
    if (error != 0) {
        m_name = name;
        DebugLogPrintf("Mutex: Create %s Mutex Error- %d\n", m_name, error);
    }
}

Mutex::~Mutex() {
    // The lock file may stay open in the registry after this object is gone; ownership left
    // on it would keep every later object of this name in this process out for good.
    while (m_depth > 0 && m_owner.load() == std::this_thread::get_id())
        release();
}

bool Mutex::lock(std::uint32_t timeoutMs) {
    const bool locked = acquire(timeoutMs);
    if (!m_name.empty()) {
        if (locked)
            DebugLogPrintf("Locked Mutex %s\n", m_name);
        else
            DebugLogPrintf("Mutex Lock Timeout or Fail %s\n", m_name);
    }
    return locked;
}

bool Mutex::acquire(std::uint32_t timeoutMs) {
    if (!m_usable)
        return false;
    const Deadline deadline =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    if (timeoutMs == Infinite)
        m_local.lock();
    else if (timeoutMs == 0 ? !m_local.try_lock() : !m_local.try_lock_until(deadline))
        return false;
    if (m_depth == 0 && handle() >= 0 && !lockFileOwnership(timeoutMs, deadline)) {
        m_local.unlock();
        return false;
    }
    ++m_depth;
    m_owner.store(std::this_thread::get_id());
    return true;
}

bool Mutex::lockFileOwnership(std::uint32_t timeoutMs, Deadline deadline) {
    if (timeoutMs == Infinite)
        return SetRangeLock(handle(), F_WRLCK, OwnershipByte, F_OFD_SETLKW);
    // A blocking file lock cannot time out, so a limited wait polls, with pauses that grow
    // so that a long wait costs little and a short one reacts quickly.
    auto pause = std::chrono::microseconds(200);
    for (;;) {
        if (SetRangeLock(handle(), F_WRLCK, OwnershipByte, F_OFD_SETLK))
            return true;
        if (errno != EAGAIN && errno != EACCES)
            return false;
        const auto now = std::chrono::steady_clock::now();
        if (now >= deadline)
            return false;
        std::this_thread::sleep_for(
            std::min<std::chrono::steady_clock::duration>(pause, deadline - now));
        pause = std::min<std::chrono::microseconds>(pause * 2, std::chrono::milliseconds(10));
    }
}

void Mutex::unlock() {
    if (!m_usable)
        return;
    if (!m_name.empty())
        DebugLogPrintf("Unlocked Mutex %s\n", m_name);
    release();
}

void Mutex::release() {
    if (m_owner.load() != std::this_thread::get_id())
        return;
    if (--m_depth == 0) {
        m_owner.store(std::thread::id());
        if (handle() >= 0)
            SetRangeLock(handle(), F_UNLCK, OwnershipByte, F_OFD_SETLK);
    }
    m_local.unlock();
}

void Mutex::CleanupNamedMutexHandles() {
    DebugLogPrintf("Mutex::CleanupNamedMutexHandles\n");
    std::vector<int> handles;
    {
        NamedMutexRegistry& registry = Registry();
        std::lock_guard<std::mutex> guard(registry.mutex);
        handles.swap(registry.handles);
    }
    for (int fd : handles)
        ::close(fd);
    DebugLogPrintf("Mutex::CleanupNamedMutexHandles - Finished\n");
}

std::string Mutex::LockFilePath(const std::string& name) {
    return SystemPaths::RunFolder() + "/" + name + ".lock";
}

} // namespace Corvane
