#include "app/ActivationRequest.h"

#include "app/ActivationListener.h"

#include <QDeadlineTimer>
#include <QLocalSocket>

ActivationRequest::Answer ActivationRequest::AskFirstCopy(const QString& title,
                                                          const QByteArray& token,
                                                          const QString& path, int timeoutMs) {
    const QDeadlineTimer deadline(timeoutMs);
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(static_cast<int>(deadline.remainingTime())))
        return Answer::NoAnswer;

    QByteArray request(ActivationListener::RequestWord);
    request += '\n';
    // A line break inside the title or token would shift the lines; neither has one.
    request += title.toUtf8().replace('\n', ' ');
    request += '\n';
    request += QByteArray(token).replace('\n', ' ');
    request += '\n';
    socket.write(request);
    if (!socket.waitForBytesWritten(static_cast<int>(deadline.remainingTime())))
        return Answer::NoAnswer;

    QByteArray answer;
    while (!answer.contains('\n')) {
        if (socket.bytesAvailable() == 0 &&
            !socket.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            break;
        answer += socket.readAll();
    }
    const QByteArray line = answer.left(answer.indexOf('\n'));
    if (line == ActivationListener::ShownAnswer)
        return Answer::Shown;
    if (line == ActivationListener::NoWindowAnswer)
        return Answer::NoWindow;
    return Answer::NoAnswer;
}
