#pragma once
// A main window as the send path sees it (WindowPort), which writes down every message it
// is sent or posted, in order, and answers 0. Installed as the process's main window port
// while it lives.

#include "messaging/MainWindowPort.h"
#include "messaging/WindowPort.h"

#include <cstdint>
#include <mutex>
#include <vector>

class RecordingWindowPort : public WindowPort {
public:
    struct Message {
        bool sent;
        int number;
        std::uintptr_t wParam;
        std::intptr_t lParam;
        bool operator==(const Message&) const = default;
    };

    RecordingWindowPort() { MainWindowPort::Install(this); }
    ~RecordingWindowPort() override { MainWindowPort::Install(nullptr); }
    RecordingWindowPort(const RecordingWindowPort&) = delete;
    RecordingWindowPort& operator=(const RecordingWindowPort&) = delete;

    bool post(int message, std::uintptr_t wParam, std::intptr_t lParam) override {
        const std::lock_guard lock(m_mutex);
        m_messages.push_back(Message{false, message, wParam, lParam});
        return true;
    }
    std::intptr_t send(int message, std::uintptr_t wParam, std::intptr_t lParam) override {
        const std::lock_guard lock(m_mutex);
        m_messages.push_back(Message{true, message, wParam, lParam});
        return 0;
    }
    bool isWindow() override { return true; }

    std::vector<Message> Messages() const {
        const std::lock_guard lock(m_mutex);
        return m_messages;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<Message> m_messages;
};
