// RpcClient against a scripted server on a sandbox socket: every status of the send path,
// correlation of replies, the queue of calls, and use from two threads.
#include "protocol/RpcClient.h"

#include "foundation/SystemPaths.h"
#include "protocol/RpcFrameDecoder.h"
#include "protocol/RpcFrameEncoder.h"
#include "protocol/RpcSocketPath.h"
#include "protocol/RpcStatus.h"
#include "support/SandboxRoot.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <functional>
#include <linux/sockios.h>
#include <memory>
#include <mutex>
#include <optional>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;

sockaddr_un AddressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    return address;
}

// One accepted connection as a script sees it: blocking reads of whole frames, writes.
class Peer {
public:
    explicit Peer(int fd) : m_fd(fd) {}
    ~Peer() { ::close(m_fd); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    // The next frame, or nothing at the end of the stream.
    std::optional<RpcFrame> read() {
        for (;;) {
            if (auto frame = m_decoder.next())
                return frame;
            char chunk[4096];
            const ssize_t n = ::recv(m_fd, chunk, sizeof chunk, 0);
            if (n <= 0)
                return std::nullopt;
            m_decoder.feed(chunk, static_cast<std::size_t>(n));
        }
    }
    void writeBytes(const std::string& bytes) {
        ASSERT_EQ(::send(m_fd, bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    }
    void write(const RpcFrame& frame) { writeBytes(RpcFrameEncoder::encode(frame)); }
    // Waits until the client has read everything written so far, so that what comes next
    // reaches it in a read of its own.
    bool drained() {
        return TestSupport::WaitFor([this] {
            int unread = -1;
            return ::ioctl(m_fd, SIOCOUTQ, &unread) == 0 && unread == 0;
        });
    }
    void reply(const RpcFrame& request, std::uint32_t code, std::string payload) {
        write(RpcFrame{RpcFrameKind::Reply, request.correlation, code, std::move(payload)});
    }

private:
    int m_fd;
    RpcFrameDecoder m_decoder;
};

// A listener on the sandbox's socket path that runs one script per accepted connection, in
// order, on a thread of its own (blocking calls are fine there).
class ScriptedServer {
public:
    using Script = std::function<void(Peer&)>;

    explicit ScriptedServer(int backlog = 8) {
        SystemPaths::MakeFolders(RpcSocketPath::Folder());
        m_fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_un address = AddressOf(RpcSocketPath::Path());
        if (::bind(m_fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            ::listen(m_fd, backlog) != 0)
            ADD_FAILURE() << "cannot listen on " << RpcSocketPath::Path();
    }
    ~ScriptedServer() {
        join();
        ::close(m_fd);
    }

    void serve(std::vector<Script> scripts) {
        m_thread = std::thread([this, scripts = std::move(scripts)] {
            for (const Script& script : scripts) {
                const int fd = ::accept4(m_fd, nullptr, nullptr, SOCK_CLOEXEC);
                if (fd < 0)
                    return;
                Peer peer(fd);
                script(peer);
            }
        });
    }
    // Waits until every script has run.
    void join() {
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    int m_fd = -1;
    std::thread m_thread;
};

RpcFrame Call(std::uint32_t sequence, std::uint32_t id, std::string payload) {
    return RpcFrame{RpcFrameKind::InboundCall, sequence, id, std::move(payload)};
}

} // namespace

TEST(RpcClient, WithoutASocketIsServerDown) {
    TestSupport::SandboxRoot sandbox;
    RpcClient client;
    EXPECT_EQ(client.connect(), RpcStatus::ServerDown);
    EXPECT_EQ(client.sendRequest("x", 1s).status, RpcStatus::ServerDown);
    EXPECT_FALSE(client.isConnected());
}

TEST(RpcClient, ASocketThatNobodyListensOnIsServerDown) {
    TestSupport::SandboxRoot sandbox;
    SystemPaths::MakeFolders(RpcSocketPath::Folder());
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = AddressOf(RpcSocketPath::Path());
    ASSERT_EQ(::bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    RpcClient client;
    EXPECT_EQ(client.sendRequest("x", 1s).status, RpcStatus::ServerDown);
    ::close(fd);
}

TEST(RpcClient, ASocketPathTooLongForASocketIsServerDown) {
    RpcClient client("/tmp/" + std::string(200, 'x'));
    EXPECT_EQ(client.sendRequest("x", 1s).status, RpcStatus::ServerDown);
}

TEST(RpcClient, TakesTheReplysCodeAsTheStatusAndHandsBackItsPayload) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    std::optional<RpcFrame> seen;
    server.serve({[&](Peer& peer) {
        seen = peer.read();
        peer.reply(*seen, 7, "answer");
    }});
    RpcClient client;
    const RpcAnswer answer = client.sendRequest("question", 10s);
    EXPECT_EQ(answer.status, 7u);
    EXPECT_EQ(answer.result, 0u);
    EXPECT_EQ(answer.payload, "answer");
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->kind, RpcFrameKind::Request);
    EXPECT_EQ(seen->code, 0u);
    EXPECT_NE(seen->correlation, 0u);
    EXPECT_EQ(seen->payload, "question");
}

TEST(RpcClient, EndsWithTimedOutWhenNoReplyComesAndDropsTheReplyThatComesLate) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) {
        const auto first = peer.read();
        // The first reply is held back until the second request is there.
        const auto second = peer.read();
        peer.reply(*first, 1, "first");
        ASSERT_TRUE(peer.drained());
        peer.reply(*second, 2, "second");
        peer.read();
    }});
    RpcClient client;
    EXPECT_EQ(client.sendRequest("one", 100ms).status, RpcStatus::TimedOut);
    EXPECT_TRUE(client.isConnected());
    const RpcAnswer answer = client.sendRequest("two", 10s);
    EXPECT_EQ(answer.status, 2u);
    EXPECT_EQ(answer.payload, "second");
    client.disconnect();
}

