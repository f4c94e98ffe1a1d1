#pragma once
// The ten places side by side where summary pop-ups stand. Process-wide through the
// shared GUI resources; claimed and cleared under its own lock.

#include "foundation/CriticalSection.h"

#include <array>

class PopupSlotTable {
public:
    static constexpr int SlotCount = 10;

    // Marks and returns the lowest free slot. With all ten taken it answers 0 and marks
    // nothing, so that the pop-ups of a crowded moment share the first place.
    int Claim();
    // Frees a slot; out of range is ignored.
    void Release(int slot);
    bool IsTaken(int slot);

private:
    Corvane::CriticalSection m_lock;
    std::array<bool, SlotCount> m_taken{};
};
