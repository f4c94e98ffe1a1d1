#include "toolkit/CCustomTabCtrl.h"

#include "toolkit/CCustomPropPage.h"
#include "toolkit/CustomTabBar.h"
#include "toolkit/TabGeometry.h"
#include "toolkit/TabNavigation.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOptionTabWidgetFrame>

namespace {

TabNavigation::Key KeyOf(int qtKey) {
    switch (qtKey) {
    case Qt::Key_PageUp:
        return TabNavigation::Key::PageUp;
    case Qt::Key_PageDown:
        return TabNavigation::Key::PageDown;
    case Qt::Key_Left:
        return TabNavigation::Key::Left;
    case Qt::Key_Right:
        return TabNavigation::Key::Right;
    case Qt::Key_Tab:
        return TabNavigation::Key::Tab;
    case Qt::Key_Down:
        return TabNavigation::Key::Down;
    default:
        return TabNavigation::Key::Other;
    }
}

QTabBar::Shape ShapeOf(unsigned style) {
    const bool below = (style & TabGeometry::TabStyleBottom) != 0;
    const bool vertical = (style & TabGeometry::TabStyleVertical) != 0;
    if (vertical)
        return below ? QTabBar::RoundedEast : QTabBar::RoundedWest;
    return below ? QTabBar::RoundedSouth : QTabBar::RoundedNorth;
}

} // namespace

CCustomTabCtrl::CCustomTabCtrl(QWidget* parent, unsigned tabStyle)
    : QWidget(parent), m_tabStyle(tabStyle), m_tabBar(new CustomTabBar(this)) {
    setFocusPolicy(Qt::StrongFocus);
    m_tabBar->setShape(ShapeOf(tabStyle));
    m_tabBar->SetBottomStyle((tabStyle & TabGeometry::TabStyleBottom) != 0);
    m_tabBar->SetPageEnabledQuery([this](int index) { return IsPageEnabled(index); });
    connect(m_tabBar, &QTabBar::currentChanged, this, &CCustomTabCtrl::OnTabClicked);
    LayOutTabBar();
}

CCustomTabCtrl::~CCustomTabCtrl() {
    for (int i = GetPageCount() - 1; i >= 0; --i)
        RemovePage(i);
    for (const Adopted& adopted : m_adopted) {
        if (!adopted.window.isNull() && adopted.window->parentWidget() == this)
            adopted.window->setParent(adopted.formerParent.data());
    }
}

int CCustomTabCtrl::AddPage(const QString& text, CCustomPropPage* page, bool select, int image,
                            std::uintptr_t param) {
    if (page == nullptr)
        return -1;
    QWidget* window = page->PageWindow();
    if (window != nullptr) {
        if (window->parentWidget() != this) {
            m_adopted.push_back({window, window->parentWidget()});
            window->setParent(this);
        }
        HidePage(window);
    }
    m_pages.push_back(page);
    m_params.push_back(param);
    page->SetTabCtrl(this);

    int index = -1;
    {
        const QSignalBlocker blocker(m_tabBar);
        index = m_tabBar->addTab(text);
    }
    if (image != -1)
        m_tabBar->SetTabImage(index, image);
    LayOutTabBar();
    if (window != nullptr)
        window->setGeometry(GetPageRect());

    if (!select && index != 0)
        return index;
    ShowPage(index);
    emit selectionChanged(index);
    return index;
}

