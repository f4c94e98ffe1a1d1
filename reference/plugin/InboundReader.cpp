#include "InboundReader.h"

#include "mainwindow/RpcContract.h"
#include "protocol/RpcClient.h"

#include <chrono>

InboundReader::InboundReader(RpcClient& client, Delivery deliver)
    : Corvane::Thread(true), m_client(client), m_deliver(std::move(deliver)) {}

InboundReader::~InboundReader() {
    stop();
    shutdown();
}

std::uint32_t InboundReader::run() {
    while (!waitForStop(0)) {
        if (!m_client.isConnected() && m_client.connect() != RpcStatus::Success) {
            if (waitForStop(ReconnectMs))
                break;
            continue;
        }
        if (std::optional<RpcFrame> call =
                m_client.waitForInbound(std::chrono::milliseconds(PollMs)))
            m_deliver(*call);
    }
    return 0;
}
