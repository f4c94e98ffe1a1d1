#pragma once
// What the main window's left column does: a click on a section button (a command with
// notification 0 that no earlier entry of the message map took) and the hint shown while
// the pointer is over a button.

#include <cstdint>

class MainDlgSections {
public:
    enum class Action {
        ShowPage,   // switch to the page of `pageIndex`
        About,      // select the button, show it checked, show the About box
        SelectOnly, // select the button (1010: outside the group, so all members go up)
        RunUpdate,  // RunFreshUpdate(0)
        Nothing,
    };
    struct Section {
        Action action;
        int pageIndex; // for ShowPage
    };
    static Section SectionFor(int controlId);

    enum class HintAction { Show, Hide, Leave };
    struct Hint {
        HintAction action;
        std::uint32_t stringId; // for Show
    };
    // The hint for the pointer entering the button `controlId`.
    static Hint HintFor(int controlId);
    // What the label holds once the pointer has left: one blank.
    static constexpr const char16_t* LeaveText = u" ";
};
