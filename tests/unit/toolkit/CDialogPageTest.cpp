// The page record of the main window's page stack and its place beside the navigation.

#include "toolkit/CDialogPage.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include <gtest/gtest.h>

#include <memory>

TEST(CDialogPage, PageStandsRightOfTheNavigationAndBelowTheCaption) {
    EXPECT_EQ(CDialogPage::PageRect(QSize(782, 560)), QRect(143, 65, 637, 477));
    EXPECT_EQ(CDialogPage::PageRect(QSize(1000, 700)), QRect(143, 65, 855, 617));
}

TEST(CDialogPage, ParentSizeMovesTheWindow) {
    ToolkitTestApp();
    QWidget parent;
    auto* window = new QWidget(&parent);
    CDialogPage page(window);
    page.OnParentSize(QSize(782, 560));
    EXPECT_EQ(window->geometry(), QRect(143, 65, 637, 477));
}

TEST(CDialogPage, ParentSizeWithoutAWindowDoesNothing) {
    CDialogPage page;
    page.OnParentSize(QSize(782, 560));
    EXPECT_EQ(page.Window(), nullptr);
}

TEST(CDialogPage, DestroyedWindowIsForgotten) {
    ToolkitTestApp();
    auto window = std::make_unique<QWidget>();
    CDialogPage page(window.get());
    EXPECT_EQ(page.Window(), window.get());
    window.reset();
    EXPECT_EQ(page.Window(), nullptr);
    page.OnParentSize(QSize(782, 560));
}
