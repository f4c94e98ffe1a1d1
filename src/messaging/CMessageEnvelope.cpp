#include "messaging/CMessageEnvelope.h"

#include "foundation/Base64.h"
#include "foundation/ByteArray.h"
#include "messaging/EnvelopeIds.h"
#include "messaging/EnvelopeTexts.h"
#include "messaging/IMessage.h"
#include "messaging/IntegerText.h"
#include "messaging/TextSearch.h"

namespace {

// The body's inner text as it travels: UTF-8, then base64, appended to `out` as wide
// characters (base64 is ASCII, so widening is a plain copy of the bytes).
void AppendEncodedBody(const stdstr& inner, stdstr& out) {
    const ByteArray utf8(inner);
    ByteArray encoded;
    Base64Encode(utf8, encoded);
    if (encoded.size() != 0)
        out.append(encoded.data(), encoded.data() + encoded.size());
}

// The way back. The base64 text is narrowed unit by unit: ASCII stays, and anything else
// becomes a byte outside the alphabet, where decoding stops, just as at the first byte of
// its UTF-8 form; a zero unit ends the text, as it ends a terminated string. The decoded
// bytes are then read as text up to their first 0 byte, so that the zero-filled tail that a
// broken input leaves behind never reaches the fields.
stdstr DecodeBody(std::u16string_view base64) {
    base64 = base64.substr(0, base64.find(u'\0'));
    ByteArray encoded(static_cast<std::uint32_t>(base64.size()), 0);
    std::uint8_t* const bytes = encoded.data();
    for (std::size_t i = 0; i < base64.size(); ++i)
        bytes[i] = base64[i] < 0x80 ? static_cast<std::uint8_t>(base64[i]) : std::uint8_t{0x80};
    ByteArray decoded;
    Base64Decode(encoded, decoded);
    return decoded.toString();
}

} // namespace

CMessageEnvelope::CMessageEnvelope()
    : m_resultOpen(EnvelopeTexts::ResultOpen), m_resultClose(EnvelopeTexts::ResultClose),
      m_elementOpen(EnvelopeTexts::ElementOpen), m_elementClose(EnvelopeTexts::ElementClose),
      m_name(EnvelopeTexts::UnknownName), m_version(EnvelopeTexts::ProtocolVersion) {}

stdstr CMessageEnvelope::Serialize(const IMessage& msg) {
    using namespace EnvelopeTexts;

    stdstr inner;
    msg.WriteBody(inner, *this);
    const char16_t* const name = msg.GetName();
    const std::u16string_view nameText = name ? std::u16string_view(name) : std::u16string_view();

    stdstr xml;
    xml.reserve(EnvelopeOpen.size() + MsgHeaderOpen.size() + MsgBodyOpen.size() + 256 +
                nameText.size() + Base64Size(static_cast<std::uint32_t>(inner.size() * 3)));
    xml += EnvelopeOpen;
    xml += HeaderStart;
    xml += MsgHeaderOpen;
    PutTagged(m_version, xml, VersionOpen, VersionClose);
    xml += IdOpen;
    IntegerText::AppendUnsigned(msg.GetId(), xml);
    xml += IdClose;
    PutTagged(MessageVersion, xml, MessageVersionOpen, MessageVersionClose);
    PutTagged(nameText, xml, NameOpen, NameClose);
    xml += MsgHeaderClose;
    xml += HeaderEnd;
    xml += BodyStart;
    xml += MsgBodyOpen;
    xml += m_resultOpen;
    // The encoded body as one field element, as PutString writes it, without a copy.
    xml += m_elementOpen;
    AppendEncodedBody(inner, xml);
    xml += m_elementClose;
    xml += m_resultClose;
    xml += MsgBodyClose;
    xml += BodyEnd;
    xml += EnvelopeClose;
    return xml;
}

void CMessageEnvelope::Parse(IMessage& msg, std::u16string_view xml) {
    using namespace EnvelopeTexts;

    // The version and the name are passed over, not used: they only move the cursor to the
    // body, whose first element is the encoded inner text. VLR itself is never looked for.
    m_cursor = 0;
    FindElement(xml, VersionOpen, VersionClose);
    FindElement(xml, NameOpen, NameClose);
    const stdstr inner = DecodeBody(FindElement(xml, m_elementOpen, m_elementClose));
    m_cursor = 0;
    msg.ReadBody(inner, *this);
}

bool CMessageEnvelope::ParseChecked(IMessage& msg, const void* data, std::uint32_t length) {
    const std::string_view bytes =
        data ? std::string_view(static_cast<const char*>(data), length) : std::string_view();
    const stdstr xml = stdstr::toTString(bytes);
    if (msg.GetId() != static_cast<std::uint32_t>(ReadMessageId(xml)))
        return false;
    Parse(msg, xml);
    return true;
}

const stdstr& CMessageEnvelope::ExtractElement(stdstr& out, std::u16string_view text,
                                               std::u16string_view open,
                                               std::u16string_view close) {
    // `text` may be a view of `out` itself; assign copes with that.
    const std::u16string_view element = FindElement(text, open, close);
    out.assign(element.data(), element.size());
    return out;
}

std::u16string_view CMessageEnvelope::FindElement(std::u16string_view text,
                                                  std::u16string_view open,
                                                  std::u16string_view close) {
    std::size_t start = FindText(text, open, m_cursor);
    if (start == std::u16string_view::npos) {
        m_cursor = static_cast<std::uint32_t>(text.size());
        return {};
    }
    start += open.size();
    if (start >= text.size())
        return {};
    const std::size_t end = FindText(text, close, start);
    if (end == std::u16string_view::npos)
        return {};
    m_cursor = static_cast<std::uint32_t>(end + close.size());
    return text.substr(start, end - start);
}

void CMessageEnvelope::PutString(std::u16string_view value, stdstr& out) const {
    PutTagged(value, out, m_elementOpen, m_elementClose);
}

void CMessageEnvelope::PutInt(std::int32_t value, stdstr& out) const {
    PutTaggedInt(value, out, m_elementOpen, m_elementClose);
}

stdstr CMessageEnvelope::GetString(std::u16string_view text) {
    return stdstr(FindElement(text, m_elementOpen, m_elementClose));
}

std::int32_t CMessageEnvelope::GetInt(std::u16string_view text) {
    return IntegerText::Read(FindElement(text, m_elementOpen, m_elementClose));
}

void CMessageEnvelope::PutTagged(std::u16string_view value, stdstr& out, std::u16string_view open,
                                 std::u16string_view close) const {
    out += open;
    out += value;
    out += close;
}

void CMessageEnvelope::PutTaggedInt(std::int32_t value, stdstr& out, std::u16string_view open,
                                    std::u16string_view close) const {
    out += open;
    IntegerText::Append(value, out);
    out += close;
}
