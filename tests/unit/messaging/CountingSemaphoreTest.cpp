// CountingSemaphore: counts, its maximum, and its descriptor's readiness for a joint wait.
#include "messaging/CountingSemaphore.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <thread>

namespace {

bool Readable(int fd) {
    pollfd entry{fd, POLLIN, 0};
    return ::poll(&entry, 1, 0) == 1 && (entry.revents & POLLIN) != 0;
}

TEST(CountingSemaphore, StartsWithItsInitialCount) {
    CountingSemaphore semaphore(2, 10);
    ASSERT_TRUE(semaphore.valid());
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_FALSE(semaphore.tryAcquire());
}

TEST(CountingSemaphore, EachReleaseGivesOneAcquisition) {
    CountingSemaphore semaphore(0, 0x7fffffff);
    EXPECT_FALSE(semaphore.tryAcquire());
    EXPECT_TRUE(semaphore.release());
    EXPECT_TRUE(semaphore.release(2));
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_FALSE(semaphore.tryAcquire());
}

TEST(CountingSemaphore, AReleasePastTheMaximumFailsAndAddsNothing) {
    CountingSemaphore semaphore(0, 2);
    EXPECT_TRUE(semaphore.release(2));
    EXPECT_FALSE(semaphore.release());
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_TRUE(semaphore.release());
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_TRUE(semaphore.tryAcquire());
    EXPECT_FALSE(semaphore.tryAcquire());
}

TEST(CountingSemaphore, ReleasingNothingFails) {
    CountingSemaphore semaphore(0, 5);
    EXPECT_FALSE(semaphore.release(0));
}

TEST(CountingSemaphore, TheHandleIsReadableWhileTheCountIsAboveZero) {
    CountingSemaphore semaphore(0, 5);
    EXPECT_FALSE(Readable(semaphore.handle()));
    semaphore.release();
    EXPECT_TRUE(Readable(semaphore.handle()));
    semaphore.tryAcquire();
    EXPECT_FALSE(Readable(semaphore.handle()));
}

TEST(CountingSemaphore, AWaiterOnTheHandleWakesOnARelease) {
    CountingSemaphore semaphore(0, 5);
    std::thread releaser([&] { semaphore.release(); });
    pollfd entry{semaphore.handle(), POLLIN, 0};
    EXPECT_EQ(::poll(&entry, 1, 10000), 1);
    releaser.join();
    EXPECT_TRUE(semaphore.tryAcquire());
}

TEST(CountingSemaphore, CountsFromManyThreadsAreAllKept) {
    CountingSemaphore semaphore(0, 0x7fffffff);
    std::thread first([&] {
        for (int i = 0; i < 1000; ++i)
            semaphore.release();
    });
    std::thread second([&] {
        for (int i = 0; i < 1000; ++i)
            semaphore.release();
    });
    first.join();
    second.join();
    int taken = 0;
    while (semaphore.tryAcquire())
        ++taken;
    EXPECT_EQ(taken, 2000);
}

} // namespace
