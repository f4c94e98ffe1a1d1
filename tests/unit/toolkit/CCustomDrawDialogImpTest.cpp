// The framed dialog on the offscreen platform: frame, outline, caption text, buttons and
// dragging, driven with real mouse events.

#include "toolkit/CCustomDrawDialogImp.h"
#include "ToolkitTestApp.h"
#include "toolkit/ResourceStore.h"
#include "toolkit/RoundRectRegion.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <exception>

namespace {

// Counts the help messages that reach it.
class HelpCountingDialog : public CCustomDrawDialogImp {
public:
    using CCustomDrawDialogImp::CCustomDrawDialogImp;
    int helps = 0;

protected:
    bool event(QEvent* event) override {
        if (static_cast<int>(event->type()) == DialogFrameState::HelpMessage) {
            ++helps;
            return true;
        }
        return CCustomDrawDialogImp::event(event);
    }
};

class CCustomDrawDialogImpTest : public ::testing::Test {
protected:
    void SetUp() override { ToolkitTestApp(); }

    // A 400 by 300 window once framed: the close picture stands at (368, 11, 21, 21), and
    // is hit for widget x from 365 (the hit test adds 5 to the client x, which starts 2 in).
    void Frame(CCustomDrawDialogImp& dialog) {
        const auto& ids = CCustomDrawDialogImp::DialogBitmapIds();
        dialog.LoadBitmaps({ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], ids[7], ids[8],
                            ids[9], ids[10]});
        dialog.setWindowTitle(QStringLiteral("About Quillgate"));
        QRect rc(100, 144, 400, 240);
        dialog.SetUpFrame(rc);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        ASSERT_EQ(dialog.size(), QSize(400, 300));
    }

    static constexpr QPoint OnClose{375, 20};
    static constexpr QPoint OnCaption{200, 20};
};

} // namespace

TEST_F(CCustomDrawDialogImpTest, LoadBitmapsTakesTheThreeMeasures) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    EXPECT_EQ(dialog.CaptionHeight(), 44);
    EXPECT_EQ(dialog.BottomHeight(), 16);
    EXPECT_EQ(dialog.BorderWidth(), 2);
    EXPECT_EQ(dialog.contentsMargins(), QMargins(2, 44, 2, 16));
    EXPECT_EQ(dialog.ClientOrigin(), QPoint(2, 44));
}

TEST_F(CCustomDrawDialogImpTest, SetUpFrameGrowsTheRectangleAndDropsTheSystemFrame) {
    CCustomDrawDialogImp dialog({true, true, false});
    const auto& ids = CCustomDrawDialogImp::DialogBitmapIds();
    dialog.LoadBitmaps(
        {ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], ids[7], ids[8], ids[9], ids[10]});
    QRect rc(100, 144, 400, 240);
    dialog.SetUpFrame(rc);
    EXPECT_EQ(rc, QRect(100, 100, 400, 300));
    EXPECT_EQ(dialog.geometry(), rc);
    EXPECT_TRUE(dialog.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(dialog.mask(), RoundRectRegion::Make(QSize(400, 300), QSize(25, 25)));
    EXPECT_FALSE(dialog.mask().contains(QPoint(0, 0)));
    EXPECT_TRUE(dialog.mask().contains(QPoint(200, 0)));
}

TEST_F(CCustomDrawDialogImpTest, SetUpFrameCalledTwiceChangesNothingTheSecondTime) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    const QRect before = dialog.geometry();
    QRect rc = before;
    dialog.SetUpFrame(rc);
    EXPECT_EQ(rc, before);
    EXPECT_EQ(dialog.geometry(), before);
    dialog.SetUpFrame();
    EXPECT_EQ(dialog.geometry(), before);
}

TEST_F(CCustomDrawDialogImpTest, HelpWithoutItsThreeBitmapsThrows) {
    CCustomDrawDialogImp dialog({true, true, true});
    const auto& ids = CCustomDrawDialogImp::DialogBitmapIds();
    try {
        dialog.LoadBitmaps({ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], ids[7], ids[8],
                            ids[9], ids[10]});
        FAIL() << "no exception";
    } catch (const std::exception& e) {
        EXPECT_STREQ(e.what(), "Not enough arguments for LoadBitmaps");
    }
    // Without the help flag eleven are enough.
    CCustomDrawDialogImp plain({true, true, false});
    EXPECT_NO_THROW(plain.LoadBitmaps({ids[0], ids[1], ids[2]}));
}

