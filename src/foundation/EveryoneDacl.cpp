#include "foundation/EveryoneDacl.h"

namespace Corvane {

EveryoneDacl::~EveryoneDacl() = default;

} // namespace Corvane
