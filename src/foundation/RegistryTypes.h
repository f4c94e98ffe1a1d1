#pragma once
// The registry's vocabulary: root keys, access masks, value types, dispositions and the
// Windows error numbers that the registry classes report, with the one mapping from those
// numbers to the errno values that the rest of the system (GetOSErrorText) understands.
// The numbers are the Windows ones, because callers and trace lines print them.

#include <cerrno>
#include <cstdint>

// Root keys. Unsigned 32-bit so that a trace can print them with "0x%x".
inline constexpr std::uint32_t HKEY_CURRENT_USER = 0x80000001u;
inline constexpr std::uint32_t HKEY_LOCAL_MACHINE = 0x80000002u;

// Access rights of an open key.
inline constexpr std::uint32_t KEY_QUERY_VALUE = 0x0001u;
inline constexpr std::uint32_t KEY_SET_VALUE = 0x0002u;
inline constexpr std::uint32_t KEY_CREATE_SUB_KEY = 0x0004u;
inline constexpr std::uint32_t KEY_ENUMERATE_SUB_KEYS = 0x0008u;
inline constexpr std::uint32_t KEY_NOTIFY = 0x0010u;
inline constexpr std::uint32_t KEY_CREATE_LINK = 0x0020u;
inline constexpr std::uint32_t READ_CONTROL = 0x00020000u;
// Query value, enumerate sub-keys, notify and read control.
inline constexpr std::uint32_t KEY_READ = 0x20019u;
// Set value, create sub-key and read control.
inline constexpr std::uint32_t KEY_WRITE = 0x20006u;
inline constexpr std::uint32_t KEY_ALL_ACCESS = 0xF003Fu;

// Options of key creation. Volatile keys are not supported by the file store: a volatile
// request makes an ordinary key.
inline constexpr std::uint32_t REG_OPTION_NON_VOLATILE = 0u;
inline constexpr std::uint32_t REG_OPTION_VOLATILE = 1u;

// What key creation did.
inline constexpr std::uint32_t REG_CREATED_NEW_KEY = 1u;
inline constexpr std::uint32_t REG_OPENED_EXISTING_KEY = 2u;

// Value types. The store keeps any type number; these are the ones with a name.
inline constexpr std::uint32_t REG_NONE = 0u;
inline constexpr std::uint32_t REG_SZ = 1u;
inline constexpr std::uint32_t REG_EXPAND_SZ = 2u;
inline constexpr std::uint32_t REG_BINARY = 3u;
inline constexpr std::uint32_t REG_DWORD = 4u;
inline constexpr std::uint32_t REG_MULTI_SZ = 7u;
inline constexpr std::uint32_t REG_QWORD = 11u;

// Windows error numbers reported by the registry classes.
inline constexpr std::uint32_t ERROR_SUCCESS = 0u;
inline constexpr std::uint32_t ERROR_FILE_NOT_FOUND = 2u;     // no such key or value
inline constexpr std::uint32_t ERROR_PATH_NOT_FOUND = 3u;     // the store's folder is no folder
inline constexpr std::uint32_t ERROR_ACCESS_DENIED = 5u;      // no right to the store or key
inline constexpr std::uint32_t ERROR_INVALID_HANDLE = 6u;     // unknown root, key not open
inline constexpr std::uint32_t ERROR_NOT_ENOUGH_MEMORY = 8u;  // allocation failed
inline constexpr std::uint32_t ERROR_INVALID_PARAMETER = 87u; // a name the store cannot hold
inline constexpr std::uint32_t ERROR_DISK_FULL = 112u;        // no space for the new store
inline constexpr std::uint32_t ERROR_FILE_TOO_LARGE = 223u;   // store above its size limit
inline constexpr std::uint32_t ERROR_MORE_DATA = 234u;        // value larger than the buffer
inline constexpr std::uint32_t ERROR_CANTREAD = 1012u;        // the store could not be read
inline constexpr std::uint32_t ERROR_CANTWRITE = 1013u;       // the store could not be written
inline constexpr std::uint32_t ERROR_KEY_DELETED = 1018u;     // key removed since it was opened

// The errno value that stands for a registry error, for GetOSErrorText: the registry
// classes speak Windows numbers (callers compare them with ERROR_FILE_NOT_FOUND), while
// the system's error texts come from the C library. Every number above has an errno of
// the same meaning; an unknown number is reported as an I/O error, never passed through,
// since the same number means something else as an errno.
constexpr int RegErrorToErrno(std::uint32_t error) {
    switch (error) {
    case ERROR_SUCCESS:
        return 0;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_KEY_DELETED:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
        return EACCES;
    case ERROR_INVALID_HANDLE:
        return EBADF;
    case ERROR_NOT_ENOUGH_MEMORY:
        return ENOMEM;
    case ERROR_INVALID_PARAMETER:
        return EINVAL;
    case ERROR_DISK_FULL:
        return ENOSPC;
    case ERROR_FILE_TOO_LARGE:
        return EFBIG;
    case ERROR_MORE_DATA:
        return EOVERFLOW;
    default:
        return EIO;
    }
}

// The registry error for a failed system call on the store. `otherwise` is the number for
// an errno without a closer meaning (ERROR_CANTREAD or ERROR_CANTWRITE).
constexpr std::uint32_t RegErrorFromErrno(int code, std::uint32_t otherwise) {
    switch (code) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EROFS:
        return ERROR_ACCESS_DENIED;
    case ENOMEM:
        return ERROR_NOT_ENOUGH_MEMORY;
    case ENOSPC:
    case EDQUOT:
        return ERROR_DISK_FULL;
    case EFBIG:
        return ERROR_FILE_TOO_LARGE;
    case EINVAL:
    case ENAMETOOLONG:
        return ERROR_INVALID_PARAMETER;
    default:
        return otherwise;
    }
}
