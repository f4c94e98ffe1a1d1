// The tab control's page choices: wrap-around search, the page after a removal, the keys.

#include "toolkit/TabNavigation.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TabNavigation::IsEnabled AllBut(std::set<int> disabled) {
    return [disabled](int i) { return disabled.count(i) == 0; };
}

using Key = TabNavigation::Key;
using Action = TabNavigation::Action;

} // namespace

TEST(TabNavigation, NextFromTheLastPageWrapsToTheFirst) {
    EXPECT_EQ(TabNavigation::Next(3, 4, AllBut({})), 0);
}

TEST(TabNavigation, PreviousFromTheFirstPageWrapsToTheLast) {
    EXPECT_EQ(TabNavigation::Previous(0, 4, AllBut({})), 3);
}

TEST(TabNavigation, DisabledPagesAreSkipped) {
    EXPECT_EQ(TabNavigation::Next(0, 4, AllBut({1, 2})), 3);
    EXPECT_EQ(TabNavigation::Next(2, 4, AllBut({3, 0})), 1);
    EXPECT_EQ(TabNavigation::Previous(3, 4, AllBut({2, 1})), 0);
    EXPECT_EQ(TabNavigation::Previous(1, 4, AllBut({0})), 3);
}

TEST(TabNavigation, OnlyEnabledPageIsFoundAfterAFullRound) {
    EXPECT_EQ(TabNavigation::Next(2, 4, AllBut({0, 1, 3})), 2);
    EXPECT_EQ(TabNavigation::Previous(2, 4, AllBut({0, 1, 3})), 2);
}

TEST(TabNavigation, NoEnabledPageGivesMinusOne) {
    EXPECT_EQ(TabNavigation::Next(1, 3, AllBut({0, 1, 2})), -1);
    EXPECT_EQ(TabNavigation::Previous(1, 3, AllBut({0, 1, 2})), -1);
    EXPECT_EQ(TabNavigation::Next(-1, 0, AllBut({})), -1);
    EXPECT_EQ(TabNavigation::Previous(-1, 0, AllBut({})), -1);
}

TEST(TabNavigation, WithoutACurrentPageTheSearchStartsAtAnEnd) {
    EXPECT_EQ(TabNavigation::Next(-1, 4, AllBut({0})), 1);
    EXPECT_EQ(TabNavigation::Previous(-1, 4, AllBut({3})), 2);
}

TEST(TabNavigation, RemovingAnotherPageKeepsTheCurrentOne) {
    EXPECT_EQ(TabNavigation::PageAfterRemoval(2, 0, 4, AllBut({})), TabNavigation::KeepCurrent);
    EXPECT_EQ(TabNavigation::PageAfterRemoval(0, -1, 4, AllBut({})), TabNavigation::KeepCurrent);
}

TEST(TabNavigation, RemovingTheCurrentPageChoosesThePageBeforeIt) {
    EXPECT_EQ(TabNavigation::PageAfterRemoval(2, 2, 4, AllBut({})), 1);
    EXPECT_EQ(TabNavigation::PageAfterRemoval(0, 0, 4, AllBut({})), 0);
}

TEST(TabNavigation, PageBeforeDisabledGivesTheNextEnabledAfterIt) {
    EXPECT_EQ(TabNavigation::PageAfterRemoval(2, 2, 4, AllBut({1})), 2);
    EXPECT_EQ(TabNavigation::PageAfterRemoval(3, 3, 5, AllBut({2, 3})), 4);
}

TEST(TabNavigation, RemovingTheLastPageLeavesNone) {
    EXPECT_EQ(TabNavigation::PageAfterRemoval(0, 0, 1, AllBut({})), -1);
}

TEST(TabNavigation, PageKeysWithoutCtrlMoveTheFocusOn) {
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageUp, false, false), Action::FocusNextControl);
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageDown, false, false), Action::FocusNextControl);
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageUp, false, true), Action::FocusPreviousControl);
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageDown, false, true), Action::FocusPreviousControl);
}

TEST(TabNavigation, PageKeysWithCtrlChangeThePage) {
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageUp, true, false), Action::ShowPrevious);
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageUp, true, true), Action::ShowPrevious);
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageDown, true, false), Action::ShowNext);
    EXPECT_EQ(TabNavigation::ActionFor(Key::PageDown, true, true), Action::ShowPrevious);
}

TEST(TabNavigation, ArrowsChangeThePageWithOrWithoutCtrl) {
    for (bool ctrl : {false, true}) {
        EXPECT_EQ(TabNavigation::ActionFor(Key::Left, ctrl, false), Action::ShowPrevious);
        EXPECT_EQ(TabNavigation::ActionFor(Key::Right, ctrl, false), Action::ShowNext);
    }
}

TEST(TabNavigation, TabAndDownGoIntoThePage) {
    for (bool ctrl : {false, true}) {
        EXPECT_EQ(TabNavigation::ActionFor(Key::Tab, ctrl, false), Action::FocusPage);
        EXPECT_EQ(TabNavigation::ActionFor(Key::Down, ctrl, false), Action::FocusPage);
    }
}

TEST(TabNavigation, OtherKeysAreNotHandled) {
    EXPECT_EQ(TabNavigation::ActionFor(Key::Other, false, false), Action::None);
    EXPECT_EQ(TabNavigation::ActionFor(Key::Other, true, true), Action::None);
}
