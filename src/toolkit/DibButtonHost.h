#pragma once
// What a bitmap button's state asks of its window: focus, sound, the two messages to the
// parent, the command, leave tracking and repainting. The widget implements it; the tests
// record it, so that the state table runs without a display.

class DibButtonHost {
public:
    DibButtonHost() = default;
    DibButtonHost(const DibButtonHost&) = delete;
    DibButtonHost& operator=(const DibButtonHost&) = delete;
    virtual ~DibButtonHost() = default;

    virtual void TakeFocus() = 0;
    virtual void PlayClickSound(int soundId) = 0;
    // The parent's command for this control (notification 0).
    virtual void SendCommand() = 0;
    virtual void SendMouseEnter() = 0;
    virtual void SendMouseLeave() = 0;
    // Asks for one notice when the pointer leaves the window.
    virtual void TrackMouseLeave() = 0;
    // Paints the button now with its current state.
    virtual void Redraw() = 0;
    // Hands the tool tip its text again after a click.
    virtual void RefreshToolTip() = 0;
};
