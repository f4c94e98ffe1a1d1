#include "foundation/RegDocument.h"

#include "foundation/Unicode.h"

#include <algorithm>
#include <array>

namespace Corvane {

namespace {

constexpr std::size_t NoKey = static_cast<std::size_t>(-1);

constexpr std::u16string_view MachineRootName = u"HKEY_LOCAL_MACHINE";
constexpr std::u16string_view UserRootName = u"HKEY_CURRENT_USER";
constexpr std::string_view Header = "Windows Registry Editor Version 5.00\n\n";

// A line of hex bytes is wrapped past this column, as regedit does.
constexpr std::size_t HexLineWidth = 76;
// The joined text of a hex value: two digits and a comma per byte, and room for the
// blanks a hand-edited file may hold.
constexpr std::size_t MaxHexTextLength = RegDocument::MaxValueBytes * 4 + 64;

bool isHighSurrogate(char16_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool isLowSurrogate(char16_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r';
}

std::u16string_view trim(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

int hexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

char16_t foldAscii(char16_t c) {
    return (c >= u'A' && c <= u'Z') ? c + (u'a' - u'A') : c;
}

bool startsWithNoCase(std::u16string_view text, std::u16string_view prefix) {
    if (text.size() < prefix.size())
        return false;
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        if (foldAscii(text[i]) != foldAscii(prefix[i]))
            return false;
    }
    return true;
}

// True when `text` holds no unpaired surrogate, so that it survives UTF-8.
bool isWellFormed(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isHighSurrogate(text[i])) {
            if (i + 1 >= text.size() || !isLowSurrogate(text[i + 1]))
                return false;
            ++i;
        } else if (isLowSurrogate(text[i])) {
            return false;
        }
    }
    return true;
}

bool hasControlCharacter(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(), [](char16_t c) { return c < 0x20; });
}

// Simple case folding, one UTF-16 unit for one: ASCII, Latin-1, Latin Extended-A and
// Additional, Greek, Cyrillic, Armenian and the full-width Latin letters. Windows
// compares registry names by upper-casing each unit; for these alphabets both give the
// same classes, and names outside them are rare enough to compare exactly.
char16_t foldUnit(char16_t c) {
    if (c < 0x80)
        return foldAscii(c);
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7)
        return c + 0x20;
    if (c >= 0x100 && c <= 0x17F) {
        if ((c >= 0x100 && c <= 0x12F) || (c >= 0x132 && c <= 0x137) || (c >= 0x14A && c <= 0x177))
            return c | 1;
        if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E))
            return (c & 1) ? c + 1 : c;
        if (c == 0x178)
            return 0xFF;
        return c;
    }
    if (c >= 0x386 && c <= 0x3AB) {
        if (c >= 0x391 && c <= 0x3AB && c != 0x3A2)
            return c + 0x20;
        switch (c) {
        case 0x386:
            return 0x3AC;
        case 0x388:
        case 0x389:
        case 0x38A:
            return c + 0x25;
        case 0x38C:
            return 0x3CC;
        case 0x38E:
        case 0x38F:
            return c + 0x3F;
        default:
            return c;
        }
    }
    if (c == 0x3C2) // final sigma folds with sigma
        return 0x3C3;
    if (c >= 0x400 && c <= 0x40F)
        return c + 0x50;
    if (c >= 0x410 && c <= 0x42F)
        return c + 0x20;
    if ((c >= 0x460 && c <= 0x481) || (c >= 0x48A && c <= 0x4BF) || (c >= 0x4D0 && c <= 0x52F))
        return c | 1;
    if (c == 0x4C0)
        return 0x4CF;
    if (c >= 0x4C1 && c <= 0x4CE)
        return (c & 1) ? c + 1 : c;
    if (c >= 0x531 && c <= 0x556)
        return c + 0x30;
    if ((c >= 0x1E00 && c <= 0x1E95) || (c >= 0x1EA0 && c <= 0x1EFF))
        return c | 1;
    if (c >= 0xFF21 && c <= 0xFF3A)
        return c + 0x20;
    return c;
}

