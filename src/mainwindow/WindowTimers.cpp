#include "mainwindow/WindowTimers.h"

void WindowTimers::SetTimer(int id, int elapseMs) {
    Entry& entry = m_timers[id];
    // A running timer is stopped and started again with the new period.
    entry.timer.start(elapseMs, &m_owner);
    entry.period = elapseMs;
}

bool WindowTimers::KillTimer(int id) {
    const auto found = m_timers.find(id);
    if (found == m_timers.end())
        return false;
    found->second.timer.stop();
    m_timers.erase(found);
    return true;
}

void WindowTimers::KillAll() {
    for (auto& [id, entry] : m_timers)
        entry.timer.stop();
    m_timers.clear();
}

bool WindowTimers::IsActive(int id) const {
    const auto found = m_timers.find(id);
    return found != m_timers.end() && found->second.timer.isActive();
}

std::optional<int> WindowTimers::Period(int id) const {
    if (!IsActive(id))
        return std::nullopt;
    return m_timers.at(id).period;
}

std::vector<int> WindowTimers::ActiveIds() const {
    std::vector<int> ids;
    for (const auto& [id, entry] : m_timers) {
        if (entry.timer.isActive())
            ids.push_back(id);
    }
    return ids;
}

std::optional<int> WindowTimers::IdOf(int qtTimerId) const {
    for (const auto& [id, entry] : m_timers) {
        if (entry.timer.isActive() && entry.timer.timerId() == qtTimerId)
            return id;
    }
    return std::nullopt;
}
