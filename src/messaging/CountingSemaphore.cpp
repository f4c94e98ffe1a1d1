#include "messaging/CountingSemaphore.h"

#include <cerrno>
#include <sys/eventfd.h>
#include <unistd.h>

CountingSemaphore::CountingSemaphore(std::uint32_t initialCount, std::uint32_t maximumCount)
    : m_maximum(maximumCount) {
    const std::uint32_t start = initialCount <= maximumCount ? initialCount : maximumCount;
    m_fd = ::eventfd(start, EFD_SEMAPHORE | EFD_NONBLOCK | EFD_CLOEXEC);
    if (m_fd != -1)
        m_count = start;
}

CountingSemaphore::~CountingSemaphore() {
    if (m_fd != -1)
        ::close(m_fd);
}

bool CountingSemaphore::release(std::uint32_t count) {
    if (m_fd == -1 || count == 0)
        return false;
    std::lock_guard<std::mutex> guard(m_countLock);
    if (m_count + count > m_maximum)
        return false;
    const std::uint64_t add = count;
    ssize_t written = -1;
    do {
        written = ::write(m_fd, &add, sizeof add);
    } while (written == -1 && errno == EINTR);
    if (written != static_cast<ssize_t>(sizeof add))
        return false;
    m_count += count;
    return true;
}

bool CountingSemaphore::tryAcquire() {
    if (m_fd == -1)
        return false;
    std::uint64_t one = 0;
    ssize_t got = -1;
    do {
        got = ::read(m_fd, &one, sizeof one);
    } while (got == -1 && errno == EINTR);
    if (got != static_cast<ssize_t>(sizeof one))
        return false;
    std::lock_guard<std::mutex> guard(m_countLock);
    if (m_count > 0)
        --m_count;
    return true;
}
