#include "foundation/ScreenAreaSource.h"

#include <mutex>
#include <utility>

namespace Corvane {
namespace {

struct Slot {
    std::mutex mutex;
    std::shared_ptr<const ScreenAreaSource> source;
};

Slot& TheSlot() {
    static Slot slot;
    return slot;
}

} // namespace

void ScreenAreaSource::install(std::shared_ptr<const ScreenAreaSource> source) {
    Slot& slot = TheSlot();
    const std::lock_guard<std::mutex> lock(slot.mutex);
    slot.source = std::move(source);
}

std::shared_ptr<const ScreenAreaSource> ScreenAreaSource::installed() {
    Slot& slot = TheSlot();
    const std::lock_guard<std::mutex> lock(slot.mutex);
    return slot.source;
}

} // namespace Corvane
