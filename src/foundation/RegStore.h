#pragma once
// RegStore: the file that stands in for one registry root - HKEY_LOCAL_MACHINE in
// SystemPaths::MachineStorePath(), HKEY_CURRENT_USER in SystemPaths::UserStorePath() - with
// the operations the registry classes need, each answering a Windows error number.
//
// Readers take no lock: a store is only ever replaced whole, by rename, so a reader opens
// either the old or the new file and both are complete. A writer serialises with other
// writers (threads and processes alike) through flock on "<store>.lock", reads the store
// again under that lock so that no other writer's value is lost, and replaces the file:
// temporary file in the same folder, fsync, rename, fsync of the folder.
//
// Parsed stores are kept per process (RegStoreCache) and reused while the file is
// unchanged, so that the frequent reads (trace set-up, settings) cost one stat.

#include "foundation/RegDocument.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace Corvane {

class RegStore {
public:
    explicit RegStore(std::uint32_t root);

    std::uint32_t root() const { return m_root; }
    // The store's file; empty for a root that has no store.
    const std::string& path() const { return m_path; }

    // The store as it is now. An absent store is an empty one. On failure `error` is set
    // and the answer is null.
    std::shared_ptr<const RegDocument> read(std::uint32_t& error) const;

    // Opening a key: 0 when it exists and `access` may be granted. Rights to write
    // (KEY_SET_VALUE, KEY_CREATE_SUB_KEY) need a store folder this process may write.
    std::uint32_t openKey(std::u16string_view key, std::uint32_t access) const;
    // Reads a value; ERROR_FILE_NOT_FOUND when the key or the value is missing.
    std::uint32_t queryValue(std::u16string_view key, std::u16string_view name,
                             RegDocument::Value& value) const;

    // Makes the key and its missing parents. `disposition`, when given, receives
    // REG_CREATED_NEW_KEY or REG_OPENED_EXISTING_KEY.
    std::uint32_t createKey(std::u16string_view key, std::uint32_t* disposition = nullptr);
    // Writes a value into an existing key (ERROR_KEY_DELETED when it has gone).
    std::uint32_t setValue(std::u16string_view key, const RegDocument::Value& value);
    std::uint32_t deleteValue(std::u16string_view key, std::u16string_view name);

    // The change of one write: edits the document, sets `changed` when there is something
    // to save, and answers 0 or the error that cancels the write.
    using Change = std::function<std::uint32_t(RegDocument& document, bool& changed)>;
    // Runs `change` on the current store under the writers' lock and saves the result.
    std::uint32_t update(const Change& change);

    // Forgets the parsed stores of this process (tests use it to measure a cold read).
    static void dropCache();

private:
    // The normalised path of `key` and the current document, or null with the error: the
    // common start of the read-only operations.
    std::shared_ptr<const RegDocument> readFor(std::u16string_view key, std::u16string& path,
                                               std::uint32_t& error) const;
    // 0 when this process may replace the store file.
    std::uint32_t checkWritable() const;
    std::uint32_t makeFolder() const;
    // Deletes temporary files of writers that died before their rename.
    void removeLeftovers() const;
    std::uint32_t save(RegDocument&& document) const;

    std::uint32_t m_root;
    std::string m_path;
};

} // namespace Corvane
