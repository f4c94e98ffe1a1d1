#pragma once
// The RPC object's reader thread: it keeps a connection to the service whenever the service
// is there (connecting again every half second after an outage, so that the service's calls
// reach the program even before its next request), takes the service's calls from the
// client one by one, in the order in which they came, and hands each to the delivery
// function on this thread.

#include "foundation/Thread.h"
#include "protocol/RpcFrame.h"

#include <cstdint>
#include <functional>

class RpcClient;

class InboundReader : public Corvane::Thread {
public:
    using Delivery = std::function<void(const RpcFrame& call)>;

    // How long one wait for a call lasts, which bounds the time that stopping takes.
    static constexpr std::uint32_t PollMs = 200;
    // The pause between two attempts to connect while the service is away.
    static constexpr std::uint32_t ReconnectMs = 500;

    InboundReader(RpcClient& client, Delivery deliver);
    ~InboundReader() override;
    InboundReader(const InboundReader&) = delete;
    InboundReader& operator=(const InboundReader&) = delete;

    std::uint32_t run() override;

private:
    RpcClient& m_client;
    Delivery m_deliver;
};
