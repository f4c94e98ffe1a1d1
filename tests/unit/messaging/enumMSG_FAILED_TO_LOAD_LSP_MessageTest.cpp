// The Failed to load LSP message: one text, the name of what could not be loaded.
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

TEST(FailedToLoadLspMessage, HasId260AndTheNameFailedToLoadLsp) {
    const enumMSG_FAILED_TO_LOAD_LSP_Message message;
    EXPECT_EQ(message.GetId(), 260u);
    EXPECT_EQ(enumMSG_FAILED_TO_LOAD_LSP_Message::Id, 260u);
    EXPECT_EQ(std::u16string(message.GetName()), u"Failed to load LSP");
}

TEST(FailedToLoadLspMessage, StartsEmpty) {
    EXPECT_EQ(enumMSG_FAILED_TO_LOAD_LSP_Message().GetComponentName(), u"");
}

TEST(FailedToLoadLspMessage, WritesTheNameAsItStands) {
    enumMSG_FAILED_TO_LOAD_LSP_Message message;
    message.SetComponentName(u"QGLsp.dll <&>");
    EXPECT_EQ(BodyOf(message), u"<VLE>QGLsp.dll <&></VLE>");
    message.SetComponentName(u"");
    EXPECT_EQ(BodyOf(message), u"<VLE></VLE>");
}

TEST(FailedToLoadLspMessage, ComesBackUnchangedAsAReplyAndAsAnInboundCall) {
    for (const stdstr& text : AwkwardTexts()) {
        SCOPED_TRACE(stdstr::fromTString(text));
        enumMSG_FAILED_TO_LOAD_LSP_Message sent;
        sent.SetComponentName(text);
        EXPECT_EQ(ThroughReply(sent).GetComponentName(), text);
        EXPECT_EQ(ThroughInboundCall(sent).GetComponentName(), text);
    }
}

TEST(FailedToLoadLspMessage, CutsANameAtTheElementCloseTag) {
    enumMSG_FAILED_TO_LOAD_LSP_Message sent;
    sent.SetComponentName(u"first</VLE>second");
    EXPECT_EQ(ThroughInboundCall(sent).GetComponentName(), u"first");
}

TEST(FailedToLoadLspMessage, ReadsAMissingElementAsEmpty) {
    enumMSG_FAILED_TO_LOAD_LSP_Message message;
    message.SetComponentName(u"old");
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>no close tag", envelope);
    EXPECT_EQ(message.GetComponentName(), u"");
}
