// The left column's rules: what a click on each button does and which hint it shows.

#include "mainwindow/MainDlgSections.h"

#include <gtest/gtest.h>

using Action = MainDlgSections::Action;
using HintAction = MainDlgSections::HintAction;

TEST(MainDlgSections, TheThreeSectionsShowTheirPages) {
    EXPECT_EQ(MainDlgSections::SectionFor(1000).action, Action::ShowPage);
    EXPECT_EQ(MainDlgSections::SectionFor(1000).pageIndex, 0);
    EXPECT_EQ(MainDlgSections::SectionFor(1001).action, Action::ShowPage);
    EXPECT_EQ(MainDlgSections::SectionFor(1001).pageIndex, 1);
    EXPECT_EQ(MainDlgSections::SectionFor(1003).action, Action::ShowPage);
    EXPECT_EQ(MainDlgSections::SectionFor(1003).pageIndex, 2);
}

TEST(MainDlgSections, AboutHiddenAndUpdateHaveTheirOwnActions) {
    EXPECT_EQ(MainDlgSections::SectionFor(1017).action, Action::About);
    EXPECT_EQ(MainDlgSections::SectionFor(1010).action, Action::SelectOnly);
    EXPECT_EQ(MainDlgSections::SectionFor(1008).action, Action::RunUpdate);
}

TEST(MainDlgSections, OtherIdsDoNothing) {
    for (int id : {1002, 1005, 1015, 0, 2, 40000})
        EXPECT_EQ(MainDlgSections::SectionFor(id).action, Action::Nothing) << id;
}

TEST(MainDlgSections, HintsOfTheSections) {
    EXPECT_EQ(MainDlgSections::HintFor(1000).action, HintAction::Show);
    EXPECT_EQ(MainDlgSections::HintFor(1000).stringId, 145u);
    EXPECT_EQ(MainDlgSections::HintFor(1001).stringId, 146u);
    EXPECT_EQ(MainDlgSections::HintFor(1003).stringId, 147u);
    EXPECT_EQ(MainDlgSections::HintFor(1017).action, HintAction::Hide);
    for (int id : {1002, 1005, 1008, 1009, 1010, 0})
        EXPECT_EQ(MainDlgSections::HintFor(id).action, HintAction::Leave) << id;
    EXPECT_EQ(std::u16string(MainDlgSections::LeaveText), u" ");
}
