#pragma once
// The integer rules of the message envelope, shared by the field elements and the header's
// ids. Writing is plain base 10 with a leading minus sign. Reading is as forgiving as the
// service's own "%d" reading: white space before the number is skipped, a sign may lead,
// the digits are read up to the first non-digit, and whatever follows is ignored. Any text
// that does not yield a number, and any number outside the signed 32-bit range, reads as 0:
// a field never fails its message.

#include "foundation/stdstr.h"

#include <cstdint>
#include <string_view>

namespace IntegerText {

// Appends `value` in base 10 to `out`.
void Append(std::int32_t value, std::u16string& out);
// The same for an unsigned value (the message ids).
void AppendUnsigned(std::uint32_t value, std::u16string& out);
stdstr Write(std::int32_t value);

// The leading number of `text`, or 0.
std::int32_t Read(std::u16string_view text);
std::int32_t Read(std::string_view text);

} // namespace IntegerText
