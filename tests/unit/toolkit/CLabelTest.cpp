// The label on the offscreen platform: setters, painting, blinking, links and cursor.

#include "toolkit/CLabel.h"
#include "ToolkitTestApp.h"
#include "foundation/stdstr.h"
#include "toolkit/DialogControl.h"
#include "toolkit/LabelTextFlags.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace {

class CLabelTest : public ::testing::Test {
protected:
    void SetUp() override {
        // Without anti-aliasing, text pixels have exactly the colours asked for.
        QFont font = parent.font();
        font.setStyleStrategy(QFont::NoAntialias);
        parent.setFont(font);
        parent.resize(300, 120);
        label = new CLabel(&parent);
        label->setGeometry(10, 10, 200, 40);
        label->SetOpener([this](const stdstr& target) {
            opened.push_back(target);
            return true;
        });
    }
    void Show() {
        parent.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    }
    QImage Grab() { return label->grab().toImage(); }

    // The first and last rows that hold a pixel of `colour`, or -1.
    static std::pair<int, int> RowsWith(const QImage& image, QColor colour) {
        int first = -1, last = -1;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == colour) {
                    if (first < 0)
                        first = y;
                    last = y;
                }
        return {first, last};
    }

    // The application exists before the first widget member is made.
    QApplication& app = ToolkitTestApp();
    QWidget parent;
    CLabel* label = nullptr;
    std::vector<stdstr> opened;
};

} // namespace

TEST_F(CLabelTest, SettersChainOnTheSameLabel) {
    CLabel& same = label->SetTextColor(0x0000FF).SetText(QStringLiteral("x")).SetFontBold(true);
    EXPECT_EQ(&same, label);
    EXPECT_EQ(&label->SetLink(true, false).SetLinkCursor().Set3DColor(0), label);
}

TEST_F(CLabelTest, ALabelWhoseTextIsAUrlOpensItWithOneClick) {
    Show();
    label->SetText(QStringLiteral("https://www.velloran.example/quillgate"));
    label->SetLink(true, false);
    QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(20, 20));
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0], stdstr(u"https://www.velloran.example/quillgate"));
}

TEST_F(CLabelTest, WithoutSetLinkTheClickNeverReachesTheLabel) {
    Show();
    label->SetText(QStringLiteral("https://www.velloran.example/"));
    QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_TRUE(opened.empty());
    label->SetLink(true, false);
    label->SetLink(false, false);
    EXPECT_FALSE(label->Style() & LabelTextFlags::SS_NOTIFY);
    QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_TRUE(opened.empty());
}

TEST_F(CLabelTest, ANotifyingLabelTellsTheParentInsteadOfOpening) {
    Show();
    DialogControl::SetId(label, 1015);
    label->SetText(QStringLiteral("https://www.velloran.example/"));
    label->SetLink(true, true);
    QSignalSpy spy(label, &CLabel::notified);
    QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(20, 20));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][0].toInt(), 1015);
    EXPECT_EQ(spy[0][1].toInt(), 0x8200);
    EXPECT_TRUE(opened.empty());
}

TEST_F(CLabelTest, TheTextOpenedIsCutAt2000Characters) {
    Show();
    label->SetText(QString(2100, QLatin1Char('a')));
    label->SetLink(true, false);
    QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(20, 20));
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0].size(), 2000u);
}

