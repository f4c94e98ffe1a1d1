#include "foundation/SecurityObject.h"

namespace Corvane {
namespace {
constinit SecurityObject s_processSecurity;
} // namespace

constinit std::atomic<SecurityObject*> g_securityObject{&s_processSecurity};

SecurityObject::~SecurityObject() {
    SecurityObject* self = this;
    g_securityObject.compare_exchange_strong(self, nullptr);
}

} // namespace Corvane
