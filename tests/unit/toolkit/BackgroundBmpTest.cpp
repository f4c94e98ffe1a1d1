// The wizard's background bitmap: copied, or stretched by the integer DPI rule.

#include "toolkit/BackgroundBmp.h"
#include "ToolkitTestApp.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <gtest/gtest.h>

namespace {
using Target = BackgroundBmp::Target;
const QSize Client(500, 400);
const QSize Banner(449, 49);
} // namespace

TEST(BackgroundBmp, At96DotsPerInchItNeverStretchesWhateverScaleSays) {
    EXPECT_EQ(BackgroundBmp::TargetFor(Client, Banner, 96, true, true),
              (Target{QRect(0, 0, 449, 49), false}));
    EXPECT_EQ(BackgroundBmp::TargetFor(Client, Banner, 96, true, false),
              (Target{QRect(0, 0, 449, 49), false}));
    EXPECT_EQ(BackgroundBmp::TargetFor(Client, Banner, 96, false, false),
              (Target{QRect(0, 0, 449, 49), false}));
}

TEST(BackgroundBmp, WithoutScaleItNeverStretches) {
    EXPECT_EQ(BackgroundBmp::TargetFor(Client, Banner, 144, false, true),
              (Target{QRect(0, 0, 449, 49), false}));
}

TEST(BackgroundBmp, At120DotsPerInchScaleByDpiUsesAFactorOfOne) {
    // 120 / 96 is 1 in integers: the full width, the bitmap's own height.
    EXPECT_EQ(BackgroundBmp::TargetFor(Client, Banner, 120, true, true),
              (Target{QRect(0, 0, 500, 49), true}));
}

TEST(BackgroundBmp, At192DotsPerInchScaleByDpiDoublesTheHeight) {
    EXPECT_EQ(BackgroundBmp::TargetFor(Client, Banner, 192, true, true),
              (Target{QRect(0, 0, 500, 98), true}));
}

TEST(BackgroundBmp, WithoutScaleByDpiItStretchesToTheWholeClient) {
    EXPECT_EQ(BackgroundBmp::TargetFor(Client, Banner, 120, true, false),
              (Target{QRect(0, 0, 500, 400), true}));
}

class BackgroundBmpDrawTest : public ::testing::Test {
protected:
    void SetUp() override { ToolkitTestApp(); }
    QImage Draw(const BackgroundBmp& background, QColor fill, bool doFill, bool scale,
                bool scaleByDpi, int dpi) {
        QImage image(Client, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        background.Draw(painter, QRect(QPoint(0, 0), Client), fill, doFill, scale, scaleByDpi, dpi);
        return image;
    }
};

TEST_F(BackgroundBmpDrawTest, TheFillComesFirstAndTheBitmapAtItsOwnSizeAt96) {
    BackgroundBmp background;
    ASSERT_TRUE(background.Load(304, 1.0));
    const QImage image = Draw(background, QColor(1, 2, 3), true, true, true, 96);
    const QImage banner = background.Bitmap().toImage();
    EXPECT_EQ(image.pixelColor(10, 10), banner.pixelColor(10, 10));
    EXPECT_EQ(image.pixelColor(460, 10), QColor(1, 2, 3));
    EXPECT_EQ(image.pixelColor(10, 60), QColor(1, 2, 3));
}

TEST_F(BackgroundBmpDrawTest, WithoutFillTheClientKeepsWhatWasThere) {
    BackgroundBmp background;
    ASSERT_TRUE(background.Load(304, 1.0));
    const QImage image = Draw(background, Qt::white, false, false, false, 120);
    EXPECT_EQ(image.pixelColor(460, 10), QColor(Qt::magenta));
}

TEST_F(BackgroundBmpDrawTest, StretchedItCoversTheWholeWidth) {
    BackgroundBmp background;
    ASSERT_TRUE(background.Load(304, 1.0));
    const QImage image = Draw(background, QColor(1, 2, 3), true, true, true, 120);
    EXPECT_NE(image.pixelColor(495, 10), QColor(1, 2, 3));
    EXPECT_EQ(image.pixelColor(495, 60), QColor(1, 2, 3));
}

TEST_F(BackgroundBmpDrawTest, WithNoBitmapOnlyTheFillIsDrawn) {
    BackgroundBmp background;
    EXPECT_FALSE(background.Load(257, 1.0));
    const QImage image = Draw(background, QColor(1, 2, 3), true, true, true, 120);
    EXPECT_EQ(image.pixelColor(10, 10), QColor(1, 2, 3));
}

TEST_F(BackgroundBmpDrawTest, AWindowIsDrawnWithItsOwnRectangleAndDpi) {
    BackgroundBmp background;
    ASSERT_TRUE(background.Load(304, 1.0));
    QWidget window;
    window.resize(Client);
    QImage image(Client, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    {
        QPainter painter(&image);
        background.Draw(window, painter, QColor(1, 2, 3), true, true, true);
    }
    EXPECT_EQ(window.logicalDpiX(), 96);
    // At 96 dots per inch: its own size, the fill around it.
    EXPECT_EQ(image.pixelColor(10, 10), background.Bitmap().toImage().pixelColor(10, 10));
    EXPECT_EQ(image.pixelColor(495, 10), QColor(1, 2, 3));
}
