#pragma once
// The small scoped guard for critical sections, whose lock cannot time out: enters in the
// constructor, leaves in the destructor. No virtual operations.

#include "foundation/Synchronisable.h"

class SyncLock {
public:
    explicit SyncLock(Corvane::Synchronisable& object);
    ~SyncLock();
    SyncLock(const SyncLock&) = delete;
    SyncLock& operator=(const SyncLock&) = delete;

private:
    Corvane::Synchronisable& m_object;
};
