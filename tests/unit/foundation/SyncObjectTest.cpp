// The two scoped guards, SyncObject and SyncLock.
#include "foundation/SyncObject.h"

#include "foundation/CriticalSection.h"
#include "foundation/Mutex.h"
#include "foundation/SyncLock.h"

#include "SyncTestEnvironment.h"
#include "SyncTestLog.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Corvane::Infinite;
using Corvane::Mutex;
using Corvane::SyncObject;

// Records what a guard asks of it; its lock answers as told.
class RecordingLock : public Corvane::Synchronisable {
public:
    explicit RecordingLock(bool lockResult = true, bool throwOnUnlock = false)
        : m_lockResult(lockResult), m_throwOnUnlock(throwOnUnlock) {}

    bool lock(std::uint32_t timeoutMs) override {
        calls.push_back("lock " + std::to_string(timeoutMs));
        return m_lockResult;
    }
    void unlock() override {
        calls.push_back("unlock");
        if (m_throwOnUnlock)
            throw std::runtime_error("unlock failed");
    }

    std::vector<std::string> calls;

private:
    bool m_lockResult;
    bool m_throwOnUnlock;
};

bool LockedFromAnotherThread(Corvane::Synchronisable& object) {
    return std::async(std::launch::async,
                      [&object] {
                          const bool locked = object.lock(0);
                          if (locked)
                              object.unlock();
                          return locked;
                      })
        .get();
}

TEST(SyncObject, LocksWithItsTimeOutAndUnlocksAtTheEndOfTheBlock) {
    RecordingLock lock;
    {
        SyncObject guard(lock, 60000);
        EXPECT_EQ(lock.calls, std::vector<std::string>{"lock 60000"});
    }
    EXPECT_EQ(lock.calls, (std::vector<std::string>{"lock 60000", "unlock"}));
}

TEST(SyncObject, UnlocksEvenWhenTheLockFailed) {
    RecordingLock lock(false);
    { SyncObject guard(lock, 10); }
    EXPECT_EQ(lock.calls, (std::vector<std::string>{"lock 10", "unlock"}));
}

TEST(SyncObject, SwallowsAnExceptionFromUnlock) {
    RecordingLock lock(true, true);
    EXPECT_NO_THROW({ SyncObject guard(lock, Infinite); });
    EXPECT_EQ(lock.calls, (std::vector<std::string>{"lock 4294967295", "unlock"}));
}

TEST(SyncObject, HoldsAMutexForTheBlock) {
    Mutex mutex(nullptr);
    {
        SyncObject guard(mutex, Infinite);
        EXPECT_FALSE(LockedFromAnotherThread(mutex));
    }
    EXPECT_TRUE(LockedFromAnotherThread(mutex));
}

TEST(SyncObject, AfterATimedOutLockTheBlockGoesOnAndTheHolderKeepsTheMutex) {
    Mutex mutex(nullptr);
    ASSERT_TRUE(mutex.lock(Infinite));
    bool blockRan = false;
    std::async(std::launch::async, [&] {
        SyncObject guard(mutex, 20);
        blockRan = true;
    }).get();
    EXPECT_TRUE(blockRan);
    EXPECT_FALSE(LockedFromAnotherThread(mutex));
    mutex.unlock();
    EXPECT_TRUE(LockedFromAnotherThread(mutex));
}

TEST(SyncObject, ATimedOutLockOfANamedMutexIsLoggedAndSoIsTheUnlock) {
    const std::string name = "QGTest_SyncObjectNamed";
    Mutex mutex(name.c_str());
    ASSERT_TRUE(mutex.lock(Infinite));
    SyncTestLog log;
    std::async(std::launch::async, [&] { SyncObject guard(mutex, 20); }).get();
    EXPECT_EQ(log.messages(), (std::vector<std::string>{"Mutex Lock Timeout or Fail " + name,
                                                        "Unlocked Mutex " + name}));
    EXPECT_FALSE(LockedFromAnotherThread(mutex));
    mutex.unlock();
    EXPECT_TRUE(LockedFromAnotherThread(mutex));
}

TEST(SyncLock, LocksWithoutWaitingAndUnlocksAtTheEndOfTheBlock) {
    RecordingLock lock;
    {
        SyncLock guard(lock);
        EXPECT_EQ(lock.calls, std::vector<std::string>{"lock 0"});
    }
    EXPECT_EQ(lock.calls, (std::vector<std::string>{"lock 0", "unlock"}));
}

TEST(SyncLock, HoldsACriticalSectionForTheBlock) {
    Corvane::CriticalSection section;
    {
        SyncLock guard(section);
        EXPECT_FALSE(std::async(std::launch::async, [&section] {
                         const bool entered = section.tryLock();
                         if (entered)
                             section.unlock();
                         return entered;
                     }).get());
    }
    EXPECT_TRUE(LockedFromAnotherThread(section));
}

} // namespace
