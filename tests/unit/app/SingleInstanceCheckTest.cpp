#include "app/SingleInstanceCheck.h"

#include "app/ActivationListener.h"
#include "foundation/SystemPaths.h"
#include "toolkit/ResourceStore.h"
#include "toolkit/SoundPlayer.h"

#include "AppTestApp.h"
#include "support/RunInChild.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

// Plays nothing; remembers what was asked for (in the process that asked).
class RecordingPlayer : public SoundPlayer {
public:
    RecordingPlayer() : m_previous(ResourceStore::SetSoundPlayer(this)) {}
    ~RecordingPlayer() override { ResourceStore::SetSoundPlayer(m_previous); }
    bool Play(int id) override {
        played.push_back(id);
        return true;
    }
    std::vector<int> played;

private:
    SoundPlayer* m_previous;
};

// Exit codes of the second copy, so that the first can tell what it saw.
constexpr int SecondCopyLeft = 0;
constexpr int SecondCopyBelievedItWasFirst = 10;
constexpr int SoundNotPlayed = 11;
constexpr int TraceMissing = 12;
constexpr int TraceUnexpected = 13;

enum class Expect { Shown, NotFound };

// The second copy's body: the check, the sound, and whether the window was found.
int SecondCopy(const QString& socketPath, Expect expect) {
    RecordingPlayer player;
    TraceRecorder::Instance().Clear();
    std::unique_ptr<Corvane::Mutex> mutex;
    if (SingleInstanceCheck(socketPath).Check(mutex))
        return SecondCopyBelievedItWasFirst;
    if (player.played != std::vector<int>{204})
        return SoundNotPlayed;
    const auto traced =
        TraceRecorder::Instance().Count(TRACE_DEBUG, u"Cannot find VLQuillgate window");
    if (expect == Expect::NotFound && traced != 1)
        return TraceMissing;
    if (expect == Expect::Shown && traced != 0)
        return TraceUnexpected;
    return SecondCopyLeft;
}

