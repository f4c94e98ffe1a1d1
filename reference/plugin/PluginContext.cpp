#include "PluginContext.h"

#include <QCoreApplication>

PluginContext::~PluginContext() {
    if (QCoreApplication::instance() != nullptr)
        m_pages.DestroyAll();
}
