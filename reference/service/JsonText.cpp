#include "service/JsonText.h"

#include <cstdio>

namespace JsonText {

std::string quote(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    out += '"';
    return out;
}

std::string quote(const std::u16string& text) {
    // Unpaired surrogates become U+FFFD: JSON text must be valid Unicode.
    return quote(stdstr::fromTString(text));
}

} // namespace JsonText
