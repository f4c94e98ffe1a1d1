#pragma once
// The base of a page shown by CCustomTabCtrl: it keeps the page's modified flag, hands
// every change of it to the tab control (which passes it on to its dialog), and answers
// the tab control's apply, reset and close questions. A page is usually a widget that
// derives from this class as well and names itself as the page's window.

#include <QPointer>
#include <QWidget>

class CCustomTabCtrl;

class CCustomPropPage {
public:
    explicit CCustomPropPage(QWidget* window = nullptr) : m_pWindow(window) {}
    CCustomPropPage(const CCustomPropPage&) = delete;
    CCustomPropPage& operator=(const CCustomPropPage&) = delete;
    virtual ~CCustomPropPage() = default;

    virtual void SetModified(int modified);
    virtual int IsModified() const { return m_modified; }
    virtual bool OnApply();
    virtual void OnSetActive() {}
    virtual bool OnReset();
    virtual void ClearModified() { m_modified = 0; }
    virtual bool CanClose() { return true; }
    // Brings the page's content up to date.
    virtual void Refresh() = 0;

    // The window that the tab control shows and hides; null once it is destroyed.
    QWidget* PageWindow() const { return m_pWindow.data(); }
    void SetPageWindow(QWidget* window) { m_pWindow = window; }
    // Set by CCustomTabCtrl::AddPage.
    CCustomTabCtrl* TabCtrl() const;
    void SetTabCtrl(CCustomTabCtrl* tabCtrl);

private:
    int m_modified = 0;
    QPointer<QWidget> m_pTabCtrl;
    QPointer<QWidget> m_pWindow;
};
