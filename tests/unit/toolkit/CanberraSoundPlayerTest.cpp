// Event sounds through the sound server: silent and false where none answers.

#include "toolkit/CanberraSoundPlayer.h"
#include "ToolkitTestApp.h"
#include "support/RunInChild.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <chrono>

TEST(CanberraSoundPlayer, AMissingSoundIsNotPlayed) {
    ToolkitTestApp();
    TestSupport::SandboxRoot root;
    CanberraSoundPlayer player;
    EXPECT_FALSE(player.Play(207));
    EXPECT_FALSE(player.Play(0));
}

TEST(CanberraSoundPlayer, WithoutASoundServerPlayAnswersFalseAtOnce) {
    // In a child, so that the driver choice and the server address stay there.
    const int code = TestSupport::RunInChild([] {
        TestSupport::SandboxRoot root;
        qputenv("CANBERRA_DRIVER", "pulse");
        qputenv("PULSE_SERVER", QByteArray("unix:") + QByteArray(root.file("no-server").c_str()));
        ToolkitTestApp();
        CanberraSoundPlayer player;
        const auto start = std::chrono::steady_clock::now();
        const bool first = player.Play(206);
        const bool second = player.Play(204);
        const auto spent = std::chrono::steady_clock::now() - start;
        if (first || second)
            return 1;
        return spent < std::chrono::seconds(5) ? 0 : 2;
    });
    EXPECT_EQ(code, 0);
}