bool CCustomTabCtrl::RemovePage(int index) {
    if (index < 0 || index >= GetPageCount())
        return false;
    const int newPage = TabNavigation::PageAfterRemoval(index, m_nCurrent, GetPageCount(),
                                                        [this](int i) { return IsPageEnabled(i); });
    if (index == m_nCurrent) {
        m_nCurrent = -1;
        m_hWndCurrent = nullptr;
        m_pCurrentPage = nullptr;
    }
    CCustomPropPage* page = m_pages[static_cast<std::size_t>(index)];
    if (page != nullptr && page->PageWindow() != nullptr)
        HidePage(page->PageWindow());
    OnDeletePage(index);
    m_pages.erase(m_pages.begin() + index);
    m_params.erase(m_params.begin() + index);
    {
        const QSignalBlocker blocker(m_tabBar);
        m_tabBar->removeTab(index);
    }

    if (newPage == TabNavigation::KeepCurrent || newPage == -1) {
        // The current page stays current; its index follows it past the removed tab.
        if (m_nCurrent > index)
            --m_nCurrent;
        {
            const QSignalBlocker blocker(m_tabBar);
            m_tabBar->setCurrentIndex(m_nCurrent);
        }
        LayOutTabBar();
        LayOutPages();
    } else {
        ShowPage(newPage);
    }
    return true;
}

void CCustomTabCtrl::ShowPage(int index) {
    if (index < 0 || index >= GetPageCount() || index == m_nCurrent)
        return;
    if (!m_hWndCurrent.isNull())
        HidePage(m_hWndCurrent.data());
    m_pCurrentPage = m_pages[static_cast<std::size_t>(index)];
    m_hWndCurrent = m_pCurrentPage != nullptr ? m_pCurrentPage->PageWindow() : nullptr;
    if (!m_hWndCurrent.isNull()) {
        m_hWndCurrent->setEnabled(true);
        m_hWndCurrent->show();
        m_hWndCurrent->update();
    }
    m_nCurrent = index;
    const QSignalBlocker blocker(m_tabBar);
    m_tabBar->setCurrentIndex(index);
}

QRect CCustomTabCtrl::GetPageRect() const {
    const QSize firstTab = m_tabBar->count() > 0 ? m_tabBar->tabRect(0).size() : QSize(0, 0);
    return TabGeometry::PageRect(rect(), firstTab, 1, m_tabStyle, Margin, Padding);
}

bool CCustomTabCtrl::IsPageEnabled(int) const {
    return true;
}

void CCustomTabCtrl::OnDeletePage(int) {}

bool CCustomTabCtrl::ApplyAll() {
    bool allApplied = true;
    for (int i = 0; i < GetPageCount(); ++i) {
        CCustomPropPage* page = m_pages[static_cast<std::size_t>(i)];
        if (page != nullptr && IsPageEnabled(i))
            allApplied = page->OnApply() && allApplied;
    }
    return allApplied;
}

void CCustomTabCtrl::CancelAll() {
    for (int i = 0; i < GetPageCount(); ++i) {
        CCustomPropPage* page = m_pages[static_cast<std::size_t>(i)];
        if (page != nullptr && IsPageEnabled(i))
            page->ClearModified();
    }
}

CCustomPropPage* CCustomTabCtrl::GetPage(int index) const {
    if (index < 0 || index >= GetPageCount())
        return nullptr;
    return m_pages[static_cast<std::size_t>(index)];
}

std::uintptr_t CCustomTabCtrl::GetTabParam(int index) const {
    if (index < 0 || index >= GetPageCount())
        return 0;
    return m_params[static_cast<std::size_t>(index)];
}

void CCustomTabCtrl::SetImageList(std::vector<QPixmap> images) {
    m_tabBar->SetImageList(std::move(images));
    LayOutTabBar();
    LayOutPages();
}

void CCustomTabCtrl::OnTabClicked(int index) {
    ShowPage(index);
    emit selectionChanged(index);
}

bool CCustomTabCtrl::event(QEvent* event) {
    // Tab is the control's own key (into the page), not the dialog's focus chain. Shift+Tab
    // stays the dialog's, so that the focus can always leave the control backwards.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab &&
        HandleKey(static_cast<QKeyEvent*>(event)))
        return true;
    return QWidget::event(event);
}

