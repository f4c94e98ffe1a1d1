#pragma once
// The first copy's ear for a second copy: a local socket of the user, in the runtime folder,
// on which a copy that finds the program already running asks for the main window to be
// shown and raised. It listens only while the main window exists, so that "nobody answers"
// means what "no window of that title" meant: the first copy has no window yet, or there is
// no first copy of this user.
//
// A request is three lines of UTF-8: "show", the title of the window that is wanted, and the
// caller's activation token (empty when it has none; Wayland compositors let a window raise
// itself only with one). The answer is one line, "shown" or "no window".

#include <QByteArray>
#include <QLocalServer>
#include <QObject>
#include <QString>

#include <functional>

class QLocalSocket;

class ActivationListener : public QObject {
    Q_OBJECT

public:
    // Shows and raises the window whose title is `title`; false when there is none.
    using Handler = std::function<bool(const QString& title, const QByteArray& token)>;

    static constexpr const char* RequestWord = "show";
    static constexpr const char* ShownAnswer = "shown";
    static constexpr const char* NoWindowAnswer = "no window";
    // A request longer than this is not one.
    static constexpr qsizetype RequestLimit = 8192;

    explicit ActivationListener(Handler handler, QObject* parent = nullptr);
    ~ActivationListener() override;

    // Listens on `path`, replacing a socket file that a crashed copy left behind; only the
    // holder of the single-instance lock may call it. The socket is the user's alone.
    bool Listen(const QString& path = DefaultSocketPath());
    void Close();
    bool IsListening() const { return m_server.isListening(); }

    // $XDG_RUNTIME_DIR/quillgate-activation, or the temporary folder with the user's id in
    // the name where there is no runtime folder.
    static QString DefaultSocketPath();

private:
    void OnNewConnection();
    void OnReadyRead(QLocalSocket* socket);

    Handler m_handler;
    QLocalServer m_server;
};