TEST_F(CCustomDrawDialogImpTest, TheFrameIsDrawnFromItsBitmapsWithTheTitleInWhite) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    const QImage image = dialog.grab().toImage();
    const QImage tile = ResourceStore::Bitmap(284, 1.0).toImage();
    const QImage close = ResourceStore::Bitmap(287, 1.0).toImage();
    const QImage bottom = ResourceStore::Bitmap(279, 1.0).toImage();
    // Above the text the caption band shows through: the text has no background box.
    EXPECT_EQ(image.pixelColor(30, 2), tile.pixelColor(0, 2));
    EXPECT_EQ(image.pixelColor(300, 40), tile.pixelColor(0, 40));
    EXPECT_EQ(image.pixelColor(368 + 10, 11 + 3), close.pixelColor(10, 3));
    EXPECT_EQ(image.pixelColor(100, 290), bottom.pixelColor((100 - 17) % 11, 6));
    // The title is drawn in white from x = 10 in the caption.
    int white = 0;
    for (int y = 8; y < 36; ++y)
        for (int x = 10; x < 150; ++x)
            white += image.pixelColor(x, y) == QColor(Qt::white);
    EXPECT_GT(white, 20);
    int whiteLeftOfText = 0;
    for (int y = 8; y < 36; ++y)
        for (int x = 0; x < 10; ++x)
            whiteLeftOfText += image.pixelColor(x, y) == QColor(Qt::white);
    EXPECT_EQ(whiteLeftOfText, 0);
    EXPECT_EQ(dialog.CaptionText(), QStringLiteral("About Quillgate"));
}

TEST_F(CCustomDrawDialogImpTest, WithoutTheCaptionFlagNoTextIsDrawn) {
    CCustomDrawDialogImp dialog({false, true, false});
    Frame(dialog);
    const QImage image = dialog.grab().toImage();
    int white = 0;
    for (int y = 8; y < 36; ++y)
        for (int x = 10; x < 150; ++x)
            white += image.pixelColor(x, y) == QColor(Qt::white);
    EXPECT_EQ(white, 0);
}

TEST_F(CCustomDrawDialogImpTest, TheCaptionTextIsCutAt260Characters) {
    CCustomDrawDialogImp dialog({true, true, false});
    dialog.setWindowTitle(QString(300, QLatin1Char('x')));
    EXPECT_EQ(dialog.CaptionText().size(), 260);
}

TEST_F(CCustomDrawDialogImpTest, ADialogNarrowerThanItsTwoCaptionEndsDrawsNoTileAtAll) {
    CCustomDrawDialogImp dialog({true, false, false});
    const auto& ids = CCustomDrawDialogImp::DialogBitmapIds();
    dialog.LoadBitmaps({ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], ids[7]});
    dialog.setFixedSize(30, 100);
    for (const auto& placement : dialog.CurrentFrame().caption)
        EXPECT_NE(placement.bitmap, DialogFrameLayout::CaptionTile);
}

TEST_F(CCustomDrawDialogImpTest, HoverAndPressChangeTheClosePicture) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    QTest::mouseMove(&dialog, OnClose);
    EXPECT_TRUE(dialog.FrameState().Over());
    const auto pictureOf = [&dialog] {
        for (const auto& placement : dialog.CurrentFrame().caption) {
            if (placement.rect == dialog.CurrentFrame().closeRect)
                return placement.bitmap;
        }
        return -1;
    };
    EXPECT_EQ(pictureOf(), DialogFrameLayout::CloseHover);
    QTest::mousePress(&dialog, Qt::LeftButton, {}, OnClose);
    QTest::mouseMove(&dialog, OnClose + QPoint(1, 0));
    EXPECT_TRUE(dialog.FrameState().Down());
    EXPECT_EQ(pictureOf(), DialogFrameLayout::ClosePressed);
    QTest::mouseMove(&dialog, OnCaption);
    EXPECT_FALSE(dialog.FrameState().Over());
    EXPECT_EQ(pictureOf(), DialogFrameLayout::CloseNormal);
    QTest::mouseRelease(&dialog, Qt::LeftButton, {}, OnCaption);
}

