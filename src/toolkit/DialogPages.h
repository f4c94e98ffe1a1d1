#pragma once
// A keyed stack of page windows, one shown at a time, with no tabs: the main window keeps
// the plug-in's pages here. The stack destroys the page windows (at the latest when it is
// destroyed itself); the CDialogPage objects stay their owner's.
//
// Results: 0 for success, 1 where the operation says so (key present or absent),
// ResultFail (0x80004005) for a failure, an exception inside included.

#include <QPointer>

#include <cstdint>
#include <map>

class CDialogPage;
class QWidget;

class DialogPages {
public:
    static constexpr std::int32_t ResultOk = 0;
    static constexpr std::int32_t ResultFalse = 1;
    static constexpr std::int32_t ResultFail = static_cast<std::int32_t>(0x80004005u);

    DialogPages() = default;
    DialogPages(const DialogPages&) = delete;
    DialogPages& operator=(const DialogPages&) = delete;
    virtual ~DialogPages();

    // 1 if the key is taken; the page there stays.
    std::int32_t AddPage(CDialogPage* page, std::int32_t key);
    // Forgets the page, whose window stays; 1 if absent.
    std::int32_t RemovePage(std::int32_t key);
    // Destroys the page's window and forgets the page once the window is gone; 1 if absent.
    std::int32_t DestroyPage(std::int32_t key);
    // Destroys every window; only if all could be destroyed is the stack emptied.
    std::int32_t DestroyAll();
    // Shows the page and hides the one shown before. The page already shown is hidden and
    // shown again, which repaints it.
    std::int32_t ShowPage(std::int32_t key);
    // The page shown now, or null.
    CDialogPage* GetCurrentPage() const;
    std::int32_t CurrentKey() const { return m_currentKey; }
    // The user value of the page shown now, whatever key is passed.
    std::int32_t SetPageValue(std::int32_t ignoredKey, std::intptr_t value);
    std::intptr_t GetPageValue(std::int32_t ignoredKey) const;
    std::size_t Count() const { return m_pages.size(); }

private:
    struct Record {
        std::int32_t key = 0;
        CDialogPage* page = nullptr;
        std::intptr_t value = 0;
    };

    // False when there is no window to destroy, as for a window that is already gone.
    static bool DestroyWindow(QWidget* window);
    Record* CurrentRecord();
    const Record* CurrentRecord() const;

    std::map<std::int32_t, Record> m_pages;
    QPointer<QWidget> m_currentWindow;
    std::int32_t m_currentKey = -1;
};
