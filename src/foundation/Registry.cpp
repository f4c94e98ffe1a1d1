#include "foundation/Registry.h"

#include "foundation/DebugLog.h"
#include "foundation/RegStore.h"
#include "foundation/RegistryTypes.h"

namespace Corvane {

Registry::Registry(std::uint32_t root) : m_root(root) {}

Registry::~Registry() = default;

bool Registry::valueExists(const std::u16string& key, const std::u16string& value) {
    // No debug log here, not even on failure: the debug log asks this to know if it is on.
    const RegStore store(m_root);
    RegDocument::Value found;
    return store.openKey(key, KEY_READ) == ERROR_SUCCESS &&
           store.queryValue(key, value, found) == ERROR_SUCCESS;
}

bool Registry::getNumber(const std::u16string& key, const std::u16string& value,
                         std::uint32_t& result) {
    const RegStore store(m_root);
    RegDocument::Value found;
    if (store.openKey(key, KEY_READ) != ERROR_SUCCESS ||
        store.queryValue(key, value, found) != ERROR_SUCCESS)
        return false;
    if (found.type != REG_DWORD || found.data.size() != 4)
        return false;
    result = static_cast<std::uint32_t>(found.data[0]) |
             (static_cast<std::uint32_t>(found.data[1]) << 8) |
             (static_cast<std::uint32_t>(found.data[2]) << 16) |
             (static_cast<std::uint32_t>(found.data[3]) << 24);
    return true;
}

bool Registry::getString(const std::u16string& key, const std::u16string& value,
                         std::u16string& result) {
    const RegStore store(m_root);
    std::uint32_t error = store.openKey(key, KEY_READ);
    if (error != ERROR_SUCCESS) {
        DebugLogPrintf("RegistryError on Open Key %S : %d\n", key, static_cast<int>(error));
        return false;
    }
    // Size first, then the data into a buffer of twice that size and a terminator: the
    // value may change between the two reads, as it may on Windows.
    RegDocument::Value sized;
    error = store.queryValue(key, value, sized);
    if (error != ERROR_SUCCESS) {
        DebugLogPrintf("RegistryError on Get Size of Key %S : %d\n", key, static_cast<int>(error));
        return false;
    }
    const std::size_t capacity = sized.data.size() * 2 + 2;
    RegDocument::Value found;
    error = store.queryValue(key, value, found);
    if (error == ERROR_SUCCESS && found.data.size() > capacity)
        error = ERROR_MORE_DATA;
    if (error != ERROR_SUCCESS) {
        DebugLogPrintf("RegistryError on Query Value for Key %S : %d\n", key,
                       static_cast<int>(error));
        return false;
    }
    result = found.asText();
    return true;
}

std::uint32_t Registry::openForWriting(const std::u16string& key, bool create) const {
    RegStore store(m_root);
    std::uint32_t error = store.openKey(key, KEY_WRITE);
    if (error != ERROR_SUCCESS && create) {
        DebugLogPrintf("Creating Registry Key\n");
        error = store.createKey(key);
        DebugLogPrintf("%d result when Creating Registry Key\n", static_cast<int>(error));
    }
    return error;
}

bool Registry::setString(const std::u16string& key, const std::u16string& value,
                         const std::u16string& text, bool create) {
    if (openForWriting(key, create) != ERROR_SUCCESS)
        return false;
    return RegStore(m_root).setValue(key, RegDocument::Value::text(value, text)) == ERROR_SUCCESS;
}

bool Registry::setNumber(const std::u16string& key, const std::u16string& value,
                         std::uint32_t number, bool create) {
    if (openForWriting(key, create) != ERROR_SUCCESS)
        return false;
    DebugLogPrintf("Setting Value\n");
    if (RegStore(m_root).setValue(key, RegDocument::Value::number(value, number)) != ERROR_SUCCESS)
        return false;
    DebugLogPrintf("Setting Value - OK\n");
    return true;
}

bool Registry::deleteValue(const std::u16string& key, const std::u16string& value) {
    RegStore store(m_root);
    return store.openKey(key, KEY_WRITE) == ERROR_SUCCESS &&
           store.deleteValue(key, value) == ERROR_SUCCESS;
}

} // namespace Corvane
