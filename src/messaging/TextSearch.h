#pragma once
// The tag search of the envelope's reader. Envelopes are mostly ASCII with a '<' every few
// characters and long runs of base64 between the tags, so the search for a tag's first
// character is handed to memchr over the text's bytes, which skips those runs many
// characters at a time; the standard search compares one UTF-16 unit after another.

#include <cstddef>
#include <string_view>

// The position of the first `pattern` in `text` at or after `from`, or npos: the same
// answer as text.find(pattern, from).
std::size_t FindText(std::u16string_view text, std::u16string_view pattern, std::size_t from);
