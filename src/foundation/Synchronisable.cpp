#include "foundation/Synchronisable.h"

namespace Corvane {

Synchronisable::~Synchronisable() = default;

} // namespace Corvane
