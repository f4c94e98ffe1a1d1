// The tab control's row of tabs on its own: images with their room, the refusal of a click
// on a page that is switched off, and no tab change by the wheel.

#include "toolkit/CustomTabBar.h"
#include "toolkit/TabLabelLayout.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace {

class TabBar : public ::testing::Test {
protected:
    void SetUp() override {
        ToolkitTestApp();
        bar = std::make_unique<CustomTabBar>();
        bar->SetPageEnabledQuery([this](int i) { return disabled.count(i) == 0; });
        bar->addTab(QStringLiteral("Version"));
        bar->addTab(QStringLiteral("Updates"));
        bar->addTab(QStringLiteral("Credits"));
        bar->resize(bar->sizeHint());
        bar->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(bar.get()));
    }

    static QPixmap Solid(QColor colour) {
        QPixmap pixmap(16, 16);
        pixmap.fill(colour);
        return pixmap;
    }

    std::unique_ptr<CustomTabBar> bar;
    std::set<int> disabled;
};

} // namespace

TEST_F(TabBar, TakesNoFocus) {
    EXPECT_EQ(bar->focusPolicy(), Qt::NoFocus);
}

TEST_F(TabBar, TabWithAnImageIsWiderByTheImagesRoom) {
    const int before = bar->tabRect(1).width();
    bar->SetImageList({Solid(Qt::magenta)});
    bar->SetTabImage(1, 0);
    EXPECT_EQ(bar->tabRect(1).width(), before + 26);
    EXPECT_EQ(bar->TabImage(1), 0);
    EXPECT_EQ(bar->TabImage(0), -1);
}

TEST_F(TabBar, ImageIndexOutsideTheListGivesNoRoom) {
    const int before = bar->tabRect(1).width();
    bar->SetImageList({Solid(Qt::magenta)});
    bar->SetTabImage(1, 4);
    EXPECT_EQ(bar->tabRect(1).width(), before);
}

TEST_F(TabBar, ImageStaysWithItsTabWhenAnEarlierTabGoes) {
    bar->SetImageList({Solid(Qt::magenta)});
    bar->SetTabImage(2, 0);
    bar->removeTab(0);
    EXPECT_EQ(bar->TabImage(1), 0);
    EXPECT_EQ(bar->TabImage(0), -1);
}

TEST_F(TabBar, ImageIsDrawnWhereTheLayoutPutsIt) {
    bar->SetImageList({Solid(QColor(255, 0, 255))});
    bar->SetTabImage(1, 0);
    bar->resize(bar->sizeHint());
    const QImage image = bar->grab().toImage();
    const auto layout = TabLabelLayout::Compute(bar->tabRect(1), false, true, true, false);
    ASSERT_TRUE(layout.drawImage);
    EXPECT_EQ(QColor(image.pixel(layout.imagePos + QPoint(8, 8))), QColor(255, 0, 255));
    EXPECT_EQ(QColor(image.pixel(layout.imagePos + QPoint(15, 15))), QColor(255, 0, 255));
}

TEST_F(TabBar, ClickOnAPageSwitchedOffIsRefused) {
    disabled = {1};
    QSignalSpy changed(bar.get(), &QTabBar::currentChanged);
    QTest::mouseClick(bar.get(), Qt::LeftButton, {}, bar->tabRect(1).center());
    EXPECT_EQ(bar->currentIndex(), 0);
    EXPECT_EQ(changed.count(), 0);
    QTest::mouseClick(bar.get(), Qt::LeftButton, {}, bar->tabRect(2).center());
    EXPECT_EQ(bar->currentIndex(), 2);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(TabBar, WheelDoesNotChangeTheTab) {
    const QPointF at = bar->tabRect(0).center();
    QWheelEvent wheel(at, bar->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(bar.get(), &wheel);
    EXPECT_EQ(bar->currentIndex(), 0);
}

TEST_F(TabBar, TabsAtTheSideAreAsWideAsTheirTextReadAcross) {
    bar->setShape(QTabBar::RoundedWest);
    bar->resize(bar->sizeHint());
    const QRect tab = bar->tabRect(1);
    EXPECT_GT(tab.width(), tab.height());
    EXPECT_GE(tab.width(), bar->fontMetrics().horizontalAdvance(QStringLiteral("Updates")));
}
