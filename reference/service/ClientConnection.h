#pragma once
// One accepted connection: who the peer is, whether the service serves it, the frames it
// sends and the bytes waiting to go to it. Writes never block the service: what the socket
// does not take at once waits here, and a peer that lets too much pile up (a program that
// never reads its calls) is dropped rather than allowed to make the service grow.

#include "protocol/RpcFrame.h"
#include "protocol/RpcFrameDecoder.h"
#include "service/PeerCredentials.h"

#include <cstdint>
#include <string>
#include <vector>

class ClientConnection {
public:
    // Served: allowed and within the limit. Refused: its user may not use the service.
    // Overloaded: beyond the connection limit, until a place is free (promote). The last
    // two have every request answered with their status and nothing carried out.
    enum class Standing { Served, Refused, Overloaded };
    enum class ReadStatus { Open, Closed, Malformed };

    static constexpr std::size_t MaxUnsent = 1024 * 1024;

    ClientConnection(int fd, std::uint64_t id, PeerCredentials peer, Standing standing);
    ~ClientConnection();
    ClientConnection(const ClientConnection&) = delete;
    ClientConnection& operator=(const ClientConnection&) = delete;

    int fd() const { return m_fd; }
    std::uint64_t id() const { return m_id; }
    const PeerCredentials& peer() const { return m_peer; }
    Standing standing() const { return m_standing; }
    void promote() { m_standing = Standing::Served; }

    // A connection that has sent a control frame is a control client: calls to the
    // programs do not go to it.
    bool isControl() const { return m_control; }
    void markControl() { m_control = true; }

    // Reads what the socket holds and appends the complete frames to `frames`; Closed and
    // Malformed come after any frames that preceded them.
    ReadStatus read(std::vector<RpcFrame>& frames);
    RpcFrameError decodeError() const { return m_decoder.error(); }

    // Queues `frame` and writes what the socket takes. False when the connection is to be
    // dropped (the peer is gone, or too much is waiting).
    bool send(const RpcFrame& frame);
    // Writes what waits; false when the peer is gone.
    bool flush();
    bool wantsWrite() const { return !m_unsent.empty(); }

    // Marked to be removed by the service's loop.
    void abandon() { m_abandoned = true; }
    bool finished() const { return m_abandoned; }

private:
    int m_fd;
    std::uint64_t m_id;
    PeerCredentials m_peer;
    Standing m_standing;
    bool m_control = false;
    bool m_abandoned = false;
    RpcFrameDecoder m_decoder;
    std::string m_unsent;
};
