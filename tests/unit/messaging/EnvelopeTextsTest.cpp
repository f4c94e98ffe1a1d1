// The fixed texts of the envelope, which the service matches literally.
#include "messaging/EnvelopeTexts.h"

#include <gtest/gtest.h>

#include <string>

using namespace EnvelopeTexts;

TEST(EnvelopeTexts, NameTheSystemAsTheAuthorityOfBothEmNamespaces) {
    EXPECT_EQ(SystemAuthority, u"quillgate.velloran.example");
    EXPECT_EQ(HeaderNamespace, u"http://quillgate.velloran.example/EM/Hreader");
    EXPECT_EQ(BodyNamespace, u"http://quillgate.velloran.example/EM/Body");
}

TEST(EnvelopeTexts, OpenTheEnvelopeWithTheDecember2001SoapNamespaces) {
    EXPECT_EQ(EnvelopeOpen, u"<?xml version=\"1.0\"?><soap:Envelope "
                            u"xmlns:soap=\"http://www.w3.org/2001/12/soap-envelope\" "
                            u"soap:encodingStyle=\"http://www.w3.org/2001/12/soap-encoding\">");
    EXPECT_EQ(EnvelopeClose, u"</soap:Envelope>");
}

TEST(EnvelopeTexts, OpenTheHeaderAndBodyWithTheirOwnNamespaces) {
    EXPECT_EQ(MsgHeaderOpen,
              u"<em:MsgHeader xmlns:em=\"http://quillgate.velloran.example/EM/Hreader\">");
    EXPECT_EQ(MsgHeaderClose, u"</em:MsgHeader>");
    EXPECT_EQ(MsgBodyOpen, u"<em:MsgBody xmlns:em=\"http://quillgate.velloran.example/EM/Body\">");
    EXPECT_EQ(MsgBodyClose, u"</em:MsgBody>");
}

TEST(EnvelopeTexts, HaveNoWhiteSpaceOutsideTheirAttributes) {
    for (const std::u16string_view text :
         {std::u16string_view(MsgHeaderOpen), std::u16string_view(MsgBodyOpen), HeaderStart,
          HeaderEnd, BodyStart, BodyEnd, ResultOpen, ResultClose, ElementOpen, ElementClose}) {
        EXPECT_EQ(text.find_first_of(u"\r\n\t"), std::u16string_view::npos);
        EXPECT_TRUE(text.starts_with(u"<"));
        EXPECT_TRUE(text.ends_with(u">"));
    }
}

TEST(EnvelopeTexts, GiveTheProtocolAndMessageVersions) {
    EXPECT_EQ(ProtocolVersion, u"1.0.0");
    EXPECT_EQ(MessageVersion, u"1.0");
}
