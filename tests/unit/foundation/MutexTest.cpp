// The mutex without a name: the locks of one process's threads.
#include "foundation/Mutex.h"

#include "SyncTestEnvironment.h"
#include "SyncTestLog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>

namespace {

using Corvane::Infinite;
using Corvane::Mutex;

bool LockedFromAnotherThread(Mutex& mutex, std::uint32_t timeoutMs = 0) {
    return std::async(std::launch::async,
                      [&mutex, timeoutMs] {
                          const bool locked = mutex.lock(timeoutMs);
                          if (locked)
                              mutex.unlock();
                          return locked;
                      })
        .get();
}

TEST(UnnamedMutex, IsLoggedAsCreatedWithTheWordEmpty) {
    SyncTestLog log;
    Mutex mutex(nullptr);
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Created empty Mutex"});
    EXPECT_TRUE(mutex.name().empty());
    EXPECT_FALSE(mutex.alreadyExisted());
    EXPECT_EQ(mutex.lastError(), 0u);
    EXPECT_EQ(mutex.handle(), -1);
}

TEST(UnnamedMutex, AnEmptyNameMakesAnUnnamedOne) {
    SyncTestLog log;
    Mutex mutex("");
    EXPECT_EQ(log.messages(), std::vector<std::string>{"Mutex: Created empty Mutex"});
    EXPECT_EQ(mutex.handle(), -1);
    EXPECT_TRUE(mutex.lock(0));
    mutex.unlock();
}

TEST(UnnamedMutex, LockAndUnlockWriteNothing) {
    Mutex mutex(nullptr);
    SyncTestLog log;
    ASSERT_TRUE(mutex.lock(Infinite));
    mutex.unlock();
    EXPECT_TRUE(log.messages().empty());
}

TEST(UnnamedMutex, TheOwnerMayLockItAgainAndMustUnlockAsOften) {
    Mutex mutex(nullptr);
    ASSERT_TRUE(mutex.lock(0));
    ASSERT_TRUE(mutex.lock(Infinite));
    EXPECT_FALSE(LockedFromAnotherThread(mutex));
    mutex.unlock();
    EXPECT_FALSE(LockedFromAnotherThread(mutex));
    mutex.unlock();
    EXPECT_TRUE(LockedFromAnotherThread(mutex));
}

TEST(UnnamedMutex, ALimitedWaitTimesOut) {
    Mutex mutex(nullptr);
    ASSERT_TRUE(mutex.lock(Infinite));
    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(LockedFromAnotherThread(mutex, 100));
    const auto waited = std::chrono::steady_clock::now() - before;
    EXPECT_GE(waited, std::chrono::milliseconds(100));
    EXPECT_LT(waited, std::chrono::seconds(10));
    mutex.unlock();
}

TEST(UnnamedMutex, AnEndlessWaitLastsUntilTheHolderUnlocks) {
    Mutex mutex(nullptr);
    ASSERT_TRUE(mutex.lock(Infinite));
    auto waiter = std::async(std::launch::async, [&mutex] {
        const bool locked = mutex.lock(Infinite);
        if (locked)
            mutex.unlock();
        return locked;
    });
    // Still waiting where a zero time-out would long have failed.
    EXPECT_EQ(waiter.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    mutex.unlock();
    ASSERT_EQ(waiter.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_TRUE(waiter.get());
}

TEST(UnnamedMutex, UnlockByAThreadThatDoesNotOwnItChangesNothing) {
    Mutex mutex(nullptr);
    ASSERT_TRUE(mutex.lock(0));
    std::async(std::launch::async, [&mutex] { mutex.unlock(); }).get();
    EXPECT_FALSE(LockedFromAnotherThread(mutex));
    mutex.unlock();
    EXPECT_TRUE(LockedFromAnotherThread(mutex));
}

TEST(UnnamedMutex, UnlockWithoutLockIsHarmless) {
    Mutex mutex(nullptr);
    mutex.unlock();
    EXPECT_TRUE(mutex.lock(0));
    mutex.unlock();
    EXPECT_TRUE(LockedFromAnotherThread(mutex));
}

TEST(UnnamedMutex, ClearDaclWithoutALockFileIsTrue) {
    Mutex mutex(nullptr);
    EXPECT_TRUE(mutex.clearDacl());
}

} // namespace
