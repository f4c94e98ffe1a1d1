#include "service/ServiceDaemon.h"

#include "foundation/SystemPaths.h"
#include "protocol/RpcPayload.h"
#include "protocol/RpcSocketPath.h"
#include "protocol/RpcStatus.h"
#include "service/ControlArguments.h"
#include "service/ServicePaths.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

// Connections beyond the limit, or of refused users, that are kept to be answered.
constexpr std::size_t OverloadedAllowance = 64;

void Diagnose(const std::string& line) {
    std::fprintf(stderr, "qgsasvc[%d]: %s\n", static_cast<int>(::getpid()), line.c_str());
    std::fflush(stderr);
}

} // namespace

ServiceDaemon::ServiceDaemon(ServiceSettings settings, AccessPolicy policy)
    : m_settings(std::move(settings)), m_policy(std::move(policy)),
      m_config(ServicePaths::ConfigFile()), m_log(ServicePaths::MessageLog()),
      m_requests(m_config, m_state), m_control(m_settings, m_config, m_state, m_timers, *this),
      m_socketPath(RpcSocketPath::Path()) {}

ServiceDaemon::~ServiceDaemon() {
    m_connections.clear();
    if (m_listenFd >= 0)
        ::close(m_listenFd);
    if (m_signalFd >= 0)
        ::close(m_signalFd);
}

bool ServiceDaemon::prepare(std::string& error) {
    m_config.load();
    if (!m_log.open(error))
        return false;

    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    if (::sigprocmask(SIG_BLOCK, &signals, nullptr) != 0 ||
        (m_signalFd = ::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC)) < 0) {
        error = std::string("cannot take over SIGTERM: ") + std::strerror(errno);
        return false;
    }
    std::signal(SIGPIPE, SIG_IGN);

    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (m_socketPath.size() >= sizeof address.sun_path) {
        error = "the socket path " + m_socketPath + " is too long for a Unix socket";
        return false;
    }
    std::memcpy(address.sun_path, m_socketPath.c_str(), m_socketPath.size() + 1);
    if (!SystemPaths::MakeFolders(RpcSocketPath::Folder())) {
        error = "cannot create " + RpcSocketPath::Folder() + ": " + std::strerror(errno);
        return false;
    }
    m_listenFd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (m_listenFd < 0) {
        error = std::string("cannot create a socket: ") + std::strerror(errno);
        return false;
    }
    // The caller holds the pid file's lock: no other service can be listening on a socket
    // file that is there, so it is left over from one that died.
    ::unlink(m_socketPath.c_str());
    if (::bind(m_listenFd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::chmod(m_socketPath.c_str(), 0666) != 0 || ::listen(m_listenFd, 64) != 0) {
        error = "cannot listen on " + m_socketPath + ": " + std::strerror(errno);
        return false;
    }
    Diagnose("listening on " + m_socketPath + " for " + m_policy.describe() + ", " +
             std::to_string(m_settings.maxConnections) + " connections at most");
    m_log.service("started", static_cast<int>(::getpid()));
    return true;
}

int ServiceDaemon::run(const std::function<void()>& stopping) {
    std::vector<pollfd> polled;
    std::vector<std::uint64_t> polledIds;
    for (;;) {
        polled.clear();
        polledIds.clear();
        polled.push_back({m_signalFd, POLLIN, 0});
        polled.push_back({m_listenFd, POLLIN, 0});
        for (const auto& [id, connection] : m_connections) {
            const short events =
                static_cast<short>(POLLIN | (connection->wantsWrite() ? POLLOUT : 0));
            polled.push_back({connection->fd(), events, 0});
            polledIds.push_back(id);
        }
        const int ready = ::poll(polled.data(), polled.size(), m_timers.pollTimeout());
        if (ready < 0 && errno != EINTR) {
            Diagnose(std::string("poll failed: ") + std::strerror(errno));
            shutDown();
            return 1;
        }
        if (ready > 0) {
            if (polled[0].revents & POLLIN) {
                signalfd_siginfo info{};
                [[maybe_unused]] const ssize_t n = ::read(m_signalFd, &info, sizeof info);
                Diagnose("stopping on signal " + std::to_string(info.ssi_signo));
                if (stopping)
                    stopping();
                shutDown();
                return 0;
            }
            if (polled[1].revents & POLLIN)
                acceptAll();
            for (std::size_t i = 0; i < polledIds.size(); ++i) {
                if (ClientConnection* connection = find(polledIds[i]);
                    connection && polled[i + 2].revents != 0)
                    serve(*connection, polled[i + 2].revents);
            }
        }
        m_timers.runDue();
        removeFinished();
    }
}

