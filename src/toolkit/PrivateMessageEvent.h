#pragma once
// A private window message of the program: a QEvent whose type is the message number
// (1025..1481, all inside Qt's user range), with the two parameters and the answer that
// the receiver gives. Post queues it to the target; Send delivers it at once and returns
// the answer, waiting for the target's thread when called from another one.

#include <QEvent>
#include <QPointer>

#include <cstdint>

class QObject;

class PrivateMessageEvent : public QEvent {
public:
    using WParam = std::uintptr_t;
    using LParam = std::intptr_t;
    using Result = std::intptr_t;

    PrivateMessageEvent(int message, WParam wParam, LParam lParam);

    int Message() const { return static_cast<int>(type()); }
    WParam wParam() const { return m_wParam; }
    LParam lParam() const { return m_lParam; }
    Result GetResult() const { return m_result; }
    void SetResult(Result result) { m_result = result; }

    // True for the numbers that a private message may carry.
    static bool IsPrivateMessage(int message) { return message >= 1025 && message <= 1481; }

    // Delivers the message on the target's thread and returns its answer; 0 when the target
    // is gone (or is gone before the target's thread reaches the message).
    static Result Send(QObject* target, int message, WParam wParam = 0, LParam lParam = 0);
    // Queues the message for the target; false when there is no target.
    static bool Post(QObject* target, int message, WParam wParam = 0, LParam lParam = 0);

    // The value that stands for a window in wParam or lParam, as a window handle would,
    // and the window again. Only sound while the window lives, as for a sent message.
    static WParam Handle(const QObject* window) { return reinterpret_cast<WParam>(window); }
    static QObject* Object(WParam handle) { return reinterpret_cast<QObject*>(handle); }

private:
    WParam m_wParam;
    LParam m_lParam;
    Result m_result = 0;
};
