#pragma once
// UTF-8 <-> UTF-16 transcoding for the edges of the system (messages, language files).
// Never fails on bad input: what cannot be decoded becomes U+FFFD, one per maximal
// ill-formed subpart, which is what Windows' UTF-8 code page does with flags 0 and what
// the texts written by the Windows product therefore look like after a round trip.

#include <string>
#include <string_view>

namespace Corvane::Unicode {

inline constexpr char16_t ReplacementCharacter = u'\xFFFD';

// Appends `utf8` decoded as UTF-16 to `out`.
void appendUtf16(std::u16string& out, std::string_view utf8);
// Appends `utf16` encoded as UTF-8 to `out`; unpaired surrogates become U+FFFD.
void appendUtf8(std::string& out, std::u16string_view utf16);

// The part of a text before its first NUL: the Windows conversions take their input as a
// terminated string, so a NUL ends the text there.
std::string_view untilNul(std::string_view text);
std::u16string_view untilNul(std::u16string_view text);

} // namespace Corvane::Unicode
