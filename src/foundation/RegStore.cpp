#include "foundation/RegStore.h"

#include "foundation/RegStoreCache.h"
#include "foundation/SystemPaths.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace Corvane {

namespace {

// Rights that change a key or its values; opening with any of them needs a store that
// this process may replace.
constexpr std::uint32_t WriteRights = KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_CREATE_LINK |
                                      0x00010000u /* DELETE */ | 0x00040000u /* WRITE_DAC */ |
                                      0x00080000u /* WRITE_OWNER */;

// The user's store is private. The machine store's folder is writable by its group, so
// that an installation can give the administrators' group the right to change it, as on
// Windows; the file itself is only ever replaced, never written in place, so its own
// write bits do not matter and it stays readable by everyone.
constexpr mode_t UserFolderMode = 0700;
constexpr mode_t UserFileMode = 0600;
constexpr mode_t MachineFolderMode = 0775;
constexpr mode_t MachineParentMode = 0755;
constexpr mode_t MachineFileMode = 0644;
constexpr mode_t MachineLockMode = 0664;

// A writer's temporary file is ".<store name>." and this, made unique by mkostemp.
constexpr std::string_view TemporarySuffix = "XXXXXX";

class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1) : m_fd(fd) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { reset(); }

    int get() const { return m_fd; }
    void reset(int fd) {
        reset();
        m_fd = fd;
    }
    bool valid() const { return m_fd >= 0; }
    // Closes now and reports the result, for a file whose close must succeed.
    bool reset() {
        const int fd = std::exchange(m_fd, -1);
        return fd < 0 || ::close(fd) == 0;
    }

private:
    int m_fd;
};

std::string folderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? std::string("/") : path.substr(0, slash);
}

// Reads a whole file of at most `limit` bytes.
bool readAll(int fd, std::string& bytes, std::size_t sizeHint, std::size_t limit) {
    bytes.clear();
    bytes.reserve(std::min(sizeHint, limit));
    char buffer[65536];
    while (bytes.size() < limit) {
        const ssize_t n = ::read(fd, buffer, std::min(sizeof buffer, limit - bytes.size()));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (n == 0)
            break;
        bytes.append(buffer, static_cast<std::size_t>(n));
    }
    return true;
}

bool writeAll(int fd, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    return true;
}

// Opens the writers' lock file, making it when missing. A process that may not write the
// folder may still take the lock on an existing file opened for reading, and then fail
// where it really cannot go on: at the replacement of the store.
std::uint32_t openLockFile(const std::string& path, mode_t mode, FileDescriptor& lock) {
    lock.reset(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, mode));
    if (lock.valid()) {
        struct stat st {};
        // Made by this process, the mode is cut by the umask; the group's right to lock
        // the machine store's file must survive that.
        if (::fstat(lock.get(), &st) == 0 && st.st_uid == ::geteuid() &&
            (st.st_mode & 07777) != mode)
            (void)::fchmod(lock.get(), mode);
        return ERROR_SUCCESS;
    }
    const int firstError = errno;
    lock.reset(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (lock.valid())
        return ERROR_SUCCESS;
    return RegErrorFromErrno(firstError, ERROR_CANTWRITE);
}

std::uint32_t lockExclusive(int fd) {
    while (::flock(fd, LOCK_EX) != 0) {
        if (errno != EINTR)
            return RegErrorFromErrno(errno, ERROR_CANTWRITE);
    }
    return ERROR_SUCCESS;
}

} // namespace

RegStore::RegStore(std::uint32_t root) : m_root(root) {
    if (root == HKEY_LOCAL_MACHINE)
        m_path = SystemPaths::MachineStorePath();
    else if (root == HKEY_CURRENT_USER)
        m_path = SystemPaths::UserStorePath();
}

void RegStore::dropCache() {
    RegStoreCache::instance().clear();
}