void CCustomTabCtrl::keyPressEvent(QKeyEvent* event) {
    if (HandleKey(event))
        event->accept();
    else
        QWidget::keyPressEvent(event);
}

bool CCustomTabCtrl::HandleKey(QKeyEvent* event) {
    const bool ctrl = (event->modifiers() & Qt::ControlModifier) != 0;
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    const auto enabled = [this](int i) { return IsPageEnabled(i); };
    switch (TabNavigation::ActionFor(KeyOf(event->key()), ctrl, shift)) {
    case TabNavigation::Action::None:
        return false;
    case TabNavigation::Action::FocusNextControl:
        focusNextChild();
        return true;
    case TabNavigation::Action::FocusPreviousControl:
        focusPreviousChild();
        return true;
    case TabNavigation::Action::ShowNext:
        ShowPage(TabNavigation::Next(m_nCurrent, GetPageCount(), enabled));
        return true;
    case TabNavigation::Action::ShowPrevious:
        ShowPage(TabNavigation::Previous(m_nCurrent, GetPageCount(), enabled));
        return true;
    case TabNavigation::Action::FocusPage:
        FocusCurrentPage();
        OnPageSelected();
        return true;
    }
    return false;
}

// Like a dialog taking the focus: the first control of the page that takes Tab, or the
// page itself when it has none.
void CCustomTabCtrl::FocusCurrentPage() {
    QWidget* page = m_hWndCurrent.data();
    if (page == nullptr)
        return;
    QWidget* target = page;
    QWidget* candidate = page->nextInFocusChain();
    for (int guard = 0; candidate != nullptr && candidate != page && guard < 10000; ++guard) {
        if (page->isAncestorOf(candidate) && (candidate->focusPolicy() & Qt::TabFocus) != 0 &&
            candidate->isVisibleTo(page) && candidate->isEnabled()) {
            target = candidate;
            break;
        }
        candidate = candidate->nextInFocusChain();
    }
    target->setFocus(Qt::TabFocusReason);
}

void CCustomTabCtrl::HidePage(QWidget* window) {
    window->setEnabled(false);
    window->hide();
}

void CCustomTabCtrl::LayOutTabBar() {
    const QSize hint = m_tabBar->sizeHint();
    const bool below = (m_tabStyle & TabGeometry::TabStyleBottom) != 0;
    const bool vertical = (m_tabStyle & TabGeometry::TabStyleVertical) != 0;
    if (vertical)
        m_tabBar->setGeometry(below ? width() - hint.width() : 0, 0, hint.width(), height());
    else
        m_tabBar->setGeometry(0, below ? height() - hint.height() : 0, width(), hint.height());
}

void CCustomTabCtrl::LayOutPages() {
    const QRect pageRect = GetPageRect();
    for (CCustomPropPage* page : m_pages) {
        if (page != nullptr && page->PageWindow() != nullptr)
            page->PageWindow()->setGeometry(pageRect);
    }
}

void CCustomTabCtrl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    // The frame round the pages, on the side away from the tabs' row.
    QStyleOptionTabWidgetFrame frame;
    frame.initFrom(this);
    frame.shape = m_tabBar->shape();
    const QRect bar = m_tabBar->geometry();
    QRect pane = rect();
    switch (m_tabBar->shape()) {
    case QTabBar::RoundedSouth:
        pane.setBottom(bar.top() - 1);
        break;
    case QTabBar::RoundedWest:
        pane.setLeft(bar.right() + 1);
        break;
    case QTabBar::RoundedEast:
        pane.setRight(bar.left() - 1);
        break;
    default:
        pane.setTop(bar.bottom() + 1);
        break;
    }
    frame.rect = pane;
    style()->drawPrimitive(QStyle::PE_FrameTabWidget, &frame, &painter, this);
}

void CCustomTabCtrl::resizeEvent(QResizeEvent* event) {
    LayOutTabBar();
    LayOutPages();
    QWidget::resizeEvent(event);
}
