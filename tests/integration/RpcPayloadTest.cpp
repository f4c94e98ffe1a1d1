// RpcPayload: UTF-8 for requests and replies, UTF-16LE for inbound calls.
#include "protocol/RpcPayload.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "protocol/RpcSocketPath.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

TEST(RpcPayload, OfARequestIsTheEnvelopeAsUtf8) {
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(enumMSG_PING_Message());
    EXPECT_EQ(RpcPayload::RequestOf(enumMSG_PING_Message()), stdstr::fromTString(xml));
}

TEST(RpcPayload, OfAnInboundCallIsTheEnvelopeAsUtf16LittleEndian) {
    enumMSG_FAILED_TO_LOAD_LSP_Message message;
    message.SetComponentName(u"\u00E9");
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(message);
    const std::string bytes = RpcPayload::InboundOf(message);
    ASSERT_EQ(bytes.size(), xml.size() * 2);
    EXPECT_EQ(bytes.substr(0, 4), std::string("<\0?\0", 4));
    EXPECT_EQ(RpcPayload::TextOfInbound(bytes), xml);
    EXPECT_EQ(RpcPayload::InboundBytes(u"\u00E9\U0001F600"),
              std::string("\xE9\x00\x3D\xD8\x00\xDE", 6));
}

TEST(RpcPayload, ReadsARequestUpToItsFirstZeroByte) {
    EXPECT_EQ(RpcPayload::TextOfRequest(std::string("<VLID>1\0junk", 12)), u"<VLID>1");
    EXPECT_EQ(RpcPayload::TextOfRequest("\xC3\xA9"), u"\u00E9");
}

TEST(RpcSocketPath, LiesBelowTheSandboxRoot) {
    TestSupport::SandboxRoot sandbox;
    EXPECT_EQ(RpcSocketPath::Path(), sandbox.path() + "/run/velloran/SharedRPCServer");
    EXPECT_EQ(RpcSocketPath::Folder(), sandbox.path() + "/run/velloran");
    EXPECT_EQ(std::u16string(RpcSocketPath::ServerName), u"SharedRPCServer");
}
