// The five factories of the plug-in contract, the only symbols that the library exports.
// Each answers its object of the library's runtime, which the library owns; the first call
// makes the runtime. Nothing is thrown out of them: a runtime that cannot be made answers
// null, which the host reports.

#include "JournalLine.h"
#include "PluginRuntime.h"

namespace {

template <class Object, class Take>
Object* Create(const char* name, Take take) {
    Object* object = nullptr;
    try {
        object = take(PluginRuntime::Instance());
    } catch (...) {
        object = nullptr;
    }
    JournalLine line(name);
    line.Arrow().Word(object != nullptr ? "object" : "null").Write();
    return object;
}

} // namespace

extern "C" {

QG_PLUGIN_EXPORT IQGStandAlone* CreateQGInstanceStandAlone() {
    return Create<IQGStandAlone>("CreateQGInstanceStandAlone",
                                 [](PluginRuntime& runtime) { return runtime.StandAlone(); });
}

QG_PLUGIN_EXPORT IQGPlugin* CreateQGInstance() {
    return Create<IQGPlugin>("CreateQGInstance",
                             [](PluginRuntime& runtime) { return runtime.Plugin(); });
}

QG_PLUGIN_EXPORT IQGCommonUI* CreateCIInstance() {
    return Create<IQGCommonUI>("CreateCIInstance",
                               [](PluginRuntime& runtime) { return runtime.CommonUI(); });
}

QG_PLUGIN_EXPORT IQGInfo* CreateQGInfo() {
    return Create<IQGInfo>("CreateQGInfo", [](PluginRuntime& runtime) { return runtime.Info(); });
}

QG_PLUGIN_EXPORT IRPCExt* CreateRPCInstance() {
    return Create<IRPCExt>("CreateRPCInstance",
                           [](PluginRuntime& runtime) { return runtime.Rpc(); });
}

} // extern "C"