TEST(RpcClient, EndsWithSendFailedWhenTheConnectionEndsBeforeTheReply) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) { peer.read(); }});
    RpcClient client;
    EXPECT_EQ(client.sendRequest("x", 10s).status, RpcStatus::SendFailed);
    EXPECT_FALSE(client.isConnected());
}

TEST(RpcClient, SeesARefusalWrittenJustBeforeTheConnectionEnds) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) {
        const auto request = peer.read();
        peer.reply(*request, RpcStatus::AccessDenied, "");
    }});
    RpcClient client;
    EXPECT_EQ(client.sendRequest("x", 10s).status, RpcStatus::AccessDenied);
}

TEST(RpcClient, ReconnectsAtTheNextRequestAfterAFailure) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) { peer.read(); },
                  [](Peer& peer) {
                      const auto request = peer.read();
                      peer.reply(*request, 1, "");
                      peer.read();
                  }});
    RpcClient client;
    EXPECT_EQ(client.sendRequest("x", 10s).status, RpcStatus::SendFailed);
    EXPECT_EQ(client.sendRequest("x", 10s).status, RpcStatus::Delivered);
    client.disconnect();
}

TEST(RpcClient, AFullBacklogIsOverloaded) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server(0); // never accepts
    std::vector<std::unique_ptr<RpcClient>> clients;
    std::vector<std::uint32_t> statuses;
    for (int i = 0; i < 16 && (statuses.empty() || statuses.back() == RpcStatus::Delivered); ++i) {
        clients.push_back(std::make_unique<RpcClient>());
        statuses.push_back(clients.back()->connect());
    }
    ASSERT_GE(statuses.size(), 2u);
    EXPECT_EQ(statuses.front(), RpcStatus::Delivered);
    EXPECT_EQ(statuses.back(), RpcStatus::Overloaded);
}

