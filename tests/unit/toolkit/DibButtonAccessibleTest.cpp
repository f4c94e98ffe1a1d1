// What assistive technology sees of a bitmap button: its role, its name, its state and the
// press action.

#include "toolkit/DibButtonAccessible.h"
#include "toolkit/CDibButtonCtrl.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

namespace {

class AccessibleButton : public ::testing::Test {
protected:
    void SetUp() override {
        ToolkitTestApp();
        window = std::make_unique<QWidget>();
        button = new CDibButtonCtrl(window.get(), 1007); // owned by the window
        button->SetStateBitmaps(248, 249, 250, 251, 0, 0);
        accessible = QAccessible::queryAccessibleInterface(button);
    }

    std::unique_ptr<QWidget> window;
    CDibButtonCtrl* button = nullptr;
    QAccessibleInterface* accessible = nullptr;
};

} // namespace

TEST_F(AccessibleButton, IsAPushButton) {
    ASSERT_NE(accessible, nullptr);
    EXPECT_NE(dynamic_cast<DibButtonAccessible*>(accessible), nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
}

TEST_F(AccessibleButton, PictureOnlyButtonIsNamedByItsToolTip) {
    ASSERT_NE(accessible, nullptr);
    button->SetToolTipText(u"Close");
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Close"));
    EXPECT_TRUE(accessible->text(QAccessible::Description).isEmpty());
}

TEST_F(AccessibleButton, CaptionWinsOverTheToolTip) {
    ASSERT_NE(accessible, nullptr);
    button->SetToolTipText(u"Close the window");
    QFont font;
    button->SetCaption(QStringLiteral("Close"), &font, 0, 0, 0, 0);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Close"));
    EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Close the window"));
}

TEST_F(AccessibleButton, NameSetByTheDialogWins) {
    ASSERT_NE(accessible, nullptr);
    button->SetToolTipText(u"Close");
    button->setAccessibleName(QStringLiteral("Close Quillgate"));
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Close Quillgate"));
}

TEST_F(AccessibleButton, PressActionClicksOnce) {
    ASSERT_NE(accessible, nullptr);
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    ASSERT_NE(accessible->actionInterface(), nullptr);
    EXPECT_TRUE(accessible->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::pressAction()));
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toInt(), 1007);
}

TEST_F(AccessibleButton, PressActionOnADisabledButtonDoesNothing) {
    ASSERT_NE(accessible, nullptr);
    QSignalSpy clicked(button, &CDibButtonCtrl::clicked);
    button->setEnabled(false);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(AccessibleButton, PushButtonIsNotCheckable) {
    ASSERT_NE(accessible, nullptr);
    EXPECT_FALSE(accessible->state().checkable);
}

TEST_F(AccessibleButton, SelectedGroupButtonReportsItselfChecked) {
    ASSERT_NE(accessible, nullptr);
    button->SetPushMode(false);
    EXPECT_TRUE(accessible->state().checkable);
    EXPECT_FALSE(accessible->state().checked);
    button->SetCheckState(true);
    EXPECT_TRUE(accessible->state().checked);
    EXPECT_TRUE(accessible->state().pressed);
}
