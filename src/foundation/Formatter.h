#pragma once
// The printf-style composer behind every formatted text of the system (trace lines,
// exception messages, the debug log). It follows the Windows conventions of the texts it
// composes: in a wide format "%s" is wide text and "%S" narrow text, and the other way
// round in a narrow format; "l" is 32 bits and "I64"/"ll" 64 bits. Text of the other
// width is converted, never reinterpreted.

#include "foundation/FormatArg.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace Corvane {

// Appends the composition of `format` with `args` to `out`, stopping once `out` would pass
// `maxLength` characters. Returns false when the format cannot be composed with these
// arguments: a missing argument, an argument of the wrong kind for its conversion, or a
// conversion that is not known (including "%n"). On false `out` is left as it was.
bool formatAppend(std::u16string& out, std::u16string_view format, std::span<const FormatArg> args,
                  std::size_t maxLength = std::u16string::npos);
bool formatAppend(std::string& out, std::string_view format, std::span<const FormatArg> args,
                  std::size_t maxLength = std::string::npos);

template <class... Args>
std::array<FormatArg, sizeof...(Args)> makeFormatArgs(const Args&... args) {
    return {FormatArg(args)...};
}

} // namespace Corvane
