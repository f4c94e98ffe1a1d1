#include "messaging/WaitableEvent.h"

#include <cerrno>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

WaitableEvent::WaitableEvent() : m_fd(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

WaitableEvent::~WaitableEvent() {
    if (m_fd != -1)
        ::close(m_fd);
}

bool WaitableEvent::set() {
    if (m_fd == -1)
        return false;
    // The counter only ever holds 0 or 1 wanted; a second set adds to a readable counter,
    // which stays readable, so setting twice is as setting once.
    const std::uint64_t one = 1;
    ssize_t written = -1;
    do {
        written = ::write(m_fd, &one, sizeof one);
    } while (written == -1 && errno == EINTR);
    return written == static_cast<ssize_t>(sizeof one);
}

bool WaitableEvent::reset() {
    if (m_fd == -1)
        return false;
    // Reading takes the whole counter back to 0; an event that is not set has nothing to
    // read (EAGAIN), which is already the wanted state.
    std::uint64_t value = 0;
    ssize_t got = -1;
    do {
        got = ::read(m_fd, &value, sizeof value);
    } while (got == -1 && errno == EINTR);
    return got == static_cast<ssize_t>(sizeof value) || errno == EAGAIN;
}

bool WaitableEvent::isSet() const {
    if (m_fd == -1)
        return false;
    pollfd entry{m_fd, POLLIN, 0};
    int ready = -1;
    do {
        ready = ::poll(&entry, 1, 0);
    } while (ready == -1 && errno == EINTR);
    return ready == 1 && (entry.revents & POLLIN) != 0;
}
