#include "app/ServiceProgress.h"

bool ServiceProgress::Tick() {
    if (m_position >= Limit)
        return false;
    m_position += Step;
    // A bar's own step wraps to the start past the end; the limit keeps it far from that.
    if (m_position > RangeMax)
        m_position = RangeMin;
    return true;
}
