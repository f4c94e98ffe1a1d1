#pragma once
// Corvane::Registry: reads and writes single values below one root key, opening and
// closing the key for every call. Failures answer false and, for the string read and the
// writes, leave a line in the debug log. It never throws.

#include <cstdint>
#include <string>

namespace Corvane {

class Registry {
public:
    // `root` is HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER.
    explicit Registry(std::uint32_t root);
    virtual ~Registry();

    // The key opens and holds the value; the data is not read. Writes nothing to the debug
    // log, because the debug log itself asks this question to decide whether it is on.
    bool valueExists(const std::u16string& key, const std::u16string& value);
    // True only for a REG_DWORD value; `result` is left alone otherwise.
    bool getNumber(const std::u16string& key, const std::u16string& value, std::uint32_t& result);
    // The value's data taken as UTF-16 text up to its first NUL, whatever its type.
    bool getString(const std::u16string& key, const std::u16string& value, std::u16string& result);
    // REG_SZ with its terminator. With `create` a missing key is made first.
    bool setString(const std::u16string& key, const std::u16string& value,
                   const std::u16string& text, bool create);
    // REG_DWORD. With `create` a missing key is made first.
    bool setNumber(const std::u16string& key, const std::u16string& value, std::uint32_t number,
                   bool create);
    bool deleteValue(const std::u16string& key, const std::u16string& value);

private:
    // Opens `key` for writing, creating it when asked; 0 or the Windows error.
    std::uint32_t openForWriting(const std::u16string& key, bool create) const;

    std::uint32_t m_root;
};

} // namespace Corvane
