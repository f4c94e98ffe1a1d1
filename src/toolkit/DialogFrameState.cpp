#include "toolkit/DialogFrameState.h"

int DialogFrameState::HitTestFrame(const QPoint& windowPoint) const {
    if (m_closeButton && m_rcClose.contains(windowPoint))
        return HitClose;
    if (m_helpButton && m_rcHelp.contains(windowPoint))
        return HitHelp;
    return HitCaption;
}

int DialogFrameState::NcHitTest(const QPoint& clientPoint) {
    m_nHit = HitTestFrame(ToFrame(clientPoint));
    return m_nHit;
}

DialogFrameState::Command DialogFrameState::ReleaseCommand(int code) const {
    if (code == HitClose && m_nDownHit == HitClose)
        return Command::Cancel;
    if (code == HitHelp && m_nDownHit == HitHelp)
        return Command::Help;
    return Command::None;
}

DialogFrameState::Outcome DialogFrameState::NcMouseMove(int code) {
    Outcome out;
    const bool wasDown = m_bDown;
    const bool wasOver = m_bOver;
    if (!IsButton(code)) {
        m_bDown = false;
        m_bOver = false;
    } else {
        m_bOver = true;
    }
    out.redraw = wasDown != m_bDown || wasOver != m_bOver;
    out.passOn = true;
    return out;
}

DialogFrameState::Outcome DialogFrameState::NcLButtonDown(int code) {
    Outcome out;
    if (!IsButton(code)) {
        m_nDownHit = code;
        m_bDown = false;
        out.passOn = true;
        return out;
    }
    const bool changed = !m_bDown;
    m_bDown = true;
    m_nDownHit = code;
    if (changed) {
        out.redraw = true;
        out.capture = true;
        m_captured = true;
    }
    return out;
}

DialogFrameState::Outcome DialogFrameState::NcLButtonUp(int code) {
    Outcome out;
    const bool changed = m_bDown;
    m_bDown = false;
    if (m_captured) {
        m_captured = false;
        out.releaseCapture = true;
    }
    out.command = ReleaseCommand(code);
    if (out.command != Command::None)
        return out;
    out.redraw = changed;
    out.passOn = true;
    return out;
}

DialogFrameState::Outcome DialogFrameState::MouseMove(const QPoint& clientPoint,
                                                      bool onlyLeftButton) {
    Outcome out;
    const bool wasDown = m_bDown;
    const bool wasOver = m_bOver;
    m_bDown = onlyLeftButton;
    m_bOver = IsButton(HitTestFrame(ToFrame(clientPoint)));
    out.redraw = wasDown != m_bDown || wasOver != m_bOver;
    out.passOn = true;
    return out;
}

DialogFrameState::Outcome DialogFrameState::LButtonUp(const QPoint& clientPoint) {
    Outcome out;
    out.command = ReleaseCommand(HitTestFrame(ToFrame(clientPoint)));
    if (out.command != Command::None)
        return out;
    const bool changed = m_bDown;
    m_bDown = false;
    out.redraw = changed;
    if (m_captured) {
        m_captured = false;
        out.releaseCapture = true;
    }
    out.passOn = true;
    return out;
}
