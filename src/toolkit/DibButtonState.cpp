#include "toolkit/DibButtonState.h"

#include "toolkit/DibButtonHost.h"

void DibButtonState::SetClickSound(bool on, std::uint16_t soundId) {
    m_soundOn = on;
    m_soundId = soundId;
}

void DibButtonState::SetCheckState(bool check) {
    if (check) {
        m_host.TakeFocus();
        m_focused = true;
        m_pressed = true;
        m_checked = true;
    } else {
        // Unchecking leaves the input focus where it is, even on this button.
        m_focused = false;
        m_pressed = false;
        m_checked = false;
    }
    m_host.Redraw();
}

void DibButtonState::OnMouseDown() {
    if (Frozen())
        return;
    const bool hadCapture = m_capture;
    m_host.TakeFocus();
    if (m_soundOn)
        m_host.PlayClickSound(m_soundId);
    if (m_hasHover)
        TakeCapture();
    else
        DefaultDown();
    if (m_capture) {
        m_pressed = PressedByPress();
        if (m_pressed)
            m_host.Redraw();
    }
    EndHoverForCapture(hadCapture);
}

void DibButtonState::OnMouseDoubleClick() {
    if (Frozen())
        return;
    const bool hadCapture = m_capture;
    if (!m_hasHover)
        DefaultDown();
    if (!m_capture)
        TakeCapture();
    if (!m_pressed) {
        m_pressed = true;
        m_host.Redraw();
    }
    EndHoverForCapture(hadCapture);
}

void DibButtonState::OnMouseUp(bool inside) {
    if (Frozen())
        return;
    if (!m_hasHover)
        DefaultUp(inside);
    if (m_capture) {
        // A toggle reports every release it holds the capture for, even outside; a push
        // button only one that ends over it (pressed follows the pointer while held).
        if (!m_pushMode || (m_hasHover && m_pressed)) {
            ReleaseCapture();
            m_host.SendCommand();
        }
    }
    // Giving up the capture has already dropped a push button's pressed state.
    m_checked = m_pressed;
    if (!m_pressed)
        m_host.Redraw();
    ReleaseCapture();
    m_host.RefreshToolTip();
}

void DibButtonState::OnMouseMove(bool inside) {
    if (m_capture) {
        if (m_pressed != inside) {
            m_pressed = inside;
            m_host.Redraw();
        }
    } else if (m_hasHover && !m_hot) {
        m_hot = true;
        m_host.Redraw();
        m_host.SendMouseEnter();
        m_host.TrackMouseLeave();
    }
}

void DibButtonState::OnMouseLeave() {
    if (!m_hot)
        return;
    m_host.SendMouseLeave();
    m_hot = false;
    m_host.Redraw();
}

void DibButtonState::OnCaptureLost() {
    ReleaseCapture();
}

void DibButtonState::OnFocusIn() {
    m_focused = true;
    m_host.Redraw();
}

void DibButtonState::OnFocusOut() {
    m_focused = false;
    m_host.Redraw();
}

void DibButtonState::OnEnableChanged() {
    m_host.Redraw();
}

bool DibButtonState::OnKeyDown(Key key) {
    if (Frozen())
        return true;
    if (key == Key::Other)
        return false;
    // Held keys repeat this; it sets the same value each time and clicks nothing.
    m_pressed = PressedByPress();
    if (m_pressed)
        m_host.Redraw();
    return true;
}

bool DibButtonState::OnKeyUp(Key key) {
    if (Frozen())
        return true;
    if (key == Key::Other)
        return false;
    m_host.SendCommand();
    if (m_pushMode) {
        m_pressed = false;
        m_checked = false;
        m_host.Redraw();
    } else {
        m_checked = m_pressed;
        if (!m_pressed)
            m_host.Redraw();
    }
    return true;
}

void DibButtonState::EndHoverForCapture(bool hadCapture) {
    if (m_capture && !hadCapture)
        OnMouseLeave();
}

void DibButtonState::ReleaseCapture() {
    if (!m_capture)
        return;
    m_capture = false;
    CaptureChanged();
}

void DibButtonState::CaptureChanged() {
    if (!m_pressed)
        return;
    if (m_pushMode)
        m_pressed = false;
    m_host.Redraw();
}

// The plain button's own handling of a press: it takes the capture.
void DibButtonState::DefaultDown() {
    if (!m_capture)
        TakeCapture();
}

// The plain button's own handling of a release: it gives the capture up and clicks when the
// pointer is still over it.
void DibButtonState::DefaultUp(bool inside) {
    if (!m_capture)
        return;
    ReleaseCapture();
    if (inside)
        m_host.SendCommand();
}
