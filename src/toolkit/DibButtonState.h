#pragma once
// The input state table of a bitmap button: hover, capture, pressed, checked, the frozen
// rule and the click. The widget turns its events into these calls and draws what the
// state says; the state never touches a window itself, only its DibButtonHost.
//
// Capture is kept here: the button takes it on a press and gives it up on release, and the
// widget reports a capture that was taken away (OnCaptureLost). A button without a hover
// picture leaves the mouse to the plain button behaviour (DefaultDown/DefaultUp below),
// which takes the capture itself and clicks on a release inside.
// While the capture is held the button is not hot: the hover picture and the enter and
// leave messages belong to a pointer that moves without a button held.

#include <cstdint>

class DibButtonHost;

class DibButtonState {
public:
    enum class Key { Space, Return, Other };

    explicit DibButtonState(DibButtonHost& host) : m_host(host) {}

    // Configuration.
    void SetHasHover(bool hasHover) { m_hasHover = hasHover; }
    void SetPushMode(bool pushMode) { m_pushMode = pushMode; }
    void SetLatched(bool latched) { m_latched = latched; }
    void SetClickSound(bool on, std::uint16_t soundId);
    void SetCheckState(bool check);
    bool GetCheckState() const { return m_pressed && m_checked; }

    // Events of the window.
    void OnMouseDown();
    void OnMouseDoubleClick();
    void OnMouseUp(bool inside);
    void OnMouseMove(bool inside);
    void OnMouseLeave();
    // The capture went to someone else while held.
    void OnCaptureLost();
    void OnFocusIn();
    void OnFocusOut();
    void OnEnableChanged();
    // Both answer whether the key was handled; other keys go on to the parent.
    bool OnKeyDown(Key key);
    bool OnKeyUp(Key key);

    // State, as the drawing reads it.
    bool Hot() const { return m_hot; }
    bool Focused() const { return m_focused; }
    bool Pressed() const { return m_pressed; }
    bool Checked() const { return m_checked; }
    bool Latched() const { return m_latched; }
    bool PushMode() const { return m_pushMode; }
    bool HasHover() const { return m_hasHover; }
    bool HasCapture() const { return m_capture; }
    bool SoundOn() const { return m_soundOn; }
    std::uint16_t SoundId() const { return m_soundId; }
    // A selected button of a group that is latched ignores all input.
    bool Frozen() const { return m_pressed && m_checked && m_latched; }

private:
    void TakeCapture() { m_capture = true; }
    // Taking the capture ends hover tracking with a leave notice, which arrives once the
    // press has been handled: a held button is not hot, and shows its normal picture when
    // the pointer is dragged off it.
    void EndHoverForCapture(bool hadCapture);
    // Giving the capture up tells the button at once that it changed, as a release does.
    void ReleaseCapture();
    void CaptureChanged();
    void DefaultDown();
    void DefaultUp(bool inside);
    // What a press makes of `pressed`: down for a push button, the other side for a toggle.
    bool PressedByPress() const { return m_pushMode || !m_checked; }

    DibButtonHost& m_host;
    bool m_hot = false;
    bool m_focused = false;
    bool m_pressed = false;
    bool m_pushMode = true;
    bool m_latched = false;
    bool m_checked = false;
    bool m_soundOn = false;
    std::uint16_t m_soundId = 0;
    bool m_hasHover = false;
    bool m_capture = false;
};
