// One ping round trip as the program makes it each second: SendRequest on the plug-in's RPC
// object (libQGPlugin.so of this build) to the real qgsasvc over its Unix socket, and
// FreeBuffer of the reply. Two figures in the same run frame it:
//   - the floor: the same number of bytes each way through a raw Unix socket to a trivial
//     echo server in this program (no framing, no envelope, no service work);
//   - the service's share: the same request through a bare RpcClient, without the plug-in.
// The target is a plug-in round trip of at most twice the floor; the "vs_floor" counter of
// the plug-in's figure is that ratio, with the floor measured at start-up in this run.
#include "mainwindow/RpcContract.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/TransportText.h"
#include "messaging/enumMSG_PING_Message.h"
#include "protocol/RpcClient.h"
#include "protocol/RpcFrame.h"

#include <benchmark/benchmark.h>

#include <dlfcn.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

int Run(const std::vector<std::string>& words) {
    std::vector<char*> argv;
    for (const std::string& word : words)
        argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0)
        return -1;
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool WriteAll(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t n = ::send(fd, data, size, MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        data += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

bool ReadAll(int fd, char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t n = ::recv(fd, data, size, 0);
        if (n <= 0)
            return false;
        data += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

// A server that answers each request of `in` bytes with `out` bytes, on one connection.
class EchoServer {
public:
    EchoServer(const std::string& path, std::size_t in, std::size_t out)
        : m_path(path), m_in(in), m_out(out) {
        // A socket file of an earlier run of the same benchmark is in the way of bind.
        ::unlink(m_path.c_str());
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::snprintf(address.sun_path, sizeof address.sun_path, "%s", path.c_str());
        m_listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            ::listen(m_listener, 1) != 0)
            throw std::runtime_error("echo server: cannot listen on " + path);
        m_thread = std::thread([this] { Serve(); });
        m_client = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (::connect(m_client, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            throw std::runtime_error("echo server: cannot connect");
        m_request.assign(m_in, 'q');
        m_reply.resize(m_out);
    }
    ~EchoServer() {
        ::shutdown(m_client, SHUT_RDWR);
        ::close(m_client);
        m_thread.join();
        ::close(m_listener);
        ::unlink(m_path.c_str());
    }

    bool RoundTrip() {
        return WriteAll(m_client, m_request.data(), m_request.size()) &&
               ReadAll(m_client, m_reply.data(), m_reply.size());
    }

private:
    void Serve() {
        const int fd = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (fd < 0)
            return;
        std::string request(m_in, '\0');
        const std::string reply(m_out, 'r');
        while (ReadAll(fd, request.data(), request.size()) &&
               WriteAll(fd, reply.data(), reply.size())) {
        }
        ::close(fd);
    }

    std::string m_path;
    std::size_t m_in;
    std::size_t m_out;
    int m_listener = -1;
    int m_client = -1;
    std::thread m_thread;
    std::string m_request;
    std::string m_reply;
};

// The sandbox root with qgsasvc running in it and the plug-in loaded, for the whole run.
class Stage {
public:
    static Stage& Get() {
        static Stage stage;
        return stage;
    }

    IRPCExt* rpc = nullptr;
    std::string ping;
    std::size_t replySize = 0;
    double floorNs = 0;
    std::string error;

    std::string EchoPath() const { return m_root + "/echo.sock"; }

private:
    Stage() {
        const char* tmp = std::getenv("TMPDIR");
        std::string pattern =
            std::string(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp") + "/qg-ping-bench-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr) {
            error = "mkdtemp failed";
            return;
        }
        m_root = pattern;
        for (const char* folder : {"run", "var/lib", "var/log", "home/.config", "tmp"})
            std::filesystem::create_directories(m_root + "/" + folder);
        ::setenv("QUILLGATE_ROOT", m_root.c_str(), 1);
        ::setenv("HOME", (m_root + "/home").c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", (m_root + "/home/.config").c_str(), 1);
        if (Run({QGSASVC_PATH, "-Start"}) != 0) {
            error = "qgsasvc -Start failed";
            return;
        }
        m_started = true;
        void* library = ::dlopen(QGPLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            error = ::dlerror();
            return;
        }
        const auto create =
            reinterpret_cast<CreateRPCInstanceFunc>(::dlsym(library, "CreateRPCInstance"));
        rpc = create != nullptr ? create() : nullptr;
        if (rpc == nullptr) {
            error = "no RPC object";
            return;
        }
        CMessageEnvelope envelope;
        ping = TransportText::RequestBytes(envelope.Serialize(enumMSG_PING_Message()));
        std::uint8_t* reply = nullptr;
        std::int32_t length = 0;
        if (Send(&reply, &length) != RpcStatus::Success || reply == nullptr) {
            error = "the service does not answer the ping";
            return;
        }
        replySize = static_cast<std::size_t>(length);
        rpc->FreeBuffer(&reply, &length);
        floorNs = MeasureFloor();
    }
    ~Stage() {
        if (m_started)
            Run({QGSASVC_PATH, "-Stop"});
        if (!m_root.empty()) {
            std::error_code ignored;
            std::filesystem::remove_all(m_root, ignored);
        }
    }

public:
    std::uint32_t Send(std::uint8_t** reply, std::int32_t* length) const {
        return rpc->SendRequest(RpcServerName, reinterpret_cast<const std::uint8_t*>(ping.data()),
                                static_cast<std::uint32_t>(ping.size()), reply, length);
    }

private:
    // The floor for the ratio: the mean of many raw round trips, after a warm-up.
    double MeasureFloor() const {
        EchoServer echo(EchoPath() + ".floor", RpcFrame::HeaderSize + ping.size(),
                        RpcFrame::HeaderSize + replySize);
        for (int i = 0; i < 2000; ++i)
            echo.RoundTrip();
        constexpr int Rounds = 20000;
        const auto start = Clock::now();
        for (int i = 0; i < Rounds; ++i)
            echo.RoundTrip();
        return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / Rounds;
    }

    std::string m_root;
    bool m_started = false;
};

void CountRoundTrips(benchmark::State& state) {
    state.counters["round_trips/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void BM_PingRoundTrip_RawSocketFloor(benchmark::State& state) {
    Stage& stage = Stage::Get();
    if (!stage.error.empty()) {
        state.SkipWithError(stage.error.c_str());
        return;
    }
    EchoServer echo(stage.EchoPath(), RpcFrame::HeaderSize + stage.ping.size(),
                    RpcFrame::HeaderSize + stage.replySize);
    for (auto _ : state) {
        if (!echo.RoundTrip()) {
            state.SkipWithError("the echo server went away");
            break;
        }
    }
    CountRoundTrips(state);
}

void BM_PingRoundTrip_RpcClientToService(benchmark::State& state) {
    Stage& stage = Stage::Get();
    if (!stage.error.empty()) {
        state.SkipWithError(stage.error.c_str());
        return;
    }
    RpcClient client;
    for (auto _ : state) {
        const RpcAnswer answer = client.sendRequest(stage.ping, std::chrono::seconds(3));
        if (answer.status != RpcStatus::Success) {
            state.SkipWithError("a ping failed");
            break;
        }
        benchmark::DoNotOptimize(answer.payload.data());
    }
    CountRoundTrips(state);
}

void BM_PingRoundTrip_PluginToService(benchmark::State& state) {
    Stage& stage = Stage::Get();
    if (!stage.error.empty()) {
        state.SkipWithError(stage.error.c_str());
        return;
    }
    const auto start = Clock::now();
    for (auto _ : state) {
        std::uint8_t* reply = nullptr;
        std::int32_t length = 0;
        if (stage.Send(&reply, &length) != RpcStatus::Success) {
            state.SkipWithError("a ping failed");
            break;
        }
        if (reply != nullptr && length > 0)
            stage.rpc->FreeBuffer(&reply, &length);
    }
    const double perRoundTrip =
        std::chrono::duration<double, std::nano>(Clock::now() - start).count() /
        static_cast<double>(std::max<benchmark::IterationCount>(1, state.iterations()));
    CountRoundTrips(state);
    state.counters["floor_ns"] = stage.floorNs;
    state.counters["vs_floor"] = perRoundTrip / stage.floorNs;
}

} // namespace

BENCHMARK(BM_PingRoundTrip_RawSocketFloor)->UseRealTime();
BENCHMARK(BM_PingRoundTrip_RpcClientToService)->UseRealTime();
BENCHMARK(BM_PingRoundTrip_PluginToService)->UseRealTime();
