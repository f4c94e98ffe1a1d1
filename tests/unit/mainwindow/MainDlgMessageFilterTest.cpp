// The main window's look at the program's input before delivery.

#include "mainwindow/MainDlgMessageFilter.h"

#include <gtest/gtest.h>

using Filter = MainDlgMessageFilter;
using Action = Filter::Action;

namespace {

Filter::Input Input(Filter::Event event, bool forMainWindow, bool receiverIsMainWindow,
                    bool hasFocus, bool receiverHasFocus) {
    Filter::Input input;
    input.event = event;
    input.forMainWindow = forMainWindow;
    input.receiverIsMainWindow = receiverIsMainWindow;
    input.hasFocus = hasFocus;
    input.receiverHasFocus = receiverHasFocus;
    return input;
}

} // namespace

TEST(MainDlgMessageFilter, ReturnForTheWindowGoesToTheFocusedControl) {
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::ReturnKeyDown, true, true, true, false)),
              Action::SendToFocus);
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::ReturnKeyDown, true, false, true, false)),
              Action::SendToFocus);
}

TEST(MainDlgMessageFilter, ReturnAlreadyForTheFocusedControlIsDeliveredOnce) {
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::ReturnKeyDown, true, false, true, true)),
              Action::Deliver);
}

TEST(MainDlgMessageFilter, ReturnWithNothingFocusedGoesNowhere) {
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::ReturnKeyDown, true, true, false, false)),
              Action::Drop);
}

TEST(MainDlgMessageFilter, AReturnPassedUpFromTheFocusedControlGoesOnWithoutACopy) {
    // The focused control ignored it, so it reaches a control that holds the focus.
    Filter::Input input = Input(Filter::Event::ReturnKeyDown, true, false, true, false);
    input.receiverContainsFocus = true;
    EXPECT_EQ(Filter::Decide(input), Action::Deliver);
    // And at last the main window, which holds every control.
    input.receiverIsMainWindow = true;
    EXPECT_EQ(Filter::Decide(input), Action::Deliver);
}

TEST(MainDlgMessageFilter, ARightButtonReleaseOnAControlAlsoGoesToTheMainWindow) {
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::RightButtonUp, true, false, true, true)),
              Action::CopyToMainWindow);
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::RightButtonUp, true, true, true, false)),
              Action::Deliver);
}

TEST(MainDlgMessageFilter, ARightButtonReleasePassedUpAfterItsCopyMakesNoOther) {
    Filter::Input input = Input(Filter::Event::RightButtonUp, true, false, true, false);
    input.alreadyCopied = true;
    EXPECT_EQ(Filter::Decide(input), Action::Deliver);
    // The main window already had it once.
    input.receiverIsMainWindow = true;
    EXPECT_EQ(Filter::Decide(input), Action::Drop);
}

TEST(MainDlgMessageFilter, OtherWindowsAndOtherInputAreLeftAlone) {
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::ReturnKeyDown, false, false, true, false)),
              Action::Deliver);
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::RightButtonUp, false, false, true, false)),
              Action::Deliver);
    EXPECT_EQ(Filter::Decide(Input(Filter::Event::Other, true, false, true, false)),
              Action::Deliver);
}
