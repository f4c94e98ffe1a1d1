#pragma once
// CRegistry: one open registry key for several value operations. A failed Open is traced
// at TRACE_WARN and its Windows error kept; the value operations answer by their result
// only. It never throws.

#include "foundation/stdstr.h"

#include <cstdint>

namespace Corvane {
class RegStore;
}

class CRegistry {
public:
    CRegistry() = default;
    CRegistry(const CRegistry&) = delete;
    CRegistry& operator=(const CRegistry&) = delete;
    // Closes the key.
    virtual ~CRegistry();

    // Opens `subKey` below `root` with `access` (KEY_READ, KEY_WRITE, ...); with `create` a
    // missing key is made. `options` and `security` are accepted for the callers' sake: the
    // file store has neither volatile keys nor per-key security (who may write is decided
    // by the store's folder). `disposition`, when given, receives REG_CREATED_NEW_KEY or
    // REG_OPENED_EXISTING_KEY.
    bool Open(std::uint32_t root, const stdstr& subKey, std::uint32_t access, bool create = false,
              std::uint32_t options = 0, const void* security = nullptr,
              std::uint32_t* disposition = nullptr);
    void Close();

    // `subKey` empty means the open key itself; a named sub-key is relative to it.
    bool getString(const stdstr& value, stdstr& result, const stdstr& subKey = stdstr());
    // True only for a REG_DWORD value; `result` is left alone otherwise.
    bool getNumber(const stdstr& value, std::uint32_t& result, const stdstr& subKey = stdstr());
    bool setString(const stdstr& value, const stdstr& text, const stdstr& subKey = stdstr(),
                   bool create = false, const void* security = nullptr);

    // Opens and closes `subKey` below `root`, making it when `create` is set; true when the
    // key is there at the end. The key this object holds open is not touched.
    bool keyExists(std::uint32_t root, const stdstr& subKey, bool create);

    bool isOpen() const { return m_open; }
    // The Windows error of the last Open, 0 when it succeeded.
    std::uint32_t lastError() const { return m_lastError; }

private:
    // The path of `subKey` below the open key.
    stdstr pathOf(const stdstr& subKey) const;
    // Whether a value of `key` may be read: a sub-key must open for reading; the open key
    // itself must have been opened with the right to query values.
    bool mayRead(const Corvane::RegStore& store, const stdstr& key, const stdstr& subKey) const;

    // The open key: its root, its path below the root and the rights it was opened with.
    std::uint32_t m_root = 0;
    stdstr m_path;
    std::uint32_t m_access = 0;
    bool m_open = false;
    std::uint32_t m_lastError = 0;
};
