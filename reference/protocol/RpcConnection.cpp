#include "protocol/RpcConnection.h"

#include "protocol/RpcStatus.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

int MillisecondsUntil(RpcConnection::Clock::time_point deadline) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - RpcConnection::Clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60 * 60 * 1000));
}

std::uint32_t StatusOfConnectError(int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return RpcStatus::AccessDenied;
    case EAGAIN:
        return RpcStatus::Overloaded;
    default:
        return RpcStatus::ServerDown;
    }
}

} // namespace

std::uint32_t RpcConnection::open(const std::string& path, std::unique_ptr<RpcConnection>& out) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path)
        return RpcStatus::ServerDown;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);

    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return RpcStatus::ServerDown;
    // A Unix stream connect completes or fails at once; with the listener's backlog full a
    // non-blocking one fails with EAGAIN instead of waiting.
    if (::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        const int error = errno;
        ::close(fd);
        return StatusOfConnectError(error);
    }
    out = std::make_unique<RpcConnection>(fd);
    return RpcStatus::Delivered;
}

RpcConnection::~RpcConnection() {
    ::close(m_fd);
}

std::uint32_t RpcConnection::writeAll(std::string_view bytes, Clock::time_point deadline) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t n =
            ::send(m_fd, bytes.data() + written, bytes.size() - written, MSG_NOSIGNAL);
        if (n > 0) {
            written += static_cast<std::size_t>(n);
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            pollfd waiting{m_fd, POLLOUT, 0};
            const int timeout = MillisecondsUntil(deadline);
            const int ready = ::poll(&waiting, 1, timeout);
            if (ready == 0)
                return RpcStatus::TimedOut;
            if (ready < 0 && errno != EINTR)
                return RpcStatus::SendFailed;
            continue;
        }
        return RpcStatus::SendFailed;
    }
    return RpcStatus::Delivered;
}

RpcConnection::ReadResult RpcConnection::readSome(std::string& out, Clock::time_point deadline) {
    char chunk[16 * 1024];
    for (;;) {
        const ssize_t n = ::recv(m_fd, chunk, sizeof chunk, 0);
        if (n > 0) {
            out.append(chunk, static_cast<std::size_t>(n));
            return ReadResult::Data;
        }
        if (n == 0)
            return ReadResult::Closed;
        if (errno == EINTR)
            continue;
        if (errno != EAGAIN && errno != EWOULDBLOCK)
            return ReadResult::Closed;
        pollfd waiting{m_fd, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, MillisecondsUntil(deadline));
        if (ready == 0)
            return ReadResult::TimedOut;
        if (ready < 0 && errno != EINTR)
            return ReadResult::Closed;
    }
}

void RpcConnection::shutdown() {
    ::shutdown(m_fd, SHUT_RDWR);
}
