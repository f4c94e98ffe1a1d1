// The service's calls through the plug-in's reader thread to the program's handlers, as
// LoadPlugin binds them: each id to its own handler and to no other, none to an id without
// a handler, a burst of ten thousand without loss and in order, and calls again after the
// service has been away.
#include "PluginSandbox.h"

#include "mainwindow/PluginCallbacks.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/SendRpcMessage.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <sys/stat.h>

namespace {

using namespace std::chrono_literals;

// The burst below makes the service rewrite QGConfig.ini ten thousand times, with an fsync
// each time: on a memory file system that costs nothing, so the sandboxes go there when the
// machine has one.
class MemoryTempFolder : public ::testing::Environment {
public:
    void SetUp() override {
        struct stat info {};
        if (::stat("/dev/shm", &info) == 0 && S_ISDIR(info.st_mode) &&
            ::access("/dev/shm", W_OK) == 0)
            ::setenv("TMPDIR", "/dev/shm", 1);
    }
};

::testing::Environment* const g_memoryTempFolder =
    ::testing::AddGlobalTestEnvironment(new MemoryTempFolder);

template <class Message>
Message Parsed(const InboundRecorder::Call& call) {
    Message message;
    CMessageEnvelope envelope;
    envelope.Parse(message, call.text);
    return message;
}

class PluginInbound : public PluginSandbox {
protected:
    // A request that proves the connection is served, so that it gets the calls.
    void subscribe() { ASSERT_EQ(ping(), RpcStatus::Success); }

    // Emits `arguments` and waits until `count` calls in all have arrived.
    void emitAndWait(const std::vector<std::string>& arguments, std::size_t count) {
        std::vector<std::string> words{"--emit"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        control(words);
        EXPECT_TRUE(TestSupport::WaitFor([&] { return InboundRecorder::Count() >= count; }))
            << "after --emit " << arguments.front();
    }
};

} // namespace

TEST_F(PluginInbound, EachIdReachesOnlyItsOwnHandler) {
    start();
    loadPlugin();
    subscribe();
    emitAndWait({"256", "animation=1"}, 1);
    emitAndWait({"260", "name=libqglsp.so"}, 2);
    emitAndWait({"261"}, 3);
    emitAndWait({"263"}, 4);
    emitAndWait({"264", "file=/opt/reinstall", "parameters=-q", "folder=/opt"}, 5);
    emitAndWait({"265"}, 6);
    emitAndWait({"258", "HistoryDays=77"}, 7);

    const std::vector<InboundRecorder::Call> calls = InboundRecorder::Calls();
    ASSERT_EQ(calls.size(), 7u);
    const std::uint32_t order[] = {256, 260, 261, 263, 264, 265, 258};
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(calls[i].handler, order[i]) << i;
        EXPECT_TRUE(calls[i].repliesCleared) << i;
    }
    EXPECT_EQ(Parsed<enumMSG_TRAY_ANIMATION_Message>(calls[0]).GetAnimation(), 1);
    EXPECT_EQ(Parsed<enumMSG_FAILED_TO_LOAD_LSP_Message>(calls[1]).GetComponentName(),
              u"libqglsp.so");
    const auto reinstall = Parsed<enumMSG_REINSTALL_LSP_Message>(calls[4]);
    EXPECT_EQ(reinstall.GetFile(), u"/opt/reinstall");
    EXPECT_EQ(reinstall.GetParameters(), u"-q");
    EXPECT_EQ(reinstall.GetFolder(), u"/opt");
    EXPECT_EQ(Parsed<enumMSG_CONFIG_CHANGE_Message>(calls[6]).GetHistoryDays(), 77);
}

TEST_F(PluginInbound, AnIdWithoutAHandlerReachesNoHandler) {
    start();
    loadPlugin();
    subscribe();
    control({"--emit", "300", "int=5"});
    control({"--emit", "262"});
    emitAndWait({"256", "animation=0"}, 1);
    const std::vector<InboundRecorder::Call> calls = InboundRecorder::Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].handler, 256u);
}

TEST_F(PluginInbound, AnUnregisteredIdReachesNoHandler) {
    start();
    loadPlugin();
    subscribe();
    EXPECT_EQ(rpc().UnregisterHandler(PluginCallbacks::TrayAnimationId), 0);
    control({"--emit", "256", "animation=1"});
    emitAndWait({"263"}, 1);
    const std::vector<InboundRecorder::Call> calls = InboundRecorder::Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].handler, 263u);
}

TEST_F(PluginInbound, TenThousandCallsArriveWithoutLossAndInOrder) {
    start();
    loadPlugin();
    subscribe();
    // Each Config change is echoed to every program, the sender included: ten thousand
    // requests through the program's send path make ten thousand calls.
    constexpr int Burst = 10000;
    for (int i = 0; i < Burst; ++i) {
        enumMSG_CONFIG_CHANGE_Message change;
        change.SetHistoryDays(i);
        change.SetUpgradePeriod(5);
        ASSERT_TRUE(SendRpcMessage(change)) << i;
    }
    ASSERT_TRUE(TestSupport::WaitFor([] { return InboundRecorder::Count() >= Burst; }, 60s))
        << InboundRecorder::Count() << " calls";
    const std::vector<InboundRecorder::Call> calls = InboundRecorder::Calls();
    ASSERT_EQ(calls.size(), static_cast<std::size_t>(Burst));
    for (int i = 0; i < Burst; ++i) {
        ASSERT_EQ(calls[static_cast<std::size_t>(i)].handler, PluginCallbacks::ConfigChangeId);
        ASSERT_EQ(Parsed<enumMSG_CONFIG_CHANGE_Message>(calls[static_cast<std::size_t>(i)])
                      .GetHistoryDays(),
                  i);
    }
}

TEST_F(PluginInbound, CallsArriveAgainAfterTheServiceReturnsWithoutARequest) {
    start();
    loadPlugin();
    subscribe();
    ASSERT_EQ(service({"-Stop"}).exitCode, 0);
    start();
    // The reader connects again by itself; the service counts it among its programs.
    EXPECT_TRUE(TestSupport::WaitFor([&] {
        const TestSupport::ProgramResult emitted = service({"--emit", "256", "animation=1"});
        return emitted.out.find("to 1 program") != std::string::npos;
    }));
    EXPECT_TRUE(TestSupport::WaitFor([] { return InboundRecorder::Count() >= 1; }));
    const std::vector<InboundRecorder::Call> calls = InboundRecorder::Calls();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front().handler, PluginCallbacks::TrayAnimationId);
}
