#pragma once
// The progress bar of the start/stop dialog as numbers: range 0 to 120, step 2, and a limit
// of 114 for its own running. Each timer tick steps while the position is below the limit, so
// at 100 ms a tick the bar reaches 114 in 5.7 seconds and waits there; the worker's finish
// sets it to the end of the range.

class ServiceProgress {
public:
    static constexpr int RangeMin = 0;
    static constexpr int RangeMax = 120;
    static constexpr int Step = 2;
    static constexpr int Limit = 114;

    int Position() const { return m_position; }
    // One timer tick; true when the position moved.
    bool Tick();
    // The worker has finished: the end of the range.
    void Finish() { m_position = RangeMax; }

private:
    int m_position = RangeMin;
};
