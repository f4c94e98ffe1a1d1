#pragma once
// One line of the journal, built from the operation's name and its arguments and written
// when the call is done: words and numbers as they are, texts in double quotes (a quote, a
// backslash and control characters escaped), named values as name=value, and the result, if
// any, behind " -> ". When no journal is named the builder does nothing at all, so the calls
// cost nothing in normal use.

#include <cstdint>
#include <string>
#include <string_view>

class JournalLine {
public:
    explicit JournalLine(std::string_view operation);

    JournalLine& Number(std::int64_t value);
    // A terminated UTF-16 text, or the word null.
    JournalLine& Text(const char16_t* text);
    JournalLine& Text(std::u16string_view text);
    JournalLine& Word(std::string_view word);
    JournalLine& Named(std::string_view name, std::int64_t value);
    JournalLine& Named(std::string_view name, std::string_view word);
    // " -> " and then what follows (numbers, words, named values).
    JournalLine& Arrow();

    // Appends the line to the journal.
    void Write();

    bool Active() const { return m_active; }
    const std::string& Line() const { return m_line; }

    // A text in the journal's quoted form, UTF-8 inside.
    static std::string Quote(std::u16string_view text);

private:
    JournalLine& Append(std::string_view part);

    bool m_active;
    std::string m_line;
};