std::shared_ptr<const RegDocument> RegStore::read(std::uint32_t& error) const {
    error = ERROR_SUCCESS;
    if (m_path.empty()) {
        error = ERROR_INVALID_HANDLE;
        return nullptr;
    }
    RegStoreCache& cache = RegStoreCache::instance();
    struct stat st {};
    if (::stat(m_path.c_str(), &st) != 0) {
        // No store yet is an empty store: every key is simply missing.
        if (errno == ENOENT || errno == ENOTDIR)
            return std::make_shared<const RegDocument>(m_root);
        error = RegErrorFromErrno(errno, ERROR_CANTREAD);
        return nullptr;
    }
    if (auto document = cache.ifSettled(m_path, st))
        return document;

    const FileDescriptor fd(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.valid()) {
        if (errno == ENOENT)
            return std::make_shared<const RegDocument>(m_root);
        error = RegErrorFromErrno(errno, ERROR_CANTREAD);
        return nullptr;
    }
    // The identity of what is read comes from the open file: the name may be replaced by
    // a writer at any moment, while the file it named is never changed by a writer.
    if (::fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode)) {
        error = ERROR_CANTREAD;
        return nullptr;
    }
    timespec readAt{};
    ::clock_gettime(CLOCK_REALTIME, &readAt);
    std::string bytes;
    if (!readAll(fd.get(), bytes, static_cast<std::size_t>(st.st_size),
                 RegDocument::MaxFileBytes)) {
        error = RegErrorFromErrno(errno, ERROR_CANTREAD);
        return nullptr;
    }
    std::shared_ptr<const RegDocument> document = cache.ifSameBytes(m_path, bytes);
    if (!document)
        document = std::make_shared<const RegDocument>(RegDocument::parse(bytes, m_root));
    cache.put(m_path, st, readAt, std::move(bytes), document);
    return document;
}

