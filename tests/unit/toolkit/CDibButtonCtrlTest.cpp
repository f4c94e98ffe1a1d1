// The bitmap button as a widget on the offscreen platform: what it draws in each state, what
// it tells its parent, its click, keyboard, sound, tool tip and accessibility.

#include "toolkit/CDibButtonCtrl.h"
#include "toolkit/PrivateMessageEvent.h"
#include "toolkit/PrivateMessages.h"
#include "unit/toolkit/RecordingSoundPlayer.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include "foundation/stdstr.h"

#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

using Picture = DibButtonLook::Picture;

// The dialog: it records the private messages and the keys that reach it.
class RecordingParent : public QWidget {
public:
    bool event(QEvent* e) override {
        if (PrivateMessageEvent::IsPrivateMessage(static_cast<int>(e->type()))) {
            const auto* message = static_cast<PrivateMessageEvent*>(e);
            messages.emplace_back(message->Message(), message->wParam());
            return true;
        }
        if (e->type() == QEvent::KeyPress)
            keys.push_back(static_cast<QKeyEvent*>(e)->key());
        return QWidget::event(e);
    }
    std::vector<std::pair<int, PrivateMessageEvent::WParam>> messages;
    std::vector<int> keys;
};

class DibButtonWidget : public ::testing::Test {
protected:
    void SetUp() override {
        ToolkitTestApp();
        parent = std::make_unique<RecordingParent>();
        parent->resize(300, 200);
        button = new CDibButtonCtrl(parent.get(), 1257); // owned by the parent
        button->move(20, 30);
        // The About box's OK button: normal, pressed, hover, disabled; no focus pictures.
        button->SetStateBitmaps(275, 276, 277, 278, 0, 0);
        parent->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(parent.get()));
        // Every test starts with the pointer off the button, wherever the last one left it.
        MoveTo(Outside());
        parent->messages.clear();
    }

    QWindow* Window() const { return parent->windowHandle(); }
    QPoint Inside() const { return button->geometry().center(); }
    QPoint Outside() const { return QPoint(250, 150); }

    // Through the window, so that Qt finds the widget under the pointer, grabs it while a
    // button is held and synthesises enter and leave as it does for a real mouse.
    void MoveTo(QPoint p) { QTest::mouseMove(Window(), p); }
    void Press(QPoint p) { QTest::mousePress(Window(), Qt::LeftButton, {}, p); }
    void Release(QPoint p) { QTest::mouseRelease(Window(), Qt::LeftButton, {}, p); }

    QImage Rendered() const {
        return button->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    QImage PictureImage(Picture which) const {
        return button->Picture(which).toImage().convertToFormat(QImage::Format_RGB32);
    }

    int MessagesOf(int message) const {
        int count = 0;
        for (const auto& [number, wParam] : parent->messages)
            count += number == message && wParam == PrivateMessageEvent::Handle(button) ? 1 : 0;
        return count;
    }

    std::unique_ptr<RecordingParent> parent;
    CDibButtonCtrl* button = nullptr;
};

void SendKey(QWidget* w, QEvent::Type type, int key, bool autoRepeat) {
    QKeyEvent event(type, key, Qt::NoModifier,
                    key == Qt::Key_Space ? QStringLiteral(" ") : QString(), autoRepeat);
    QApplication::sendEvent(w, &event);
}

} // namespace

TEST_F(DibButtonWidget, NormalPictureGivesTheButtonItsSizeAndKeepsItsPosition) {
    EXPECT_EQ(button->geometry(), QRect(20, 30, 78, 24));
    EXPECT_EQ(button->CurrentLook().picture, Picture::Normal);
    EXPECT_EQ(Rendered(), PictureImage(Picture::Normal));
}

TEST_F(DibButtonWidget, MissingNormalPictureMakesTheButtonInvisible) {
    parent->setAutoFillBackground(true);
    QPalette palette = parent->palette();
    palette.setColor(QPalette::Window, Qt::red);
    parent->setPalette(palette);
    button->SetStateBitmaps(9999, 276, 277, 278, 0, 0);
    EXPECT_EQ(button->size(), QSize(78, 24));
    EXPECT_EQ(button->CurrentLook().picture, Picture::None);
    const QImage shown = parent->grab(button->geometry()).toImage();
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            ASSERT_EQ(QColor(shown.pixel(x, y)), QColor(Qt::red)) << x << "," << y;
}

