#pragma once
// IQGStandAlone: takes the host's IInfoSink, the first call of the host's page set-up. The
// plug-in keeps it but has nothing to tell the host through it.

#include "mainwindow/PluginContract.h"

class PluginContext;

class StandAloneObject final : public IQGStandAlone {
public:
    explicit StandAloneObject(PluginContext& context) : m_context(context) {}

    std::int32_t SetInfoSink(IInfoSink* sink) override;

private:
    PluginContext& m_context;
};