void ServiceDaemon::acceptAll() {
    for (;;) {
        const int fd = ::accept4(m_listenFd, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (fd < 0) {
            if (errno == EINTR || errno == ECONNABORTED)
                continue;
            return; // EAGAIN, or out of descriptors: the rest wait in the backlog
        }
        admit(fd);
    }
}

void ServiceDaemon::admit(int fd) {
    PeerCredentials peer;
    if (!PeerCredentials::of(fd, peer)) {
        Diagnose("a peer without credentials: closed");
        ::close(fd);
        return;
    }
    ClientConnection::Standing standing = ClientConnection::Standing::Served;
    if (!m_policy.allows(peer))
        standing = ClientConnection::Standing::Refused;
    else if (servedCount() >= m_settings.maxConnections)
        standing = ClientConnection::Standing::Overloaded;
    // Peers that are not served are kept to be answered, up to an allowance; past it they
    // are closed at once, so that nothing grows without bound.
    if (standing != ClientConnection::Standing::Served &&
        m_connections.size() >= m_settings.maxConnections + OverloadedAllowance) {
        ::close(fd);
        return;
    }
    const std::uint64_t id = ++m_lastConnectionId;
    m_connections.emplace(id, std::make_unique<ClientConnection>(fd, id, peer, standing));
}

void ServiceDaemon::serve(ClientConnection& connection, short events) {
    if (events & POLLOUT) {
        if (!connection.flush()) {
            connection.abandon();
            return;
        }
    }
    if (!(events & (POLLIN | POLLHUP | POLLERR)))
        return;
    std::vector<RpcFrame> frames;
    const ClientConnection::ReadStatus status = connection.read(frames);
    const std::uint64_t id = connection.id();
    for (RpcFrame& frame : frames) {
        ClientConnection* still = find(id);
        if (!still || still->finished())
            return;
        onFrame(*still, std::move(frame));
    }
    ClientConnection* still = find(id);
    if (!still)
        return;
    if (status == ClientConnection::ReadStatus::Malformed) {
        Diagnose("connection " + std::to_string(id) + " from pid " +
                 std::to_string(still->peer().pid) +
                 " closed: " + DescribeRpcFrameError(still->decodeError()));
        still->abandon();
    } else if (status == ClientConnection::ReadStatus::Closed) {
        still->abandon();
    }
}

void ServiceDaemon::onFrame(ClientConnection& connection, RpcFrame&& frame) {
    if (frame.kind == RpcFrameKind::Request || frame.kind == RpcFrameKind::Control) {
        // An overloaded peer is judged again at each request: it is served once a place is
        // free, without having to connect again.
        if (connection.standing() == ClientConnection::Standing::Overloaded &&
            servedCount() < m_settings.maxConnections)
            connection.promote();
        if (connection.standing() != ClientConnection::Standing::Served) {
            turnAway(connection, frame,
                     connection.standing() == ClientConnection::Standing::Refused
                         ? RpcStatus::AccessDenied
                         : RpcStatus::Overloaded);
            return;
        }
    }
    switch (frame.kind) {
    case RpcFrameKind::Request:
        onRequest(connection, frame);
        return;
    case RpcFrameKind::Control:
        onControl(connection, frame);
        return;
    case RpcFrameKind::Reply:
    case RpcFrameKind::InboundCall:
    case RpcFrameKind::ControlReply:
        break;
    }
    Diagnose("connection " + std::to_string(connection.id()) +
             " closed: it sent a frame that only the service sends");
    connection.abandon();
}

void ServiceDaemon::turnAway(ClientConnection& connection, const RpcFrame& frame,
                             std::uint32_t status) {
    if (frame.kind == RpcFrameKind::Request) {
        const ReceivedRequest request = RequestHandler::read(frame.payload);
        m_log.received(connection.peer(), request.id, request.name, request.fields, status);
    } else {
        const auto arguments = ControlArguments::decode(frame.payload);
        m_log.control(connection.peer(), NameOf(static_cast<ControlOperation>(frame.code)),
                      arguments.value_or(std::vector<std::string>()), status,
                      status == RpcStatus::AccessDenied ? "access denied" : "overloaded");
    }
    // The connection stays: closing it would make the peer's next request fail on a dead
    // socket (65531) instead of being refused again.
    sendTo(connection.id(), RpcFrame{RpcFrameKind::Reply, frame.correlation, status, {}});
}

void ServiceDaemon::onRequest(ClientConnection& connection, const RpcFrame& frame) {
    const ReceivedRequest request = RequestHandler::read(frame.payload);
    const FaultMode fault = m_state.fault;
    switch (fault.kind) {
    case FaultMode::Kind::Drop:
        m_log.received(connection.peer(), request.id, request.name, request.fields, std::nullopt);
        connection.abandon();
        return;
    case FaultMode::Kind::Refuse:
    case FaultMode::Kind::Overload: {
        const std::uint32_t status =
            fault.kind == FaultMode::Kind::Refuse ? RpcStatus::AccessDenied : RpcStatus::Overloaded;
        m_log.received(connection.peer(), request.id, request.name, request.fields, status);
        if (!connection.send(RpcFrame{RpcFrameKind::Reply, frame.correlation, status, {}}))
            connection.abandon();
        return;
    }
    case FaultMode::Kind::Slow:
    case FaultMode::Kind::Off:
        break;
    }

    RequestOutcome outcome = m_requests.handle(request);
    if (!outcome.problem.empty())
        Diagnose("request " + std::to_string(request.id) + ": " + outcome.problem);
    m_log.received(connection.peer(), request.id, request.name, request.fields, outcome.status);
    if (outcome.broadcast)
        broadcast(*outcome.broadcast);
    RpcFrame reply{RpcFrameKind::Reply, frame.correlation, outcome.status,
                   std::move(outcome.reply)};
    if (fault.kind == FaultMode::Kind::Slow) {
        const std::uint64_t id = connection.id();
        m_timers.add(std::chrono::milliseconds(fault.delayMs),
                     [this, id, reply = std::move(reply)] { sendTo(id, reply); });
        return;
    }
    sendTo(connection.id(), reply);
}

void ServiceDaemon::onControl(ClientConnection& connection, const RpcFrame& frame) {
    connection.markControl();
    const std::uint64_t id = connection.id();
    const PeerCredentials peer = connection.peer();
    const std::uint32_t operation = frame.code;
    const std::uint32_t correlation = frame.correlation;
    auto arguments = ControlArguments::decode(frame.payload);
    auto answer = [this, id, peer, operation, correlation,
                   arguments = arguments.value_or(std::vector<std::string>())](
                      std::uint32_t result, const std::string& text) {
        m_log.control(peer, NameOf(static_cast<ControlOperation>(operation)), arguments, result,
                      text);
        sendTo(id, RpcFrame{RpcFrameKind::ControlReply, correlation, result, text});
    };
    if (!arguments) {
        answer(ControlHandler::Refused, "malformed control arguments");
        return;
    }
    m_control.handle(operation, *arguments, answer);
}

std::size_t ServiceDaemon::broadcast(const FieldMessage& message) {
    const std::string payload = RpcPayload::InboundOf(message);
    std::vector<std::uint64_t> targets;
    for (const auto& [id, connection] : m_connections) {
        if (connection->standing() == ClientConnection::Standing::Served &&
            !connection->isControl() && !connection->finished())
            targets.push_back(id);
    }
    // Recorded first: a program that has the call in hand finds the line in the file.
    m_log.sent(message, targets.size());
    if (++m_lastCallSequence == 0)
        ++m_lastCallSequence;
    const RpcFrame call{RpcFrameKind::InboundCall, m_lastCallSequence, message.GetId(), payload};
    for (const std::uint64_t id : targets)
        sendTo(id, call);
    return targets.size();
}

std::size_t ServiceDaemon::servedCount() const {
    std::size_t count = 0;
    for (const auto& entry : m_connections) {
        const ClientConnection& connection = *entry.second;
        if (connection.standing() == ClientConnection::Standing::Served && !connection.finished())
            ++count;
    }
    return count;
}

std::size_t ServiceDaemon::programCount() const {
    std::size_t count = 0;
    for (const auto& entry : m_connections) {
        const ClientConnection& connection = *entry.second;
        if (connection.standing() == ClientConnection::Standing::Served &&
            !connection.isControl() && !connection.finished())
            ++count;
    }
    return count;
}

void ServiceDaemon::sendTo(std::uint64_t connectionId, const RpcFrame& frame) {
    ClientConnection* connection = find(connectionId);
    if (!connection || connection->finished())
        return;
    if (!connection->send(frame)) {
        Diagnose("connection " + std::to_string(connectionId) + " from pid " +
                 std::to_string(connection->peer().pid) + " dropped: it does not read");
        connection->abandon();
    }
}

ClientConnection* ServiceDaemon::find(std::uint64_t connectionId) {
    const auto found = m_connections.find(connectionId);
    return found == m_connections.end() ? nullptr : found->second.get();
}

void ServiceDaemon::removeFinished() {
    std::erase_if(m_connections, [](const auto& entry) { return entry.second->finished(); });
}

void ServiceDaemon::shutDown() {
    // No new peer from here on; what is queued for the others gets a short chance to go.
    if (m_listenFd >= 0) {
        ::close(m_listenFd);
        m_listenFd = -1;
        ::unlink(m_socketPath.c_str());
    }
    for (auto& entry : m_connections)
        entry.second->flush();
    m_connections.clear();
    m_log.service("stopped", static_cast<int>(::getpid()));
}
