// The group of bitmap buttons of which one stays down.

#include "toolkit/CDibRadioButtonCtrl.h"
#include "toolkit/CDibButtonCtrl.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace {

class RadioGroup : public ::testing::Test {
protected:
    void SetUp() override {
        ToolkitTestApp();
        window = std::make_unique<QWidget>();
        window->resize(200, 200);
        for (std::size_t i = 0; i < buttons.size(); ++i) {
            buttons[i] = new CDibButtonCtrl(window.get(), 1000 + static_cast<int>(i));
            buttons[i]->SetStateBitmaps(256, 259, 260, 261, 256, 259);
            buttons[i]->SetPushMode(false);
            buttons[i]->move(0, 31 * static_cast<int>(i));
            group.AddButton(buttons[i]);
        }
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    std::unique_ptr<QWidget> window;
    std::array<CDibButtonCtrl*, 4> buttons{};
    CDibRadioButtonCtrl group;
};

} // namespace

TEST_F(RadioGroup, AddingLatchesTheButtonAndNullIsIgnored) {
    group.AddButton(nullptr);
    EXPECT_EQ(group.Count(), 4u);
    for (auto* b : buttons)
        EXPECT_TRUE(b->State().Latched());
}

TEST_F(RadioGroup, SelectingChecksTheButtonAndUnchecksTheOthers) {
    group.SelectButton(buttons[1]);
    group.SelectButton(buttons[2]);
    EXPECT_FALSE(buttons[0]->GetCheckState());
    EXPECT_FALSE(buttons[1]->GetCheckState());
    EXPECT_TRUE(buttons[2]->GetCheckState());
    EXPECT_FALSE(buttons[3]->GetCheckState());
    EXPECT_EQ(buttons[2]->CurrentLook().picture, DibButtonLook::Picture::FocusedPressed);
}

TEST_F(RadioGroup, SelectingTheButtonAlreadyDownLeavesTheButtonsBehindItAlone) {
    group.SelectButton(buttons[1]);
    // Two more buttons are down without the group knowing, one before and one after.
    buttons[0]->SetCheckState(true);
    buttons[3]->SetCheckState(true);

    group.SelectButton(buttons[1]);
    EXPECT_FALSE(buttons[0]->GetCheckState());
    EXPECT_TRUE(buttons[1]->GetCheckState());
    EXPECT_TRUE(buttons[3]->GetCheckState());
}

TEST_F(RadioGroup, SelectingAButtonOutsideTheGroupUnchecksAllMembers) {
    group.SelectButton(buttons[2]);
    CDibButtonCtrl outsider(window.get(), 1010);
    group.SelectButton(&outsider);
    for (auto* b : buttons)
        EXPECT_FALSE(b->GetCheckState());
    EXPECT_FALSE(outsider.GetCheckState());
}

TEST_F(RadioGroup, SelectedButtonIsFrozenUntilUnlatched) {
    group.SelectButton(buttons[0]);
    QSignalSpy clicked(buttons[0], &CDibButtonCtrl::clicked);
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    QTest::keyClick(buttons[0], Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 0);

    // The main window unlatches its members so that a selected one can be clicked again.
    buttons[0]->SetLatched(false);
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(RadioGroup, SelectedButtonTakesTheFocus) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    group.SelectButton(buttons[3]);
    EXPECT_TRUE(buttons[3]->hasFocus());
}

TEST_F(RadioGroup, DestroyedButtonDropsOutOfTheGroup) {
    // A dialog destroying one of its controls.
    buttons[1]->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    buttons[1] = nullptr;
    group.SelectButton(buttons[2]);
    EXPECT_TRUE(buttons[2]->GetCheckState());
    EXPECT_FALSE(buttons[0]->GetCheckState());
}
