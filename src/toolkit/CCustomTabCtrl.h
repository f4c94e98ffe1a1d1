#pragma once
// A tab control whose pages are child windows shown one at a time in the space beside the
// tabs (TabGeometry), with labels drawn by CustomTabBar. A page can be switched off
// (IsPageEnabled): its tab stays, greyed, and neither a click nor the keys reach it.
//
// Keys while the control has the focus: Left and Right go to the previous or next enabled
// page, wrapping round; Ctrl+Page Up/Down do the same; Page Up/Down alone move the focus
// on to the next control (back with Shift); Tab and Down move the focus into the page.
//
// Pages are shown inside the control: AddPage makes the page's window a child of it. The
// control never destroys a page: the windows of pages it adopted go back to their former
// parent when it is destroyed. It keeps plain pointers to the page objects, so a page must
// outlive the control or be removed from it first.

#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <vector>

class CCustomPropPage;
class CustomTabBar;

class CCustomTabCtrl : public QWidget {
    Q_OBJECT

public:
    // `tabStyle`: TabGeometry::TabStyleBottom and/or TabGeometry::TabStyleVertical.
    explicit CCustomTabCtrl(QWidget* parent = nullptr, unsigned tabStyle = 0);
    ~CCustomTabCtrl() override;

    // Appends a page with its tab and returns the tab's index. The first page is always
    // shown; a later one only with `select`. `image` indexes the image list (-1: none);
    // `param` is kept with the tab (0: none).
    int AddPage(const QString& text, CCustomPropPage* page, bool select = false, int image = -1,
                std::uintptr_t param = 0);
    // False when `index` is out of range.
    bool RemovePage(int index);
    void ShowPage(int index);
    // The pages' rectangle in this control's coordinates.
    QRect GetPageRect() const;

    virtual void OnPageSelected() = 0;
    virtual bool IsPageEnabled(int index) const;
    // Receives every change of a page's modified flag.
    virtual void SetValue(int value) { m_value = value; }
    virtual void OnDeletePage(int index);
    virtual int GetValue() const { return m_value; }
    // OnApply on every enabled page, all of them even after a failure; false if any failed.
    virtual bool ApplyAll();
    // ClearModified on every enabled page.
    virtual void CancelAll();

    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    int GetCurrentIndex() const { return m_nCurrent; }
    CCustomPropPage* GetPage(int index) const;
    CCustomPropPage* GetCurrentPage() const { return m_pCurrentPage; }
    std::uintptr_t GetTabParam(int index) const;
    unsigned TabStyle() const { return m_tabStyle; }
    void SetImageList(std::vector<QPixmap> images);
    CustomTabBar* TabBar() const { return m_tabBar; }

    static constexpr int Margin = 2;
    static constexpr int Padding = 4;

signals:
    // The shown page changed by a click on its tab, or a page was added and shown.
    void selectionChanged(int index);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Adopted {
        QPointer<QWidget> window;
        QPointer<QWidget> formerParent;
    };

    void OnTabClicked(int index);
    void LayOutTabBar();
    void LayOutPages();
    bool HandleKey(QKeyEvent* event);
    void FocusCurrentPage();
    static void HidePage(QWidget* window);

    unsigned m_tabStyle;
    CustomTabBar* m_tabBar; // child
    CCustomPropPage* m_pCurrentPage = nullptr;
    std::vector<CCustomPropPage*> m_pages; // not owned
    std::vector<std::uintptr_t> m_params;
    std::vector<Adopted> m_adopted;
    int m_nCurrent = -1;
    QPointer<QWidget> m_hWndCurrent;
    int m_value = 0;
};
