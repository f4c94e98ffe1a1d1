#include "app/ActivationListener.h"
#include "app/ActivationRequest.h"

#include "AppTestApp.h"
#include "support/SandboxRoot.h"
#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <future>
#include <sys/stat.h>

namespace {

using Answer = ActivationRequest::Answer;

class ActivationTest : public ::testing::Test {
protected:
    void SetUp() override { AppTestApp(); }

    // Asks on another thread while this one runs the listener's events.
    Answer AskWhileServing(const QString& title, const QByteArray& token) {
        auto answer = std::async(std::launch::async, [&] {
            return ActivationRequest::AskFirstCopy(title, token, path, 5000);
        });
        TestSupport::WaitFor([&] {
            QCoreApplication::processEvents();
            return answer.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
        });
        return answer.get();
    }

    TestSupport::SandboxRoot sandbox;
    QString path = ActivationListener::DefaultSocketPath();
    QString askedTitle;
    QByteArray askedToken;
    int asked = 0;
    bool windowThere = true;
    ActivationListener listener{[this](const QString& title, const QByteArray& token) {
        ++asked;
        askedTitle = title;
        askedToken = token;
        return windowThere;
    }};
};

TEST_F(ActivationTest, TheSocketLiesInTheUsersRuntimeFolder) {
    EXPECT_EQ(path, QString::fromStdString(sandbox.file("runtime/quillgate-activation")));
}

TEST_F(ActivationTest, WithoutARuntimeFolderTheSocketCarriesTheUsersId) {
    const QByteArray saved = qgetenv("XDG_RUNTIME_DIR");
    qunsetenv("XDG_RUNTIME_DIR");
    const QString fallback = ActivationListener::DefaultSocketPath();
    qputenv("XDG_RUNTIME_DIR", saved);
    EXPECT_EQ(
        fallback,
        QDir(QDir::tempPath()).filePath(QStringLiteral("quillgate-activation-%1").arg(::getuid())));
}

TEST_F(ActivationTest, TheFirstCopyIsAskedWithTitleAndToken) {
    ASSERT_TRUE(listener.Listen(path));

    EXPECT_EQ(AskWhileServing(QStringLiteral("Quillgate"), "token-42"), Answer::Shown);

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(askedTitle, QStringLiteral("Quillgate"));
    EXPECT_EQ(askedToken, QByteArray("token-42"));
}

TEST_F(ActivationTest, AnEmptyTokenArrivesEmpty) {
    ASSERT_TRUE(listener.Listen(path));
    EXPECT_EQ(AskWhileServing(QStringLiteral("Quillgate"), QByteArray()), Answer::Shown);
    EXPECT_TRUE(askedToken.isEmpty());
}

TEST_F(ActivationTest, AFirstCopyWithoutSuchAWindowSaysSo) {
    windowThere = false;
    ASSERT_TRUE(listener.Listen(path));
    EXPECT_EQ(AskWhileServing(QStringLiteral("Other"), "t"), Answer::NoWindow);
    EXPECT_EQ(asked, 1);
}

TEST_F(ActivationTest, NobodyListeningGivesNoAnswer) {
    EXPECT_EQ(ActivationRequest::AskFirstCopy(QStringLiteral("Quillgate"), "t", path, 2000),
              Answer::NoAnswer);
}

TEST_F(ActivationTest, AListenerThatNeverAnswersGivesNoAnswerInTime) {
    ASSERT_TRUE(listener.Listen(path));
    // This thread runs no events, so the listener cannot answer.
    EXPECT_EQ(ActivationRequest::AskFirstCopy(QStringLiteral("Quillgate"), "t", path, 300),
              Answer::NoAnswer);
}

TEST_F(ActivationTest, TheSocketIsTheUsersAlone) {
    ASSERT_TRUE(listener.Listen(path));
    struct stat info {};
    ASSERT_EQ(::stat(path.toUtf8().constData(), &info), 0);
    EXPECT_TRUE(S_ISSOCK(info.st_mode));
    EXPECT_EQ(info.st_mode & 077, 0u);
}

TEST_F(ActivationTest, ASocketFileLeftBehindIsReplaced) {
    QFile stale(path);
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.close();

    ASSERT_TRUE(listener.Listen(path));
    EXPECT_EQ(AskWhileServing(QStringLiteral("Quillgate"), "t"), Answer::Shown);
}

TEST_F(ActivationTest, AfterCloseNobodyIsListening) {
    ASSERT_TRUE(listener.Listen(path));
    listener.Close();
    EXPECT_EQ(ActivationRequest::AskFirstCopy(QStringLiteral("Quillgate"), "t", path, 1000),
              Answer::NoAnswer);
    EXPECT_EQ(asked, 0);
}

} // namespace
