#pragma once
// The handlers that the program binds to the plug-in's RPC object, one per message id of the
// filter service (the binding, and its order, is the plug-in loader's). The plug-in calls
// them on threads of its own, with the envelope as UTF-16 text, and passes no context: what
// they reach is attached here once, and the main window is reached through MainWindowPort.
// Each does only what is quick: parse and post, or parse and queue for the inbound pump. None
// of them replies, and each answers 1.

#include "mainwindow/RpcContract.h"

#include <cstdint>

class CMsgHandler;
class SettingsPort;

class InboundHandlers {
public:
    // The two ids that have a handler but no message class.
    static constexpr std::uint32_t UnnamedId261 = 261;
    static constexpr std::uint32_t ExitId = 265;

    // Attaches the queue and the settings (null detaches). Without a queue the three queued
    // messages are parsed and dropped; without settings a Config change is not stored, and
    // the window is still told.
    static void Attach(CMsgHandler* queue, SettingsPort* settings);

    // The handler for `messageId`, null for an id that has none.
    static RPCHandler HandlerOf(std::uint32_t messageId);

    // 256: posts 1054 to the main window with the animation selector as wParam.
    static std::int32_t OnTrayAnimation(const std::uint8_t* data, std::uint32_t byteLength,
                                        std::uint8_t** reply, std::int32_t* replyLength);
    // 260: queues the Failed to load LSP message.
    static std::int32_t OnFailedToLoadLsp(const std::uint8_t* data, std::uint32_t byteLength,
                                          std::uint8_t** reply, std::int32_t* replyLength);
    // 261: does nothing at all, out parameters included.
    static std::int32_t OnUnnamed261(const std::uint8_t* data, std::uint32_t byteLength,
                                     std::uint8_t** reply, std::int32_t* replyLength);
    // 263: queues the LSP Error message.
    static std::int32_t OnLspError(const std::uint8_t* data, std::uint32_t byteLength,
                                   std::uint8_t** reply, std::int32_t* replyLength);
    // 264: queues the Reinstall LSP message.
    static std::int32_t OnReinstallLsp(const std::uint8_t* data, std::uint32_t byteLength,
                                       std::uint8_t** reply, std::int32_t* replyLength);
    // 265: posts 1059 (the program ends) without looking at the data or the out parameters.
    static std::int32_t OnExit(const std::uint8_t* data, std::uint32_t byteLength,
                               std::uint8_t** reply, std::int32_t* replyLength);
    // 258: stores the service's settings in memory and posts 1061.
    static std::int32_t handleConfigChange(const std::uint8_t* data, std::uint32_t byteLength,
                                           std::uint8_t** reply, std::int32_t* replyLength);
};
