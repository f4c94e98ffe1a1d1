#include "app/Module.h"

#include "app/CVLQuillgateApp.h"

// The object below is made during static initialisation, and its constructor already reads
// the settings (registry key names), may send them to the service (envelope texts) and may
// meet a file error (error keys). Those names are inline string objects with dynamic
// initialisation: an inline variable defined earlier in this file is initialised before
// _Module, one seen only in other files is not. So each header whose strings that path uses
// is included here, before the definition, even where nothing in this file names them.
#include "app/SharedConstants.h"
#include "foundation/ErrorKeys.h"
#include "messaging/EnvelopeTexts.h"

namespace {

// Made at the first call: from the initialiser below at the latest, and earlier if another
// file's static initialisation asks for it first.
CVLQuillgateApp& ModuleInstance() {
    static CVLQuillgateApp module;
    return module;
}

} // namespace

CVLQuillgateApp& _Module = ModuleInstance();
