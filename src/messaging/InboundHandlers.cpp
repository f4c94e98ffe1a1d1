#include "messaging/InboundHandlers.h"

#include "foundation/Trace.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/CMsgHandler.h"
#include "messaging/MainWindowPort.h"
#include "messaging/SettingsPort.h"
#include "messaging/TransportText.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"

#include <atomic>
#include <memory>

namespace {

std::atomic<CMsgHandler*> g_queue{nullptr};
std::atomic<SettingsPort*> g_settings{nullptr};

// No handler replies.
void NoReply(std::uint8_t** reply, std::int32_t* replyLength) {
    if (reply != nullptr)
        *reply = nullptr;
    if (replyLength != nullptr)
        *replyLength = 0;
}

// Fills `msg` from an inbound call: UTF-16 text of byteLength / 2 units. The id inside is not
// compared: the RPC object has routed by it.
void ParseInbound(IMessage& msg, const std::uint8_t* data, std::uint32_t byteLength) {
    const stdstr xml = TransportText::InboundText(data, byteLength);
    CMessageEnvelope envelope;
    envelope.Parse(msg, xml);
}

// The three messages that lead to dialogs outlive the call, on the pump's queue.
template <class Message>
std::int32_t ParseAndQueue(const std::uint8_t* data, std::uint32_t byteLength, std::uint8_t** reply,
                           std::int32_t* replyLength) {
    NoReply(reply, replyLength);
    auto msg = std::make_unique<Message>();
    ParseInbound(*msg, data, byteLength);
    if (CMsgHandler* queue = g_queue.load(std::memory_order_acquire))
        queue->Enqueue(std::move(msg));
    return 1;
}

} // namespace

void InboundHandlers::Attach(CMsgHandler* queue, SettingsPort* settings) {
    g_queue.store(queue, std::memory_order_release);
    g_settings.store(settings, std::memory_order_release);
}

RPCHandler InboundHandlers::HandlerOf(std::uint32_t messageId) {
    switch (messageId) {
    case enumMSG_TRAY_ANIMATION_Message::Id:
        return &OnTrayAnimation;
    case enumMSG_FAILED_TO_LOAD_LSP_Message::Id:
        return &OnFailedToLoadLsp;
    case UnnamedId261:
        return &OnUnnamed261;
    case enumMSG_LSP_ERROR_Message::Id:
        return &OnLspError;
    case enumMSG_REINSTALL_LSP_Message::Id:
        return &OnReinstallLsp;
    case ExitId:
        return &OnExit;
    case enumMSG_CONFIG_CHANGE_Message::Id:
        return &handleConfigChange;
    default:
        return nullptr;
    }
}

std::int32_t InboundHandlers::OnTrayAnimation(const std::uint8_t* data, std::uint32_t byteLength,
                                              std::uint8_t** reply, std::int32_t* replyLength) {
    NoReply(reply, replyLength);
    enumMSG_TRAY_ANIMATION_Message msg;
    ParseInbound(msg, data, byteLength);
    // The selector travels as the window message's parameter would carry an int: widened
    // with its sign.
    MainWindowPort::Get().post(
        WM_QG_TRAY_ANIMATE,
        static_cast<std::uintptr_t>(static_cast<std::intptr_t>(msg.GetAnimation())), 0);
    return 1;
}

std::int32_t InboundHandlers::OnFailedToLoadLsp(const std::uint8_t* data, std::uint32_t byteLength,
                                                std::uint8_t** reply, std::int32_t* replyLength) {
    return ParseAndQueue<enumMSG_FAILED_TO_LOAD_LSP_Message>(data, byteLength, reply, replyLength);
}

std::int32_t InboundHandlers::OnUnnamed261(const std::uint8_t* /*data*/,
                                           std::uint32_t /*byteLength*/, std::uint8_t** /*reply*/,
                                           std::int32_t* /*replyLength*/) {
    return 1;
}

std::int32_t InboundHandlers::OnLspError(const std::uint8_t* data, std::uint32_t byteLength,
                                         std::uint8_t** reply, std::int32_t* replyLength) {
    return ParseAndQueue<enumMSG_LSP_ERROR_Message>(data, byteLength, reply, replyLength);
}

std::int32_t InboundHandlers::OnReinstallLsp(const std::uint8_t* data, std::uint32_t byteLength,
                                             std::uint8_t** reply, std::int32_t* replyLength) {
    return ParseAndQueue<enumMSG_REINSTALL_LSP_Message>(data, byteLength, reply, replyLength);
}

std::int32_t InboundHandlers::OnExit(const std::uint8_t* /*data*/, std::uint32_t /*byteLength*/,
                                     std::uint8_t** /*reply*/, std::int32_t* /*replyLength*/) {
    MainWindowPort::Get().post(WM_QG_EXIT, 0, 0);
    return 1;
}

std::int32_t InboundHandlers::handleConfigChange(const std::uint8_t* data, std::uint32_t byteLength,
                                                 std::uint8_t** reply, std::int32_t* replyLength) {
    NoReply(reply, replyLength);
    TraceMsg(TRACE_DEBUG, u"CVLQuillgateApp::handleConfigChange");
    enumMSG_CONFIG_CHANGE_Message msg;
    ParseInbound(msg, data, byteLength);
    // The sender's process id is of no use here. The settings are written without a lock, on
    // the plug-in's thread, as they always have been on this path.
    if (SettingsPort* settings = g_settings.load(std::memory_order_acquire)) {
        settings->SetAutoUpgrade(msg.GetAutoUpgrade());
        settings->SetConfigPath(msg.GetConfigPath());
        settings->SetLanguage(msg.GetLanguage());
        settings->SetFilterOn(msg.GetFilterOn());
        settings->SetFirstRun(msg.GetFirstRun());
        settings->SetHistoryDays(msg.GetHistoryDays());
        settings->SetShowCloseWindow(msg.GetShowCloseWindow());
        settings->SetUpgradePeriod(msg.GetUpgradePeriod());
    }
    MainWindowPort::Get().post(WM_QG_CONFIG_CHANGED, 0, 0);
    TraceMsg(TRACE_DEBUG, u"CVLQuillgateApp::handleConfigChange");
    return 1;
}
