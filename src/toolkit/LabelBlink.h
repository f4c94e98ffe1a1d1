#pragma once
// The label's blinking: a mode (none, text, background), a phase that the 500 ms timer
// flips, and whether that timer runs. The widget starts and stops its timer to match.

class LabelBlink {
public:
    enum Mode { None = 0, Text = 1, Background = 2 };
    static constexpr int TimerId = 1;
    static constexpr int PeriodMs = 500;

    // Stops a running timer; with true starts over at phase 0 with the timer and mode 1.
    // With false the mode becomes 0; the phase stays as reached.
    void FlashText(bool on);
    // Stops a running timer; with true starts over at phase 0 with the timer and mode 2.
    // With false nothing else changes (the mode stays).
    void FlashBackground(bool on);
    // The timer fired.
    void Tick() { m_phase = !m_phase; }

    bool Phase() const { return m_phase; }
    int BlinkMode() const { return m_mode; }
    bool TimerRunning() const { return m_timerRunning; }
    // In phase 0 of text blinking the text takes the background's colour.
    bool TextHidden() const { return m_mode == Text && !m_phase; }

private:
    bool m_phase = false;
    bool m_timerRunning = false;
    int m_mode = None;
};