// Runs `body` in a child process while this process keeps serving its events, as a first
// copy answers from its event loop. Returns the child's exit code.
int RunSecondCopy(const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0)
        std::_Exit(body());
    int status = 0;
    bool ended = false;
    TestSupport::WaitFor(
        [&] {
            QCoreApplication::processEvents();
            ended = ::waitpid(child, &status, WNOHANG) == child;
            return ended;
        },
        std::chrono::seconds(20));
    if (!ended) {
        ::kill(child, SIGKILL);
        ::waitpid(child, &status, 0);
        return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

class SingleInstanceCheckTest : public ::testing::Test {
protected:
    void SetUp() override {
        AppTestApp();
        TraceRecorder::Instance().Clear();
    }

    TestSupport::SandboxRoot sandbox;
    QString socketPath = ActivationListener::DefaultSocketPath();
};

TEST_F(SingleInstanceCheckTest, TheFirstCopyHoldsTheName) {
    RecordingPlayer player;
    std::unique_ptr<Corvane::Mutex> mutex;

    EXPECT_TRUE(SingleInstanceCheck(socketPath).Check(mutex));

    ASSERT_NE(mutex, nullptr);
    EXPECT_EQ(mutex->name(), "VelloranQuillgate");
    EXPECT_TRUE(player.played.empty());
    const std::string lockFile = sandbox.file("run/VelloranQuillgate.lock");
    struct stat info {};
    ASSERT_EQ(::stat(lockFile.c_str(), &info), 0);
    // Every user's copy may open it.
    EXPECT_EQ(info.st_mode & 0777, 0666u);
}

TEST_F(SingleInstanceCheckTest, TheTitleAskedForIsTheTablesString128) {
    EXPECT_EQ(SingleInstanceCheck::MainWindowTitle(), QStringLiteral("Quillgate"));
}

TEST_F(SingleInstanceCheckTest, ASecondCopyPlaysTheSoundAndTheFirstShowsItsWindow) {
    std::unique_ptr<Corvane::Mutex> first;
    ASSERT_TRUE(SingleInstanceCheck(socketPath).Check(first));
    QString title;
    QByteArray token;
    ActivationListener listener([&](const QString& t, const QByteArray& k) {
        title = t;
        token = k;
        return true;
    });
    ASSERT_TRUE(listener.Listen(socketPath));

    const int code = RunSecondCopy([&] {
        qputenv("XDG_ACTIVATION_TOKEN", "second-copy-token");
        return SecondCopy(socketPath, Expect::Shown);
    });

    EXPECT_EQ(code, SecondCopyLeft);
    EXPECT_EQ(title, QStringLiteral("Quillgate"));
    EXPECT_EQ(token, QByteArray("second-copy-token"));
}

TEST_F(SingleInstanceCheckTest, ASecondCopyWithoutATokenSendsNone) {
    std::unique_ptr<Corvane::Mutex> first;
    ASSERT_TRUE(SingleInstanceCheck(socketPath).Check(first));
    int asked = 0;
    QByteArray token = "unset";
    ActivationListener listener([&](const QString&, const QByteArray& k) {
        ++asked;
        token = k;
        return true;
    });
    ASSERT_TRUE(listener.Listen(socketPath));

    const int code = RunSecondCopy([&] {
        qunsetenv("XDG_ACTIVATION_TOKEN");
        return SecondCopy(socketPath, Expect::Shown);
    });

    EXPECT_EQ(code, SecondCopyLeft);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(token.isEmpty());
}

TEST_F(SingleInstanceCheckTest, WithNobodyAnsweringTheSecondCopyTracesAndLeaves) {
    std::unique_ptr<Corvane::Mutex> first;
    ASSERT_TRUE(SingleInstanceCheck(socketPath).Check(first));
    // A first copy that has no window yet does not listen.

    const int code = RunSecondCopy([&] { return SecondCopy(socketPath, Expect::NotFound); });

    EXPECT_EQ(code, SecondCopyLeft);
}

TEST_F(SingleInstanceCheckTest, AWindowOfAnotherTitleIsNotShown) {
    std::unique_ptr<Corvane::Mutex> first;
    ASSERT_TRUE(SingleInstanceCheck(socketPath).Check(first));
    ActivationListener listener([](const QString& title, const QByteArray&) {
        return title == QStringLiteral("Quillgate (translated)");
    });
    ASSERT_TRUE(listener.Listen(socketPath));

    const int code = RunSecondCopy([&] { return SecondCopy(socketPath, Expect::NotFound); });

    EXPECT_EQ(code, SecondCopyLeft);
}

TEST_F(SingleInstanceCheckTest, TheNameIsFreeAgainOnceTheFirstCopyHasGone) {
    const int firstCode = TestSupport::RunInChild([&] {
        std::unique_ptr<Corvane::Mutex> mutex;
        return SingleInstanceCheck(socketPath).Check(mutex) ? 0 : 1;
    });
    ASSERT_EQ(firstCode, 0);

    RecordingPlayer player;
    std::unique_ptr<Corvane::Mutex> mutex;
    EXPECT_TRUE(SingleInstanceCheck(socketPath).Check(mutex));
    EXPECT_TRUE(player.played.empty());
}

TEST_F(SingleInstanceCheckTest, TheCopyOfAnotherUserHoldsTheNameToo) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs root to run a copy as another user (nobody)";
    const passwd* nobody = ::getpwnam("nobody");
    ASSERT_NE(nobody, nullptr);
    // The other user must reach the lock file's folder; the file itself is made 0666.
    namespace fs = std::filesystem;
    for (const std::string& folder : {sandbox.path(), sandbox.file("run")})
        fs::permissions(folder, fs::perms::owner_all | fs::perms::group_read |
                                    fs::perms::group_exec | fs::perms::others_read |
                                    fs::perms::others_exec);

    std::unique_ptr<Corvane::Mutex> first;
    ASSERT_TRUE(SingleInstanceCheck(socketPath).Check(first));

    const int code = RunSecondCopy([&] {
        if (::setgroups(0, nullptr) != 0 || ::setgid(nobody->pw_gid) != 0 ||
            ::setuid(nobody->pw_uid) != 0)
            return 20;
        // nobody's own runtime folder: nobody listens there.
        const std::string runtime = "/tmp/qg-nobody-runtime-" + std::to_string(::getpid());
        ::mkdir(runtime.c_str(), 0700);
        qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(runtime));
        const int result = SecondCopy(ActivationListener::DefaultSocketPath(), Expect::NotFound);
        ::rmdir(runtime.c_str());
        return result;
    });

    EXPECT_EQ(code, SecondCopyLeft);
}

} // namespace
