// The Tray Animation message: one signed integer, the animation selector, passed to the main window
// unchanged.
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

TEST(TrayAnimationMessage, HasId256AndTheNameTrayAnimation) {
    const enumMSG_TRAY_ANIMATION_Message message;
    EXPECT_EQ(message.GetId(), 256u);
    EXPECT_EQ(enumMSG_TRAY_ANIMATION_Message::Id, 256u);
    EXPECT_EQ(std::u16string(message.GetName()), u"Tray Animation");
}

TEST(TrayAnimationMessage, StartsAtZero) {
    EXPECT_EQ(enumMSG_TRAY_ANIMATION_Message().GetAnimation(), 0);
}

TEST(TrayAnimationMessage, WritesOneElement) {
    enumMSG_TRAY_ANIMATION_Message message;
    message.SetAnimation(-250);
    EXPECT_EQ(BodyOf(message), u"<VLE>-250</VLE>");
    message.SetAnimation(0);
    EXPECT_EQ(BodyOf(message), u"<VLE>0</VLE>");
}

TEST(TrayAnimationMessage, ComesBackUnchangedAsAReplyAndAsAnInboundCall) {
    for (const std::int32_t value : AwkwardIntegers()) {
        SCOPED_TRACE(value);
        enumMSG_TRAY_ANIMATION_Message sent;
        sent.SetAnimation(value);
        EXPECT_EQ(ThroughReply(sent).GetAnimation(), value);
        EXPECT_EQ(ThroughInboundCall(sent).GetAnimation(), value);
    }
}

TEST(TrayAnimationMessage, ReadsAMissingElementAsZero) {
    enumMSG_TRAY_ANIMATION_Message message;
    message.SetAnimation(77);
    CMessageEnvelope envelope;
    message.ReadBody(u"", envelope);
    EXPECT_EQ(message.GetAnimation(), 0);
}

TEST(TrayAnimationMessage, ReadsOnlyTheFirstOfSeveralElements) {
    enumMSG_TRAY_ANIMATION_Message message;
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>5</VLE><VLE>6</VLE>", envelope);
    EXPECT_EQ(message.GetAnimation(), 5);
}

TEST(TrayAnimationMessage, ReadsTheLeadingNumberOfItsElement) {
    enumMSG_TRAY_ANIMATION_Message message;
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>12abc</VLE>", envelope);
    EXPECT_EQ(message.GetAnimation(), 12);
    CMessageEnvelope other;
    message.ReadBody(u"<VLE>abc</VLE>", other);
    EXPECT_EQ(message.GetAnimation(), 0);
}
