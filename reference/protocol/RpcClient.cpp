#include "protocol/RpcClient.h"

#include "protocol/RpcFrameEncoder.h"
#include "protocol/RpcSocketPath.h"
#include "protocol/RpcStatus.h"

#include <utility>
#include <vector>

RpcClient::RpcClient(std::string socketPath)
    : m_socketPath(socketPath.empty() ? RpcSocketPath::Path() : std::move(socketPath)) {}

RpcClient::~RpcClient() {
    std::unique_lock lock(m_mutex);
    if (m_link)
        breakLocked(m_link);
    m_changed.wait(lock, [this] { return !m_reading; });
}

std::uint32_t RpcClient::connect() {
    std::lock_guard lock(m_mutex);
    return m_link ? RpcStatus::Delivered : connectLocked();
}

void RpcClient::disconnect() {
    std::lock_guard lock(m_mutex);
    if (m_link)
        breakLocked(m_link);
}

bool RpcClient::isConnected() const {
    std::lock_guard lock(m_mutex);
    return m_link != nullptr;
}

std::uint64_t RpcClient::droppedInbound() const {
    std::lock_guard lock(m_mutex);
    return m_dropped;
}

RpcAnswer RpcClient::sendRequest(std::string_view payload, std::chrono::milliseconds timeout) {
    return transact(RpcFrameKind::Request, 0, payload, timeout);
}

RpcAnswer RpcClient::sendControl(std::uint32_t operation, std::string_view payload,
                                 std::chrono::milliseconds timeout) {
    return transact(RpcFrameKind::Control, operation, payload, timeout);
}

std::optional<RpcFrame> RpcClient::waitForInbound(std::chrono::milliseconds timeout) {
    const auto deadline = Clock::now() + timeout;
    std::unique_lock lock(m_mutex);
    for (;;) {
        if (!m_inbound.empty()) {
            RpcFrame frame = std::move(m_inbound.front());
            m_inbound.pop_front();
            return frame;
        }
        if (Clock::now() >= deadline)
            return std::nullopt;
        if (m_link && !m_reading) {
            const std::shared_ptr<Link> link = m_link;
            readOnce(lock, link, deadline);
        } else {
            m_changed.wait_until(lock, deadline);
        }
    }
}

RpcAnswer RpcClient::transact(RpcFrameKind kind, std::uint32_t code, std::string_view payload,
                              std::chrono::milliseconds timeout) {
    const auto deadline = Clock::now() + timeout;
    RpcAnswer answer;
    std::unique_lock lock(m_mutex);
    // A connection that the service has ended since the last request is noticed before
    // anything is written into it, so that the request goes out on a new one instead of
    // failing; one read without waiting also takes in the calls that came meanwhile.
    if (m_link && !m_reading) {
        const std::shared_ptr<Link> link = m_link;
        readOnce(lock, link, Clock::now());
    }
    if (!m_link) {
        answer.status = connectLocked();
        if (answer.status != RpcStatus::Delivered)
            return answer;
    }
    const std::shared_ptr<Link> link = m_link;

    if (++m_lastCorrelation == 0)
        ++m_lastCorrelation;
    const std::uint32_t id = m_lastCorrelation;
    std::string bytes;
    if (RpcFrameEncoder::append(RpcFrame{kind, id, code, std::string(payload)}, bytes) !=
        RpcFrameError::None) {
        // Nothing was written: the frame breaks the protocol's own rules (a payload too big).
        answer.status = RpcStatus::SendFailed;
        return answer;
    }
    m_waiting[id] = kind;
    lock.unlock();
    std::uint32_t written;
    {
        std::lock_guard writing(m_writeMutex);
        written = link->connection->writeAll(bytes, deadline);
    }
    lock.lock();
    if (written != RpcStatus::Delivered) {
        // Part of a frame may be on the socket: the stream cannot carry another one.
        m_waiting.erase(id);
        breakLocked(link);
        answer.status = written;
        return answer;
    }

    for (;;) {
        if (auto found = m_answers.find(id); found != m_answers.end()) {
            RpcFrame reply = std::move(found->second);
            m_answers.erase(found);
            m_waiting.erase(id);
            if (reply.kind == RpcFrameKind::ControlReply) {
                answer.status = RpcStatus::Delivered;
                answer.result = reply.code;
            } else {
                // A reply's code is the request's status; to a control operation it is the
                // service's refusal of the caller.
                answer.status = reply.code;
            }
            answer.payload = std::move(reply.payload);
            return answer;
        }
        if (m_link != link) {
            m_waiting.erase(id);
            answer.status = RpcStatus::SendFailed;
            return answer;
        }
        if (Clock::now() >= deadline) {
            m_waiting.erase(id);
            answer.status = RpcStatus::TimedOut;
            return answer;
        }
        if (!m_reading)
            readOnce(lock, link, deadline);
        else
            m_changed.wait_until(lock, deadline);
    }
}

std::uint32_t RpcClient::connectLocked() {
    std::unique_ptr<RpcConnection> connection;
    const std::uint32_t status = RpcConnection::open(m_socketPath, connection);
    if (status != RpcStatus::Delivered)
        return status;
    auto link = std::make_shared<Link>();
    link->connection = std::move(connection);
    m_link = std::move(link);
    m_changed.notify_all();
    return RpcStatus::Delivered;
}

void RpcClient::breakLocked(std::shared_ptr<Link> link) {
    if (m_link == link)
        m_link.reset();
    link->connection->shutdown();
    m_changed.notify_all();
}

void RpcClient::readOnce(std::unique_lock<std::mutex>& lock, const std::shared_ptr<Link>& link,
                         Clock::time_point deadline) {
    m_reading = true;
    lock.unlock();
    std::string bytes;
    std::vector<RpcFrame> frames;
    bool broken = false;
    switch (link->connection->readSome(bytes, deadline)) {
    case RpcConnection::ReadResult::Data:
        // Only the thread that holds the reading role touches the decoder.
        link->decoder.feed(bytes.data(), bytes.size());
        while (auto frame = link->decoder.next())
            frames.push_back(std::move(*frame));
        broken = link->decoder.failed();
        break;
    case RpcConnection::ReadResult::Closed:
        broken = true;
        break;
    case RpcConnection::ReadResult::TimedOut:
        break;
    }
    lock.lock();
    m_reading = false;
    // Frames that came before the end of the stream still count: a refusal is written just
    // before the service closes the connection.
    for (RpcFrame& frame : frames)
        dispatchLocked(link, std::move(frame));
    if (broken)
        breakLocked(link);
    m_changed.notify_all();
}

void RpcClient::dispatchLocked(const std::shared_ptr<Link>& link, RpcFrame&& frame) {
    switch (frame.kind) {
    case RpcFrameKind::InboundCall:
        if (m_inbound.size() >= InboundQueueLimit) {
            m_inbound.pop_front();
            ++m_dropped;
        }
        m_inbound.push_back(std::move(frame));
        return;
    case RpcFrameKind::Reply:
    case RpcFrameKind::ControlReply: {
        const auto waiting = m_waiting.find(frame.correlation);
        if (waiting == m_waiting.end())
            return; // the answer to a request that has given up waiting
        if (frame.kind == RpcFrameKind::ControlReply && waiting->second != RpcFrameKind::Control)
            break;
        m_answers[frame.correlation] = std::move(frame);
        return;
    }
    case RpcFrameKind::Request:
    case RpcFrameKind::Control:
        break;
    }
    // The service never sends these: whatever is on the other end is not to be trusted.
    breakLocked(link);
}
