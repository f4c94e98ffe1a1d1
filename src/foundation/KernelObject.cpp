#include "foundation/KernelObject.h"

#include "foundation/EveryoneDacl.h"

#include <sys/stat.h>
#include <unistd.h>

namespace Corvane {

KernelObject::~KernelObject() {
    closeHandle();
}

bool KernelObject::clearDacl() {
    if (m_handle < 0)
        return true;
    struct stat st {};
    if (::fstat(m_handle, &st) != 0)
        return false;
    // Only the owner (or root) may change a file's mode; for anybody else the owner's choice
    // stands, as a DACL that denies WRITE_DAC to everybody but the owner would have it.
    if (st.st_uid != ::geteuid())
        return true;
    return ::fchmod(m_handle, EveryoneMode) == 0;
}

void KernelObject::setHandle(int fd) {
    closeHandle();
    m_handle = fd;
}

void KernelObject::closeHandle() {
    if (m_handle >= 0)
        ::close(m_handle);
    m_handle = -1;
}

} // namespace Corvane
