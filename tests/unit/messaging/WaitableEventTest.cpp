// WaitableEvent: a manual-reset event whose descriptor is readable while it is set.
#include "messaging/WaitableEvent.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <thread>

namespace {

TEST(WaitableEvent, StartsNotSet) {
    WaitableEvent event;
    ASSERT_TRUE(event.valid());
    EXPECT_FALSE(event.isSet());
}

TEST(WaitableEvent, StaysSetUntilReset) {
    WaitableEvent event;
    EXPECT_TRUE(event.set());
    EXPECT_TRUE(event.isSet());
    EXPECT_TRUE(event.isSet());
    EXPECT_TRUE(event.reset());
    EXPECT_FALSE(event.isSet());
}

TEST(WaitableEvent, SettingTwiceIsSettingOnce) {
    WaitableEvent event;
    event.set();
    event.set();
    EXPECT_TRUE(event.reset());
    EXPECT_FALSE(event.isSet());
}

TEST(WaitableEvent, ResettingAnEventThatIsNotSetSucceeds) {
    WaitableEvent event;
    EXPECT_TRUE(event.reset());
    EXPECT_FALSE(event.isSet());
}

TEST(WaitableEvent, AWaiterOnTheHandleWakesWhenItIsSet) {
    WaitableEvent event;
    std::thread setter([&] { event.set(); });
    pollfd entry{event.handle(), POLLIN, 0};
    EXPECT_EQ(::poll(&entry, 1, 10000), 1);
    setter.join();
    // Waiting does not consume it.
    EXPECT_TRUE(event.isSet());
}

} // namespace
