#include "service/ClientConnection.h"

#include "protocol/RpcFrameEncoder.h"

#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

ClientConnection::ClientConnection(int fd, std::uint64_t id, PeerCredentials peer,
                                   Standing standing)
    : m_fd(fd), m_id(id), m_peer(std::move(peer)), m_standing(standing) {}

ClientConnection::~ClientConnection() {
    ::close(m_fd);
}

ClientConnection::ReadStatus ClientConnection::read(std::vector<RpcFrame>& frames) {
    char chunk[16 * 1024];
    // A bounded number of reads per turn, so that one busy peer cannot starve the others.
    for (int turn = 0; turn < 8; ++turn) {
        const ssize_t n = ::recv(m_fd, chunk, sizeof chunk, 0);
        if (n == 0)
            return ReadStatus::Closed;
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return errno == EAGAIN || errno == EWOULDBLOCK ? ReadStatus::Open : ReadStatus::Closed;
        }
        m_decoder.feed(chunk, static_cast<std::size_t>(n));
        while (auto frame = m_decoder.next())
            frames.push_back(std::move(*frame));
        if (m_decoder.failed())
            return ReadStatus::Malformed;
    }
    return ReadStatus::Open;
}

bool ClientConnection::send(const RpcFrame& frame) {
    if (RpcFrameEncoder::append(frame, m_unsent) != RpcFrameError::None)
        return false;
    if (m_unsent.size() > MaxUnsent)
        return false;
    return flush();
}

bool ClientConnection::flush() {
    while (!m_unsent.empty()) {
        const ssize_t n = ::send(m_fd, m_unsent.data(), m_unsent.size(), MSG_NOSIGNAL);
        if (n > 0) {
            m_unsent.erase(0, static_cast<std::size_t>(n));
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        return n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    }
    return true;
}
