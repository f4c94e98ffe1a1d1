// The tab control on the offscreen platform: pages shown and hidden, the keys, clicks on
// enabled and disabled tabs, the page rectangle, apply and cancel, and the tabs' labels.

#include "toolkit/CCustomTabCtrl.h"
#include "toolkit/CCustomPropPage.h"
#include "toolkit/CustomTabBar.h"
#include "toolkit/TabGeometry.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <set>

namespace {

class Page : public QWidget, public CCustomPropPage {
public:
    explicit Page(QWidget* parent) : QWidget(parent), CCustomPropPage(this) {
        edit = new QLineEdit(this);
        edit->move(5, 5);
    }
    void Refresh() override {}
    bool OnApply() override {
        ++applied;
        CCustomPropPage::OnApply();
        return applyAnswer;
    }
    QLineEdit* edit;
    int applied = 0;
    bool applyAnswer = true;
};

class TabCtrl : public CCustomTabCtrl {
public:
    using CCustomTabCtrl::CCustomTabCtrl;
    void OnPageSelected() override { ++selected; }
    bool IsPageEnabled(int index) const override { return disabled.count(index) == 0; }
    int selected = 0;
    std::set<int> disabled;
};

class TabControl : public ::testing::Test {
protected:
    void SetUp() override {
        ToolkitTestApp();
        dialog = std::make_unique<QWidget>();
        dialog->resize(420, 340);
        before = new QLineEdit(dialog.get());
        before->setGeometry(5, 5, 100, 20);
        tabs = new TabCtrl(dialog.get());
        tabs->setGeometry(10, 30, 400, 260);
        after = new QLineEdit(dialog.get());
        after->setGeometry(5, 300, 100, 20);
        for (auto& page : pages)
            page = new Page(dialog.get());
        QWidget::setTabOrder(before, tabs);
        QWidget::setTabOrder(tabs, after);
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    }

    void AddAll() {
        tabs->AddPage(QStringLiteral("Version"), pages[0]);
        tabs->AddPage(QStringLiteral("Updates"), pages[1]);
        tabs->AddPage(QStringLiteral("Credits"), pages[2]);
    }

    void Activate() {
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        tabs->setFocus();
        ASSERT_TRUE(tabs->hasFocus());
    }

    bool Shown(int i) const { return pages[i]->isVisible() && pages[i]->isEnabled(); }

    std::unique_ptr<QWidget> dialog;
    QLineEdit* before = nullptr;
    QLineEdit* after = nullptr;
    TabCtrl* tabs = nullptr;
    std::array<Page*, 3> pages{};
};

} // namespace

TEST_F(TabControl, FirstTabAddedIsSelectedEvenWhenSelectIsFalse) {
    QSignalSpy changed(tabs, &CCustomTabCtrl::selectionChanged);
    EXPECT_EQ(tabs->AddPage(QStringLiteral("Version"), pages[0], false), 0);
    EXPECT_EQ(tabs->GetCurrentIndex(), 0);
    EXPECT_EQ(tabs->TabBar()->currentIndex(), 0);
    EXPECT_TRUE(Shown(0));
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).toInt(), 0);
}

