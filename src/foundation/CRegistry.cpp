#include "foundation/CRegistry.h"

#include "foundation/ErrorKeys.h"
#include "foundation/RegStore.h"
#include "foundation/RegistryTypes.h"
#include "foundation/Trace.h"

using Corvane::RegDocument;
using Corvane::RegStore;

namespace {

// Reads a value the way a Windows caller does: size first, then the data into a buffer of
// twice that size and a terminator.
bool queryTwice(const RegStore& store, const stdstr& key, const stdstr& value,
                RegDocument::Value& found) {
    RegDocument::Value sized;
    if (store.queryValue(key, value, sized) != ERROR_SUCCESS ||
        store.queryValue(key, value, found) != ERROR_SUCCESS)
        return false;
    return found.data.size() <= sized.data.size() * 2 + 2;
}

} // namespace

CRegistry::~CRegistry() {
    Close();
}

bool CRegistry::Open(std::uint32_t root, const stdstr& subKey, std::uint32_t access, bool create,
                     std::uint32_t /*options*/, const void* /*security*/,
                     std::uint32_t* disposition) {
    Close();
    RegStore store(root);
    std::uint32_t error = store.openKey(subKey, access);
    if (error == ERROR_SUCCESS) {
        m_open = true;
        if (disposition)
            *disposition = REG_OPENED_EXISTING_KEY;
    }
    if (!m_open && create) {
        std::uint32_t made = 0;
        error = store.createKey(subKey, &made);
        if (error == ERROR_SUCCESS) {
            m_open = true;
            if (disposition)
                *disposition = made;
        }
    }
    m_lastError = error;
    if (error != ERROR_SUCCESS) {
        // The class speaks Windows error numbers; the error text comes from the C library,
        // so the number goes through its errno of the same meaning.
        TraceFmt(TRACE_WARN, u"CRegistry::Open(0x%x, %s): failed, error (%s)", root, subKey,
                 GetOSErrorText(RegErrorToErrno(error)));
    }
    if (m_open) {
        std::u16string path;
        RegDocument::normaliseKeyPath(subKey, path);
        m_root = root;
        m_path = path;
        m_access = access;
    }
    return m_open;
}

void CRegistry::Close() {
    m_open = false;
    m_root = 0;
    m_path.clear();
    m_access = 0;
}

stdstr CRegistry::pathOf(const stdstr& subKey) const {
    if (subKey.empty())
        return m_path;
    if (m_path.empty())
        return subKey;
    return m_path + u"\\" + subKey;
}

bool CRegistry::mayRead(const RegStore& store, const stdstr& key, const stdstr& subKey) const {
    if (!subKey.empty())
        return store.openKey(key, KEY_READ) == ERROR_SUCCESS;
    return (m_access & KEY_QUERY_VALUE) != 0;
}

bool CRegistry::getString(const stdstr& value, stdstr& result, const stdstr& subKey) {
    if (!m_open)
        return false;
    const RegStore store(m_root);
    const stdstr key = pathOf(subKey);
    if (!mayRead(store, key, subKey))
        return false;
    RegDocument::Value found;
    if (!queryTwice(store, key, value, found))
        return false;
    result = found.asText();
    return true;
}

bool CRegistry::getNumber(const stdstr& value, std::uint32_t& result, const stdstr& subKey) {
    if (!m_open)
        return false;
    const RegStore store(m_root);
    const stdstr key = pathOf(subKey);
    if (!mayRead(store, key, subKey))
        return false;
    RegDocument::Value found;
    if (store.queryValue(key, value, found) != ERROR_SUCCESS || found.type != REG_DWORD ||
        found.data.size() != 4)
        return false;
    result = static_cast<std::uint32_t>(found.data[0]) |
             (static_cast<std::uint32_t>(found.data[1]) << 8) |
             (static_cast<std::uint32_t>(found.data[2]) << 16) |
             (static_cast<std::uint32_t>(found.data[3]) << 24);
    return true;
}

bool CRegistry::setString(const stdstr& value, const stdstr& text, const stdstr& subKey,
                          bool create, const void* /*security*/) {
    if (!m_open)
        return false;
    RegStore store(m_root);
    const stdstr key = pathOf(subKey);
    if (!subKey.empty()) {
        std::uint32_t error = store.openKey(key, KEY_WRITE);
        if (error != ERROR_SUCCESS && create)
            error = store.createKey(key);
        if (error != ERROR_SUCCESS)
            return false;
    } else if ((m_access & KEY_SET_VALUE) == 0) {
        // As on Windows, a key opened for reading cannot be written through.
        return false;
    }
    return store.setValue(key, RegDocument::Value::text(value, text)) == ERROR_SUCCESS;
}

bool CRegistry::keyExists(std::uint32_t root, const stdstr& subKey, bool create) {
    RegStore store(root);
    if (store.openKey(subKey, KEY_READ) == ERROR_SUCCESS)
        return true;
    return create && store.createKey(subKey) == ERROR_SUCCESS;
}
