#include "foundation/CriticalSection.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace {

using Corvane::CriticalSection;
using Corvane::Infinite;

bool EnteredFromAnotherThread(CriticalSection& section) {
    return std::async(std::launch::async,
                      [&section] {
                          const bool entered = section.tryLock();
                          if (entered)
                              section.unlock();
                          return entered;
                      })
        .get();
}

TEST(CriticalSection, LockIgnoresItsTimeOutAndReturnsTrue) {
    CriticalSection section;
    EXPECT_TRUE(section.lock(0));
    EXPECT_TRUE(section.lock(Infinite));
    EXPECT_TRUE(section.lock(1));
    section.unlock();
    section.unlock();
    section.unlock();
    EXPECT_TRUE(EnteredFromAnotherThread(section));
}

TEST(CriticalSection, TheHolderMayEnterAgainAndMustLeaveAsOften) {
    CriticalSection section;
    ASSERT_TRUE(section.lock(0));
    ASSERT_TRUE(section.lock(0));
    ASSERT_TRUE(section.lock(0));
    EXPECT_FALSE(EnteredFromAnotherThread(section));
    section.unlock();
    section.unlock();
    EXPECT_FALSE(EnteredFromAnotherThread(section));
    section.unlock();
    EXPECT_TRUE(EnteredFromAnotherThread(section));
}

TEST(CriticalSection, AWaitingThreadEntersOnceTheHolderLeaves) {
    CriticalSection section;
    ASSERT_TRUE(section.lock(0));
    auto waiter = std::async(std::launch::async, [&section] {
        const bool entered = section.lock(0); // waits, whatever the time-out says
        section.unlock();
        return entered;
    });
    EXPECT_EQ(waiter.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    section.unlock();
    ASSERT_EQ(waiter.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_TRUE(waiter.get());
}

TEST(CriticalSection, KeepsTheUpdatesOfManyThreadsWhole) {
    CriticalSection section;
    long long counter = 0;
    constexpr int Threads = 8;
    constexpr int Rounds = 5000;
    std::vector<std::thread> threads;
    for (int t = 0; t < Threads; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < Rounds; ++i) {
                section.lock(Infinite);
                const long long seen = counter;
                std::this_thread::yield();
                counter = seen + 1;
                section.unlock();
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(counter, static_cast<long long>(Threads) * Rounds);
}

} // namespace
