#include "toolkit/LabelBlink.h"

void LabelBlink::FlashText(bool on) {
    m_timerRunning = false;
    if (on) {
        m_phase = false;
        m_timerRunning = true;
        m_mode = Text;
    } else {
        m_mode = None;
    }
}

void LabelBlink::FlashBackground(bool on) {
    m_timerRunning = false;
    if (on) {
        m_phase = false;
        m_timerRunning = true;
        m_mode = Background;
    }
}