TEST(RpcClient, KeepsTheCallsThatComeWhileAReplyIsAwaitedInTheirOrder) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) {
        const auto request = peer.read();
        peer.write(Call(1, 256, std::string("a\0", 2)));
        peer.write(Call(2, 265, ""));
        peer.reply(*request, 1, "");
        peer.read();
    }});
    RpcClient client;
    ASSERT_EQ(client.sendRequest("x", 10s).status, RpcStatus::Delivered);
    EXPECT_EQ(client.waitForInbound(0ms), Call(1, 256, std::string("a\0", 2)));
    EXPECT_EQ(client.waitForInbound(0ms), Call(2, 265, ""));
    EXPECT_FALSE(client.waitForInbound(50ms).has_value());
    client.disconnect();
}

TEST(RpcClient, AThreadWaitingForCallsAndAThreadSendingRequestsShareTheConnection) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) {
        for (std::uint32_t i = 1; i <= 20; ++i) {
            const auto request = peer.read();
            if (!request)
                return;
            peer.reply(*request, 1, request->payload);
            peer.write(Call(i, 256, ""));
        }
        peer.read();
    }});
    RpcClient client;
    ASSERT_EQ(client.connect(), RpcStatus::Delivered);
    std::vector<std::uint32_t> sequences;
    std::thread reader([&] {
        while (sequences.size() < 20) {
            const auto call = client.waitForInbound(10s);
            if (!call)
                return;
            sequences.push_back(call->correlation);
        }
    });
    for (int i = 1; i <= 20; ++i) {
        const RpcAnswer answer = client.sendRequest("request " + std::to_string(i), 10s);
        EXPECT_EQ(answer.status, RpcStatus::Delivered);
        EXPECT_EQ(answer.payload, "request " + std::to_string(i));
    }
    reader.join();
    ASSERT_EQ(sequences.size(), 20u);
    for (std::uint32_t i = 0; i < 20; ++i)
        EXPECT_EQ(sequences[i], i + 1);
    client.disconnect();
}

TEST(RpcClient, CutsOffAServerThatBreaksTheProtocol) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) {
        peer.read();
        peer.writeBytes("HTTP/1.1 200");
        peer.read();
    }});
    RpcClient client;
    EXPECT_EQ(client.sendRequest("x", 10s).status, RpcStatus::SendFailed);
    EXPECT_FALSE(client.isConnected());
}

TEST(RpcClient, CutsOffAServerThatSendsARequest) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    server.serve({[](Peer& peer) {
        peer.read();
        peer.write(RpcFrame{RpcFrameKind::Request, 1, 0, ""});
        peer.read();
    }});
    RpcClient client;
    EXPECT_EQ(client.sendRequest("x", 10s).status, RpcStatus::SendFailed);
}

TEST(RpcClient, GivesAControlOperationItsResultCodeOrTheRefusal) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    std::optional<RpcFrame> seen;
    server.serve({[&](Peer& peer) {
        seen = peer.read();
        peer.write(RpcFrame{RpcFrameKind::ControlReply, seen->correlation, 1, "no"});
        const auto second = peer.read();
        peer.reply(*second, RpcStatus::AccessDenied, "");
    }});
    RpcClient client;
    const RpcAnswer done = client.sendControl(4, "args", 10s);
    EXPECT_EQ(done.status, RpcStatus::Delivered);
    EXPECT_EQ(done.result, 1u);
    EXPECT_EQ(done.payload, "no");
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->kind, RpcFrameKind::Control);
    EXPECT_EQ(seen->code, 4u);
    EXPECT_EQ(client.sendControl(4, "", 10s).status, RpcStatus::AccessDenied);
}

TEST(RpcClient, DoesNotSendARequestTooBigForTheProtocol) {
    TestSupport::SandboxRoot sandbox;
    ScriptedServer server;
    bool received = true;
    server.serve({[&](Peer& peer) { received = peer.read().has_value(); }});
    {
        RpcClient client;
        EXPECT_EQ(client.sendRequest(std::string(RpcFrame::MaxPayload + 1, 'x'), 10s).status,
                  RpcStatus::SendFailed);
    }
    // The server sees the connection end without a frame.
    server.join();
    EXPECT_FALSE(received);
}
