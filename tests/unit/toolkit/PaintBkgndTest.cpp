// The main window's skin painted into an image.

#include "toolkit/PaintBkgnd.h"
#include "ToolkitTestApp.h"
#include "toolkit/ResourceStore.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

QImage Paint(const PaintBkgnd& skin, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    skin.Draw(painter, QRect(QPoint(0, 0), size));
    return image;
}

QColor PixelOf(int id, QPoint at) {
    return ResourceStore::Bitmap(id, 1.0).toImage().pixelColor(at);
}

} // namespace

class PaintBkgndTest : public ::testing::Test {
protected:
    void SetUp() override { ToolkitTestApp(); }
};

TEST_F(PaintBkgndTest, TheMainWindowsPiecesLoadAtTheirSizes) {
    PaintBkgnd skin;
    skin.Load(PaintBkgnd::MainWindowIds(), 1.0);
    EXPECT_EQ(skin.PieceSizes(), PaintBkgndLayout::MainWindowPieces());
}

TEST_F(PaintBkgndTest, EachPieceLandsWhereTheLayoutPutsIt) {
    PaintBkgnd skin;
    skin.Load(PaintBkgnd::MainWindowIds(), 1.0);
    const QImage image = Paint(skin, QSize(780, 420));
    // Pixels well inside each piece match the piece's own picture.
    EXPECT_EQ(image.pixelColor(100, 30), PixelOf(208, QPoint(100, 30)));
    EXPECT_EQ(image.pixelColor(10, 80), PixelOf(215, QPoint(10, 11)));
    EXPECT_EQ(image.pixelColor(449 + 200, 30), PixelOf(209, QPoint(200, 30)));
    EXPECT_EQ(image.pixelColor(60, 367 + 20), PixelOf(268, QPoint(60, 20)));
    EXPECT_EQ(image.pixelColor(300, 10), PixelOf(211, QPoint(0, 10)));
    EXPECT_EQ(image.pixelColor(500, 415), PixelOf(269, QPoint(0, 2)));
    EXPECT_EQ(image.pixelColor(100, 200), PixelOf(213, QPoint(100, 1)));
    EXPECT_EQ(image.pixelColor(776, 200), PixelOf(214, QPoint(2, 1)));
    // The body between the pieces is the white fill.
    EXPECT_EQ(image.pixelColor(400, 200), QColor(Qt::white));
}

TEST_F(PaintBkgndTest, TheLastTopTileRunsOnOverTheTopRightCorner) {
    PaintBkgnd skin;
    skin.Load(PaintBkgnd::MainWindowIds(), 1.0);
    const QImage image = Paint(skin, QSize(780, 420));
    // Column 449 is the top right corner's first column, drawn over by the tile at 448.
    EXPECT_EQ(image.pixelColor(449, 20), PixelOf(211, QPoint(1, 20)));
}

TEST_F(PaintBkgndTest, AMissingPieceDrawsNothingAtAll) {
    PaintBkgnd skin;
    auto ids = PaintBkgnd::MainWindowIds();
    ids[5] = 257; // no such picture
    skin.Load(ids, 1.0);
    const QImage image = Paint(skin, QSize(200, 100));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::magenta));
    EXPECT_EQ(image.pixelColor(150, 80), QColor(Qt::magenta));
}

TEST_F(PaintBkgndTest, TheDoubleDrawingsKeepTheLayoutSizes) {
    PaintBkgnd skin;
    skin.Load(PaintBkgnd::MainWindowIds(), 2.0);
    EXPECT_EQ(skin.PieceSizes(), PaintBkgndLayout::MainWindowPieces());
    EXPECT_EQ(skin.Piece(0).size(), QSize(584, 138));
}
