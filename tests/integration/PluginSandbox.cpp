#include "PluginSandbox.h"

#include "mainwindow/PluginCallbacks.h"
#include "mainwindow/PluginLoader.h"
#include "mainwindow/PluginPointers.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/IMessage.h"
#include "messaging/TransportText.h"
#include "messaging/enumMSG_PING_Message.h"

#include <dlfcn.h>

#include <cstdlib>

namespace {

void ResetPluginPointers() {
    m_pStandAlone = nullptr;
    m_pPlugin = nullptr;
    m_pCommonUI = nullptr;
    m_pQGInfo = nullptr;
    m_pRPCExt = nullptr;
}

} // namespace

void PluginSandbox::SetUp() {
    ResetPluginPointers();
    InboundRecorder::Clear();
    // Short enough for the tests of the time-out and the dropped connection to be quick,
    // long enough for a loaded machine.
    setTimeout(std::chrono::milliseconds(2000));
    ::unsetenv("QGPLUGIN_JOURNAL");
}

void PluginSandbox::TearDown() {
    if (m_pRPCExt != nullptr)
        PluginCallbacks::Unregister(*m_pRPCExt);
    PluginLoader::FreePlugin();
    ResetPluginPointers();
    EXPECT_FALSE(pluginLoaded()) << "the plug-in stayed in the process after it was freed";
    ::unsetenv("QGPLUGIN_RPC_TIMEOUT_MS");
    ::unsetenv("QGPLUGIN_JOURNAL");
    ServiceSandbox::TearDown();
}

void PluginSandbox::loadPlugin() {
    PluginLoader loader(boxes, InboundRecorder::Callbacks(), pluginPath());
    ASSERT_TRUE(loader.LoadPlugin());
    ASSERT_TRUE(boxes.texts.empty());
    ASSERT_NE(m_pRPCExt, nullptr);
}

IRPCExt& PluginSandbox::rpc() const {
    return *m_pRPCExt;
}

PluginSandbox::Exchange PluginSandbox::request(const IMessage& message) {
    CMessageEnvelope envelope;
    const std::string bytes = TransportText::RequestBytes(envelope.Serialize(message));
    std::uint8_t* reply = nullptr;
    std::int32_t replyLength = 0;
    Exchange exchange;
    exchange.status =
        rpc().SendRequest(RpcServerName, reinterpret_cast<const std::uint8_t*>(bytes.data()),
                          static_cast<std::uint32_t>(bytes.size()), &reply, &replyLength);
    if (reply != nullptr && replyLength > 0) {
        exchange.reply = std::string(reinterpret_cast<const char*>(reply),
                                     static_cast<std::size_t>(replyLength));
        rpc().FreeBuffer(&reply, &replyLength);
        EXPECT_EQ(reply, nullptr);
        EXPECT_EQ(replyLength, 0);
    }
    return exchange;
}

std::uint32_t PluginSandbox::ping() {
    return request(enumMSG_PING_Message()).status;
}

void PluginSandbox::setTimeout(std::chrono::milliseconds timeout) {
    ::setenv("QGPLUGIN_RPC_TIMEOUT_MS", std::to_string(timeout.count()).c_str(), 1);
}

std::string PluginSandbox::control(const std::vector<std::string>& arguments) {
    const TestSupport::ProgramResult result = service(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return result.out;
}

bool PluginSandbox::pluginLoaded() {
    void* handle = dlopen(QGPLUGIN_PATH, RTLD_NOW | RTLD_NOLOAD);
    if (handle == nullptr)
        return false;
    dlclose(handle);
    return true;
}
