#include "toolkit/PopupSlotTable.h"

#include "foundation/SyncLock.h"

int PopupSlotTable::Claim() {
    SyncLock guard(m_lock);
    for (int slot = 0; slot < SlotCount; ++slot) {
        if (!m_taken[slot]) {
            m_taken[slot] = true;
            return slot;
        }
    }
    return 0;
}

void PopupSlotTable::Release(int slot) {
    if (slot < 0 || slot >= SlotCount)
        return;
    SyncLock guard(m_lock);
    m_taken[slot] = false;
}

bool PopupSlotTable::IsTaken(int slot) {
    if (slot < 0 || slot >= SlotCount)
        return false;
    SyncLock guard(m_lock);
    return m_taken[slot];
}
