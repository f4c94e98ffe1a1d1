#pragma once
// A program's end of the service's socket: requests that block until their reply, the time-out
// or a failure, each ending with a status of RpcStatus; the calls that the service makes,
// queued until somebody asks for them; and control operations. It is safe to use from
// several threads at once, as the plug-in's RPC object does (requests from the GUI thread,
// inbound calls on a reader thread): whichever thread waits reads the socket for all of
// them, so there is no thread inside.
//
// A request connects first when there is no connection, so each request after an outage
// tries again; a failure closes the connection. A reply that comes after its request timed
// out is recognised by its correlation id and dropped.

#include "protocol/RpcConnection.h"
#include "protocol/RpcFrame.h"
#include "protocol/RpcFrameDecoder.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

struct RpcAnswer {
    // A request: the status of RpcStatus, or what the service answered. A control
    // operation: Delivered when the service carried it out or refused it in a control
    // reply, else the status that ended it.
    std::uint32_t status = 0;
    // A control operation's result code (0: done); 0 for a request.
    std::uint32_t result = 0;
    // The reply's payload: a UTF-8 envelope, or the text of a control result.
    std::string payload;
};

class RpcClient {
public:
    using Clock = std::chrono::steady_clock;
    // Inbound calls that nobody has asked for are kept up to this count; older ones go.
    static constexpr std::size_t InboundQueueLimit = 1024;

    // `socketPath` defaults to RpcSocketPath::Path() of the environment at construction.
    explicit RpcClient(std::string socketPath = {});
    // Closes the connection and waits until no thread of this object is inside a read.
    ~RpcClient();
    RpcClient(const RpcClient&) = delete;
    RpcClient& operator=(const RpcClient&) = delete;

    // Connects unless connected: Delivered, or the status of the failed attempt.
    std::uint32_t connect();
    // Closes the connection; a request that waits ends with SendFailed.
    void disconnect();
    bool isConnected() const;

    // Sends a request (`payload`: an envelope as UTF-8) and waits for its reply.
    RpcAnswer sendRequest(std::string_view payload, std::chrono::milliseconds timeout);
    // Sends control operation `operation` and waits for its result.
    RpcAnswer sendControl(std::uint32_t operation, std::string_view payload,
                          std::chrono::milliseconds timeout);
    // The oldest inbound call not yet taken, waiting for one up to `timeout`. Waiting
    // without a connection is allowed: a request made meanwhile connects.
    std::optional<RpcFrame> waitForInbound(std::chrono::milliseconds timeout);
    // Inbound calls dropped because the queue was full.
    std::uint64_t droppedInbound() const;

private:
    // A connection and what belongs to it; replaced on reconnection, kept alive by every
    // thread that is using it.
    struct Link {
        std::unique_ptr<RpcConnection> connection;
        RpcFrameDecoder decoder;
    };

    RpcAnswer transact(RpcFrameKind kind, std::uint32_t code, std::string_view payload,
                       std::chrono::milliseconds timeout);
    std::uint32_t connectLocked();
    // Drops `link` if it is still the current one and wakes everybody who waits on it.
    // Takes its own reference: `link` is often m_link itself, which this resets.
    void breakLocked(std::shared_ptr<Link> link);
    // One read by the calling thread on behalf of all; called and returns with the lock
    // held, released while it waits on the socket.
    void readOnce(std::unique_lock<std::mutex>& lock, const std::shared_ptr<Link>& link,
                  Clock::time_point deadline);
    void dispatchLocked(const std::shared_ptr<Link>& link, RpcFrame&& frame);

    const std::string m_socketPath;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    // Serialises writers so that two frames never interleave on the socket.
    std::mutex m_writeMutex;
    std::shared_ptr<Link> m_link;
    bool m_reading = false;
    std::uint32_t m_lastCorrelation = 0;
    // The requests and control operations that wait, by correlation id, with their kind.
    std::map<std::uint32_t, RpcFrameKind> m_waiting;
    std::map<std::uint32_t, RpcFrame> m_answers;
    std::deque<RpcFrame> m_inbound;
    std::uint64_t m_dropped = 0;
};
