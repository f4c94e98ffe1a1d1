#include "JournalLine.h"

#include "Journal.h"

#include "foundation/Unicode.h"

#include <cstdio>

JournalLine::JournalLine(std::string_view operation) : m_active(Journal::Enabled()) {
    if (m_active)
        m_line.assign(operation);
}

JournalLine& JournalLine::Append(std::string_view part) {
    if (m_active) {
        m_line.push_back(' ');
        m_line.append(part);
    }
    return *this;
}

JournalLine& JournalLine::Number(std::int64_t value) {
    return m_active ? Append(std::to_string(value)) : *this;
}

JournalLine& JournalLine::Text(const char16_t* text) {
    if (!m_active)
        return *this;
    if (text == nullptr)
        return Append("null");
    return Text(std::u16string_view(text));
}

JournalLine& JournalLine::Text(std::u16string_view text) {
    return m_active ? Append(Quote(text)) : *this;
}

JournalLine& JournalLine::Word(std::string_view word) {
    return Append(word);
}

JournalLine& JournalLine::Named(std::string_view name, std::int64_t value) {
    if (!m_active)
        return *this;
    return Append(std::string(name) + "=" + std::to_string(value));
}

JournalLine& JournalLine::Named(std::string_view name, std::string_view word) {
    if (!m_active)
        return *this;
    return Append(std::string(name) + "=" + std::string(word));
}

JournalLine& JournalLine::Arrow() {
    return Append("->");
}

void JournalLine::Write() {
    if (m_active)
        Journal::Append(m_line);
}

std::string JournalLine::Quote(std::u16string_view text) {
    std::string utf8;
    Corvane::Unicode::appendUtf8(utf8, text);
    std::string quoted = "\"";
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted.push_back('\\');
            quoted.push_back(c);
        } else if (byte < 0x20 || byte == 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            quoted.append(escaped);
        } else {
            quoted.push_back(c);
        }
    }
    quoted.push_back('"');
    return quoted;
}
