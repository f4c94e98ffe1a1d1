#include "foundation/SyncObject.h"

namespace Corvane {

SyncObject::SyncObject(Synchronisable& object, std::uint32_t timeoutMs) : m_object(object) {
    m_object.lock(timeoutMs);
}

SyncObject::~SyncObject() {
    try {
        m_object.unlock();
    } catch (...) {
        // A destructor must not throw, and nobody could act on the failure.
    }
}

} // namespace Corvane
