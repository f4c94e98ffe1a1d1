#pragma once
// The library's one runtime: the shared context and the five objects that the factories
// hand out. It is made at the first factory call, so that the RPC object takes the socket's
// path from the environment as it is then, and it goes when the library is unloaded (or the
// process ends): the reader thread stops and the pages that are left are destroyed.

#include "CommonUIObject.h"
#include "InfoObject.h"
#include "PluginContext.h"
#include "PluginObject.h"
#include "StandAloneObject.h"

class PluginRuntime {
public:
    static PluginRuntime& Instance();

    PluginRuntime(const PluginRuntime&) = delete;
    PluginRuntime& operator=(const PluginRuntime&) = delete;

    IQGStandAlone* StandAlone() { return &m_standAlone; }
    IQGPlugin* Plugin() { return &m_plugin; }
    IQGCommonUI* CommonUI() { return &m_commonUI; }
    IQGInfo* Info() { return &m_info; }
    IRPCExt* Rpc() { return &m_context.Rpc(); }

private:
    PluginRuntime();
    ~PluginRuntime() = default;

    PluginContext m_context;
    StandAloneObject m_standAlone;
    PluginObject m_plugin;
    CommonUIObject m_commonUI;
    InfoObject m_info;
};
