#pragma once
// A window port that writes every call into the journal as "<name> post|send <message>
// <wParam> <lParam>" and can be told whether it is a window and what a send does. For 1060
// the journal shows the id of the message that wParam points to instead of the pointer.

#include "EventJournal.h"
#include "mainwindow/PrivateMessages.h"
#include "messaging/IMessage.h"
#include "messaging/WindowPort.h"

#include <atomic>
#include <functional>
#include <string>
#include <utility>

class RecordingWindowPort : public WindowPort {
public:
    using SendHook = std::function<std::intptr_t(int, std::uintptr_t, std::intptr_t)>;

    explicit RecordingWindowPort(EventJournal& journal, std::string name = "main")
        : m_journal(journal), m_name(std::move(name)) {}

    bool post(int message, std::uintptr_t wParam, std::intptr_t lParam) override {
        m_journal.Add(Describe("post", message, wParam, lParam));
        return exists.load();
    }
    std::intptr_t send(int message, std::uintptr_t wParam, std::intptr_t lParam) override {
        m_journal.Add(Describe("send", message, wParam, lParam));
        return onSend ? onSend(message, wParam, lParam) : 0;
    }
    bool isWindow() override { return exists.load(); }

    std::atomic<bool> exists{true};
    // Runs inside send, on the sender's thread; set it before the port is used.
    SendHook onSend;

private:
    std::string Describe(const char* kind, int message, std::uintptr_t wParam,
                         std::intptr_t lParam) const {
        std::string line = m_name + " " + kind + " " + std::to_string(message) + " ";
        if (message == WM_QG_SERVICE_MESSAGE && wParam != 0)
            line += "msg" + std::to_string(reinterpret_cast<const IMessage*>(wParam)->GetId());
        else
            line += std::to_string(wParam);
        return line + " " + std::to_string(lParam);
    }

    EventJournal& m_journal;
    const std::string m_name;
};
