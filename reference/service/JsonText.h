#pragma once
// JSON string and value text for the message log: enough JSON to write one object per line
// that any reader (a test, jq, Python) takes apart without guessing.

#include "foundation/stdstr.h"

#include <string>
#include <string_view>

namespace JsonText {

// `text` (UTF-8) as a JSON string with its quotes: '"', '\' and control characters escaped,
// everything else as it is.
std::string quote(std::string_view text);
std::string quote(const std::u16string& text);

} // namespace JsonText
