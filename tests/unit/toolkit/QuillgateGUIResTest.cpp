// The shared fonts, brushes and pictures.

#include "toolkit/QuillgateGUIRes.h"
#include "ToolkitTestApp.h"
#include "TraceRecorder.h"
#include "toolkit/DialogControl.h"

#include <QFontInfo>
#include <QLabel>
#include <QScreen>
#include <QWidget>

#include <gtest/gtest.h>

class QuillgateGUIResTest : public ::testing::Test {
protected:
    void SetUp() override { ToolkitTestApp(); }
};

TEST_F(QuillgateGUIResTest, CreateTracesItsStartAndEndAtDebugLevel) {
    auto& recorder = TraceRecorder::Instance();
    recorder.lines.clear();
    QuillgateGUIRes res;
    EXPECT_TRUE(res.Create(96, 96));
    ASSERT_EQ(recorder.lines.size(), 2u);
    EXPECT_EQ(recorder.CountEndingWith(u"GUI Resources - creating..."), 1);
    EXPECT_EQ(recorder.CountEndingWith(u"GUI Resources - creating...done"), 1);
    EXPECT_NE(recorder.lines[0].find(TraceLabel(TRACE_DEBUG)), std::u16string::npos);
    EXPECT_TRUE(recorder.lines[1].ends_with(u"creating...done"));
}

TEST_F(QuillgateGUIResTest, At96DotsPerInchTheFontsAre8PointsAt120They7) {
    QuillgateGUIRes at96;
    at96.Create(96, 96);
    QuillgateGUIRes at120;
    at120.Create(120, 120);
    // 8 points at 96 are 11 pixels; 7 points at 120 are 12: about the same height.
    for (const QFont& font : {at96.GetBoldFont(), at96.GetNormalFont(), at96.GetTitleFont(),
                              at96.GetBold1Font(), at96.GetBold3Font()})
        EXPECT_EQ(font.pixelSize(), 11);
    for (const QFont& font : {at120.GetBoldFont(), at120.GetNormalFont(), at120.GetTitleFont(),
                              at120.GetBold1Font(), at120.GetBold3Font()})
        EXPECT_EQ(font.pixelSize(), 12);
    EXPECT_LE(std::abs(at120.GetNormalFont().pixelSize() - at96.GetNormalFont().pixelSize()), 1);
    EXPECT_EQ(at96.GetCreatedDpi(), 96);
    EXPECT_EQ(at120.GetCreatedDpi(), 120);
}

TEST_F(QuillgateGUIResTest, BoldFontsAreBoldAndTheNormalOneRegular) {
    QuillgateGUIRes res;
    res.Create(96, 96);
    EXPECT_EQ(res.GetBoldFont().weight(), QFont::Bold);
    EXPECT_EQ(res.GetTitleFont().weight(), QFont::Bold);
    EXPECT_EQ(res.GetNormalFont().weight(), QFont::Normal);
    EXPECT_FALSE(res.GetNormalFont().underline());
    EXPECT_EQ(res.GetBoldFont().family(), QuillgateGUIRes::DialogFace());
    // Quality 4 asks for anti-aliasing; the title font keeps the default quality.
    EXPECT_EQ(res.GetBoldFont().styleStrategy(), QFont::PreferAntialias);
    EXPECT_EQ(res.GetTitleFont().styleStrategy(), QFont::PreferDefault);
}

TEST_F(QuillgateGUIResTest, TheLinkFontIsUnderlinedAndFitsACellOf14Pixels) {
    QuillgateGUIRes res;
    res.Create(96, 96);
    const QFont link = res.GetLinkFont();
    EXPECT_TRUE(link.underline());
    EXPECT_EQ(link.weight(), QFont::Normal);
    EXPECT_LE(QFontMetrics(link).height(), 14);
    QFont bigger = link;
    bigger.setPixelSize(link.pixelSize() + 1);
    EXPECT_GT(QFontMetrics(bigger).height(), 14);
}

TEST_F(QuillgateGUIResTest, TheNormalFontIsTheDialogFontNotTheFirstOneMade) {
    // The first regular font (cell height 14) is replaced before anyone reads it.
    QuillgateGUIRes res;
    res.Create(96, 96);
    EXPECT_EQ(res.GetNormalFont().pixelSize(), 11);
    EXPECT_EQ(res.GetNormalFont().styleStrategy(), QFont::PreferAntialias);
}

