#pragma once
// The handlers that the host binds to the plug-in's RPC object, one per message id of the
// filter service. They are bound in one order while the plug-in is loaded and dropped in
// another in the exit sequence; both orders are kept as they are, since the plug-in sees
// them.

#include "mainwindow/RpcContract.h"

#include <array>
#include <cstdint>

struct PluginCallbacks {
    // Message ids of the service that have a handler.
    static constexpr std::uint32_t TrayAnimationId = 256;   // enumMSG_TRAY_ANIMATION_Message
    static constexpr std::uint32_t ConfigChangeId = 258;    // enumMSG_CONFIG_CHANGE_Message
    static constexpr std::uint32_t FailedToLoadLspId = 260; // enumMSG_FAILED_TO_LOAD_LSP_Message
    static constexpr std::uint32_t UnnamedId261 = 261;      // no class; the handler does nothing
    static constexpr std::uint32_t LspErrorId = 263;        // enumMSG_LSP_ERROR_Message
    static constexpr std::uint32_t ReinstallLspId = 264;    // enumMSG_REINSTALL_LSP_Message
    static constexpr std::uint32_t ExitId = 265;            // no class; ends the program

    static constexpr std::array<std::uint32_t, 7> RegistrationOrder = {
        TrayAnimationId, FailedToLoadLspId, UnnamedId261, LspErrorId, ReinstallLspId,
        ExitId,          ConfigChangeId};
    static constexpr std::array<std::uint32_t, 7> RemovalOrder = {
        ExitId,          UnnamedId261,   FailedToLoadLspId, LspErrorId,
        TrayAnimationId, ReinstallLspId, ConfigChangeId};

    RPCHandler trayAnimation = nullptr;
    RPCHandler failedToLoadLsp = nullptr;
    RPCHandler id261 = &IgnoreMessage;
    RPCHandler lspError = nullptr;
    RPCHandler reinstallLsp = nullptr;
    RPCHandler exitProgram = nullptr;
    RPCHandler configChange = nullptr;

    // The handler of `messageId`, null for an id without one.
    RPCHandler HandlerOf(std::uint32_t messageId) const;

    // RegisterHandler for the seven ids, in RegistrationOrder.
    void Register(IRPCExt& rpc) const;
    // UnregisterHandler for the seven ids, in RemovalOrder.
    static void Unregister(IRPCExt& rpc);

    // The handler of id 261: it looks at nothing, leaves the out parameters as they are and
    // answers 1.
    static std::int32_t IgnoreMessage(const std::uint8_t* data, std::uint32_t byteLength,
                                      std::uint8_t** reply, std::int32_t* replyLength);
};