// The file's text as UTF-16: UTF-16LE after FF FE, otherwise UTF-8 (a leading byte order
// mark skipped). Undecodable input and unpaired surrogates become U+FFFD, so that every
// name and text taken from the file can be written back as UTF-8.
std::u16string decodeText(std::string_view bytes) {
    std::u16string text;
    if (bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0xFF &&
        static_cast<unsigned char>(bytes[1]) == 0xFE) {
        text.reserve(bytes.size() / 2);
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
            text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                                 (static_cast<unsigned char>(bytes[i + 1]) << 8)));
        }
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1]))
                ++i;
            else if (isHighSurrogate(text[i]) || isLowSurrogate(text[i]))
                text[i] = Unicode::ReplacementCharacter;
        }
        return text;
    }
    if (bytes.size() >= 3 && static_cast<unsigned char>(bytes[0]) == 0xEF &&
        static_cast<unsigned char>(bytes[1]) == 0xBB &&
        static_cast<unsigned char>(bytes[2]) == 0xBF)
        bytes.remove_prefix(3);
    Unicode::appendUtf16(text, bytes);
    return text;
}

// The lines of the decoded text, ended by LF; a CR before it goes with the blanks.
class LineReader {
public:
    explicit LineReader(std::u16string_view text) : m_text(text) {}

    bool next(std::u16string_view& line) {
        if (!peek(line))
            return false;
        m_pos = m_next;
        return true;
    }
    bool peek(std::u16string_view& line) {
        if (m_pos >= m_text.size())
            return false;
        const std::size_t end = m_text.find(u'\n', m_pos);
        if (end == std::u16string_view::npos) {
            line = m_text.substr(m_pos);
            m_next = m_text.size();
        } else {
            line = m_text.substr(m_pos, end - m_pos);
            m_next = end + 1;
        }
        return true;
    }

private:
    std::u16string_view m_text;
    std::size_t m_pos = 0;
    std::size_t m_next = 0;
};

// A quoted text at text[pos] == '"', with "\\" and "\"" taken as escapes; any other
// backslash stands for itself. `pos` ends after the closing quote. False when the quote
// is not closed or the text passes `limit` units.
bool readQuoted(std::u16string_view text, std::size_t& pos, std::u16string& out,
                std::size_t limit) {
    ++pos;
    while (pos < text.size()) {
        const char16_t c = text[pos];
        if (c == u'"') {
            ++pos;
            return true;
        }
        if (c == u'\\' && pos + 1 < text.size() &&
            (text[pos + 1] == u'\\' || text[pos + 1] == u'"')) {
            out.push_back(text[pos + 1]);
            pos += 2;
        } else {
            out.push_back(c);
            ++pos;
        }
        if (out.size() > limit)
            return false;
    }
    return false;
}

// A line that can continue a hex value: digits, commas, blanks and the backslash only.
// Anything else means the value before was cut off, and the line is left to be read as
// what it is.
bool isHexContinuation(std::u16string_view line) {
    if (line.empty())
        return false;
    return std::all_of(line.begin(), line.end(), [](char16_t c) {
        return hexDigit(c) >= 0 || c == u',' || c == u'\\' || isBlank(c);
    });
}

// "01,02, 0a" -> bytes. Every byte is two digits; an empty list is zero bytes.
bool parseHexBytes(std::u16string_view list, std::vector<std::uint8_t>& bytes) {
    list = trim(list);
    if (list.empty())
        return true;
    std::size_t pos = 0;
    while (true) {
        const std::size_t comma = list.find(u',', pos);
        const std::u16string_view token = trim(list.substr(
            pos, comma == std::u16string_view::npos ? std::u16string_view::npos : comma - pos));
        if (token.size() != 2 || hexDigit(token[0]) < 0 || hexDigit(token[1]) < 0)
            return false;
        if (bytes.size() >= RegDocument::MaxValueBytes)
            return false;
        bytes.push_back(static_cast<std::uint8_t>(hexDigit(token[0]) * 16 + hexDigit(token[1])));
        if (comma == std::u16string_view::npos)
            return true;
        pos = comma + 1;
    }
}

void appendUtf16Le(std::vector<std::uint8_t>& out, std::u16string_view text) {
    for (const char16_t c : text) {
        out.push_back(static_cast<std::uint8_t>(c & 0xFF));
        out.push_back(static_cast<std::uint8_t>(c >> 8));
    }
}

// The data of a REG_SZ value that the quoted form can hold: whole UTF-16 units ending in
// exactly one NUL, no line break, no unpaired surrogate.
bool quotableText(const std::vector<std::uint8_t>& data, std::u16string& text) {
    if (data.size() < 2 || data.size() % 2 != 0)
        return false;
    text.clear();
    text.reserve(data.size() / 2);
    for (std::size_t i = 0; i < data.size(); i += 2)
        text.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
    if (text.back() != 0)
        return false;
    text.pop_back();
    if (std::any_of(text.begin(), text.end(),
                    [](char16_t c) { return c == 0 || c == u'\n' || c == u'\r'; }))
        return false;
    return isWellFormed(text);
}

