#pragma once
// A manual-reset event that a thread can wait on together with other objects (see
// CountingSemaphore): an eventfd that is readable while the event is set. Once set it stays
// set, for every waiter present and future, until reset.

class WaitableEvent {
public:
    // Not set. False from valid() when the descriptor could not be made.
    WaitableEvent();
    ~WaitableEvent();
    WaitableEvent(const WaitableEvent&) = delete;
    WaitableEvent& operator=(const WaitableEvent&) = delete;

    bool valid() const { return m_fd != -1; }
    bool set();
    bool reset();
    bool isSet() const;
    // Readable (for poll) while set; -1 when there is no descriptor.
    int handle() const { return m_fd; }

private:
    int m_fd = -1;
};
