#include "toolkit/DialogPages.h"

#include "toolkit/CDialogPage.h"

#include "foundation/Trace.h"

#include <QWidget>

#include <exception>

namespace {

QWidget* WindowOf(CDialogPage* page) {
    return page != nullptr ? page->Window() : nullptr;
}

// Every operation turns an exception into a failure result, with a trace line of its own.
template <class Operation>
std::int32_t Guarded(const char16_t* name, Operation&& operation) {
    try {
        return operation();
    } catch (const std::exception& e) {
        TraceFmt(TRACE_ERROR, u"DialogPages::%s Exception (%s)", name, e.what());
    } catch (...) {
        TraceFmt(TRACE_ERROR, u"DialogPages::%s Unhandled exception", name);
    }
    return DialogPages::ResultFail;
}

} // namespace

DialogPages::~DialogPages() {
    for (auto& [key, record] : m_pages) {
        if (QWidget* window = WindowOf(record.page))
            DestroyWindow(window);
    }
}

std::int32_t DialogPages::AddPage(CDialogPage* page, std::int32_t key) {
    return Guarded(u"AddPage", [&] {
        const auto [where, added] = m_pages.try_emplace(key, Record{key, page, 0});
        return added ? ResultOk : ResultFalse;
    });
}

std::int32_t DialogPages::RemovePage(std::int32_t key) {
    return Guarded(u"RemovePage", [&] { return m_pages.erase(key) == 1 ? ResultOk : ResultFalse; });
}

std::int32_t DialogPages::DestroyPage(std::int32_t key) {
    return Guarded(u"DestroyPage", [&] {
        const auto found = m_pages.find(key);
        if (found == m_pages.end())
            return ResultFalse;
        DestroyWindow(WindowOf(found->second.page));
        if (WindowOf(found->second.page) == nullptr)
            m_pages.erase(found);
        return ResultOk;
    });
}

std::int32_t DialogPages::DestroyAll() {
    return Guarded(u"DestroyAll", [&] {
        bool allDestroyed = true;
        for (auto& [key, record] : m_pages)
            allDestroyed = DestroyWindow(WindowOf(record.page)) && allDestroyed;
        if (!allDestroyed)
            return ResultFail;
        m_pages.clear();
        return ResultOk;
    });
}

std::int32_t DialogPages::ShowPage(std::int32_t key) {
    return Guarded(u"ShowPage", [&] {
        const auto found = m_pages.find(key);
        if (found == m_pages.end())
            return ResultFail;
        QWidget* window = WindowOf(found->second.page);
        if (window != m_currentWindow.data()) {
            if (!m_currentWindow.isNull() && window != nullptr &&
                m_currentWindow->parentWidget() == window->parentWidget())
                m_currentWindow->hide();
            if (window != nullptr) {
                window->hide();
                window->show();
                window->repaint();
            }
            m_currentWindow = window;
            m_currentKey = key;
        } else if (window != nullptr) {
            // Hiding and showing the page again makes it repaint everything.
            window->hide();
            window->show();
        }
        return ResultOk;
    });
}

CDialogPage* DialogPages::GetCurrentPage() const {
    const Record* record = CurrentRecord();
    return record != nullptr ? record->page : nullptr;
}

std::int32_t DialogPages::SetPageValue(std::int32_t, std::intptr_t value) {
    return Guarded(u"SetPageValue", [&] {
        Record* record = CurrentRecord();
        if (record == nullptr)
            return ResultFail;
        record->value = value;
        return ResultOk;
    });
}

std::intptr_t DialogPages::GetPageValue(std::int32_t) const {
    const Record* record = CurrentRecord();
    return record != nullptr ? record->value : 0;
}

DialogPages::Record* DialogPages::CurrentRecord() {
    const auto found = m_pages.find(m_currentKey);
    return found != m_pages.end() ? &found->second : nullptr;
}

const DialogPages::Record* DialogPages::CurrentRecord() const {
    const auto found = m_pages.find(m_currentKey);
    return found != m_pages.end() ? &found->second : nullptr;
}

bool DialogPages::DestroyWindow(QWidget* window) {
    if (window == nullptr)
        return false;
    // Deleting a widget takes it out of its parent, which is how Qt destroys a child window
    // at once; the CDialogPage sees it gone through its guarded pointer.
    delete window;
    return true;
}
