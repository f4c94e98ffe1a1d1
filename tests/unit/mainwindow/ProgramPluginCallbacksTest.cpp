// The loader binds the inbound message path's handlers, each to its own id.

#include "mainwindow/ProgramPluginCallbacks.h"

#include "messaging/InboundHandlers.h"

#include <gtest/gtest.h>

namespace {

TEST(ProgramPluginCallbacks, BindEveryIdToTheInboundPathsHandler) {
    const PluginCallbacks callbacks = ProgramPluginCallbacks();
    for (std::uint32_t id : PluginCallbacks::RegistrationOrder) {
        EXPECT_NE(callbacks.HandlerOf(id), nullptr) << id;
        EXPECT_EQ(callbacks.HandlerOf(id), InboundHandlers::HandlerOf(id)) << id;
    }
    EXPECT_EQ(callbacks.trayAnimation, &InboundHandlers::OnTrayAnimation);
    EXPECT_EQ(callbacks.failedToLoadLsp, &InboundHandlers::OnFailedToLoadLsp);
    EXPECT_EQ(callbacks.id261, &InboundHandlers::OnUnnamed261);
    EXPECT_EQ(callbacks.lspError, &InboundHandlers::OnLspError);
    EXPECT_EQ(callbacks.reinstallLsp, &InboundHandlers::OnReinstallLsp);
    EXPECT_EQ(callbacks.exitProgram, &InboundHandlers::OnExit);
    EXPECT_EQ(callbacks.configChange, &InboundHandlers::handleConfigChange);
}

} // namespace
