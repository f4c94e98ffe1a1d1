// The Filter status message: one signed integer, the filter state: 1 on, 0 off.
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

TEST(FilterChangeMessage, HasId257AndTheNameFilterStatus) {
    const enumMSG_FILTER_CHANGE_Message message;
    EXPECT_EQ(message.GetId(), 257u);
    EXPECT_EQ(enumMSG_FILTER_CHANGE_Message::Id, 257u);
    EXPECT_EQ(std::u16string(message.GetName()), u"Filter status");
}

TEST(FilterChangeMessage, StartsAtZero) {
    EXPECT_EQ(enumMSG_FILTER_CHANGE_Message().GetFilterState(), 0);
}

TEST(FilterChangeMessage, WritesOneElement) {
    enumMSG_FILTER_CHANGE_Message message;
    message.SetFilterState(-250);
    EXPECT_EQ(BodyOf(message), u"<VLE>-250</VLE>");
    message.SetFilterState(0);
    EXPECT_EQ(BodyOf(message), u"<VLE>0</VLE>");
}

TEST(FilterChangeMessage, ComesBackUnchangedAsAReplyAndAsAnInboundCall) {
    for (const std::int32_t value : AwkwardIntegers()) {
        SCOPED_TRACE(value);
        enumMSG_FILTER_CHANGE_Message sent;
        sent.SetFilterState(value);
        EXPECT_EQ(ThroughReply(sent).GetFilterState(), value);
        EXPECT_EQ(ThroughInboundCall(sent).GetFilterState(), value);
    }
}

TEST(FilterChangeMessage, ReadsAMissingElementAsZero) {
    enumMSG_FILTER_CHANGE_Message message;
    message.SetFilterState(77);
    CMessageEnvelope envelope;
    message.ReadBody(u"", envelope);
    EXPECT_EQ(message.GetFilterState(), 0);
}

TEST(FilterChangeMessage, ReadsOnlyTheFirstOfSeveralElements) {
    enumMSG_FILTER_CHANGE_Message message;
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>5</VLE><VLE>6</VLE>", envelope);
    EXPECT_EQ(message.GetFilterState(), 5);
}

TEST(FilterChangeMessage, ReadsTheLeadingNumberOfItsElement) {
    enumMSG_FILTER_CHANGE_Message message;
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>12abc</VLE>", envelope);
    EXPECT_EQ(message.GetFilterState(), 12);
    CMessageEnvelope other;
    message.ReadBody(u"<VLE>abc</VLE>", other);
    EXPECT_EQ(message.GetFilterState(), 0);
}
