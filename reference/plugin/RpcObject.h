#pragma once
// The plug-in's RPC object: the program's transport to the filter service over the Unix
// socket $ROOT/run/velloran/SharedRPCServer. Requests block until their status is known (the
// service's answer, or 65531 to 65535 for the transport's failures); replies are handed out
// in buffers that the host gives back through FreeBuffer; the service's calls arrive on the
// reader thread and go to the handler registered for their id. After an outage the next
// request, or the reader, connects again.

#include "HandlerTable.h"
#include "InboundReader.h"
#include "ReplyBuffers.h"

#include "mainwindow/RpcContract.h"
#include "protocol/RpcClient.h"

#include <cstdint>
#include <string_view>

class RpcObject final : public IRPCExt {
public:
    // The socket's path is taken from the environment now; the reader starts at once.
    RpcObject();
    ~RpcObject();
    RpcObject(const RpcObject&) = delete;
    RpcObject& operator=(const RpcObject&) = delete;

    std::int32_t UnregisterHandler(std::uint32_t messageId) override;
    std::int32_t FreeBuffer(std::uint8_t** reply, std::int32_t* replyLength) override;
    std::uint32_t SendRequest(const char16_t* serverName, const std::uint8_t* data,
                              std::uint32_t length, std::uint8_t** reply,
                              std::int32_t* replyLength) override;
    std::int32_t RegisterHandler(std::uint32_t messageId, RPCHandler handler) override;

    // A request of the plug-in's own (the statistics), with the same time-out and statuses
    // as SendRequest, and its reply's payload. Not journalled: the host did not make it.
    RpcAnswer Exchange(std::string_view request);

    std::size_t OutstandingReplies() const { return m_buffers.Outstanding(); }

    // True for the statuses 65531 to 65535, the transport's failures.
    static bool IsTransportFailure(std::uint32_t status);

private:
    std::uint32_t Send(const char16_t* serverName, const std::uint8_t* data, std::uint32_t length,
                       std::uint8_t** reply, std::int32_t* replyLength);
    void Deliver(const RpcFrame& call);

    RpcClient m_client;
    HandlerTable m_handlers;
    ReplyBuffers m_buffers;
    // Last, so that it is the first to go: the thread uses the members above.
    InboundReader m_reader;
};
