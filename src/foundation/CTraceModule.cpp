#include "foundation/CTraceModule.h"

#include "foundation/CTraceModuleList.h"

void CTraceModule::SetLevel(std::uint32_t mask) {
    m_level.store(mask, std::memory_order_relaxed);
    // A listed sink's new bits must reach the fast filter of the trace calls.
    CTraceModuleList::LevelsChanged(mask);
}
