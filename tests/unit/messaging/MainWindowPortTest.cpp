// MainWindowPort: a port to no window until the GUI installs its own, and again after.
#include "messaging/MainWindowPort.h"

#include "EventJournal.h"
#include "RecordingWindowPort.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(MainWindowPort, BeforeInstallationThereIsNoWindow) {
    WindowPort& port = MainWindowPort::Get();
    EXPECT_FALSE(port.isWindow());
    EXPECT_FALSE(port.post(1059, 0, 0));
    EXPECT_EQ(port.send(1062, 1, 0), 0);
}

TEST(MainWindowPort, TheInstalledPortIsTheOneReached) {
    EventJournal journal;
    RecordingWindowPort window(journal);
    window.onSend = [](int, std::uintptr_t, std::intptr_t) { return std::intptr_t{42}; };
    MainWindowPort::Install(&window);
    EXPECT_EQ(&MainWindowPort::Get(), &window);
    EXPECT_TRUE(MainWindowPort::Get().isWindow());
    EXPECT_EQ(MainWindowPort::Get().send(1062, 0, 0), 42);
    EXPECT_TRUE(MainWindowPort::Get().post(1061, 0, 0));
    MainWindowPort::Install(nullptr);
    EXPECT_EQ(journal.Lines(),
              (std::vector<std::string>{"main send 1062 0 0", "main post 1061 0 0"}));
}

TEST(MainWindowPort, TakingThePortBackLeavesNoWindow) {
    EventJournal journal;
    RecordingWindowPort window(journal);
    MainWindowPort::Install(&window);
    MainWindowPort::Install(nullptr);
    EXPECT_NE(&MainWindowPort::Get(), &window);
    EXPECT_FALSE(MainWindowPort::Get().isWindow());
    MainWindowPort::Get().post(1059, 0, 0);
    EXPECT_TRUE(journal.Lines().empty());
}

} // namespace
