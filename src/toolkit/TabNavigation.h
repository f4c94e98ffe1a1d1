#pragma once
// The tab control's choices that need no window: the next and previous enabled page with
// wrap-around, the page that follows a removed one, and what a key does.

#include <functional>

class TabNavigation {
public:
    using IsEnabled = std::function<bool(int)>;

    // The first enabled page after (before) `from`, wrapping round; `from` itself comes
    // last. -1 when no page is enabled, and for an empty control. From -1 the search
    // starts at the first (last) page.
    static int Next(int from, int count, const IsEnabled& enabled);
    static int Previous(int from, int count, const IsEnabled& enabled);

    // The page to show once page `removed` goes, counted before the removal. While another
    // page is current it stays current (-2 says so). Otherwise, with at least two pages,
    // the page before it (or the first) if enabled, else the next enabled after that;
    // with fewer, none (-1).
    static constexpr int KeepCurrent = -2;
    static int PageAfterRemoval(int removed, int current, int count, const IsEnabled& enabled);

    enum class Key { PageUp, PageDown, Left, Right, Tab, Down, Other };
    enum class Action {
        None,             // not handled here
        FocusNextControl, // focus to the next control of the dialog
        FocusPreviousControl,
        ShowNext, // the next enabled page, shown, the focus staying here
        ShowPrevious,
        FocusPage, // the focus into the current page, which is told it was selected
    };
    static Action ActionFor(Key key, bool ctrl, bool shift);
};