TEST_F(DibButtonWidget, PointerOverShowsTheHoverPictureAndTellsTheParent) {
    MoveTo(Inside());
    EXPECT_TRUE(button->State().Hot());
    EXPECT_EQ(Rendered(), PictureImage(Picture::Hover));
    EXPECT_EQ(MessagesOf(WM_QG_BUTTON_ENTER), 1);
    EXPECT_EQ(MessagesOf(WM_QG_BUTTON_LEAVE), 0);

    MoveTo(Outside());
    EXPECT_FALSE(button->State().Hot());
    EXPECT_EQ(Rendered(), PictureImage(Picture::Normal));
    EXPECT_EQ(MessagesOf(WM_QG_BUTTON_ENTER), 1);
    EXPECT_EQ(MessagesOf(WM_QG_BUTTON_LEAVE), 1);
}

TEST_F(DibButtonWidget, ButtonWithoutHoverPictureNeverTellsTheParent) {
    button->SetStateBitmaps(275, 276, 0, 278, 0, 0);
    MoveTo(Inside());
    EXPECT_FALSE(button->State().Hot());
    MoveTo(Outside());
    Press(Inside());
    Release(Inside());
    MoveTo(Outside());
    EXPECT_FALSE(button->State().Hot());
    EXPECT_TRUE(parent->messages.empty());
}

TEST_F(DibButtonWidget, ClickInsideSendsOneCommandWithTheControlId) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    MoveTo(Inside());
    Press(Inside());
    EXPECT_EQ(Rendered(), PictureImage(Picture::Pressed));
    EXPECT_EQ(clicked.count(), 0);
    Release(Inside());
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toInt(), 1257);
}

TEST_F(DibButtonWidget, DraggingOutShowsNormalBackInShowsPressedAndReleaseOutsideSendsNothing) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    MoveTo(Inside());
    Press(Inside());
    EXPECT_EQ(button->CurrentLook().picture, Picture::Pressed);

    MoveTo(Outside());
    EXPECT_EQ(button->CurrentLook().picture, Picture::Normal);
    EXPECT_EQ(Rendered(), PictureImage(Picture::Normal));

    MoveTo(Inside());
    EXPECT_EQ(button->CurrentLook().picture, Picture::Pressed);
    EXPECT_EQ(Rendered(), PictureImage(Picture::Pressed));

    MoveTo(Outside());
    Release(Outside());
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_FALSE(button->State().Pressed());
    EXPECT_EQ(button->CurrentLook().picture, Picture::Normal);
}

TEST_F(DibButtonWidget, ReleaseOutsideWithoutAMoveBeforeItSendsNothing) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    Press(Inside());
    Release(Outside());
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(DibButtonWidget, LatchedAndSelectedButtonIgnoresClicksReturnAndSpace) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    button->SetPushMode(false);
    button->SetLatched(true);
    button->SetCheckState(true);
    ASSERT_TRUE(button->State().Frozen());

    Press(Inside());
    Release(Inside());
    QTest::mouseDClick(button, Qt::LeftButton, {}, button->rect().center());
    QTest::mouseRelease(button, Qt::LeftButton, {}, button->rect().center());
    QTest::keyClick(button, Qt::Key_Return);
    QTest::keyClick(button, Qt::Key_Space);

    EXPECT_EQ(clicked.count(), 0);
    EXPECT_TRUE(button->GetCheckState());
    EXPECT_EQ(button->CurrentLook().picture, Picture::Pressed);
}

TEST_F(DibButtonWidget, SpaceHeldWithRepeatsAndReleasedSendsExactlyOneCommandAtRelease) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    SendKey(button, QEvent::KeyPress, Qt::Key_Space, false);
    for (int repeat = 0; repeat < 4; ++repeat) {
        SendKey(button, QEvent::KeyRelease, Qt::Key_Space, true);
        SendKey(button, QEvent::KeyPress, Qt::Key_Space, true);
        EXPECT_EQ(button->CurrentLook().picture, Picture::Pressed);
    }
    EXPECT_EQ(clicked.count(), 0);
    SendKey(button, QEvent::KeyRelease, Qt::Key_Space, false);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(button->CurrentLook().picture, Picture::Normal);
}

TEST_F(DibButtonWidget, ReturnAndKeypadEnterClick) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    QTest::keyClick(button, Qt::Key_Return);
    QTest::keyClick(button, Qt::Key_Enter);
    EXPECT_EQ(clicked.count(), 2);
}

TEST_F(DibButtonWidget, OtherKeysGoOnToTheDialog) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    QTest::keyClick(button, Qt::Key_Escape);
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_EQ(parent->keys, (std::vector<int>{Qt::Key_Escape}));
}

