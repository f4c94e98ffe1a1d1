// The GUI Start message: one signed integer, the sender's process id.
#include "messaging/enumMSG_GUI_START_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

TEST(GuiStartMessage, HasId262AndTheNameGuiStart) {
    const enumMSG_GUI_START_Message message;
    EXPECT_EQ(message.GetId(), 262u);
    EXPECT_EQ(enumMSG_GUI_START_Message::Id, 262u);
    EXPECT_EQ(std::u16string(message.GetName()), u"GUI Start");
}

TEST(GuiStartMessage, StartsAtZero) {
    EXPECT_EQ(enumMSG_GUI_START_Message().GetProcessId(), 0);
}

TEST(GuiStartMessage, WritesOneElement) {
    enumMSG_GUI_START_Message message;
    message.SetProcessId(-250);
    EXPECT_EQ(BodyOf(message), u"<VLE>-250</VLE>");
    message.SetProcessId(0);
    EXPECT_EQ(BodyOf(message), u"<VLE>0</VLE>");
}

TEST(GuiStartMessage, ComesBackUnchangedAsAReplyAndAsAnInboundCall) {
    for (const std::int32_t value : AwkwardIntegers()) {
        SCOPED_TRACE(value);
        enumMSG_GUI_START_Message sent;
        sent.SetProcessId(value);
        EXPECT_EQ(ThroughReply(sent).GetProcessId(), value);
        EXPECT_EQ(ThroughInboundCall(sent).GetProcessId(), value);
    }
}

TEST(GuiStartMessage, ReadsAMissingElementAsZero) {
    enumMSG_GUI_START_Message message;
    message.SetProcessId(77);
    CMessageEnvelope envelope;
    message.ReadBody(u"", envelope);
    EXPECT_EQ(message.GetProcessId(), 0);
}

TEST(GuiStartMessage, ReadsOnlyTheFirstOfSeveralElements) {
    enumMSG_GUI_START_Message message;
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>5</VLE><VLE>6</VLE>", envelope);
    EXPECT_EQ(message.GetProcessId(), 5);
}

TEST(GuiStartMessage, ReadsTheLeadingNumberOfItsElement) {
    enumMSG_GUI_START_Message message;
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>12abc</VLE>", envelope);
    EXPECT_EQ(message.GetProcessId(), 12);
    CMessageEnvelope other;
    message.ReadBody(u"<VLE>abc</VLE>", other);
    EXPECT_EQ(message.GetProcessId(), 0);
}
