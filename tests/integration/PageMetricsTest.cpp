// Where a page of the main window stands, from the page metrics and the window's size.
#include "PageMetrics.h"

#include <gtest/gtest.h>

TEST(PageMetrics, APageTakesTheAreaRightOfTheButtonsAndBelowTheTitleRow) {
    const PageMetrics metrics(0, 143, 2, 65, 18);
    EXPECT_EQ(metrics.PageRect(782, 449), QRect(143, 65, 637, 366));
}

TEST(PageMetrics, WithoutSetPageMetricsThePageStandsWhereTheHostsValuesPutIt) {
    EXPECT_EQ(PageMetrics().PageRect(782, 449), PageMetrics(0, 143, 2, 65, 18).PageRect(782, 449));
}

TEST(PageMetrics, AWindowSmallerThanTheMarginsGivesAnEmptyPage) {
    const PageMetrics metrics(0, 143, 2, 65, 18);
    EXPECT_EQ(metrics.PageRect(100, 50), QRect(143, 65, 0, 0));
}

TEST(PageMetrics, NegativeMetricsCountAsZero) {
    const PageMetrics metrics(0, -10, -1, -3, -4);
    EXPECT_EQ(metrics.PageRect(300, 200), QRect(0, 0, 300, 200));
}