TEST_F(TabControl, LaterPagesAreShownOnlyWhenSelected) {
    QSignalSpy changed(tabs, &CCustomTabCtrl::selectionChanged);
    tabs->AddPage(QStringLiteral("Version"), pages[0]);
    EXPECT_EQ(tabs->AddPage(QStringLiteral("Updates"), pages[1], false), 1);
    EXPECT_EQ(tabs->GetCurrentIndex(), 0);
    EXPECT_FALSE(pages[1]->isVisible());
    EXPECT_FALSE(pages[1]->isEnabled());

    EXPECT_EQ(tabs->AddPage(QStringLiteral("Credits"), pages[2], true), 2);
    EXPECT_EQ(tabs->GetCurrentIndex(), 2);
    EXPECT_TRUE(Shown(2));
    EXPECT_FALSE(pages[0]->isVisible());
    EXPECT_FALSE(pages[0]->isEnabled());
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(TabControl, PagesFillThePageRectangleInsideTheControl) {
    AddAll();
    const QSize firstTab = tabs->TabBar()->tabRect(0).size();
    const QRect expected = TabGeometry::PageRect(tabs->rect(), firstTab, 1, 0, 2, 4);
    EXPECT_EQ(tabs->GetPageRect(), expected);
    EXPECT_EQ(expected.top(), firstTab.height() + 4);
    for (Page* page : pages) {
        EXPECT_EQ(page->parentWidget(), tabs);
        EXPECT_EQ(page->geometry(), expected);
    }
    tabs->resize(300, 200);
    EXPECT_EQ(pages[1]->geometry(),
              TabGeometry::PageRect(QRect(0, 0, 300, 200), firstTab, 1, 0, 2, 4));
}

TEST_F(TabControl, TabsBelowPutThePagesAboveThem) {
    auto* below = new TabCtrl(dialog.get(), TabGeometry::TabStyleBottom);
    below->setGeometry(0, 0, 400, 260);
    Page* page = new Page(dialog.get());
    below->AddPage(QStringLiteral("Version"), page);
    const QSize firstTab = below->TabBar()->tabRect(0).size();
    EXPECT_EQ(page->geometry(), QRect(2, 2, 396, 260 - 2 - firstTab.height() - 4));
    EXPECT_EQ(below->TabBar()->shape(), QTabBar::RoundedSouth);
    EXPECT_GE(below->TabBar()->geometry().top(), page->geometry().bottom());
}

TEST_F(TabControl, TabsAtTheLeftPutThePagesBesideThem) {
    auto* side = new TabCtrl(dialog.get(), TabGeometry::TabStyleVertical);
    side->setGeometry(0, 0, 400, 260);
    Page* page = new Page(dialog.get());
    side->AddPage(QStringLiteral("Version"), page);
    const int tabWidth = side->TabBar()->tabRect(0).width();
    EXPECT_EQ(page->geometry(), QRect(tabWidth + 4, 2, 400 - 2 - tabWidth - 4, 256));
    EXPECT_EQ(side->TabBar()->shape(), QTabBar::RoundedWest);
    EXPECT_LE(side->TabBar()->geometry().right(), page->geometry().left());
}

TEST_F(TabControl, RightOnTheLastTabWrapsToTheFirst) {
    AddAll();
    Activate();
    tabs->ShowPage(2);
    QTest::keyClick(tabs, Qt::Key_Right);
    EXPECT_EQ(tabs->GetCurrentIndex(), 0);
    EXPECT_TRUE(Shown(0));
    EXPECT_FALSE(pages[2]->isVisible());
    EXPECT_TRUE(tabs->hasFocus());
}

TEST_F(TabControl, LeftOnTheFirstTabWrapsToTheLastAndDisabledPagesAreSkipped) {
    AddAll();
    Activate();
    QTest::keyClick(tabs, Qt::Key_Left);
    EXPECT_EQ(tabs->GetCurrentIndex(), 2);
    tabs->disabled = {1};
    QTest::keyClick(tabs, Qt::Key_Left);
    EXPECT_EQ(tabs->GetCurrentIndex(), 0);
    QTest::keyClick(tabs, Qt::Key_Right);
    EXPECT_EQ(tabs->GetCurrentIndex(), 2);
}

TEST_F(TabControl, CtrlPageKeysChangeThePage) {
    AddAll();
    Activate();
    QTest::keyClick(tabs, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tabs->GetCurrentIndex(), 1);
    QTest::keyClick(tabs, Qt::Key_PageDown, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs->GetCurrentIndex(), 0);
    QTest::keyClick(tabs, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(tabs->GetCurrentIndex(), 2);
    EXPECT_TRUE(tabs->hasFocus());
}

TEST_F(TabControl, PageKeysAloneMoveTheFocusToTheNextControl) {
    AddAll();
    Activate();
    QTest::keyClick(tabs, Qt::Key_PageDown);
    EXPECT_TRUE(after->hasFocus());
    EXPECT_EQ(tabs->GetCurrentIndex(), 0);
    tabs->setFocus();
    QTest::keyClick(tabs, Qt::Key_PageUp, Qt::ShiftModifier);
    EXPECT_TRUE(before->hasFocus());
}

TEST_F(TabControl, TabMovesTheFocusIntoTheCurrentPage) {
    AddAll();
    tabs->ShowPage(1);
    Activate();
    QTest::keyClick(tabs, Qt::Key_Tab);
    EXPECT_TRUE(pages[1]->edit->hasFocus());
    EXPECT_EQ(tabs->selected, 1);
}

TEST_F(TabControl, DownMovesTheFocusIntoTheCurrentPage) {
    AddAll();
    Activate();
    QTest::keyClick(tabs, Qt::Key_Down);
    EXPECT_TRUE(pages[0]->edit->hasFocus());
    EXPECT_EQ(tabs->selected, 1);
}

TEST_F(TabControl, ShiftTabLeavesBackwards) {
    AddAll();
    Activate();
    QTest::keyClick(tabs, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(before->hasFocus());
    EXPECT_EQ(tabs->selected, 0);
}

TEST_F(TabControl, ClickOnATabShowsItsPageAndTellsTheDialog) {
    AddAll();
    QSignalSpy changed(tabs, &CCustomTabCtrl::selectionChanged);
    QTest::mouseClick(tabs->TabBar(), Qt::LeftButton, {}, tabs->TabBar()->tabRect(1).center());
    EXPECT_EQ(tabs->GetCurrentIndex(), 1);
    EXPECT_TRUE(Shown(1));
    EXPECT_FALSE(pages[0]->isVisible());
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).toInt(), 1);
}

TEST_F(TabControl, ClickOnADisabledPagesTabIsRefused) {
    AddAll();
    tabs->disabled = {2};
    QSignalSpy changed(tabs, &CCustomTabCtrl::selectionChanged);
    QTest::mouseClick(tabs->TabBar(), Qt::LeftButton, {}, tabs->TabBar()->tabRect(2).center());
    EXPECT_EQ(tabs->GetCurrentIndex(), 0);
    EXPECT_EQ(tabs->TabBar()->currentIndex(), 0);
    EXPECT_TRUE(Shown(0));
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(TabControl, ShowPageIgnoresTheCurrentAndOutOfRange) {
    AddAll();
    tabs->ShowPage(1);
    tabs->ShowPage(1);
    tabs->ShowPage(3);
    tabs->ShowPage(-1);
    EXPECT_EQ(tabs->GetCurrentIndex(), 1);
    EXPECT_EQ(tabs->GetCurrentPage(), pages[1]);
}

TEST_F(TabControl, RemovingTheCurrentPageShowsThePageBeforeIt) {
    AddAll();
    tabs->ShowPage(2);
    EXPECT_TRUE(tabs->RemovePage(2));
    EXPECT_EQ(tabs->GetPageCount(), 2);
    EXPECT_EQ(tabs->GetCurrentIndex(), 1);
    EXPECT_TRUE(Shown(1));
    EXPECT_FALSE(pages[2]->isVisible());
    EXPECT_EQ(tabs->TabBar()->count(), 2);
}

TEST_F(TabControl, RemovingAnEarlierPageKeepsTheCurrentPage) {
    AddAll();
    tabs->ShowPage(2);
    EXPECT_TRUE(tabs->RemovePage(0));
    EXPECT_EQ(tabs->GetCurrentPage(), pages[2]);
    EXPECT_EQ(tabs->GetCurrentIndex(), 1);
    EXPECT_EQ(tabs->TabBar()->currentIndex(), 1);
    EXPECT_TRUE(Shown(2));
}

TEST_F(TabControl, RemovingOutOfRangeDoesNothing) {
    AddAll();
    EXPECT_FALSE(tabs->RemovePage(3));
    EXPECT_FALSE(tabs->RemovePage(-1));
    EXPECT_EQ(tabs->GetPageCount(), 3);
}

TEST_F(TabControl, ApplyAllAsksEveryEnabledPageEvenAfterAFailure) {
    AddAll();
    tabs->disabled = {2};
    pages[0]->applyAnswer = false;
    EXPECT_FALSE(tabs->ApplyAll());
    EXPECT_EQ(pages[0]->applied, 1);
    EXPECT_EQ(pages[1]->applied, 1);
    EXPECT_EQ(pages[2]->applied, 0);
    pages[0]->applyAnswer = true;
    EXPECT_TRUE(tabs->ApplyAll());
}

TEST_F(TabControl, CancelAllClearsTheFlagOfEnabledPagesOnly) {
    AddAll();
    tabs->disabled = {1};
    for (Page* page : pages)
        page->SetModified(1);
    tabs->CancelAll();
    EXPECT_EQ(pages[0]->IsModified(), 0);
    EXPECT_EQ(pages[1]->IsModified(), 1);
    EXPECT_EQ(pages[2]->IsModified(), 0);
}

TEST_F(TabControl, TabKeepsItsParam) {
    tabs->AddPage(QStringLiteral("Version"), pages[0], false, -1, 77);
    EXPECT_EQ(tabs->GetTabParam(0), 77u);
    EXPECT_EQ(tabs->GetTabParam(1), 0u);
}

TEST_F(TabControl, DestroyedControlGivesThePagesBackToTheirDialog) {
    AddAll();
    tabs->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (Page* page : pages) {
        EXPECT_EQ(page->parentWidget(), dialog.get());
        EXPECT_FALSE(page->isVisible());
    }
}

namespace {

int CountColour(const QImage& image, const QRect& area, QColor colour) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += QColor(image.pixel(x, y)) == colour ? 1 : 0;
    return count;
}

} // namespace

TEST_F(TabControl, DisabledTabIsDrawnEmbossedAndEnabledTabsInButtonText) {
    const QColor text(255, 0, 0), light(0, 255, 0), grey(0, 0, 255);
    QPalette palette = tabs->palette();
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Light, light);
    palette.setColor(QPalette::Disabled, QPalette::Text, grey);
    tabs->setPalette(palette);
    tabs->AddPage(QStringLiteral("IIIIII"), pages[0]);
    tabs->AddPage(QStringLiteral("IIIIII"), pages[1]);
    tabs->disabled = {1};
    tabs->TabBar()->update();

    const QImage image = tabs->TabBar()->grab().toImage();
    const QRect enabled = tabs->TabBar()->tabRect(0);
    const QRect disabled = tabs->TabBar()->tabRect(1);
    EXPECT_GT(CountColour(image, enabled, text), 0);
    EXPECT_EQ(CountColour(image, enabled, grey), 0);
    EXPECT_EQ(CountColour(image, disabled, text), 0);
    EXPECT_GT(CountColour(image, disabled, grey), 0);
    EXPECT_GT(CountColour(image, disabled, light), CountColour(image, enabled, light));
}
