#include "foundation/CriticalSection.h"

namespace Corvane {

CriticalSection::~CriticalSection() = default;

bool CriticalSection::lock(std::uint32_t /*timeoutMs*/) {
    m_section.lock();
    return true;
}

void CriticalSection::unlock() {
    m_section.unlock();
}

bool CriticalSection::tryLock() {
    return m_section.try_lock();
}

} // namespace Corvane
