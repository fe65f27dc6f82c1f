#include <Autolock.h>
#include <Condition.h>
#include <Locker.h>

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace {

/// What threads wait for: that another one opens it.
class Door
{
public:
    explicit Door(bigtime_t latest = B_INFINITE_TIMEOUT) : fLatest(latest) {}

    /// Waits with the lock taken twice; whether the door was open at the end, in time.
    bool Pass()
    {
        BAutolock lock(fLocker);
        return PassLocked();
    }
    void Open()
    {
        BAutolock lock(fLocker);
        fIsOpen = true;
    }
    /// Who is counted has given the lock back, else it could not be read here.
    void AwaitWaiting(int count)
    {
        while (CountWaiting() != count) {
            std::this_thread::yield();
        }
    }
    /// How often each thread held the lock after its wait.
    std::vector<int32> Locks()
    {
        BAutolock lock(fLocker);
        return fLocks;
    }

    BCondition fOpened;

private:
    int CountWaiting()
    {
        BAutolock lock(fLocker);
        return fWaiting;
    }
    bool PassLocked()
    {
        fLocker.Lock();
        fWaiting++;
        bool isInTime = true;
        while (!fIsOpen && isInTime) {
            isInTime = fOpened.WaitUntil(fLocker, fLatest);
        }
        fLocks.push_back(fLocker.CountLocks());
        fLocker.Unlock();
        return fIsOpen && isInTime;
    }

    const bigtime_t fLatest;
    BLocker fLocker;
    bool fIsOpen = false;
    int fWaiting = 0;
    std::vector<int32> fLocks;
};

} // namespace

TEST(ConditionTest, GivesTheLockBackAndTakesItAsOften)
{
    Door door;
    std::future<bool> passed = std::async(std::launch::async, [&] { return door.Pass(); });
    door.AwaitWaiting(1);

    door.Open();
    door.fOpened.Signal();

    EXPECT_TRUE(passed.get());
    EXPECT_EQ(door.Locks(), std::vector<int32>{2});
}

TEST(ConditionTest, WakesAllThatWait)
{
    Door door;
    std::vector<std::future<bool>> passed;
    for (int i = 0; i < 3; i++) {
        passed.push_back(std::async(std::launch::async, [&] { return door.Pass(); }));
    }
    door.AwaitWaiting(3);

    door.Open();
    door.fOpened.Broadcast();

    for (std::future<bool>& one : passed) {
        EXPECT_TRUE(one.get());
    }
    EXPECT_EQ(door.Locks(), (std::vector<int32>{2, 2, 2}));
}

TEST(ConditionTest, GivesUpWhenTheTimeHasCome)
{
    const bigtime_t latest = system_time() + 2000;
    Door door(latest);

    EXPECT_FALSE(door.Pass());

    EXPECT_GE(system_time(), latest);
    EXPECT_EQ(door.Locks(), std::vector<int32>{2});
}

TEST(ConditionTest, WaitsForATimeThatIsFartherThanTheClockCounts)
{
    Door door(B_INFINITE_TIMEOUT / 2);
    std::future<bool> passed = std::async(std::launch::async, [&] { return door.Pass(); });
    door.AwaitWaiting(1);

    door.Open();
    door.fOpened.Signal();

    EXPECT_TRUE(passed.get());
}

TEST(ConditionTest, DoesNotWaitWithoutTheLock)
{
    BLocker locker;
    BCondition condition;

    condition.Wait(locker);

    EXPECT_EQ(locker.CountLocks(), 0);
}
