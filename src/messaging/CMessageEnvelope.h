#pragma once
// The XML form of a message: one line of SOAP-shaped text with a header of four elements
// and a body whose single element holds the message's own fields, written as elements,
// encoded as UTF-8 and then base64. No XML parser is involved at either end: the writer
// concatenates fixed texts and the reader searches for literal tags with a moving cursor.
// A malformed text never fails the reader; what cannot be found reads as empty or 0.
// An envelope is short-lived and belongs to one thread: one per send, one per inbound call.

#include "foundation/stdstr.h"

#include <cstdint>
#include <string_view>

class IMessage;

class CMessageEnvelope {
public:
    CMessageEnvelope();

    // The whole XML text of `msg`. Two calls on the same message give the same text.
    stdstr Serialize(const IMessage& msg);
    // Fills `msg` from `xml` without looking at the id: the inbound calls come already
    // routed by it.
    void Parse(IMessage& msg, std::u16string_view xml);
    // Takes `length` bytes of UTF-8 text (a reply), and fills `msg` only when the text's id
    // is msg.GetId(); returns whether it did.
    bool ParseChecked(IMessage& msg, const void* data, std::uint32_t length);

    // The text between the first `open` at or after the cursor and the next `close`, which
    // also becomes `out`. Found: the cursor moves behind `close`. No `open`: the cursor
    // moves to the end of `text`. An `open` that ends the text, or no `close`: the cursor
    // stays. The last three give the empty string.
    const stdstr& ExtractElement(stdstr& out, std::u16string_view text, std::u16string_view open,
                                 std::u16string_view close);

    // Append one field element to `out`.
    void PutString(std::u16string_view value, stdstr& out) const;
    void PutInt(std::int32_t value, stdstr& out) const;
    // Read the next field element from the cursor on.
    stdstr GetString(std::u16string_view text);
    std::int32_t GetInt(std::u16string_view text);

    // Append `open`, the value and `close`.
    void PutTagged(std::u16string_view value, stdstr& out, std::u16string_view open,
                   std::u16string_view close) const;
    void PutTaggedInt(std::int32_t value, stdstr& out, std::u16string_view open,
                      std::u16string_view close) const;

    // The reading position, in UTF-16 units.
    std::uint32_t GetCursor() const { return m_cursor; }
    void SetCursor(std::uint32_t cursor) { m_cursor = cursor; }

private:
    // ExtractElement without the copy: a view into `text`, with the same cursor moves.
    std::u16string_view FindElement(std::u16string_view text, std::u16string_view open,
                                    std::u16string_view close);

    std::uint32_t m_cursor = 0;
    // The tags and the two texts are fixed for the envelope's life, so they are views of the
    // shared constants rather than copies.
    std::u16string_view m_resultOpen;
    std::u16string_view m_resultClose;
    std::u16string_view m_elementOpen;
    std::u16string_view m_elementClose;
    // "enumMSG_UNKNOWN" from the start; no operation reads it.
    std::u16string_view m_name;
    std::u16string_view m_version;
};
