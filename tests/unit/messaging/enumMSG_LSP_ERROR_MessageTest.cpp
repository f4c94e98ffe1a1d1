// The LSP Error message, which carries nothing but its id.
#include "messaging/enumMSG_LSP_ERROR_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

TEST(LspErrorMessage, HasId263AndTheNameLSPError) {
    const enumMSG_LSP_ERROR_Message message;
    EXPECT_EQ(message.GetId(), 263u);
    EXPECT_EQ(enumMSG_LSP_ERROR_Message::Id, 263u);
    EXPECT_EQ(std::u16string(message.GetName()), u"LSP Error");
}

TEST(LspErrorMessage, WritesAnEmptyBodyWhateverItIsGiven) {
    EXPECT_EQ(BodyOf(enumMSG_LSP_ERROR_Message()), u"");
}

TEST(LspErrorMessage, TravelsWithAnEmptyElementInItsResult) {
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(enumMSG_LSP_ERROR_Message());
    EXPECT_NE(xml.find(u"<VLR><VLE></VLE></VLR>"), stdstr::npos);
    EXPECT_NE(xml.find(u"<VLID>263</VLID>"), stdstr::npos);
    EXPECT_NE(xml.find(u"<VLNAME>LSP Error</VLNAME>"), stdstr::npos);
}

TEST(LspErrorMessage, IsAcceptedAsAReplyOfItsOwnId) {
    CMessageEnvelope writer;
    const std::string bytes =
        TransportText::RequestBytes(writer.Serialize(enumMSG_LSP_ERROR_Message()));
    enumMSG_LSP_ERROR_Message reply;
    CMessageEnvelope reader;
    EXPECT_TRUE(reader.ParseChecked(reply, bytes.data(), static_cast<std::uint32_t>(bytes.size())));
}

TEST(LspErrorMessage, ReadsAnyBodyWithoutTouchingTheEnvelope) {
    enumMSG_LSP_ERROR_Message message;
    CMessageEnvelope envelope;
    envelope.SetCursor(3);
    message.ReadBody(u"<VLE>1</VLE><VLE>text</VLE>", envelope);
    EXPECT_EQ(envelope.GetCursor(), 3u);
}
