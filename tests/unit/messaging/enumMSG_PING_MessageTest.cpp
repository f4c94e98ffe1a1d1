// The PING message, which carries nothing but its id.
#include "messaging/enumMSG_PING_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

TEST(PingMessage, HasId272AndTheNamePING) {
    const enumMSG_PING_Message message;
    EXPECT_EQ(message.GetId(), 272u);
    EXPECT_EQ(enumMSG_PING_Message::Id, 272u);
    EXPECT_EQ(std::u16string(message.GetName()), u"PING");
}

TEST(PingMessage, WritesAnEmptyBodyWhateverItIsGiven) {
    EXPECT_EQ(BodyOf(enumMSG_PING_Message()), u"");
}

TEST(PingMessage, TravelsWithAnEmptyElementInItsResult) {
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(enumMSG_PING_Message());
    EXPECT_NE(xml.find(u"<VLR><VLE></VLE></VLR>"), stdstr::npos);
    EXPECT_NE(xml.find(u"<VLID>272</VLID>"), stdstr::npos);
    EXPECT_NE(xml.find(u"<VLNAME>PING</VLNAME>"), stdstr::npos);
}

TEST(PingMessage, IsAcceptedAsAReplyOfItsOwnId) {
    CMessageEnvelope writer;
    const std::string bytes = TransportText::RequestBytes(writer.Serialize(enumMSG_PING_Message()));
    enumMSG_PING_Message reply;
    CMessageEnvelope reader;
    EXPECT_TRUE(reader.ParseChecked(reply, bytes.data(), static_cast<std::uint32_t>(bytes.size())));
}

TEST(PingMessage, ReadsAnyBodyWithoutTouchingTheEnvelope) {
    enumMSG_PING_Message message;
    CMessageEnvelope envelope;
    envelope.SetCursor(3);
    message.ReadBody(u"<VLE>1</VLE><VLE>text</VLE>", envelope);
    EXPECT_EQ(envelope.GetCursor(), 3u);
}
