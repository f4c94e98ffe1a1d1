// Widgets that paint through an off-screen picture: no erase before, one copy after.

#include "toolkit/COffscreenDraw.h"
#include "ToolkitTestApp.h"

#include <QPixmap>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

// Paints a white fill and then its colour over it, as the skin and the buttons do.
class HoverSwatch : public QWidget, public COffscreenDraw<HoverSwatch> {
public:
    HoverSwatch() {
        OffscreenSetUp();
        resize(60, 40);
    }
    void DoPaint(QPainter& painter) {
        ++paints;
        paintedOnWidget = painter.device() == this;
        painter.fillRect(rect(), Qt::white);
        painter.fillRect(rect(), hover ? QColor(Qt::blue) : QColor(Qt::gray));
    }
    void paintEvent(QPaintEvent* event) override { OffscreenPaint(event); }

    bool hover = false;
    int paints = 0;
    bool paintedOnWidget = true;
};

} // namespace

TEST(COffscreenDraw, TheWidgetIsNotErasedBeforeItPaints) {
    ToolkitTestApp();
    HoverSwatch swatch;
    EXPECT_TRUE(swatch.testAttribute(Qt::WA_OpaquePaintEvent));
}

TEST(COffscreenDraw, DoPaintDrawsIntoAnOffscreenPictureNotOnTheWidget) {
    ToolkitTestApp();
    HoverSwatch swatch;
    const QImage first = swatch.grab().toImage();
    EXPECT_GE(swatch.paints, 1);
    EXPECT_FALSE(swatch.paintedOnWidget);
    EXPECT_EQ(first.pixelColor(5, 5), QColor(Qt::gray));
}

// The white fill under each picture stays in the off-screen picture (see CMemoryDCTest for
// the copy); a hover change repaints from one finished picture to the next.
TEST(COffscreenDraw, AHoverChangeRepaintsOffscreenToTheNextFinishedPicture) {
    ToolkitTestApp();
    HoverSwatch swatch;
    swatch.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&swatch));
    const int before = swatch.paints;
    swatch.hover = true;
    swatch.repaint();
    EXPECT_EQ(swatch.paints, before + 1);
    EXPECT_FALSE(swatch.paintedOnWidget);
    const QImage after = swatch.grab().toImage();
    EXPECT_EQ(after.pixelColor(5, 5), QColor(Qt::blue));
    for (int y = 0; y < after.height(); ++y)
        for (int x = 0; x < after.width(); ++x)
            ASSERT_NE(after.pixelColor(x, y), QColor(Qt::white)) << x << "," << y;
}
