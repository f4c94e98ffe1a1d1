#pragma once
// What the plug-in's five objects share: the RPC object, the pages made so far, the page
// metrics, the language and configuration path that the host passed, the host's sink, and
// the main window as the pages of the main window found it. One object, owned by the
// library's runtime.

#include "PageMetrics.h"
#include "PageRegistry.h"
#include "RpcObject.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class IInfoSink;

class PluginContext {
public:
    PluginContext() = default;
    // Destroys the pages that are left (their code is about to go with the library) while an
    // application object still exists to destroy them with.
    ~PluginContext();
    PluginContext(const PluginContext&) = delete;
    PluginContext& operator=(const PluginContext&) = delete;

    RpcObject& Rpc() { return m_rpc; }
    PageRegistry& Pages() { return m_pages; }

    PageMetrics metrics;
    QString language;
    QString configPath;
    IInfoSink* sink = nullptr;
    // The parent that the main window's pages were made with.
    QPointer<QWidget> mainWindow;
    bool guiStarted = false;

private:
    RpcObject m_rpc;
    PageRegistry m_pages;
};
