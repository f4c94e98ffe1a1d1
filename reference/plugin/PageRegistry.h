#pragma once
// The pages that the plug-in has made, by the page id that the host knows them by. The
// host's windows own the pages (they are children of the main window or the wizard) and may
// destroy them at any time, so the registry holds them by guarded pointer and forgets the
// ones that are gone.

#include "mainwindow/PluginContract.h"

#include <QPointer>

#include <functional>
#include <map>

class PluginPage;

class PageRegistry {
public:
    PageRegistry() = default;
    PageRegistry(const PageRegistry&) = delete;
    PageRegistry& operator=(const PageRegistry&) = delete;

    // The id that the next page gets: 1, 2, 3 ... never 0, never given twice.
    PluginPageId NextId();
    void Add(PluginPage* page);
    // The living page of `id`, or null.
    PluginPage* Find(PluginPageId id) const;
    // Destroys the page of `id`; false when there is none (any more).
    bool Destroy(PluginPageId id);
    // Destroys every page that is still there.
    void DestroyAll();
    void ForEach(const std::function<void(PluginPage&)>& visit) const;
    std::size_t Count() const;

private:
    void Prune();

    std::map<PluginPageId, QPointer<PluginPage>> m_pages;
    PluginPageId m_lastId = 0;
};
