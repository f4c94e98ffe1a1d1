#pragma once
// The second copy's question to the first (see ActivationListener): show and raise the
// window of this title. It waits a few seconds at most for the answer, since the first copy
// answers from its event loop and may be busy with a dialog of its own.

#include <QByteArray>
#include <QString>

class ActivationRequest {
public:
    enum class Answer {
        Shown,    // the first copy showed its window
        NoWindow, // the first copy has no window of that title
        NoAnswer, // nobody listens, or no answer came in time
    };

    static constexpr int DefaultTimeoutMs = 5000;

    static Answer AskFirstCopy(const QString& title, const QByteArray& token, const QString& path,
                               int timeoutMs = DefaultTimeoutMs);
};
