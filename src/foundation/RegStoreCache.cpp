#include "foundation/RegStoreCache.h"

#include <algorithm>

namespace Corvane {

namespace {

bool sameTime(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

} // namespace

RegStoreCache& RegStoreCache::instance() {
    static RegStoreCache cache;
    return cache;
}

bool RegStoreCache::matches(const Entry& entry, const struct stat& st) {
    return entry.device == st.st_dev && entry.inode == st.st_ino && entry.size == st.st_size &&
           sameTime(entry.modified, st.st_mtim) && sameTime(entry.changed, st.st_ctim);
}

std::shared_ptr<const RegDocument> RegStoreCache::ifSettled(const std::string& path,
                                                            const struct stat& st) {
    std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(path);
    if (found == m_entries.end() || !found->second.settled || !matches(found->second, st))
        return nullptr;
    return found->second.document;
}

std::shared_ptr<const RegDocument> RegStoreCache::ifSameBytes(const std::string& path,
                                                              const std::string& bytes) {
    std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(path);
    if (found == m_entries.end() || found->second.bytes != bytes)
        return nullptr;
    return found->second.document;
}

void RegStoreCache::put(const std::string& path, const struct stat& st, const timespec& readAt,
                        std::string bytes, std::shared_ptr<const RegDocument> document) {
    Entry entry;
    entry.device = st.st_dev;
    entry.inode = st.st_ino;
    entry.size = st.st_size;
    entry.modified = st.st_mtim;
    entry.changed = st.st_ctim;
    const time_t newest = std::max(st.st_mtim.tv_sec, st.st_ctim.tv_sec);
    entry.settled = readAt.tv_sec - newest >= SettleSeconds;
    entry.bytes = std::move(bytes);
    entry.document = std::move(document);
    std::lock_guard lock(m_mutex);
    m_entries[path] = std::move(entry);
}

void RegStoreCache::clear() {
    std::lock_guard lock(m_mutex);
    m_entries.clear();
}

} // namespace Corvane