std::uint32_t RegStore::checkWritable() const {
    if (m_path.empty())
        return ERROR_INVALID_HANDLE;
    // The store is replaced by a new file in its folder, or the folder is still to be
    // made: the nearest folder that exists must let this process add files.
    std::string folder = folderOf(m_path);
    struct stat st {};
    while (::stat(folder.c_str(), &st) != 0) {
        if (errno != ENOENT || folder == "/")
            return RegErrorFromErrno(errno, ERROR_CANTWRITE);
        folder = folderOf(folder);
    }
    if (!S_ISDIR(st.st_mode))
        return ERROR_PATH_NOT_FOUND;
    if (::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        return RegErrorFromErrno(errno, ERROR_CANTWRITE);
    return ERROR_SUCCESS;
}

std::uint32_t RegStore::makeFolder() const {
    const std::string folder = folderOf(m_path);
    std::vector<std::string> missing;
    struct stat st {};
    for (std::string at = folder; ::stat(at.c_str(), &st) != 0; at = folderOf(at)) {
        if (errno != ENOENT || at == "/")
            return RegErrorFromErrno(errno, ERROR_CANTWRITE);
        missing.push_back(at);
    }
    if (missing.empty() && !S_ISDIR(st.st_mode))
        return ERROR_PATH_NOT_FOUND;
    const bool user = m_root == HKEY_CURRENT_USER;
    for (auto it = missing.rbegin(); it != missing.rend(); ++it) {
        const bool storeFolder = *it == folder;
        const mode_t mode =
            user ? UserFolderMode : (storeFolder ? MachineFolderMode : MachineParentMode);
        if (::mkdir(it->c_str(), mode) != 0) {
            if (errno != EEXIST)
                return RegErrorFromErrno(errno, ERROR_CANTWRITE);
            continue; // another writer made it at the same moment
        }
        // The umask would take the group's write right from the machine store's folder.
        if (storeFolder)
            (void)::chmod(it->c_str(), mode);
    }
    if (::stat(folder.c_str(), &st) != 0)
        return RegErrorFromErrno(errno, ERROR_CANTWRITE);
    return S_ISDIR(st.st_mode) ? ERROR_SUCCESS : ERROR_PATH_NOT_FOUND;
}

std::uint32_t RegStore::update(const Change& change) {
    if (m_path.empty())
        return ERROR_INVALID_HANDLE;
    std::uint32_t error = makeFolder();
    if (error != ERROR_SUCCESS)
        return error;
    FileDescriptor lock;
    error = openLockFile(m_path + ".lock",
                         m_root == HKEY_CURRENT_USER ? UserFileMode : MachineLockMode, lock);
    if (error == ERROR_SUCCESS)
        error = lockExclusive(lock.get());
    if (error != ERROR_SUCCESS)
        return error;
    // A store past the size that readers look at would lose its end by being rewritten.
    struct stat st {};
    if (::stat(m_path.c_str(), &st) == 0 &&
        static_cast<std::uint64_t>(st.st_size) > RegDocument::MaxFileBytes)
        return ERROR_FILE_TOO_LARGE;
    // Read under the lock: what another writer saved a moment ago is part of what this
    // writer saves.
    const std::shared_ptr<const RegDocument> current = read(error);
    if (!current)
        return error;
    RegDocument document = *current;
    bool changed = false;
    error = change(document, changed);
    if (error != ERROR_SUCCESS || !changed)
        return error;
    removeLeftovers();
    return save(std::move(document));
    // The lock goes with `lock`, after the new store is in place.
}

void RegStore::removeLeftovers() const {
    // A writer's temporary file lives only while that writer holds the lock, so one found
    // by the lock's holder was left by a writer that died half-way.
    // Built piece by piece: GCC 12 at -O3 warns falsely (-Wrestrict) on "." + name + ".".
    std::string prefix(1, '.');
    prefix.append(m_path, m_path.rfind('/') + 1);
    prefix.push_back('.');
    const std::unique_ptr<DIR, int (*)(DIR*)> dir(::opendir(folderOf(m_path).c_str()), ::closedir);
    if (!dir)
        return;
    std::vector<std::string> leftovers;
    while (const dirent* entry = ::readdir(dir.get())) {
        const std::string_view name = entry->d_name;
        if (name.size() == prefix.size() + TemporarySuffix.size() && name.starts_with(prefix))
            leftovers.emplace_back(name);
    }
    for (const std::string& name : leftovers)
        (void)::unlinkat(::dirfd(dir.get()), name.c_str(), 0);
}

std::uint32_t RegStore::save(RegDocument&& document) const {
    std::string text = document.serialise();
    if (text.size() > RegDocument::MaxFileBytes)
        return ERROR_FILE_TOO_LARGE;

    const std::string folder = folderOf(m_path);
    std::string temporary =
        folder + "/." + m_path.substr(m_path.rfind('/') + 1) + "." + std::string(TemporarySuffix);
    FileDescriptor fd(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!fd.valid())
        return RegErrorFromErrno(errno, ERROR_CANTWRITE);

    // A replaced store keeps the mode and group an administrator gave it.
    const bool user = m_root == HKEY_CURRENT_USER;
    mode_t mode = user ? UserFileMode : MachineFileMode;
    struct stat old {};
    if (::stat(m_path.c_str(), &old) == 0) {
        mode = old.st_mode & 0777;
        if (old.st_gid != ::getegid())
            (void)::fchown(fd.get(), static_cast<uid_t>(-1), old.st_gid);
    }
    (void)::fchmod(fd.get(), mode);

    std::uint32_t error = ERROR_SUCCESS;
    struct stat written {};
    if (!writeAll(fd.get(), text) || ::fsync(fd.get()) != 0 || ::fstat(fd.get(), &written) != 0)
        error = RegErrorFromErrno(errno, ERROR_CANTWRITE);
    if (!fd.reset() && error == ERROR_SUCCESS)
        error = RegErrorFromErrno(errno, ERROR_CANTWRITE);
    if (error == ERROR_SUCCESS && ::rename(temporary.c_str(), m_path.c_str()) != 0)
        error = RegErrorFromErrno(errno, ERROR_CANTWRITE);
    if (error != ERROR_SUCCESS) {
        ::unlink(temporary.c_str());
        return error;
    }
    // Make the rename itself durable. The new store is already what every reader sees, so
    // a folder that cannot be synced (some file systems refuse) is no failure of the write.
    const FileDescriptor dir(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dir.valid())
        (void)::fsync(dir.get());

    // This process will most likely read what it wrote next: hand the parsed document to
    // the cache, under the identity of the file as it now stands.
    struct stat placed {};
    if (::stat(m_path.c_str(), &placed) == 0 && placed.st_ino == written.st_ino &&
        placed.st_dev == written.st_dev) {
        timespec now{};
        ::clock_gettime(CLOCK_REALTIME, &now);
        RegStoreCache::instance().put(m_path, placed, now, std::move(text),
                                      std::make_shared<const RegDocument>(std::move(document)));
    }
    return ERROR_SUCCESS;
}

std::shared_ptr<const RegDocument> RegStore::readFor(std::u16string_view key, std::u16string& path,
                                                     std::uint32_t& error) const {
    if (m_path.empty()) {
        error = ERROR_INVALID_HANDLE;
        return nullptr;
    }
    // A name the store cannot hold names no key that is there.
    if (!RegDocument::normaliseKeyPath(key, path)) {
        error = ERROR_FILE_NOT_FOUND;
        return nullptr;
    }
    error = ERROR_SUCCESS;
    return read(error);
}

std::uint32_t RegStore::openKey(std::u16string_view key, std::uint32_t access) const {
    std::u16string path;
    std::uint32_t error = ERROR_SUCCESS;
    const auto document = readFor(key, path, error);
    if (!document)
        return error;
    if (!document->findKey(path))
        return ERROR_FILE_NOT_FOUND;
    if (access & WriteRights)
        return checkWritable();
    return ERROR_SUCCESS;
}

std::uint32_t RegStore::queryValue(std::u16string_view key, std::u16string_view name,
                                   RegDocument::Value& value) const {
    std::u16string path;
    std::uint32_t error = ERROR_SUCCESS;
    const auto document = readFor(key, path, error);
    if (!document)
        return error;
    const RegDocument::Value* found = document->findValue(path, name);
    if (!found)
        return ERROR_FILE_NOT_FOUND;
    value = *found;
    return ERROR_SUCCESS;
}

std::uint32_t RegStore::createKey(std::u16string_view key, std::uint32_t* disposition) {
    std::u16string path;
    if (m_path.empty())
        return ERROR_INVALID_HANDLE;
    if (!RegDocument::normaliseKeyPath(key, path))
        return ERROR_INVALID_PARAMETER;
    // An existing key costs no write, only the check that it could be written.
    std::uint32_t error = ERROR_SUCCESS;
    const auto document = read(error);
    if (document && document->findKey(path)) {
        error = checkWritable();
        if (error == ERROR_SUCCESS && disposition)
            *disposition = REG_OPENED_EXISTING_KEY;
        return error;
    }
    std::uint32_t result = REG_OPENED_EXISTING_KEY;
    error = update([&](RegDocument& store, bool& changed) {
        if (store.addKey(path)) {
            changed = true;
            result = REG_CREATED_NEW_KEY;
        }
        return ERROR_SUCCESS;
    });
    if (error == ERROR_SUCCESS && disposition)
        *disposition = result;
    return error;
}

std::uint32_t RegStore::setValue(std::u16string_view key, const RegDocument::Value& value) {
    std::u16string path;
    if (m_path.empty())
        return ERROR_INVALID_HANDLE;
    if (!RegDocument::normaliseKeyPath(key, path) || !RegDocument::isValidValueName(value.name) ||
        value.data.size() > RegDocument::MaxValueBytes)
        return ERROR_INVALID_PARAMETER;
    return update([&](RegDocument& store, bool& changed) {
        if (!store.findKey(path))
            return ERROR_KEY_DELETED;
        const RegDocument::Value* existing = store.findValue(path, value.name);
        if (existing && existing->type == value.type && existing->data == value.data)
            return ERROR_SUCCESS;
        store.setValue(path, value);
        changed = true;
        return ERROR_SUCCESS;
    });
}

std::uint32_t RegStore::deleteValue(std::u16string_view key, std::u16string_view name) {
    std::u16string path;
    if (m_path.empty())
        return ERROR_INVALID_HANDLE;
    if (!RegDocument::normaliseKeyPath(key, path))
        return ERROR_FILE_NOT_FOUND;
    // Nothing to delete needs no lock and no write.
    std::uint32_t error = ERROR_SUCCESS;
    const auto document = read(error);
    if (!document)
        return error;
    if (!document->findValue(path, name))
        return ERROR_FILE_NOT_FOUND;
    return update([&](RegDocument& store, bool& changed) {
        if (!store.findKey(path))
            return ERROR_KEY_DELETED;
        if (!store.deleteValue(path, name))
            return ERROR_FILE_NOT_FOUND;
        changed = true;
        return ERROR_SUCCESS;
    });
}

} // namespace Corvane