TEST_F(CLabelTest, TheLinkCursorIsTheHandOnlyOnceAsked) {
    EXPECT_FALSE(label->testAttribute(Qt::WA_SetCursor));
    EXPECT_FALSE(label->HasLinkCursor());
    label->SetLinkCursor();
    EXPECT_TRUE(label->HasLinkCursor());
    EXPECT_EQ(label->cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(CLabelTest, SetTransparentWithoutRedrawChangesTheStyleButPaintsNothing) {
    Show();
    label->SetText(QStringLiteral("Quillgate"));
    QCoreApplication::processEvents();
    const int paints = label->PaintCount();
    label->SetTransparent(true, false);
    QCoreApplication::processEvents();
    EXPECT_TRUE(label->IsTransparent());
    EXPECT_TRUE(label->ExStyle() & CLabel::WS_EX_TRANSPARENT);
    EXPECT_EQ(label->PaintCount(), paints);
    // The next redraw paints.
    label->SetText(QStringLiteral("Quillgate 2"));
    EXPECT_GT(label->PaintCount(), paints);
    label->SetTransparent(false, true);
    EXPECT_FALSE(label->ExStyle() & CLabel::WS_EX_TRANSPARENT);
}

TEST_F(CLabelTest, SettersRedrawAtOnce) {
    Show();
    QCoreApplication::processEvents();
    const int paints = label->PaintCount();
    label->SetTextColor(0x0000FF);
    EXPECT_EQ(label->PaintCount(), paints + 1);
}

TEST_F(CLabelTest, ATransparentLabelShowsTheParentBehindIt) {
    parent.setAutoFillBackground(true);
    QPalette palette = parent.palette();
    palette.setColor(QPalette::Window, QColor(0, 128, 0));
    parent.setPalette(palette);
    label->SetBkColor(0x0000FF);
    label->SetTransparent(true);
    Show();
    const QImage image = parent.grab().toImage();
    EXPECT_EQ(image.pixelColor(15, 45), QColor(0, 128, 0));
}

TEST_F(CLabelTest, TheBackgroundIsTheUserColourOrTheDefault) {
    Show();
    EXPECT_EQ(Grab().pixelColor(199, 39), label->palette().color(QPalette::Window));
    label->SetBkColor(0x3366CC);
    EXPECT_EQ(Grab().pixelColor(199, 39), QColor(0xCC, 0x66, 0x33));
}

TEST_F(CLabelTest, AGradientOverTenPixelsHasTenBandsOfOnePixel) {
    label->setGeometry(10, 10, 10, 20);
    label->SetBkColor(0x000000, 0x0000C8, true); // black to red 200
    Show();
    const QImage image = Grab();
    for (int x = 0; x < 10; ++x)
        EXPECT_EQ(image.pixelColor(x, 5), QColor(x * 20, 0, 0)) << x;
}

TEST_F(CLabelTest, TheRowUnderTheGradientBandsShowsTheParent) {
    parent.setAutoFillBackground(true);
    QPalette palette = parent.palette();
    palette.setColor(QPalette::Window, QColor(0, 128, 0));
    parent.setPalette(palette);
    label->setGeometry(10, 10, 10, 20);
    label->SetBkColor(0x000000, 0x0000C8, true);
    Show();
    const QImage image = parent.grab().toImage();
    EXPECT_EQ(image.pixelColor(15, 28), QColor(100, 0, 0));
    EXPECT_EQ(image.pixelColor(15, 29), QColor(0, 128, 0));
    // A plain fill covers the whole label.
    label->SetBkColor(0x0000C8);
    EXPECT_EQ(parent.grab().toImage().pixelColor(15, 29), QColor(200, 0, 0));
}

TEST_F(CLabelTest, FlashTextHidesTheTextInPhaseZeroAndShowsItInPhaseOne) {
    label->SetBkColor(0xFFFFFF);
    label->SetTextColor(0x000000);
    label->SetText(QStringLiteral("Spam blocked"));
    Show();
    EXPECT_GE(RowsWith(Grab(), Qt::black).first, 0);
    label->FlashText(true);
    EXPECT_TRUE(label->BlinkTimerActive());
    EXPECT_EQ(RowsWith(Grab(), Qt::black).first, -1);
    label->OnBlinkTimer();
    EXPECT_TRUE(label->Blink().Phase());
    EXPECT_GE(RowsWith(Grab(), Qt::black).first, 0);
    label->OnBlinkTimer();
    EXPECT_EQ(RowsWith(Grab(), Qt::black).first, -1);
}

TEST_F(CLabelTest, FlashTextFalseDuringABlinkLeavesTheTextShownInThePhaseReached) {
    label->SetBkColor(0xFFFFFF);
    label->SetTextColor(0x000000);
    label->SetText(QStringLiteral("Spam blocked"));
    Show();
    label->FlashText(true); // phase 0: hidden
    label->FlashText(false);
    EXPECT_FALSE(label->BlinkTimerActive());
    EXPECT_EQ(label->Blink().BlinkMode(), LabelBlink::None);
    EXPECT_FALSE(label->Blink().Phase());
    EXPECT_GE(RowsWith(Grab(), Qt::black).first, 0);

    label->FlashText(true);
    label->OnBlinkTimer(); // phase 1
    label->FlashText(false);
    EXPECT_TRUE(label->Blink().Phase());
    EXPECT_GE(RowsWith(Grab(), Qt::black).first, 0);
}

TEST_F(CLabelTest, TheBlinkTimerFlipsThePhaseOnItsOwn) {
    Show();
    label->FlashText(true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return label->Blink().Phase(); }, 3000));
    label->FlashBackground(false);
    EXPECT_FALSE(label->BlinkTimerActive());
}

TEST_F(CLabelTest, FlashBackgroundRunsTheTimerWithModeTwo) {
    label->FlashBackground(true);
    EXPECT_TRUE(label->BlinkTimerActive());
    EXPECT_EQ(label->Blink().BlinkMode(), LabelBlink::Background);
    label->FlashBackground(false);
    EXPECT_FALSE(label->BlinkTimerActive());
    EXPECT_EQ(label->Blink().BlinkMode(), LabelBlink::Background);
}

TEST_F(CLabelTest, ATextWithCrLfAndCenterImageIsNotVerticallyCentred) {
    label->setGeometry(10, 10, 200, 80);
    label->SetStyle(LabelTextFlags::SS_CENTERIMAGE);
    label->SetBkColor(0xFFFFFF);
    label->SetTextColor(0x000000);
    label->SetText(QStringLiteral("One line"));
    Show();
    const auto single = RowsWith(Grab(), Qt::black);
    ASSERT_GE(single.first, 0);
    // One line is centred: about as much room above as below.
    EXPECT_LE(std::abs(single.first - (79 - single.second)), 4);

    label->SetText(QStringLiteral("First\r\nSecond"));
    const auto twoLines = RowsWith(Grab(), Qt::black);
    ASSERT_GE(twoLines.first, 0);
    EXPECT_LT(twoLines.first, single.first);
    EXPECT_LT(twoLines.first, 10);
}

