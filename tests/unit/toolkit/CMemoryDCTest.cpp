// Drawing off screen and copying in one piece.

#include "toolkit/CMemoryDC.h"
#include "ToolkitTestApp.h"

#include <QImage>

#include <gtest/gtest.h>

TEST(CMemoryDC, NothingReachesTheTargetUntilTheEnd) {
    ToolkitTestApp();
    QImage target(100, 60, QImage::Format_ARGB32_Premultiplied);
    target.fill(Qt::red);
    QPainter painter(&target);
    {
        CMemoryDC memory(painter, QRect(10, 10, 50, 30), 1.0);
        memory.dc().fillRect(QRect(10, 10, 50, 30), Qt::white);
        // The white under the picture never shows on the target.
        EXPECT_EQ(target.pixelColor(20, 20), QColor(Qt::red));
        memory.dc().fillRect(QRect(10, 10, 50, 30), Qt::blue);
        EXPECT_EQ(target.pixelColor(20, 20), QColor(Qt::red));
    }
    painter.end();
    EXPECT_EQ(target.pixelColor(20, 20), QColor(Qt::blue));
    EXPECT_EQ(target.pixelColor(10, 10), QColor(Qt::blue));
    EXPECT_EQ(target.pixelColor(59, 39), QColor(Qt::blue));
    // Outside the rectangle the target is untouched.
    EXPECT_EQ(target.pixelColor(60, 40), QColor(Qt::red));
    EXPECT_EQ(target.pixelColor(9, 20), QColor(Qt::red));
}

TEST(CMemoryDC, TheMemoryPainterUsesTheTargetsCoordinates) {
    ToolkitTestApp();
    QImage target(100, 60, QImage::Format_ARGB32_Premultiplied);
    target.fill(Qt::red);
    QPainter painter(&target);
    {
        CMemoryDC memory(painter, QRect(40, 20, 20, 20), 2.0);
        memory.dc().fillRect(QRect(0, 0, 100, 60), Qt::green);
        memory.dc().fillRect(QRect(50, 30, 1, 1), Qt::black);
        EXPECT_EQ(memory.rect(), QRect(40, 20, 20, 20));
    }
    painter.end();
    EXPECT_EQ(target.pixelColor(45, 25), QColor(Qt::green));
    EXPECT_EQ(target.pixelColor(50, 30), QColor(Qt::black));
    EXPECT_EQ(target.pixelColor(39, 25), QColor(Qt::red));
}
