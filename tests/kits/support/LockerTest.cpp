#include <Autolock.h>
#include <Locker.h>

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace {

/// Runs `function` on another thread and returns what it returns.
template<class Function>
auto Elsewhere(Function function)
{
    return std::async(std::launch::async, function).get();
}

} // namespace

TEST(LockerTest, NestsInItsThread)
{
    BLocker locker("nested");

    EXPECT_TRUE(locker.Lock());
    EXPECT_TRUE(locker.Lock());
    EXPECT_EQ(locker.CountLocks(), 2);
    EXPECT_EQ(locker.LockingThread(), find_thread(nullptr));

    locker.Unlock();
    EXPECT_TRUE(locker.IsLocked());
    locker.Unlock();
    EXPECT_FALSE(locker.IsLocked());
    EXPECT_EQ(locker.CountLocks(), 0);
    EXPECT_EQ(locker.LockingThread(), B_ERROR);
    EXPECT_STREQ(locker.Name(), "nested");
}

TEST(LockerTest, KeepsOtherThreadsOut)
{
    BLocker locker;
    locker.Lock();

    EXPECT_FALSE(Elsewhere([&] { return locker.IsLocked(); }));
    EXPECT_EQ(Elsewhere([&] { return locker.LockWithTimeout(0); }), B_WOULD_BLOCK);
    EXPECT_EQ(Elsewhere([&] { return locker.LockWithTimeout(1000); }), B_TIMED_OUT);

    locker.Unlock();
    EXPECT_EQ(Elsewhere([&] {
                  const status_t status = locker.LockWithTimeout(1000);
                  locker.Unlock();
                  return status;
              }),
              B_OK);
}

TEST(LockerTest, IsNotUnlockedByAThreadThatDoesNotHoldIt)
{
    BLocker locker;
    locker.Lock();

    Elsewhere([&] {
        locker.Unlock();
        return 0;
    });

    EXPECT_TRUE(locker.IsLocked());
    EXPECT_EQ(locker.CountLocks(), 1);
    locker.Unlock();
    locker.Unlock(); // once too often: nothing happens
    EXPECT_EQ(locker.CountLocks(), 0);
}

TEST(LockerTest, WakesTheOneThatWaits)
{
    BLocker locker;
    locker.Lock();
    std::future<bool> waiter = std::async(std::launch::async, [&] {
        const bool isLocked = locker.Lock();
        locker.Unlock();
        return isLocked;
    });
    while (locker.CountLockRequests() < 2) {
        std::this_thread::yield();
    }

    locker.Unlock();

    EXPECT_TRUE(waiter.get());
}

TEST(LockerTest, GuardsACounterAgainstFourThreads)
{
    BLocker locker;
    int counter = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; i++) {
        threads.emplace_back([&] {
            for (int j = 0; j < 10000; j++) {
                BAutolock lock(locker);
                counter++;
            }
        });
    }

    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(counter, 40000);
}

TEST(AutolockTest, LocksForItsScope)
{
    BLocker locker;
    {
        BAutolock lock(&locker);
        EXPECT_TRUE(lock.IsLocked());
        EXPECT_TRUE(locker.IsLocked());
        lock.Unlock();
        EXPECT_FALSE(lock.IsLocked());
        EXPECT_FALSE(locker.IsLocked());
        BAutolock again(locker);
        EXPECT_TRUE(locker.IsLocked());
    }
    EXPECT_FALSE(locker.IsLocked());
}

TEST(AutolockTest, SaysWhenThereIsNothingToLock)
{
    BAutolock lock(static_cast<BLocker*>(nullptr));

    EXPECT_FALSE(lock.IsLocked());
}
