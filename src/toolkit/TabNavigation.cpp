#include "toolkit/TabNavigation.h"

int TabNavigation::Next(int from, int count, const IsEnabled& enabled) {
    if (count <= 0)
        return -1;
    const int start = from < 0 ? -1 : from;
    for (int step = 1; step <= count; ++step) {
        const int index = (start + step) % count;
        if (enabled(index))
            return index;
    }
    return -1;
}

int TabNavigation::Previous(int from, int count, const IsEnabled& enabled) {
    if (count <= 0)
        return -1;
    const int start = from < 0 ? count : from;
    for (int step = 1; step <= count; ++step) {
        const int index = ((start - step) % count + count) % count;
        if (enabled(index))
            return index;
    }
    return -1;
}

int TabNavigation::PageAfterRemoval(int removed, int current, int count, const IsEnabled& enabled) {
    if (removed != current)
        return KeepCurrent;
    if (count < 2)
        return -1;
    const int before = removed - 1 < 0 ? 0 : removed - 1;
    return enabled(before) ? before : Next(before, count, enabled);
}

TabNavigation::Action TabNavigation::ActionFor(Key key, bool ctrl, bool shift) {
    switch (key) {
    case Key::PageUp:
        if (ctrl)
            return Action::ShowPrevious;
        return shift ? Action::FocusPreviousControl : Action::FocusNextControl;
    case Key::PageDown:
        if (ctrl)
            return shift ? Action::ShowPrevious : Action::ShowNext;
        return shift ? Action::FocusPreviousControl : Action::FocusNextControl;
    case Key::Left:
        return Action::ShowPrevious;
    case Key::Right:
        return Action::ShowNext;
    case Key::Tab:
    case Key::Down:
        return Action::FocusPage;
    case Key::Other:
        break;
    }
    return Action::None;
}
