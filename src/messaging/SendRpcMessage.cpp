#include "messaging/SendRpcMessage.h"

#include "foundation/CorvaneBaseException.h"
#include "foundation/DebugLog.h"
#include "foundation/Trace.h"
#include "mainwindow/PluginPointers.h"
#include "mainwindow/RpcContract.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/CheckRpcStatus.h"
#include "messaging/IMessage.h"
#include "messaging/TransportText.h"

#include <cstdint>
#include <string>

namespace {

// Where the status checks stand, as their exceptions name them.
constexpr const char* CheckSite = "MainDlg";
constexpr std::int32_t SendCheckLine = 1928;
constexpr std::int32_t SendWithReplyCheckLine = 1962;

// The status of one SendRequest, with the reply that came with it.
struct Exchange {
    std::uint32_t status = 0;
    std::uint8_t* reply = nullptr;
    std::int32_t replyLength = 0;
};

Exchange Send(IRPCExt& rpc, const stdstr& xml) {
    const std::string bytes = TransportText::RequestBytes(xml);
    Exchange exchange;
    exchange.status = rpc.SendRequest(
        RpcServerName, reinterpret_cast<const std::uint8_t*>(bytes.data()),
        static_cast<std::uint32_t>(bytes.size()), &exchange.reply, &exchange.replyLength);
    return exchange;
}

// Only the status check's exception is caught, and only here: one out of the serialising or
// the transport leaves the send for the caller's catch site.
bool StatusPasses(std::uint32_t status, std::int32_t line) {
    try {
        CheckRpcStatus(status, CheckSite, line);
        return true;
    } catch (const Corvane::BaseException& e) {
        TraceMsg(TRACE_ERROR, e.GetMessage());
        return false;
    }
}

} // namespace

bool SendRpcMessage(const IMessage& msg) {
    IRPCExt* rpc = m_pRPCExt;
    if (rpc == nullptr) {
        // Expected during start-up, before the plug-in is loaded: the message is lost.
        TraceFmt(TRACE_ERROR, u"m_pRPCExt is null while attempt to send message %d.", msg.GetId());
        return false;
    }
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(msg);
    DebugLogPrintf("Sending message from Main Dialog: %S", msg.GetName());
    Exchange exchange = Send(*rpc, xml);
    if (!StatusPasses(exchange.status, SendCheckLine))
        return false;
    if (exchange.reply != nullptr && exchange.replyLength > 0)
        rpc->FreeBuffer(&exchange.reply, &exchange.replyLength);
    return exchange.status == RpcStatus::Success;
}

bool SendRpcMessageWithReply(const IMessage& msg, IMessage& reply) {
    IRPCExt* rpc = m_pRPCExt;
    if (rpc == nullptr) {
        TraceFmt(TRACE_ERROR, u"m_pRPCExt is NULL while attempt to send message %d.", msg.GetId());
        return false;
    }
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(msg);
    DebugLogPrintf("Sending message from Main Dialog: %S - Receiving: %S\n", msg.GetName(),
                   reply.GetName());
    Exchange exchange = Send(*rpc, xml);
    if (!StatusPasses(exchange.status, SendWithReplyCheckLine))
        return false;
    if (exchange.reply == nullptr || exchange.replyLength <= 0)
        return false;
    const bool filled = envelope.ParseChecked(reply, exchange.reply,
                                              static_cast<std::uint32_t>(exchange.replyLength));
    rpc->FreeBuffer(&exchange.reply, &exchange.replyLength);
    if (filled)
        return exchange.status == RpcStatus::Success;
    // "Ghosting" is filling the local copy from the reply; a reply of another id cannot.
    TraceFmt(TRACE_ERROR, u"Failed to ghost message when send message %d.", msg.GetId());
    return false;
}