void appendEscaped(std::string& out, std::u16string_view text) {
    std::u16string escaped;
    escaped.reserve(text.size());
    for (const char16_t c : text) {
        if (c == u'\\' || c == u'"')
            escaped.push_back(u'\\');
        escaped.push_back(c);
    }
    Unicode::appendUtf8(out, escaped);
}

void appendHex(std::string& out, std::uint32_t number, int minDigits) {
    static constexpr char digits[] = "0123456789abcdef";
    std::array<char, 8> buffer{};
    int count = 0;
    do {
        buffer[static_cast<std::size_t>(count++)] = digits[number & 0xF];
        number >>= 4;
    } while (number != 0 || count < minDigits);
    while (count > 0)
        out.push_back(buffer[static_cast<std::size_t>(--count)]);
}

void appendValueLine(std::string& out, const RegDocument::Value& value) {
    const std::size_t lineStart = out.size();
    if (value.name.empty()) {
        out += '@';
    } else {
        out += '"';
        appendEscaped(out, value.name);
        out += '"';
    }
    out += '=';
    std::u16string text;
    if (value.type == REG_SZ && quotableText(value.data, text)) {
        out += '"';
        appendEscaped(out, text);
        out += "\"\n";
        return;
    }
    if (value.type == REG_DWORD && value.data.size() == 4) {
        out += "dword:";
        appendHex(out,
                  static_cast<std::uint32_t>(value.data[0]) |
                      (static_cast<std::uint32_t>(value.data[1]) << 8) |
                      (static_cast<std::uint32_t>(value.data[2]) << 16) |
                      (static_cast<std::uint32_t>(value.data[3]) << 24),
                  8);
        out += '\n';
        return;
    }
    if (value.type == REG_BINARY) {
        out += "hex:";
    } else {
        out += "hex(";
        appendHex(out, value.type, 1);
        out += "):";
    }
    std::size_t column = out.size() - lineStart;
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        appendHex(out, value.data[i], 2);
        if (i + 1 == value.data.size())
            break;
        out += ',';
        column += 3;
        if (column > HexLineWidth) {
            out += "\\\n  ";
            column = 2;
        }
    }
    out += '\n';
}

} // namespace

RegDocument::Value RegDocument::Value::text(std::u16string name, std::u16string_view text) {
    Value value{std::move(name), REG_SZ, {}};
    value.data.reserve(text.size() * 2 + 2);
    appendUtf16Le(value.data, text);
    value.data.push_back(0);
    value.data.push_back(0);
    return value;
}

RegDocument::Value RegDocument::Value::number(std::u16string name, std::uint32_t number) {
    return Value{std::move(name),
                 REG_DWORD,
                 {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8),
                  static_cast<std::uint8_t>(number >> 16),
                  static_cast<std::uint8_t>(number >> 24)}};
}

std::u16string RegDocument::Value::asText() const {
    std::u16string text;
    for (std::size_t i = 0; i < data.size(); i += 2) {
        const char16_t unit =
            static_cast<char16_t>(data[i] | (i + 1 < data.size() ? data[i + 1] << 8 : 0));
        if (unit == 0)
            break;
        text.push_back(unit);
    }
    return text;
}

RegDocument::RegDocument(std::uint32_t root) : m_root(root) {
    m_keys.push_back(Key{});
    m_keyIndex.emplace(std::u16string(), 0);
    m_valueIndex.emplace_back();
}

std::u16string_view RegDocument::rootName(std::uint32_t root) {
    switch (root) {
    case HKEY_LOCAL_MACHINE:
        return MachineRootName;
    case HKEY_CURRENT_USER:
        return UserRootName;
    default:
        return {};
    }
}

std::u16string RegDocument::foldCase(std::u16string_view text) {
    std::u16string folded(text);
    for (char16_t& c : folded)
        c = foldUnit(c);
    return folded;
}