TEST_F(QuillgateGUIResTest, ASecondCreateReplacesWhatTheFirstMade) {
    QuillgateGUIRes res;
    res.Create(96, 96);
    const QFont first = res.GetBoldFont();
    res.Create(120, 120);
    EXPECT_NE(res.GetBoldFont(), first);
    EXPECT_EQ(res.GetBoldFont().pixelSize(), 12);
    EXPECT_EQ(res.GetCreatedDpi(), 120);
}

TEST_F(QuillgateGUIResTest, BrushesHaveTheirColours) {
    QuillgateGUIRes res;
    res.Create(96, 96);
    EXPECT_EQ(res.GetWhiteBrush().color(), QColor(255, 255, 255));
    EXPECT_EQ(res.GetWhiteBrush().style(), Qt::SolidPattern);
    EXPECT_EQ(res.GetGreyBrush().color(), QColor(0xEE, 0xEE, 0xEE));
    EXPECT_EQ(res.GetCreamBrush().color(), QColor(240, 240, 220));
    EXPECT_EQ(res.GetNullBrush().style(), Qt::NoBrush);
}

TEST_F(QuillgateGUIResTest, IconsAndImageListsComeFromTheirBitmaps) {
    QuillgateGUIRes res;
    res.Create(96, 96);
    EXPECT_FALSE(res.GetAppIcon().isNull());
    EXPECT_EQ(res.GetLargeIcon().deviceIndependentSize().toSize(), QSize(32, 32));
    EXPECT_EQ(res.GetSmallIcon().deviceIndependentSize().toSize(), QSize(16, 16));
    EXPECT_EQ(res.GetBitmap254().size(), QSize(21, 18));
    EXPECT_EQ(res.GetBitmap282().size(), QSize(2, 6));
    // 254 is 21 pixels wide: one 16 by 16 image; 282 is 2 wide: none.
    ASSERT_EQ(res.GetImageList().size(), 1);
    EXPECT_EQ(res.GetImageList()[0].size(), QSize(16, 16));
    EXPECT_TRUE(res.GetImageList16().isEmpty());
    EXPECT_EQ(res.GetImageNumbers(), (std::array<int, 4>{3, 1, 2, 4}));
}

TEST_F(QuillgateGUIResTest, TheScreenDpiIsThatOfThePrimaryScreen) {
    QuillgateGUIRes res;
    const int dpi = res.GetScreenDpi();
    EXPECT_EQ(dpi, qRound(QGuiApplication::primaryScreen()->logicalDotsPerInchX()));
    res.Create();
    EXPECT_EQ(res.GetCreatedDpi(), dpi);
}

TEST_F(QuillgateGUIResTest, PopupSlotsAreClaimedHere) {
    QuillgateGUIRes res;
    EXPECT_EQ(res.ClaimPopupSlot(), 0);
    EXPECT_EQ(res.ClaimPopupSlot(), 1);
    res.ReleasePopupSlot(0);
    EXPECT_EQ(res.ClaimPopupSlot(), 0);
}

TEST_F(QuillgateGUIResTest, LargeFontHelpersWorkOnControlsByNumber) {
    QWidget dialog;
    dialog.setGeometry(100, 100, 400, 300);
    auto* control = new QLabel(&dialog);
    DialogControl::SetId(control, 1045);
    control->setGeometry(40, 30, 100, 20);

    QuillgateGUIRes::GrowControl(&dialog, 1045, 4, 10);
    EXPECT_EQ(control->geometry(), QRect(40, 30, 110, 24));
    QuillgateGUIRes::ScaleControlSize(&dialog, 1045, 1.5);
    EXPECT_EQ(control->geometry(), QRect(40, 30, 165, 36));
    QuillgateGUIRes::ScaleControlPos(&dialog, 1045, 1.25, true);
    EXPECT_EQ(control->pos(), QPoint(50, 37));
    // Without conversion the screen position is multiplied and used as a client position.
    const QPoint screen = control->mapToGlobal(QPoint(0, 0));
    QuillgateGUIRes::ScaleControlPos(&dialog, 1045, 2.0, false);
    EXPECT_EQ(control->pos(), screen * 2);
    // An unknown number is left alone.
    QuillgateGUIRes::GrowControl(&dialog, 9999, 4, 10);
    QuillgateGUIRes::ScaleControlSize(nullptr, 1045, 2.0);
}
