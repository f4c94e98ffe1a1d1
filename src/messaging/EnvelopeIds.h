#pragma once
// The two ids that can be read from an envelope's header without parsing the message: the
// message id, which decides whether a reply is the one expected, and the unique id, which
// this program never writes.

#include <cstdint>
#include <string_view>

// The value of VLID when it lies in 1..1023, else 0 (a missing or empty element included):
// no message id reaches 1024.
std::int32_t ReadMessageId(std::u16string_view xml);

// The value of VLUNIID, with no range test; 0 when an element tag is missing or the element
// is empty. The narrow form reads an 8-bit text.
std::int32_t ReadUniqueId(std::u16string_view xml);
std::int32_t ReadUniqueId(std::string_view xml);
