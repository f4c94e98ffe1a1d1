#pragma once
// Reads QGConfig.ini the way the Windows profile functions read an initialisation file,
// because the service writes it for readers that follow those rules (the program's language
// file reader counts blanks differently, so it must not be used here):
// - lines end at "\n" (a "\r" before it is a blank); a line that starts with ';' is a comment;
// - blanks at both ends of a line, and around the first '=', are not part of key or value;
// - "[name]" opens a section: the name is what stands between '[' and the last ']', as it
//   stands; a key before any section belongs to none;
// - section and key names match without regard to case (ASCII letters);
// - the first section of a name counts, and in it the first key of a name;
// - a line without '=' names a key without a value, which reads as absent;
// - one pair of equal quotes (single or double) around a value is removed;
// - a text is cut to the room of the caller's buffer, that is size - 1 characters;
// - a number is read from the text (at most 29 characters) as optional blanks, an optional
//   sign and the leading decimal digits, wrapping at 32 bits; no digits read 0, an empty
//   value reads the default.
// The file is UTF-8 (or UTF-16 with its byte order mark). A file that is missing or cannot be
// read reads as empty: every lookup gives its default. The program never writes the file.

#include "foundation/stdstr.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

class ProfileReader {
public:
    // The room that the profile functions give a number's text, terminator included.
    static constexpr std::size_t NumberTextSize = 30;

    ProfileReader() = default;
    // Reads the whole file now.
    explicit ProfileReader(const stdstr& path);

    // Takes the text of a file that has been read already.
    void Parse(const stdstr& text);

    // GetPrivateProfileStringW: the value of `key` in `section`, else `defaultValue`, cut to
    // `size` - 1 characters (nothing for a size of 0).
    stdstr GetString(const stdstr& section, const stdstr& key, const stdstr& defaultValue,
                     std::size_t size) const;
    // GetPrivateProfileIntW.
    std::int32_t GetInt(const stdstr& section, const stdstr& key, std::int32_t defaultValue) const;

private:
    struct Entry {
        stdstr key;
        std::optional<stdstr> value;
    };
    struct Section {
        stdstr name;
        std::vector<Entry> entries;
    };

    // The value of the key, absent when the key or its section is missing or the key has
    // no '='.
    std::optional<stdstr> Find(const stdstr& section, const stdstr& key) const;

    std::vector<Section> m_sections;
};
