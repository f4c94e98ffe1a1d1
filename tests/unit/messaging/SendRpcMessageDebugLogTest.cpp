// The debug log lines of the send path. The log decides once per process whether it is on,
// so this program holds nothing else and the case runs in a child of its own.
#include "messaging/SendRpcMessage.h"

#include "FakeRpcExt.h"
#include "foundation/DebugLog.h"
#include "mainwindow/PluginPointers.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "support/RunInChild.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace {

void SwitchDebugLogOn(const TestSupport::SandboxRoot& root) {
    root.writeFile("var/lib/velloran/registry/machine.reg",
                   "Windows Registry Editor Version 5.00\r\n\r\n"
                   "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                   "\"DebugOutput\"=dword:00000001\r\n");
}

TEST(SendPathDebugLog, EachSendNamesItsMessage) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  TestSupport::SandboxRoot root;
                  SwitchDebugLogOn(root);
                  FakeRpcExt rpc;
                  m_pRPCExt = &rpc;
                  SendRpcMessage(enumMSG_PING_Message());
                  enumMSG_CONFIG_CHANGE_Message reply;
                  SendRpcMessageWithReply(enumMSG_GUI_START_Message(), reply);
                  m_pRPCExt = nullptr;
                  const std::string text = TestSupport::SandboxRoot::readFile(DebugLogPath());
                  // The first text brings no line end, so the second line runs on behind it.
                  const std::string head = R"(\d+/\d+/\d+  \d+:\d+:\d+:\d+ \| \d+ \| )";
                  const std::regex expected(head + "Sending message from Main Dialog: PING" + head +
                                            "Sending message from Main Dialog: GUI Start - "
                                            "Receiving: Config change\n");
                  return std::regex_match(text, expected) ? 0 : 1;
              }),
              0);
}

} // namespace
