#include "PluginRuntime.h"

PluginRuntime::PluginRuntime()
    : m_standAlone(m_context), m_plugin(m_context), m_commonUI(m_context), m_info(m_context) {}

PluginRuntime& PluginRuntime::Instance() {
    static PluginRuntime runtime;
    return runtime;
}
