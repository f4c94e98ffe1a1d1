#include "app/ActivationListener.h"

#include <QDir>
#include <QList>
#include <QLocalSocket>

#include <unistd.h>

ActivationListener::ActivationListener(Handler handler, QObject* parent)
    : QObject(parent), m_handler(std::move(handler)) {
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &ActivationListener::OnNewConnection);
}

ActivationListener::~ActivationListener() {
    Close();
}

QString ActivationListener::DefaultSocketPath() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty())
        return QDir(runtime).filePath(QStringLiteral("quillgate-activation"));
    return QDir(QDir::tempPath())
        .filePath(QStringLiteral("quillgate-activation-%1").arg(::getuid()));
}

bool ActivationListener::Listen(const QString& path) {
    if (m_server.isListening())
        return true;
    QLocalServer::removeServer(path);
    return m_server.listen(path);
}

void ActivationListener::Close() {
    if (m_server.isListening())
        m_server.close();
}

void ActivationListener::OnNewConnection() {
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { OnReadyRead(socket); });
        if (socket->bytesAvailable() > 0)
            OnReadyRead(socket);
    }
}

void ActivationListener::OnReadyRead(QLocalSocket* socket) {
    if (socket->property("answered").toBool())
        return;
    if (socket->bytesAvailable() > RequestLimit) {
        socket->abort();
        return;
    }
    const QByteArray pending = socket->peek(RequestLimit);
    if (pending.count('\n') < 3)
        return;
    const QList<QByteArray> lines = socket->readAll().split('\n');
    socket->setProperty("answered", true);
    bool shown = false;
    if (lines.size() >= 3 && lines[0] == RequestWord)
        shown = m_handler(QString::fromUtf8(lines[1]), lines[2]);
    socket->write(shown ? ShownAnswer : NoWindowAnswer);
    socket->write("\n");
    socket->flush();
    socket->disconnectFromServer();
}
