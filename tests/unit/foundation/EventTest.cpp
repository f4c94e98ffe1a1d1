#include "foundation/Event.h"

#include "foundation/Synchronisable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <vector>

namespace {

using Corvane::Event;
using Corvane::Infinite;
using namespace std::chrono_literals;

TEST(Event, StartsUnsignalledAndAWaitTimesOut) {
    Event event;
    EXPECT_FALSE(event.isSet());
    EXPECT_FALSE(event.wait(0));
    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(event.wait(30));
    EXPECT_GE(std::chrono::steady_clock::now() - before, 30ms);
}

TEST(Event, StaysSetUntilReset) {
    Event event;
    EXPECT_TRUE(event.set());
    EXPECT_TRUE(event.isSet());
    EXPECT_TRUE(event.wait(0));
    EXPECT_TRUE(event.wait(Infinite));
    event.reset();
    EXPECT_FALSE(event.isSet());
    EXPECT_FALSE(event.wait(0));
}

TEST(Event, SettingItReleasesEveryWaiter) {
    Event event;
    std::vector<std::future<bool>> waiters;
    for (int i = 0; i < 4; ++i)
        waiters.push_back(
            std::async(std::launch::async, [&event] { return event.wait(Infinite); }));
    for (auto& waiter : waiters)
        EXPECT_EQ(waiter.wait_for(20ms), std::future_status::timeout);
    event.set();
    for (auto& waiter : waiters) {
        ASSERT_EQ(waiter.wait_for(10s), std::future_status::ready);
        EXPECT_TRUE(waiter.get());
    }
}

} // namespace
