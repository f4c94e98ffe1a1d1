#include "foundation/PackageMetadata.h"

#include <cstdint>

namespace {

// Nesting beyond this is refused: no package note needs it, and it bounds the recursion.
constexpr int MaxDepth = 64;

class JsonReader {
public:
    explicit JsonReader(std::string_view text) : m_text(text) {}

    bool readDocument(PackageMetadata& metadata) {
        skipBlanks();
        if (!readObject(0, &metadata))
            return false;
        skipBlanks();
        return m_position == m_text.size();
    }

private:
    bool atEnd() const { return m_position >= m_text.size(); }
    char peek() const { return atEnd() ? '\0' : m_text[m_position]; }

    void skipBlanks() {
        while (!atEnd() && (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r'))
            ++m_position;
    }

    bool expect(char c) {
        if (peek() != c || atEnd())
            return false;
        ++m_position;
        return true;
    }

    bool literal(std::string_view word) {
        if (m_text.substr(m_position, word.size()) != word)
            return false;
        m_position += word.size();
        return true;
    }

    // The members of the top-level object go to `metadata`; nested ones are skipped.
    bool readObject(int depth, PackageMetadata* metadata) {
        if (depth > MaxDepth || !expect('{'))
            return false;
        skipBlanks();
        if (expect('}'))
            return true;
        for (;;) {
            std::string key;
            if (!readString(key))
                return false;
            skipBlanks();
            if (!expect(':'))
                return false;
            skipBlanks();
            std::string text;
            bool isText = false;
            if (!readValue(depth + 1, text, isText))
                return false;
            if (metadata && (key == "name" || key == "version")) {
                std::optional<std::string>& member =
                    key == "name" ? metadata->name : metadata->version;
                // A later member of the same name wins, as with most JSON readers.
                member = isText ? std::optional<std::string>(std::move(text)) : std::nullopt;
            }
            skipBlanks();
            if (expect('}'))
                return true;
            if (!expect(','))
                return false;
            skipBlanks();
        }
    }

    bool readArray(int depth) {
        if (depth > MaxDepth || !expect('['))
            return false;
        skipBlanks();
        if (expect(']'))
            return true;
        for (;;) {
            std::string ignored;
            bool isText = false;
            if (!readValue(depth + 1, ignored, isText))
                return false;
            skipBlanks();
            if (expect(']'))
                return true;
            if (!expect(','))
                return false;
            skipBlanks();
        }
    }

    bool readValue(int depth, std::string& text, bool& isText) {
        isText = false;
        switch (peek()) {
        case '{':
            return readObject(depth, nullptr);
        case '[':
            return readArray(depth);
        case '"':
            isText = true;
            return readString(text);
        case 't':
            return literal("true");
        case 'f':
            return literal("false");
        case 'n':
            return literal("null");
        default:
            return readNumber();
        }
    }

    bool digits() {
        const std::size_t start = m_position;
        while (!atEnd() && peek() >= '0' && peek() <= '9')
            ++m_position;
        return m_position > start;
    }

    bool readNumber() {
        if (peek() == '-')
            ++m_position;
        if (peek() == '0')
            ++m_position;
        else if (!digits())
            return false;
        if (peek() == '.') {
            ++m_position;
            if (!digits())
                return false;
        }
        if (peek() == 'e' || peek() == 'E') {
            ++m_position;
            if (peek() == '+' || peek() == '-')
                ++m_position;
            if (!digits())
                return false;
        }
        return true;
    }

    bool hex4(std::uint32_t& value) {
        if (m_text.size() - m_position < 4)
            return false;
        value = 0;
        for (int i = 0; i < 4; ++i) {
            const char c = m_text[m_position++];
            value <<= 4;
            if (c >= '0' && c <= '9')
                value |= static_cast<std::uint32_t>(c - '0');
            else if (c >= 'a' && c <= 'f')
                value |= static_cast<std::uint32_t>(c - 'a' + 10);
            else if (c >= 'A' && c <= 'F')
                value |= static_cast<std::uint32_t>(c - 'A' + 10);
            else
                return false;
        }
        return true;
    }

    static void appendUtf8(std::string& out, std::uint32_t code) {
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (code >> 18));
            out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }

    bool readEscape(std::string& out) {
        if (atEnd())
            return false;
        const char c = m_text[m_position++];
        switch (c) {
        case '"':
        case '\\':
        case '/':
            out += c;
            return true;
        case 'b':
            out += '\b';
            return true;
        case 'f':
            out += '\f';
            return true;
        case 'n':
            out += '\n';
            return true;
        case 'r':
            out += '\r';
            return true;
        case 't':
            out += '\t';
            return true;
        case 'u':
            break;
        default:
            return false;
        }
        std::uint32_t code = 0;
        if (!hex4(code))
            return false;
        if (code >= 0xD800 && code <= 0xDBFF) {
            std::uint32_t low = 0;
            if (!literal("\\u") || !hex4(low) || low < 0xDC00 || low > 0xDFFF)
                return false;
            code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        } else if (code >= 0xDC00 && code <= 0xDFFF) {
            return false;
        }
        appendUtf8(out, code);
        return true;
    }

    bool readString(std::string& out) {
        if (!expect('"'))
            return false;
        while (!atEnd()) {
            const char c = m_text[m_position++];
            if (c == '"')
                return true;
            if (static_cast<unsigned char>(c) < 0x20)
                return false;
            if (c == '\\') {
                if (!readEscape(out))
                    return false;
                continue;
            }
            out += c;
        }
        return false;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
};

} // namespace

std::optional<PackageMetadata> PackageMetadata::parse(std::string_view json) {
    PackageMetadata metadata;
    JsonReader reader(json);
    if (!reader.readDocument(metadata))
        return std::nullopt;
    return metadata;
}
