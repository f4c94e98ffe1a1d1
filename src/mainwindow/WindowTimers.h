#pragma once
// The timers of one window, by the window's own ids. Setting an id that runs already
// replaces it: the new period counts from now. The ticks arrive as the owner's timer
// events; IdOf turns a tick back into the id.

#include <QBasicTimer>

#include <map>
#include <optional>
#include <vector>

class QObject;

class WindowTimers {
public:
    explicit WindowTimers(QObject& owner) : m_owner(owner) {}
    WindowTimers(const WindowTimers&) = delete;
    WindowTimers& operator=(const WindowTimers&) = delete;

    // Starts timer `id` every `elapseMs` milliseconds, replacing a running one of that id.
    void SetTimer(int id, int elapseMs);
    // False when no timer of that id runs.
    bool KillTimer(int id);
    void KillAll();

    bool IsActive(int id) const;
    // The period of a running timer; nothing when it doesn't run.
    std::optional<int> Period(int id) const;
    // The ids of the running timers, in increasing order.
    std::vector<int> ActiveIds() const;

    // The id of the timer behind a tick of the owner (QTimerEvent::timerId()), if it is one
    // of these.
    std::optional<int> IdOf(int qtTimerId) const;

private:
    struct Entry {
        QBasicTimer timer;
        int period = 0;
    };

    QObject& m_owner;
    std::map<int, Entry> m_timers;
};
