#pragma once
// The scoped guard of the program: takes a lock for the life of a block. The result of the
// lock is ignored and the unlock always happens, so that after a limited wait the block goes
// on without the lock (the unlock then simply fails): a caller such as the trace log must
// never be stopped by a lock, and has nobody to report a failure to.

#include "foundation/Synchronisable.h"

#include <cstdint>

namespace Corvane {

class SyncObject {
public:
    SyncObject(Synchronisable& object, std::uint32_t timeoutMs);
    virtual ~SyncObject();
    SyncObject(const SyncObject&) = delete;
    SyncObject& operator=(const SyncObject&) = delete;

private:
    Synchronisable& m_object;
};

} // namespace Corvane
