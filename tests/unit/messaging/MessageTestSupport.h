#pragma once
// Helpers shared by the message tests: the two ways a message travels (a reply as UTF-8
// bytes, an inbound call as UTF-16 bytes), and field values that are awkward for a
// hand-written XML reader.

#include "messaging/CMessageEnvelope.h"
#include "messaging/TransportText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace MessageTestSupport {

// Texts that a careless writer would escape, a careless reader would stop at, or a narrow
// conversion would spoil.
inline std::vector<stdstr> AwkwardTexts() {
    return {
        stdstr(),
        stdstr(u"<"),
        stdstr(u"&"),
        stdstr(u"a < b && c > d"),
        stdstr(u"&amp; &lt;VLE&gt;"),
        stdstr(u"\"double\" and 'single' quotes"),
        stdstr(u"<VLE>"),
        stdstr(u"C:\\Program Files (x86)\\Quillgate\\"),
        stdstr(u"caf\u00E9 \u65E5\u672C\u8A9E \u0416"),
        stdstr(u"\U0001F600 and \U00010348"),
        stdstr(u" leading and trailing blanks "),
        stdstr(u"line\r\nbreak\ttab"),
        stdstr(u"=+/ base64 letters =="),
    };
}

inline std::vector<std::int32_t> AwkwardIntegers() {
    return {0,
            1,
            -1,
            42,
            -3412,
            std::numeric_limits<std::int32_t>::max(),
            std::numeric_limits<std::int32_t>::min(),
            1023,
            1024};
}

// The UTF-16 code units of `text` as the little-endian bytes of an inbound call.
inline std::string Utf16LeBytes(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

// `sent` serialised, carried as a reply (UTF-8) and read back with the id check.
template <class Message>
Message ThroughReply(const Message& sent) {
    CMessageEnvelope writer;
    const std::string bytes = TransportText::RequestBytes(writer.Serialize(sent));
    Message received;
    CMessageEnvelope reader;
    EXPECT_TRUE(
        reader.ParseChecked(received, bytes.data(), static_cast<std::uint32_t>(bytes.size())));
    return received;
}

// `sent` serialised, carried as an inbound call (UTF-16) and read back without the check.
template <class Message>
Message ThroughInboundCall(const Message& sent) {
    CMessageEnvelope writer;
    const std::string bytes = Utf16LeBytes(writer.Serialize(sent));
    const stdstr xml =
        TransportText::InboundText(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    Message received;
    CMessageEnvelope reader;
    reader.Parse(received, xml);
    return received;
}

// The inner text that `message` writes.
template <class Message>
stdstr BodyOf(const Message& message) {
    CMessageEnvelope envelope;
    stdstr body(u"left over");
    message.WriteBody(body, envelope);
    return body;
}

} // namespace MessageTestSupport
