// Binding the host's handlers to the RPC object: the two orders and the id 261 handler.

#include "mainwindow/PluginCallbacks.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

class RecordingRpc : public IRPCExt {
public:
    std::int32_t UnregisterHandler(std::uint32_t messageId) override {
        removed.push_back(messageId);
        return 0;
    }
    std::int32_t FreeBuffer(std::uint8_t**, std::int32_t*) override { return 0; }
    std::uint32_t SendRequest(const char16_t*, const std::uint8_t*, std::uint32_t, std::uint8_t**,
                              std::int32_t*) override {
        return RpcStatus::Success;
    }
    std::int32_t RegisterHandler(std::uint32_t messageId, RPCHandler handler) override {
        registered.emplace_back(messageId, handler);
        return 0;
    }

    std::vector<std::pair<std::uint32_t, RPCHandler>> registered;
    std::vector<std::uint32_t> removed;
};

template <int N>
std::int32_t Handler(const std::uint8_t*, std::uint32_t, std::uint8_t**, std::int32_t*) {
    return N;
}

TEST(PluginCallbacks, AreRegisteredInTheirOrderEachWithItsOwnHandler) {
    PluginCallbacks callbacks;
    callbacks.trayAnimation = &Handler<256>;
    callbacks.failedToLoadLsp = &Handler<260>;
    callbacks.lspError = &Handler<263>;
    callbacks.reinstallLsp = &Handler<264>;
    callbacks.exitProgram = &Handler<265>;
    callbacks.configChange = &Handler<258>;
    RecordingRpc rpc;

    callbacks.Register(rpc);

    const std::vector<std::pair<std::uint32_t, RPCHandler>> expected = {
        {256, &Handler<256>}, {260, &Handler<260>}, {261, &PluginCallbacks::IgnoreMessage},
        {263, &Handler<263>}, {264, &Handler<264>}, {265, &Handler<265>},
        {258, &Handler<258>}};
    EXPECT_EQ(rpc.registered, expected);
}

TEST(PluginCallbacks, AreRemovedInTheExitSequencesOrder) {
    RecordingRpc rpc;
    PluginCallbacks::Unregister(rpc);
    EXPECT_EQ(rpc.removed, (std::vector<std::uint32_t>{265, 261, 260, 263, 256, 264, 258}));
}

TEST(PluginCallbacks, TheHandlerOf261AnswersOneAndLeavesTheOutParametersAlone) {
    const char16_t text[] = u"<VLID>261</VLID>";
    std::uint8_t marker = 0;
    std::uint8_t* reply = &marker;
    std::int32_t replyLength = 99;

    EXPECT_EQ(PluginCallbacks::IgnoreMessage(reinterpret_cast<const std::uint8_t*>(text),
                                             sizeof text - 2, &reply, &replyLength),
              1);

    EXPECT_EQ(reply, &marker);
    EXPECT_EQ(replyLength, 99);
}

TEST(PluginCallbacks, AnIdWithoutAHandlerHasNone) {
    const PluginCallbacks callbacks;
    EXPECT_EQ(callbacks.HandlerOf(257), nullptr);
    EXPECT_EQ(callbacks.HandlerOf(261), &PluginCallbacks::IgnoreMessage);
}

} // namespace
