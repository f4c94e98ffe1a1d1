// Image lists cut from one bitmap, with white as the mask colour.

#include "toolkit/ImageStrip.h"

#include <gtest/gtest.h>

namespace {
QImage Strip(int width, int height, QColor colour) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}
} // namespace

TEST(ImageStrip, AStripHoldsAsManyImagesAsWholeWidthsFit) {
    EXPECT_EQ(ImageStrip::Split(Strip(48, 16, Qt::red), 16, 16, Qt::white).size(), 3);
    EXPECT_EQ(ImageStrip::Split(Strip(21, 18, Qt::red), 16, 16, Qt::white).size(), 1);
    EXPECT_EQ(ImageStrip::Split(Strip(2, 6, Qt::red), 16, 16, Qt::white).size(), 0);
}

TEST(ImageStrip, TheMaskColourBecomesTransparent) {
    QImage strip = Strip(32, 16, Qt::white);
    strip.setPixelColor(3, 4, Qt::blue);
    strip.setPixelColor(20, 5, Qt::green);
    const auto images = ImageStrip::Split(strip, 16, 16, Qt::white);
    ASSERT_EQ(images.size(), 2);
    EXPECT_EQ(images[0].size(), QSize(16, 16));
    EXPECT_EQ(qAlpha(images[0].pixel(0, 0)), 0);
    EXPECT_EQ(images[0].pixelColor(3, 4), QColor(Qt::blue));
    EXPECT_EQ(images[1].pixelColor(4, 5), QColor(Qt::green));
    EXPECT_EQ(qAlpha(images[1].pixel(3, 4)), 0);
}

TEST(ImageStrip, ATallerStripIsCutAtTheListHeightAndAShorterOneLeavesTheRestClear) {
    const auto tall = ImageStrip::Split(Strip(16, 20, Qt::red), 16, 16, Qt::white);
    ASSERT_EQ(tall.size(), 1);
    EXPECT_EQ(tall[0].height(), 16);
    const auto shortStrip = ImageStrip::Split(Strip(16, 10, Qt::red), 16, 16, Qt::white);
    ASSERT_EQ(shortStrip.size(), 1);
    EXPECT_EQ(shortStrip[0].pixelColor(0, 9), QColor(Qt::red));
    EXPECT_EQ(qAlpha(shortStrip[0].pixel(0, 10)), 0);
}

TEST(ImageStrip, NothingComesOfANullImageOrSize) {
    EXPECT_TRUE(ImageStrip::Split(QImage(), 16, 16, Qt::white).isEmpty());
    EXPECT_TRUE(ImageStrip::Split(Strip(16, 16, Qt::red), 0, 16, Qt::white).isEmpty());
}
