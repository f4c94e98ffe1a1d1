#include "mainwindow/PluginCallbacks.h"

RPCHandler PluginCallbacks::HandlerOf(std::uint32_t messageId) const {
    switch (messageId) {
    case TrayAnimationId:
        return trayAnimation;
    case FailedToLoadLspId:
        return failedToLoadLsp;
    case UnnamedId261:
        return id261;
    case LspErrorId:
        return lspError;
    case ReinstallLspId:
        return reinstallLsp;
    case ExitId:
        return exitProgram;
    case ConfigChangeId:
        return configChange;
    default:
        return nullptr;
    }
}

void PluginCallbacks::Register(IRPCExt& rpc) const {
    for (std::uint32_t id : RegistrationOrder)
        rpc.RegisterHandler(id, HandlerOf(id));
}

void PluginCallbacks::Unregister(IRPCExt& rpc) {
    for (std::uint32_t id : RemovalOrder)
        rpc.UnregisterHandler(id);
}

std::int32_t PluginCallbacks::IgnoreMessage(const std::uint8_t* /*data*/,
                                            std::uint32_t /*byteLength*/, std::uint8_t** /*reply*/,
                                            std::int32_t* /*replyLength*/) {
    return 1;
}