bool RegDocument::normaliseKeyPath(std::u16string_view path, std::u16string& normalised) {
    normalised.clear();
    std::size_t depth = 0;
    std::size_t pos = 0;
    while (pos <= path.size()) {
        std::size_t end = path.find(u'\\', pos);
        if (end == std::u16string_view::npos)
            end = path.size();
        const std::u16string_view part = path.substr(pos, end - pos);
        pos = end + 1;
        if (part.empty())
            continue;
        if (part.size() > MaxKeyNameLength || hasControlCharacter(part) || !isWellFormed(part) ||
            ++depth > MaxKeyDepth)
            return false;
        if (!normalised.empty())
            normalised.push_back(u'\\');
        normalised.append(part);
    }
    return true;
}

bool RegDocument::isValidValueName(std::u16string_view name) {
    return name.size() <= MaxValueNameLength && !hasControlCharacter(name) && isWellFormed(name);
}

std::size_t RegDocument::keyIndex(std::u16string_view path) const {
    const auto found = m_keyIndex.find(foldCase(path));
    return found == m_keyIndex.end() ? NoKey : found->second;
}

const RegDocument::Key* RegDocument::findKey(std::u16string_view path) const {
    const std::size_t index = keyIndex(path);
    return index == NoKey ? nullptr : &m_keys[index];
}

const RegDocument::Value* RegDocument::findValue(std::u16string_view path,
                                                 std::u16string_view name) const {
    const std::size_t index = keyIndex(path);
    if (index == NoKey)
        return nullptr;
    const auto& values = m_valueIndex[index];
    const auto found = values.find(foldCase(name));
    return found == values.end() ? nullptr : &m_keys[index].values[found->second];
}

std::size_t RegDocument::appendKey(std::u16string path) {
    const std::size_t index = m_keys.size();
    m_keyIndex.emplace(foldCase(path), index);
    m_keys.push_back(Key{std::move(path), {}});
    m_valueIndex.emplace_back();
    return index;
}

bool RegDocument::addKey(std::u16string_view path) {
    bool added = false;
    std::size_t parent = 0;
    std::u16string folded;
    std::size_t pos = 0;
    while (pos < path.size()) {
        std::size_t end = path.find(u'\\', pos);
        if (end == std::u16string_view::npos)
            end = path.size();
        const std::u16string_view part = path.substr(pos, end - pos);
        pos = end + 1;
        if (part.empty())
            continue;
        if (!folded.empty())
            folded.push_back(u'\\');
        folded += foldCase(part);
        const auto found = m_keyIndex.find(folded);
        if (found != m_keyIndex.end()) {
            parent = found->second;
            continue;
        }
        // A new key takes its parent's spelling, whatever spelling the caller used for it.
        std::u16string spelled = m_keys[parent].path;
        if (!spelled.empty())
            spelled.push_back(u'\\');
        spelled.append(part);
        parent = appendKey(std::move(spelled));
        added = true;
    }
    return added;
}

void RegDocument::putValue(std::size_t key, Value value) {
    auto& index = m_valueIndex[key];
    auto& values = m_keys[key].values;
    std::u16string folded = foldCase(value.name);
    const auto found = index.find(folded);
    if (found != index.end()) {
        Value& existing = values[found->second];
        existing.type = value.type;
        existing.data = std::move(value.data);
        return;
    }
    index.emplace(std::move(folded), values.size());
    values.push_back(std::move(value));
}

bool RegDocument::setValue(std::u16string_view path, const Value& value) {
    const std::size_t index = keyIndex(path);
    if (index == NoKey)
        return false;
    putValue(index, value);
    return true;
}

bool RegDocument::deleteValue(std::u16string_view path, std::u16string_view name) {
    const std::size_t key = keyIndex(path);
    if (key == NoKey)
        return false;
    auto& index = m_valueIndex[key];
    const auto found = index.find(foldCase(name));
    if (found == index.end())
        return false;
    auto& values = m_keys[key].values;
    values.erase(values.begin() + static_cast<std::ptrdiff_t>(found->second));
    index.clear();
    for (std::size_t i = 0; i < values.size(); ++i)
        index.emplace(foldCase(values[i].name), i);
    return true;
}

void RegDocument::parseKeyLine(std::u16string_view line, std::size_t& current) {
    // Whatever goes wrong below, the values that follow belong to no key we know, and must
    // not land in the key before.
    current = NoKey;
    if (line.size() < 2 || line.back() != u']')
        return;
    std::u16string_view content = line.substr(1, line.size() - 2);
    const std::u16string_view name = rootName(m_root);
    if (name.empty() || !startsWithNoCase(content, name))
        return;
    content.remove_prefix(name.size());
    if (!content.empty() && content.front() != u'\\')
        return;
    std::u16string path;
    if (!normaliseKeyPath(content, path))
        return;
    addKey(path);
    current = keyIndex(path);
}

