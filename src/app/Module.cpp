#include "app/Module.h"

#include "app/CVLQuillgateApp.h"

namespace {

// Made at the first call: from the initialiser below at the latest, and earlier if another
// file's static initialisation asks for it first.
CVLQuillgateApp& ModuleInstance() {
    static CVLQuillgateApp module;
    return module;
}

} // namespace

CVLQuillgateApp& _Module = ModuleInstance();