TEST_F(CCustomDrawDialogImpTest, AClickOnTheCloseButtonPostsCancel) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    QTest::mouseMove(&dialog, OnClose);
    QTest::mousePress(&dialog, Qt::LeftButton, {}, OnClose);
    QTest::mouseRelease(&dialog, Qt::LeftButton, {}, OnClose);
    // Posted, not done at once.
    EXPECT_EQ(rejected.count(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&rejected] { return rejected.count() == 1; }, 5000));
}

TEST_F(CCustomDrawDialogImpTest, AClickOnTheCloseButtonReleasedOutsideItPostsNothing) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    QTest::mouseMove(&dialog, OnClose);
    QTest::mousePress(&dialog, Qt::LeftButton, {}, OnClose);
    QTest::mouseMove(&dialog, OnCaption);
    QTest::mouseRelease(&dialog, Qt::LeftButton, {}, OnCaption);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(rejected.count(), 0);
    EXPECT_FALSE(dialog.FrameState().Down());
    EXPECT_FALSE(dialog.FrameState().Captured());
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(CCustomDrawDialogImpTest, APressOutsideAndAReleaseOnTheCloseButtonPostsNothing) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    QTest::mousePress(&dialog, Qt::LeftButton, {}, OnCaption);
    QTest::mouseRelease(&dialog, Qt::LeftButton, {}, OnClose);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(rejected.count(), 0);
    EXPECT_EQ(dialog.FrameState().DownHit(), DialogFrameState::HitCaption);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(CCustomDrawDialogImpTest, TheCloseButtonIsHitThreePixelsLeftOfItsPicture) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    QTest::mouseMove(&dialog, QPoint(365, 20));
    EXPECT_TRUE(dialog.FrameState().Over());
    QTest::mouseMove(&dialog, QPoint(364, 20));
    EXPECT_FALSE(dialog.FrameState().Over());
    QTest::mouseMove(&dialog, QPoint(386, 20));
    EXPECT_FALSE(dialog.FrameState().Over());
}

TEST_F(CCustomDrawDialogImpTest, AClickOnTheHelpButtonPostsTheHelpMessage) {
    HelpCountingDialog dialog({true, true, true});
    dialog.LoadBitmaps({285, 284, 286, 283, 281, 279, 280, 282, 287, 288, 289, 287, 288, 289});
    QRect rc(100, 144, 400, 240);
    dialog.SetUpFrame(rc);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    // Help picture at (345, 11, 21, 21); hit from widget x 342.
    EXPECT_EQ(dialog.CurrentFrame().helpRect, QRect(345, 11, 21, 21));
    const QPoint onHelp(350, 20);
    QTest::mousePress(&dialog, Qt::LeftButton, {}, onHelp);
    QTest::mouseRelease(&dialog, Qt::LeftButton, {}, onHelp);
    EXPECT_EQ(dialog.helps, 0);
    EXPECT_TRUE(QTest::qWaitFor([&dialog] { return dialog.helps == 1; }, 5000));
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(CCustomDrawDialogImpTest, DraggingByTheCaptionMovesTheWindow) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    const QPoint start = dialog.pos();
    QTest::mousePress(&dialog, Qt::LeftButton, {}, OnCaption);
    QTest::mouseMove(&dialog, OnCaption + QPoint(30, 15));
    QTest::mouseRelease(&dialog, Qt::LeftButton, {}, OnCaption + QPoint(30, 15));
    EXPECT_EQ(dialog.pos(), start + QPoint(30, 15));
}

TEST_F(CCustomDrawDialogImpTest, LeavingTheWindowClearsTheHover) {
    CCustomDrawDialogImp dialog({true, true, false});
    Frame(dialog);
    QTest::mouseMove(&dialog, OnClose);
    ASSERT_TRUE(dialog.FrameState().Over());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&dialog, &leave);
    EXPECT_FALSE(dialog.FrameState().Over());
}
