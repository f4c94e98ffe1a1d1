#include "mainwindow/ProgramPluginCallbacks.h"

#include "messaging/InboundHandlers.h"

PluginCallbacks ProgramPluginCallbacks() {
    PluginCallbacks callbacks;
    callbacks.trayAnimation = InboundHandlers::HandlerOf(PluginCallbacks::TrayAnimationId);
    callbacks.failedToLoadLsp = InboundHandlers::HandlerOf(PluginCallbacks::FailedToLoadLspId);
    callbacks.id261 = InboundHandlers::HandlerOf(PluginCallbacks::UnnamedId261);
    callbacks.lspError = InboundHandlers::HandlerOf(PluginCallbacks::LspErrorId);
    callbacks.reinstallLsp = InboundHandlers::HandlerOf(PluginCallbacks::ReinstallLspId);
    callbacks.exitProgram = InboundHandlers::HandlerOf(PluginCallbacks::ExitId);
    callbacks.configChange = InboundHandlers::HandlerOf(PluginCallbacks::ConfigChangeId);
    return callbacks;
}
