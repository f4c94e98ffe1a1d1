#pragma once
// RegStoreCache: the parsed registry stores of this process, one per file, so that the
// frequent reads of a store that has not changed cost a stat and not a parse.
//
// A file is known by (device, inode, size, mtime, ctime). That alone is not enough: a
// writer's new file may get the inode of a store that has just been replaced, and on many
// kernels file time stamps come from a coarse clock (milliseconds), so two stores written
// in quick succession can agree on every field. An entry is therefore trusted on its stat
// alone only once its file had settled - both time stamps at least SettleSeconds older
// than the moment it was read - because any later file gets later stamps. Until then the
// file is read again and compared byte for byte with the bytes the entry was parsed from,
// which still spares the parse.

#include "foundation/RegDocument.h"

#include <ctime>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <sys/stat.h>

namespace Corvane {

class RegStoreCache {
public:
    static constexpr time_t SettleSeconds = 2;

    static RegStoreCache& instance();

    // The document of `path` if the entry is settled and `st` is still its file.
    std::shared_ptr<const RegDocument> ifSettled(const std::string& path, const struct stat& st);
    // The document of `path` if it was parsed from exactly `bytes`.
    std::shared_ptr<const RegDocument> ifSameBytes(const std::string& path,
                                                   const std::string& bytes);
    // Records what the file `st` of `path`, read at `readAt`, held.
    void put(const std::string& path, const struct stat& st, const timespec& readAt,
             std::string bytes, std::shared_ptr<const RegDocument> document);
    void clear();

private:
    struct Entry {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        timespec modified{};
        timespec changed{};
        bool settled = false;
        std::string bytes;
        std::shared_ptr<const RegDocument> document;
    };

    static bool matches(const Entry& entry, const struct stat& st);

    std::mutex m_mutex;
    std::map<std::string, Entry> m_entries;
};

} // namespace Corvane
