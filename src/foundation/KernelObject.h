#pragma once
// The base of the objects that several processes can share by name. On Linux such an object
// is a lock file in the run folder; the "handle" is this process's descriptor of that file
// (-1 when there is none). The last error keeps the Windows meaning of 183 for "the named
// object existed already"; any other value is the errno of a failed system call.

#include <cstdint>

namespace Corvane {

// ERROR_ALREADY_EXISTS: another process (or another object of this one) has the named
// object open.
inline constexpr std::uint32_t ErrorAlreadyExists = 183;

class KernelObject {
public:
    KernelObject() = default;
    virtual ~KernelObject();
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;

    bool alreadyExisted() const { return m_lastError == ErrorAlreadyExists; }
    // Lets everybody use the object and only its owner change who may: the lock file gets
    // mode 0666 when this process's user owns it. Without a descriptor, or when the file
    // belongs to somebody else (who decides its mode), there is nothing to do: true.
    bool clearDacl();
    std::uint32_t lastError() const { return m_lastError; }
    // The descriptor of the lock file, -1 when there is none.
    int handle() const { return m_handle; }

protected:
    void setLastError(std::uint32_t error) { m_lastError = error; }
    // Takes ownership of `fd`, closing a descriptor held before.
    void setHandle(int fd);
    void closeHandle();

private:
    std::uint32_t m_lastError = 0;
    int m_handle = -1;
};

} // namespace Corvane
