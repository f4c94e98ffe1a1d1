#include "RpcObject.h"

#include "JournalLine.h"
#include "RpcTimeout.h"

#include "foundation/stdstr.h"
#include "mainwindow/PluginContract.h"
#include "messaging/EnvelopeIds.h"

#include <limits>

namespace {

// The message id in a request's envelope, for the journal; 0 when there is none.
std::int32_t RequestMessageId(const std::uint8_t* data, std::uint32_t length) {
    if (data == nullptr)
        return 0;
    const stdstr xml =
        stdstr::toTString(std::string_view(reinterpret_cast<const char*>(data), length));
    return ReadMessageId(xml);
}

} // namespace

RpcObject::RpcObject() : m_reader(m_client, [this](const RpcFrame& call) { Deliver(call); }) {
    m_reader.start();
}

RpcObject::~RpcObject() {
    m_reader.stop();
    m_reader.shutdown();
    // A request that still waits on another thread ends now rather than at its time-out.
    m_client.disconnect();
}

bool RpcObject::IsTransportFailure(std::uint32_t status) {
    return status >= RpcStatus::SendException && status <= RpcStatus::ServerDown;
}

std::int32_t RpcObject::RegisterHandler(std::uint32_t messageId, RPCHandler handler) {
    m_handlers.Register(messageId, handler);
    JournalLine("RegisterHandler").Number(messageId).Write();
    return 0;
}

std::int32_t RpcObject::UnregisterHandler(std::uint32_t messageId) {
    const bool found = m_handlers.Unregister(messageId);
    JournalLine("UnregisterHandler").Number(messageId).Write();
    return found ? 0 : E_FAIL;
}

std::int32_t RpcObject::FreeBuffer(std::uint8_t** reply, std::int32_t* replyLength) {
    JournalLine line("FreeBuffer");
    line.Named("length", replyLength != nullptr ? *replyLength : -1);
    std::int32_t result = E_FAIL;
    if (reply != nullptr && *reply != nullptr && m_buffers.Free(*reply)) {
        *reply = nullptr;
        if (replyLength != nullptr)
            *replyLength = 0;
        result = 0;
    }
    line.Arrow().Number(result).Write();
    return result;
}

std::uint32_t RpcObject::SendRequest(const char16_t* serverName, const std::uint8_t* data,
                                     std::uint32_t length, std::uint8_t** reply,
                                     std::int32_t* replyLength) {
    std::uint32_t status = RpcStatus::SendException;
    try {
        status = Send(serverName, data, length, reply, replyLength);
    } catch (...) {
        // Nothing may leave the library: the host is not built to catch it here.
        status = RpcStatus::SendException;
    }
    JournalLine line("SendRequest");
    if (line.Active()) {
        line.Text(serverName)
            .Named("id", RequestMessageId(data, length))
            .Named("length", length)
            .Arrow()
            .Number(status);
        if (reply != nullptr && *reply != nullptr && replyLength != nullptr)
            line.Named("reply", *replyLength);
        line.Write();
    }
    return status;
}

std::uint32_t RpcObject::Send(const char16_t* serverName, const std::uint8_t* data,
                              std::uint32_t length, std::uint8_t** reply,
                              std::int32_t* replyLength) {
    if (reply != nullptr)
        *reply = nullptr;
    if (replyLength != nullptr)
        *replyLength = 0;
    // There is one server; a name that is not its name is a server that is not there.
    if (serverName == nullptr || std::u16string_view(serverName) != RpcServerName)
        return RpcStatus::ServerDown;
    if (data == nullptr && length > 0)
        return RpcStatus::SendException;

    const RpcAnswer answer = Exchange(
        std::string_view(data == nullptr ? "" : reinterpret_cast<const char*>(data), length));
    // A reply is handed out only with an answer of the service; after a transport failure
    // the host does not look at the reply, so it would never come back.
    if (!IsTransportFailure(answer.status) && !answer.payload.empty() && reply != nullptr &&
        replyLength != nullptr &&
        answer.payload.size() <=
            static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        *reply = m_buffers.Keep(answer.payload);
        *replyLength = static_cast<std::int32_t>(answer.payload.size());
    }
    return answer.status;
}

RpcAnswer RpcObject::Exchange(std::string_view request) {
    return m_client.sendRequest(request, RpcTimeout::Current());
}

void RpcObject::Deliver(const RpcFrame& call) {
    // The call's id is the frame's code; a call without a handler is dropped.
    m_handlers.Dispatch(call.code, reinterpret_cast<const std::uint8_t*>(call.payload.data()),
                        static_cast<std::uint32_t>(call.payload.size()));
}
