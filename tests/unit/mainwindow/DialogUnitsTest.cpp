// Dialog units to pixels, against the numbers that the window system gives for the classic
// dialog font (base units 6 by 13).

#include "mainwindow/DialogUnits.h"

#include "MainWindowTestApp.h"

#include <QFont>

#include <gtest/gtest.h>

TEST(DialogUnits, TheMainDialogIs782By449PixelsWithTheClassicFont) {
    const DialogUnits units(6, 13);
    EXPECT_EQ(units.ToPixelsX(521), 782);
    EXPECT_EQ(units.ToPixelsY(276), 449);
}

TEST(DialogUnits, EachNumberOfAControlIsRoundedOnItsOwn) {
    const DialogUnits units(6, 13);
    // 7.5, 97.5, 121.5 and 30.875 round to the nearest pixel, halves away from zero.
    EXPECT_EQ(units.ToPixels(QRect(5, 60, 81, 19)), QRect(8, 98, 122, 31));
    // A window button: 14 by 11 units are 21 by 18 pixels.
    EXPECT_EQ(units.ToPixels(QRect(470, 3, 14, 11)), QRect(705, 5, 21, 18));
    // The right edge is not converted: x and width are, separately.
    EXPECT_EQ(units.ToPixels(QRect(1, 1, 1, 1)), QRect(2, 2, 2, 2));
}

TEST(DialogUnits, TheDefaultIsTheClassicFont) {
    EXPECT_EQ(DialogUnits(), DialogUnits(6, 13));
}

TEST(DialogUnits, BaseUnitsComeFromTheAlphabetsWidthRoundedHalfUp) {
    // 52 letters: (extent / 26 + 1) / 2 is the average width rounded half up.
    EXPECT_EQ(DialogUnits::FromMetrics(312, 13), DialogUnits(6, 13));
    EXPECT_EQ(DialogUnits::FromMetrics(337, 13), DialogUnits(6, 13));
    EXPECT_EQ(DialogUnits::FromMetrics(338, 16), DialogUnits(7, 16));
    // An average of exactly 5.5 rounds up, just below it down.
    EXPECT_EQ(DialogUnits::FromMetrics(286, 13), DialogUnits(6, 13));
    EXPECT_EQ(DialogUnits::FromMetrics(285, 13), DialogUnits(5, 13));
    EXPECT_EQ(DialogUnits::FromMetrics(260, 13), DialogUnits(5, 13));
}

TEST(DialogUnits, ALargerFontGivesLargerUnits) {
    MainWindowTestApp();
    QFont small;
    small.setPixelSize(11);
    QFont large = small;
    large.setPixelSize(22);
    const DialogUnits a = DialogUnits::FromFont(small);
    const DialogUnits b = DialogUnits::FromFont(large);
    EXPECT_GT(a.BaseX(), 0);
    EXPECT_GT(a.BaseY(), 0);
    EXPECT_GT(b.BaseX(), a.BaseX());
    EXPECT_GT(b.BaseY(), a.BaseY());
}
