#include "PageRegistry.h"

#include "PluginPage.h"

#include <vector>

PluginPageId PageRegistry::NextId() {
    if (++m_lastId == 0)
        ++m_lastId;
    return m_lastId;
}

void PageRegistry::Add(PluginPage* page) {
    Prune();
    m_pages[page->Id()] = page;
}

PluginPage* PageRegistry::Find(PluginPageId id) const {
    const auto found = m_pages.find(id);
    return found == m_pages.end() ? nullptr : found->second.data();
}

bool PageRegistry::Destroy(PluginPageId id) {
    const auto found = m_pages.find(id);
    if (found == m_pages.end())
        return false;
    PluginPage* page = found->second.data();
    m_pages.erase(found);
    if (page == nullptr)
        return false;
    delete page;
    return true;
}

void PageRegistry::DestroyAll() {
    // Taken out first: deleting a page may make Qt delete others that are its children.
    std::vector<QPointer<PluginPage>> pages;
    for (auto& [id, page] : m_pages)
        pages.push_back(page);
    m_pages.clear();
    for (QPointer<PluginPage>& page : pages)
        delete page.data();
}

void PageRegistry::ForEach(const std::function<void(PluginPage&)>& visit) const {
    for (const auto& [id, page] : m_pages) {
        if (!page.isNull())
            visit(*page);
    }
}

std::size_t PageRegistry::Count() const {
    std::size_t count = 0;
    for (const auto& [id, page] : m_pages)
        count += page.isNull() ? 0 : 1;
    return count;
}

void PageRegistry::Prune() {
    std::erase_if(m_pages, [](const auto& entry) { return entry.second.isNull(); });
}
