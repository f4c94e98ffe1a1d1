#pragma once
// What the service keeps in memory besides its settings file: the mail counts that the
// plug-in shows, the filter state and the program's process id as last reported, and the
// fault it has been told to show.

#include "service/FaultMode.h"

#include <cstdint>

struct ServiceState {
    std::int32_t spamCount = 0;
    std::int32_t examinedCount = 0;
    // From the last Filter status message; -1 before any.
    std::int32_t filterState = -1;
    // From the last GUI Start message; 0 before any.
    std::int32_t guiProcessId = 0;
    FaultMode fault;
};
