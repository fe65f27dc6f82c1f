#include <Looper.h>

#include <Autolock.h>

#include "Event.h"
#include "RecordingLooper.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

class LooperLockTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // It does not run: its thread takes the lock, too.
        fLooper = new RecordingLooper(fRecord);
        fLooper->Unlock();
    }

    void TearDown() override { EndLooper(fLooper); }

    Record fRecord;
    RecordingLooper* fLooper = nullptr;
};

TEST_F(LooperLockTest, Nests)
{
    EXPECT_TRUE(fLooper->Lock());
    EXPECT_TRUE(fLooper->Lock());
    EXPECT_EQ(fLooper->CountLocks(), 2);
    fLooper->Unlock();
    EXPECT_TRUE(fLooper->IsLocked());
    fLooper->Unlock();
    EXPECT_FALSE(fLooper->IsLocked());
}

TEST_F(LooperLockTest, NamesItsHolder)
{
    EXPECT_EQ(fLooper->LockingThread(), B_ERROR);

    BAutolock lock(fLooper);

    EXPECT_EQ(fLooper->LockingThread(), find_thread(nullptr));
}

TEST_F(LooperLockTest, KeepsOthersOut)
{
    fLooper->Lock();
    bool isLockedThere = true;
    status_t status = B_OK;

    std::thread other([&] {
        isLockedThere = fLooper->IsLocked();
        status = fLooper->LockWithTimeout(2000);
    });
    other.join();

    EXPECT_FALSE(isLockedThere);
    EXPECT_EQ(status, B_TIMED_OUT);
    EXPECT_EQ(fLooper->CountLockRequests(), 1);
    fLooper->Unlock();
}

TEST_F(LooperLockTest, UnlockByAnotherThreadDoesNothing)
{
    fLooper->Lock();

    std::thread other([&] { fLooper->Unlock(); });
    other.join();

    EXPECT_TRUE(fLooper->IsLocked());
    fLooper->Unlock();
}

TEST_F(LooperLockTest, HandsItselfToThoseWhoWaitInTheirOrder)
{
    std::vector<int> order;
    std::vector<std::thread> threads;
    fLooper->Lock();

    for (int i = 0; i < 5; ++i) {
        threads.emplace_back([&, i] {
            BAutolock lock(fLooper);
            order.push_back(i);
        });
        while (fLooper->CountLockRequests() < i + 2) {
            std::this_thread::yield();
        }
    }
    fLooper->Unlock();
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST_F(LooperLockTest, ABusyLooperLetsOthersIn)
{
    fLooper->Run();
    std::atomic<bool> ends{false};
    std::thread poster([&] {
        while (!ends) {
            fLooper->PostMessage(1);
            if (fRecord.All().size() > 100000) {
                std::this_thread::yield();
            }
        }
    });

    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(fLooper->LockWithTimeout(5000000), B_OK);
        fLooper->Unlock();
    }

    ends = true;
    poster.join();
}

TEST_F(LooperLockTest, FailsForOneThatIsGone)
{
    EndLooper(fLooper);

    EXPECT_FALSE(fLooper->Lock());
    EXPECT_EQ(fLooper->LockWithTimeout(1000), B_BAD_VALUE);
    EXPECT_FALSE(fLooper->IsLocked());
    fLooper->Unlock();
    BAutolock lock(fLooper);
    EXPECT_FALSE(lock.IsLocked());
}

TEST_F(LooperLockTest, FailsForOneThatGoesWhileWaiting)
{
    const std::shared_ptr<kits::LooperCore> core = kits::LooperRegistry::FindLooper(fLooper);
    std::vector<std::thread> threads;
    std::atomic<int> failures{0};
    fLooper->Lock();
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            if (!fLooper->Lock()) {
                ++failures;
            }
        });
    }
    while (core->GetLock().CountRequests() < 5) {
        std::this_thread::yield();
    }

    fLooper->Quit();
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(failures, 4);
    EXPECT_EQ(core->GetLock().CountRequests(), 0);
}

TEST_F(LooperLockTest, ManyThreadsLockLoopersThatComeAndGo)
{
    std::array<std::atomic<BLooper*>, 4> loopers{};
    std::atomic<bool> ends{false};
    std::atomic<int> locks{0};
    std::vector<std::thread> lockers;
    for (int i = 0; i < 3; ++i) {
        lockers.emplace_back([&] {
            while (!ends) {
                for (auto& slot : loopers) {
                    BLooper* looper = slot;
                    if (looper != nullptr && looper->LockWithTimeout(1000) == B_OK) {
                        ++locks;
                        looper->PostMessage(1);
                        looper->Unlock();
                    }
                }
            }
        });
    }

    for (int round = 0; round < 100 || locks < 100; ++round) {
        auto& slot = loopers[static_cast<size_t>(round) % loopers.size()];
        auto* looper = new RecordingLooper(fRecord);
        looper->Run();
        // Its place is not cleared before it ends: the lockers meet it dying and dead.
        BLooper* former = slot.exchange(looper);
        if (former != nullptr) {
            EndLooper(former);
        }
    }
    ends = true;
    for (std::thread& locker : lockers) {
        locker.join();
    }

    for (auto& slot : loopers) {
        EndLooper(slot);
    }
    EXPECT_GE(locks, 100);
}

} // namespace
