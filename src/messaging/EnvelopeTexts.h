#pragma once
// The fixed texts of the message envelope. The service matches them literally, so every
// character counts: there is no white space between the elements, and the header
// namespace's path "/EM/Hreader" is spelled as the service spells it.

#include "foundation/stdstr.h"

#include <string_view>

namespace EnvelopeTexts {

// The authority of the two "em" namespaces: this system's own fixed name. It is reserved
// under ".example", so it can never point at anybody's server; the filter service writes
// the same name, and the protocol notes (docs/rpc-protocol.md) record it.
inline constexpr std::u16string_view SystemAuthority = u"quillgate.velloran.example";

// The W3C's December 2001 SOAP drafts.
inline constexpr std::u16string_view SoapEnvelopeNamespace =
    u"http://www.w3.org/2001/12/soap-envelope";
inline constexpr std::u16string_view SoapEncodingNamespace =
    u"http://www.w3.org/2001/12/soap-encoding";

inline const stdstr HeaderNamespace =
    stdstr(u"http://") + stdstr(SystemAuthority) + stdstr(u"/EM/Hreader");
inline const stdstr BodyNamespace =
    stdstr(u"http://") + stdstr(SystemAuthority) + stdstr(u"/EM/Body");

inline const stdstr EnvelopeOpen =
    stdstr(u"<?xml version=\"1.0\"?><soap:Envelope xmlns:soap=\"") + stdstr(SoapEnvelopeNamespace) +
    stdstr(u"\" soap:encodingStyle=\"") + stdstr(SoapEncodingNamespace) + stdstr(u"\">");
inline constexpr std::u16string_view EnvelopeClose = u"</soap:Envelope>";
inline constexpr std::u16string_view HeaderStart = u"<soap:Header>";
inline constexpr std::u16string_view HeaderEnd = u"</soap:Header>";
inline constexpr std::u16string_view BodyStart = u"<soap:Body>";
inline constexpr std::u16string_view BodyEnd = u"</soap:Body>";
inline const stdstr MsgHeaderOpen =
    stdstr(u"<em:MsgHeader xmlns:em=\"") + HeaderNamespace + stdstr(u"\">");
inline constexpr std::u16string_view MsgHeaderClose = u"</em:MsgHeader>";
inline const stdstr MsgBodyOpen =
    stdstr(u"<em:MsgBody xmlns:em=\"") + BodyNamespace + stdstr(u"\">");
inline constexpr std::u16string_view MsgBodyClose = u"</em:MsgBody>";

// The value of VLVS, and the literal of VLMSGVer.
inline constexpr std::u16string_view ProtocolVersion = u"1.0.0";
inline constexpr std::u16string_view MessageVersion = u"1.0";

// The header elements.
inline constexpr std::u16string_view VersionOpen = u"<VLVS>";
inline constexpr std::u16string_view VersionClose = u"</VLVS>";
inline constexpr std::u16string_view IdOpen = u"<VLID>";
inline constexpr std::u16string_view IdClose = u"</VLID>";
inline constexpr std::u16string_view MessageVersionOpen = u"<VLMSGVer>";
inline constexpr std::u16string_view MessageVersionClose = u"</VLMSGVer>";
inline constexpr std::u16string_view NameOpen = u"<VLNAME>";
inline constexpr std::u16string_view NameClose = u"</VLNAME>";
inline constexpr std::u16string_view UniqueIdOpen = u"<VLUNIID>";
inline constexpr std::u16string_view UniqueIdClose = u"</VLUNIID>";

// The tags around the body and around each field, the envelope's initial values.
inline constexpr std::u16string_view ResultOpen = u"<VLR>";
inline constexpr std::u16string_view ResultClose = u"</VLR>";
inline constexpr std::u16string_view ElementOpen = u"<VLE>";
inline constexpr std::u16string_view ElementClose = u"</VLE>";

// The envelope's name field before anything sets it.
inline constexpr std::u16string_view UnknownName = u"enumMSG_UNKNOWN";

} // namespace EnvelopeTexts
