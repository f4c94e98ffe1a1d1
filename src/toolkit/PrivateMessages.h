#pragma once
// Numbers of the private window messages that the toolkit's controls send to their parent.

inline constexpr int WM_QG_BUTTON_ENTER = 1480; // wParam: the button; the pointer came in
inline constexpr int WM_QG_BUTTON_LEAVE = 1481; // wParam: the button; the pointer went away
