// The page base of the tab control: its modified flag and the tab control hearing of it.

#include "toolkit/CCustomPropPage.h"
#include "toolkit/CCustomTabCtrl.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include <gtest/gtest.h>

namespace {

class Page : public CCustomPropPage {
public:
    void Refresh() override {}
};

class TabCtrl : public CCustomTabCtrl {
public:
    void OnPageSelected() override {}
};

} // namespace

TEST(CCustomPropPage, StartsUnmodifiedAndAllowsClosing) {
    Page page;
    EXPECT_EQ(page.IsModified(), 0);
    EXPECT_TRUE(page.CanClose());
    EXPECT_EQ(page.TabCtrl(), nullptr);
    EXPECT_EQ(page.PageWindow(), nullptr);
}

TEST(CCustomPropPage, ModifiedFlagIsStoredWithoutATabControl) {
    Page page;
    page.SetModified(3);
    EXPECT_EQ(page.IsModified(), 3);
}

TEST(CCustomPropPage, ModifiedFlagIsPassedToTheTabControl) {
    ToolkitTestApp();
    TabCtrl tabs;
    QWidget window;
    Page page;
    page.SetPageWindow(&window);
    tabs.AddPage(QStringLiteral("General"), &page);
    EXPECT_EQ(page.TabCtrl(), &tabs);
    page.SetModified(1);
    EXPECT_EQ(tabs.GetValue(), 1);
    page.SetModified(0);
    EXPECT_EQ(tabs.GetValue(), 0);
    tabs.RemovePage(0);
}

TEST(CCustomPropPage, ApplyAndResetClearTheFlagAndSucceed) {
    Page page;
    page.SetModified(1);
    EXPECT_TRUE(page.OnApply());
    EXPECT_EQ(page.IsModified(), 0);
    page.SetModified(1);
    EXPECT_TRUE(page.OnReset());
    EXPECT_EQ(page.IsModified(), 0);
}

TEST(CCustomPropPage, WindowIsForgottenWhenDestroyed) {
    ToolkitTestApp();
    Page page;
    {
        QWidget window;
        page.SetPageWindow(&window);
        EXPECT_EQ(page.PageWindow(), &window);
    }
    EXPECT_EQ(page.PageWindow(), nullptr);
}
