#include "foundation/SyncLock.h"

SyncLock::SyncLock(Corvane::Synchronisable& object) : m_object(object) {
    m_object.lock(0);
}

SyncLock::~SyncLock() {
    m_object.unlock();
}