TEST_F(CLabelTest, ThreeDTextPaintsACopyInTheThreeDColour) {
    label->SetBkColor(0xFFFFFF);
    label->SetTextColor(0x000000);
    label->SetText(QStringLiteral("Quillgate"));
    label->Set3DColor(0x0000FF);
    label->Set3DText(true, true);
    Show();
    const auto black = RowsWith(Grab(), Qt::black);
    const auto red = RowsWith(Grab(), QColor(255, 0, 0));
    ASSERT_GE(red.first, 0);
    ASSERT_GE(black.first, 0);
    // The sunken copy is one pixel lower and drawn over the text, whose top row stays.
    EXPECT_EQ(red.first, black.first + 1);
    label->Set3DText(true, false);
    const auto raisedBlack = RowsWith(Grab(), Qt::black);
    const auto raisedRed = RowsWith(Grab(), QColor(255, 0, 0));
    EXPECT_EQ(raisedRed.second, raisedBlack.second - 1);
}

TEST_F(CLabelTest, TheSuffixIsDrawnAfterTheTextInItsColour) {
    label->SetBkColor(0xFFFFFF);
    label->SetTextColor(0x000000);
    label->SetText(QStringLiteral("Spam"));
    label->SetSuffix(QStringLiteral("(12)"), 0x00FF00, 6);
    Show();
    const QImage image = Grab();
    const int textWidth =
        QFontMetrics(label->LabelFont()).horizontalAdvance(QStringLiteral("Spam"));
    int firstGreen = -1;
    for (int x = 0; x < image.width() && firstGreen < 0; ++x)
        for (int y = 0; y < image.height(); ++y)
            if (image.pixelColor(x, y) == QColor(0, 255, 0)) {
                firstGreen = x;
                break;
            }
    ASSERT_GE(firstGreen, 0);
    EXPECT_GE(firstGreen, textWidth + 6);
    EXPECT_LE(firstGreen, textWidth + 6 + 3);
}

TEST_F(CLabelTest, RotatedTextIsDrawnFromTheCentre) {
    label->setGeometry(10, 10, 100, 100);
    label->SetBkColor(0xFFFFFF);
    label->SetTextColor(0x000000);
    label->SetText(QStringLiteral("Rotated"));
    label->SetRotationAngle(90, true);
    EXPECT_EQ(label->RotationAngle(), 90);
    Show();
    const QImage image = Grab();
    // Turned a quarter counter-clockwise, the text rises from the centre: ink above the
    // centre row, none in the lower left quarter.
    const auto rows = RowsWith(image, Qt::black);
    ASSERT_GE(rows.first, 0);
    EXPECT_LT(rows.first, 50);
    EXPECT_LE(rows.second, 52);
}

TEST_F(CLabelTest, FontSettersChangeTheLabelsFont) {
    label->SetFontBold(true).SetFontItalic(true).SetFontUnderline(true);
    EXPECT_EQ(label->LabelFont().weight(), QFont::Bold);
    EXPECT_TRUE(label->LabelFont().italic());
    EXPECT_TRUE(label->LabelFont().underline());
    label->SetFontBold(false);
    EXPECT_EQ(label->LabelFont().weight(), QFont::Normal);
    label->SetFontName(QString(40, QLatin1Char('F')), 238);
    EXPECT_EQ(label->LabelFont().family().size(), 32);
    EXPECT_EQ(label->CharSet(), 238);
    label->SetFontSize(12);
    const int dpi = qRound(QGuiApplication::primaryScreen()->logicalDotsPerInchY());
    EXPECT_EQ(label->LabelFont().pixelSize(), (12 * dpi + 36) / 72);
}

TEST_F(CLabelTest, SunkenAndBorderAddTheirEdges) {
    label->SetSunken(true);
    EXPECT_TRUE(label->ExStyle() & CLabel::WS_EX_STATICEDGE);
    EXPECT_EQ(label->contentsMargins(), QMargins(1, 1, 1, 1));
    label->SetBorder(true);
    EXPECT_TRUE(label->ExStyle() & CLabel::WS_BORDER);
    EXPECT_EQ(label->contentsMargins(), QMargins(2, 2, 2, 2));
    label->SetSunken(false).SetBorder(false);
    EXPECT_EQ(label->ExStyle(), 0u);
    EXPECT_EQ(label->contentsMargins(), QMargins(0, 0, 0, 0));
}

TEST_F(CLabelTest, ASystemColourChangeRebuildsTheDefaultBackground) {
    Show();
    QPalette palette = label->palette();
    palette.setColor(QPalette::Window, QColor(1, 99, 7));
    label->setPalette(palette);
    EXPECT_EQ(Grab().pixelColor(5, 5), QColor(1, 99, 7));
}

TEST_F(CLabelTest, TheTextIsGivenAsStdstrToo) {
    label->SetText(stdstr(u"Zürich"));
    EXPECT_EQ(label->Text(), QStringLiteral("Zürich"));
}