TEST_F(DibButtonWidget, TabReachesTheButtonAndSpaceThenClicksIt) {
    parent->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(parent.get()));
    auto* first = new CDibButtonCtrl(parent.get(), 1);
    first->SetStateBitmaps(275, 276, 277, 278, 0, 0);
    first->show();
    QWidget::setTabOrder(first, button);
    first->setFocus();
    ASSERT_TRUE(first->hasFocus());

    QTest::keyClick(first, Qt::Key_Tab);
    EXPECT_TRUE(button->hasFocus());
    EXPECT_TRUE(button->State().Focused());

    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(DibButtonWidget, ClickTakesTheFocus) {
    parent->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(parent.get()));
    Press(Inside());
    EXPECT_TRUE(button->hasFocus());
    Release(Inside());
}

TEST_F(DibButtonWidget, ClickSoundGoesThroughTheSoundPlayerOnlyWhenOn) {
    RecordingSoundPlayer player;
    button->SetClickSound(false, 206);
    Press(Inside());
    Release(Inside());
    EXPECT_TRUE(player.played.empty());
    button->SetClickSound(true, 206);
    Press(Inside());
    Release(Inside());
    EXPECT_EQ(player.played, (std::vector<int>{206}));
}

TEST_F(DibButtonWidget, DisabledButtonShowsItsPictureAndTakesNoClick) {
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    button->setEnabled(false);
    EXPECT_EQ(Rendered(), PictureImage(Picture::Disabled));
    Press(Inside());
    Release(Inside());
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(DibButtonWidget, DisablingAHeldButtonLetsItUp) {
    Press(Inside());
    ASSERT_TRUE(button->State().Pressed());
    button->setEnabled(false);
    EXPECT_FALSE(button->State().Pressed());
    EXPECT_FALSE(button->State().HasCapture());
    // The mouse button still goes up, so that the next test starts with none held.
    button->setEnabled(true);
    Release(Inside());
}

TEST_F(DibButtonWidget, CaptionIsDrawnWhereTheLayoutPutsItInTheChosenColour) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(11);
    button->SetCaption(stdstr(u"OK"), &font, 0, 0, 0, 0);
    button->SetColors(0, 0, 9909043, 0xC0C0C0);
    MoveTo(Inside());
    const DibButtonLook look = button->CurrentLook();
    ASSERT_EQ(look.picture, Picture::Hover);

    QImage expected = PictureImage(Picture::Hover);
    {
        QPainter painter(&expected);
        painter.setFont(font);
        painter.setPen(QColor(0x33, 0x33, 0x97));
        const auto layout = button->CurrentTextLayout(look);
        painter.drawText(layout.x, layout.y + painter.fontMetrics().ascent(), QStringLiteral("OK"));
    }
    EXPECT_EQ(Rendered(), expected);
    EXPECT_NE(Rendered(), PictureImage(Picture::Hover));
}

TEST_F(DibButtonWidget, PressedPictureWithoutFocusTwinMovesTheCaptionOnePixelUpAndLeft) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(11);
    button->SetCaption(QStringLiteral("OK"), &font, 0, 0, 0, 0);
    const auto up = button->CurrentTextLayout(button->CurrentLook());
    Press(Inside());
    const DibButtonLook look = button->CurrentLook();
    ASSERT_EQ(look.picture, Picture::Pressed);
    const auto down = button->CurrentTextLayout(look);
    EXPECT_EQ(down.x, up.x - 1);
    EXPECT_EQ(down.y, up.y - 1);

    QImage expected = PictureImage(Picture::Pressed);
    {
        QPainter painter(&expected);
        painter.setFont(font);
        painter.drawText(up.x - 1, up.y - 1 + painter.fontMetrics().ascent(), QStringLiteral("OK"));
    }
    EXPECT_EQ(Rendered(), expected);
    Release(Inside());
}

TEST_F(DibButtonWidget, CaptionWithoutFontIsNotDrawn) {
    button->SetCaption(QStringLiteral("OK"), nullptr, 0, 0, 0, 0);
    EXPECT_EQ(Rendered(), PictureImage(Picture::Normal));
}

TEST_F(DibButtonWidget, ToolTipIsSetAndSwitchedOff) {
    button->SetToolTipText(u"Minimize");
    EXPECT_EQ(button->toolTip(), QStringLiteral("Minimize"));
    button->SetToolTipText(static_cast<const char16_t*>(nullptr));
    EXPECT_TRUE(button->toolTip().isEmpty());
    EXPECT_TRUE(button->ToolTipText().isNull());
}
