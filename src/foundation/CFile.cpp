#include "foundation/CFile.h"

#include "foundation/stdstr.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Linux hands out at most 0x7ffff000 bytes per read or write; larger requests go in pieces
// of this size so that a 4 GiB buffer is still filled in one call of ours.
constexpr std::uint32_t MaxChunk = 1u << 30;

int AccessFlags(unsigned flags) {
    switch (flags & 3u) {
    case CFile::modeRead:
        return O_RDONLY;
    case CFile::modeWrite:
        return O_WRONLY;
    default: // modeReadWrite, and 3, which asks for both as well
        return O_RDWR;
    }
}

int CreationFlags(unsigned flags) {
    if ((flags & CFile::modeCreate) == 0)
        return 0; // the file must exist
    if (flags & CFile::modeNoTruncate)
        return O_CREAT; // open it as it is, or create it
    // Create or empty it. Linux truncates even with read-only access (asking for write
    // permission), which is what creating "always" means for a reader as well.
    return O_CREAT | O_TRUNC;
}

} // namespace

CFile::CFile(int handle) : m_handle(handle), m_ownsHandle(true) {}

CFile::CFile(const char16_t* path, unsigned flags) {
    open(path, flags);
}

CFile::~CFile() {
    // Not through the virtual close(): a derived object is already gone here.
    if (m_handle != -1 && m_ownsHandle)
        ::close(m_handle);
}

bool CFile::open(const char16_t* path, unsigned flags) {
    // close() answers false after closing a file that was open, so an object that still
    // holds a file ends up closed and this call fails; callers close first.
    if (!close())
        return false;
    if (!path || *path == u'\0')
        return false;
    m_handle = -1;
    m_ownsHandle = true;

    const std::string name = stdstr::fromTString(std::u16string(path));
    // Always close-on-exec: a child started by this process must not keep our files open
    // (the sharing and inheritance options of other systems have no counterpart here).
    const int oflags = AccessFlags(flags) | CreationFlags(flags) | O_CLOEXEC;
    int fd;
    do {
        fd = ::open(name.c_str(), oflags, 0644);
    } while (fd == -1 && errno == EINTR);
    if (fd == -1)
        return false;

    // A folder is not a file: refuse it as the other platforms' file calls do. errno tells
    // the caller why.
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        errno = EISDIR;
        return false;
    }
    m_handle = fd;
    m_ownsHandle = true;
    return true;
}

std::int64_t CFile::getPosition() {
    if (m_handle == -1)
        return -1;
    return ::lseek(m_handle, 0, SEEK_CUR);
}

std::int64_t CFile::seek(std::int64_t offset, SeekOrigin origin) {
    if (m_handle == -1)
        return -1;
    int whence = SEEK_SET;
    if (origin == current)
        whence = SEEK_CUR;
    else if (origin == end)
        whence = SEEK_END;
    return ::lseek(m_handle, static_cast<off_t>(offset), whence);
}

bool CFile::setLength(std::int64_t length) {
    if (seek(length, begin) != length)
        return false;
    return setEndOfFile();
}

std::int64_t CFile::getLength() {
    if (m_handle == -1)
        return -1;
    struct stat st {};
    if (::fstat(m_handle, &st) != 0)
        return -1;
    return st.st_size;
}

std::uint32_t CFile::read(void* buffer, std::uint32_t count) {
    if (m_handle == -1 || count == 0 || !buffer)
        return 0;
    auto* out = static_cast<unsigned char*>(buffer);
    std::uint32_t total = 0;
    while (total < count) {
        const std::uint32_t piece = std::min(count - total, MaxChunk);
        const ssize_t got = ::read(m_handle, out + total, piece);
        if (got == -1) {
            if (errno == EINTR)
                continue;
            return 0;
        }
        total += static_cast<std::uint32_t>(got);
        // A short piece is the end of the file, or all that a pipe has for now: do not
        // block for more.
        if (static_cast<std::uint32_t>(got) < piece)
            break;
    }
    return total;
}

bool CFile::write(const void* buffer, std::uint32_t count) {
    if (count == 0)
        return true;
    if (m_handle == -1 || !buffer)
        return false;
    const auto* in = static_cast<const unsigned char*>(buffer);
    std::uint32_t total = 0;
    while (total < count) {
        const std::uint32_t piece = std::min(count - total, MaxChunk);
        const ssize_t put = ::write(m_handle, in + total, piece);
        if (put == -1) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (put == 0)
            return false;
        total += static_cast<std::uint32_t>(put);
    }
    return true;
}

bool CFile::flush() {
    if (m_handle == -1)
        return true;
    // Nothing is buffered in this process, so flushing means getting the data to the disk.
    // fdatasync skips the time stamps, which matters for a log flushed after every line.
    if (::fdatasync(m_handle) == 0)
        return true;
    // Pipes, terminals and sockets cannot be synchronised; what was written is already
    // with their reader.
    return errno == EINVAL || errno == EROFS;
}

bool CFile::close() {
    bool result = true;
    if (m_handle != -1) {
        // Deliberately inverted (see the header): false after a successful close.
        result = ::close(m_handle) != 0;
    }
    m_handle = -1;
    m_ownsHandle = false;
    return result;
}

bool CFile::isOpen() const {
    return m_handle != -1;
}

bool CFile::setEndOfFile() {
    if (m_handle == -1)
        return false;
    const off_t position = ::lseek(m_handle, 0, SEEK_CUR);
    if (position == -1)
        return false;
    int rc;
    do {
        rc = ::ftruncate(m_handle, position);
    } while (rc == -1 && errno == EINTR);
    return rc == 0;
}
