#pragma once
// RegDocument: the contents of one registry store file in memory - the keys below one root,
// in file order, each with its values - and the "REGEDIT5" text form they are kept in:
//
//   Windows Registry Editor Version 5.00
//
//   [HKEY_LOCAL_MACHINE\Software\Velloran\Quillgate]
//   "Name"="text with \\ and \" escaped"
//   "Level"=dword:0000001e
//   @="the key's default value"
//   "Blob"=hex:01,02,03
//   "Other"=hex(b):00,00,00,00,00,00,00,00
//
// Long hex data goes on over lines that end in '\' (after a comma), the next line being
// indented by two blanks. Key paths and value names compare without regard to case, as Windows
// does; the first spelling seen is the one kept. Parsing never fails: a line that does not make
// sense is skipped, so a damaged or cut-off file still gives every value that is whole. Whatever
// `parse` yields, `serialise` writes so that `parse` gives it back unchanged.

#include "foundation/RegistryTypes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Corvane {

class RegDocument {
public:
    struct Value {
        std::u16string name; // empty: the key's default value, "@" in the file
        std::uint32_t type = REG_NONE;
        std::vector<std::uint8_t> data; // as Windows stores it: REG_SZ is UTF-16LE + NUL

        // REG_SZ holding `text` and its terminator.
        static Value text(std::u16string name, std::u16string_view text);
        // REG_DWORD, little-endian.
        static Value number(std::u16string name, std::uint32_t number);
        // The data read as UTF-16LE text up to its first NUL, whatever the type, as a
        // Windows caller that asks for a string sees it; an odd last byte is a unit of its
        // own.
        std::u16string asText() const;

        bool operator==(const Value&) const = default;
    };
    struct Key {
        std::u16string path; // below the root, parts joined by '\'; empty for the root
        std::vector<Value> values;
        bool operator==(const Key&) const = default;
    };

    // Bounds that keep a hostile or damaged file from costing unbounded time or memory.
    // The name limits are Windows' own.
    static constexpr std::size_t MaxFileBytes = std::size_t{64} << 20;
    static constexpr std::size_t MaxValueBytes = std::size_t{1} << 20;
    static constexpr std::size_t MaxKeyNameLength = 255;
    static constexpr std::size_t MaxValueNameLength = 16383;
    static constexpr std::size_t MaxKeyDepth = 512;

    explicit RegDocument(std::uint32_t root);

    // Reads a store file: UTF-8 with or without a byte order mark, or UTF-16LE with FF FE
    // as regedit writes it. Bytes past MaxFileBytes are not looked at.
    static RegDocument parse(std::string_view bytes, std::uint32_t root);
    // The file form, UTF-8 without a byte order mark, lines ended by LF.
    std::string serialise() const;

    std::uint32_t root() const { return m_root; }
    // The name of the root in key lines: "HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER", or
    // empty for a root that has no store.
    static std::u16string_view rootName(std::uint32_t root);

    // Every key, parents before their children; [0] is the root key itself.
    const std::vector<Key>& keys() const { return m_keys; }

    // `path` in the stored form: parts joined by single '\', empty parts (a leading,
    // trailing or doubled '\') dropped. False when a part is too long, holds a control
    // character or an unpaired surrogate, or the path is too deep.
    static bool normaliseKeyPath(std::u16string_view path, std::u16string& normalised);
    // A value name the file form can hold: no control character, no unpaired surrogate,
    // at most MaxValueNameLength.
    static bool isValidValueName(std::u16string_view name);
    // The form in which names are compared: ASCII and the common alphabets folded to lower
    // case, one unit for one unit.
    static std::u16string foldCase(std::u16string_view text);

    // Lookups take normalised paths.
    const Key* findKey(std::u16string_view path) const;
    const Value* findValue(std::u16string_view path, std::u16string_view name) const;

    // Adds the key and any missing parent; false when it was there already.
    bool addKey(std::u16string_view path);
    // Sets a value of an existing key, keeping an existing value's spelling and place;
    // false when the key is missing.
    bool setValue(std::u16string_view path, const Value& value);
    // False when the key or the value is missing.
    bool deleteValue(std::u16string_view path, std::u16string_view name);

    bool operator==(const RegDocument& other) const {
        return m_root == other.m_root && m_keys == other.m_keys;
    }

private:
    std::size_t keyIndex(std::u16string_view path) const;
    std::size_t appendKey(std::u16string path);
    void putValue(std::size_t key, Value value);
    void parseKeyLine(std::u16string_view line, std::size_t& current);

    std::uint32_t m_root;
    std::vector<Key> m_keys;
    // Folded path -> index in m_keys.
    std::unordered_map<std::u16string, std::size_t> m_keyIndex;
    // Per key: folded value name -> index in its values.
    std::vector<std::unordered_map<std::u16string, std::size_t>> m_valueIndex;
};

} // namespace Corvane
