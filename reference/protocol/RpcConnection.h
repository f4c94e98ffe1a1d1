#pragma once
// One connected, non-blocking stream socket to the service, closed with the object. It knows
// how a connection attempt and a write fail in terms of the request statuses, and it can be
// shut down from another thread to wake a reader that waits on it.

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class RpcConnection {
public:
    using Clock = std::chrono::steady_clock;

    // Connects to the socket at `path`. Delivered with `out` set, or: ServerDown (no socket,
    // nobody listening, a path too long for a socket), AccessDenied (the socket's
    // permissions), Overloaded (the service's backlog is full).
    static std::uint32_t open(const std::string& path, std::unique_ptr<RpcConnection>& out);

    // Takes over a connected stream socket.
    explicit RpcConnection(int fd) : m_fd(fd) {}
    ~RpcConnection();
    RpcConnection(const RpcConnection&) = delete;
    RpcConnection& operator=(const RpcConnection&) = delete;

    // Writes all of `bytes`: Delivered, SendFailed (the peer went away), or TimedOut (the
    // deadline passed with part of it unwritten; the stream is then unusable).
    std::uint32_t writeAll(std::string_view bytes, Clock::time_point deadline);

    enum class ReadResult { Data, TimedOut, Closed };
    // Waits until the deadline for bytes and appends what one read gives to `out`. Closed:
    // the peer ended the stream, it broke, or shutdown() was called.
    ReadResult readSome(std::string& out, Clock::time_point deadline);

    // Ends both directions without closing the descriptor, so that a thread waiting in
    // readSome wakes up and sees Closed.
    void shutdown();

private:
    int m_fd;
};