RegDocument RegDocument::parse(std::string_view bytes, std::uint32_t root) {
    RegDocument document(root);
    if (rootName(root).empty())
        return document;
    const std::u16string text = decodeText(bytes.substr(0, MaxFileBytes));
    LineReader lines(text);
    std::size_t current = NoKey;
    std::u16string_view raw;
    while (lines.next(raw)) {
        const std::u16string_view line = trim(raw);
        if (line.empty())
            continue;
        if (line.front() == u'[') {
            document.parseKeyLine(line, current);
            continue;
        }
        if (line.front() != u'"' && line.front() != u'@')
            continue; // the header, a comment, or a line we do not understand

        Value value;
        std::size_t pos = 0;
        if (line.front() == u'@')
            pos = 1;
        else if (!readQuoted(line, pos, value.name, MaxValueNameLength))
            continue;
        while (pos < line.size() && isBlank(line[pos]))
            ++pos;
        if (pos >= line.size() || line[pos] != u'=')
            continue;
        ++pos;
        while (pos < line.size() && isBlank(line[pos]))
            ++pos;
        const std::u16string_view data = line.substr(pos);

        bool valid = false;
        if (!data.empty() && data.front() == u'"') {
            std::u16string textValue;
            std::size_t end = 0;
            valid = readQuoted(data, end, textValue, MaxValueBytes / 2 - 1) && end == data.size();
            if (valid)
                value = Value::text(std::move(value.name), textValue);
        } else if (startsWithNoCase(data, u"dword:")) {
            const std::u16string_view digits = data.substr(6);
            // Exactly eight digits, as regedit writes them: a shorter number is a cut line.
            valid = digits.size() == 8 && std::all_of(digits.begin(), digits.end(),
                                                      [](char16_t c) { return hexDigit(c) >= 0; });
            if (valid) {
                std::uint32_t number = 0;
                for (const char16_t c : digits)
                    number = number * 16 + static_cast<std::uint32_t>(hexDigit(c));
                value = Value::number(std::move(value.name), number);
            }
        } else if (startsWithNoCase(data, u"hex")) {
            std::size_t at = 3;
            value.type = REG_BINARY;
            bool typeOk = true;
            if (at < data.size() && data[at] == u'(') {
                ++at;
                std::uint32_t type = 0;
                std::size_t digits = 0;
                while (at < data.size() && hexDigit(data[at]) >= 0 && digits < 8) {
                    type = type * 16 + static_cast<std::uint32_t>(hexDigit(data[at]));
                    ++at;
                    ++digits;
                }
                typeOk = digits > 0 && at < data.size() && data[at] == u')';
                ++at;
                value.type = type;
            }
            if (typeOk && at < data.size() && data[at] == u':') {
                // Join the continuation lines: each line but the last ends with '\'.
                std::u16string joined;
                std::u16string_view piece = trim(data.substr(at + 1));
                bool complete = true;
                while (!piece.empty() && piece.back() == u'\\') {
                    piece.remove_suffix(1);
                    joined.append(piece);
                    std::u16string_view next;
                    if (joined.size() > MaxHexTextLength || !lines.peek(next) ||
                        !isHexContinuation(trim(next))) {
                        complete = false;
                        break;
                    }
                    lines.next(next);
                    piece = trim(next);
                }
                if (complete) {
                    joined.append(piece);
                    valid = parseHexBytes(joined, value.data);
                }
            }
        }
        if (valid && current != NoKey && isValidValueName(value.name))
            document.putValue(current, std::move(value));
    }
    return document;
}

std::string RegDocument::serialise() const {
    std::string out(Header);
    std::string root;
    Unicode::appendUtf8(root, rootName(m_root));
    for (const Key& key : m_keys) {
        // The root key is there whether it is written or not; it is written only for the
        // values it holds.
        if (key.path.empty() && key.values.empty())
            continue;
        out += '[';
        out += root;
        if (!key.path.empty()) {
            out += '\\';
            Unicode::appendUtf8(out, key.path);
        }
        out += "]\n";
        for (const Value& value : key.values)
            appendValueLine(out, value);
        out += '\n';
    }
    return out;
}

} // namespace Corvane
