#include <OS.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <latch>
#include <search.h>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

status_t ReturnData(void* data)
{
    return *static_cast<status_t*>(data);
}

struct Gate
{
    std::latch entered{1};
    std::latch open{1};
};

status_t WaitAtGate(void* data)
{
    Gate& gate = *static_cast<Gate*>(data);
    gate.entered.count_down();
    gate.open.wait();
    return 7;
}

std::atomic<bool> gIsCleanedUp{false};

/// What a library may keep per thread.
struct SlowToClean
{
    ~SlowToClean()
    {
        snooze(20000);
        gIsCleanedUp = isUsed;
    }
    bool isUsed = false;
};

status_t KeepSomething(void*)
{
    thread_local SlowToClean kept;
    kept.isUsed = true;
    return B_OK;
}

} // namespace

TEST(ThreadsTest, WaitStartsTheThreadAndTellsItsResult)
{
    status_t value = 42;
    const thread_id thread = spawn_thread(ReturnData, "returns", B_NORMAL_PRIORITY, &value);
    ASSERT_GT(thread, 0);

    status_t result = 0;
    EXPECT_EQ(wait_for_thread(thread, &result), B_OK);

    EXPECT_EQ(result, 42);
}

TEST(ThreadsTest, WaitsUntilWhatTheThreadKeptIsCleanedUp)
{
    gIsCleanedUp = false;
    const thread_id thread = spawn_thread(KeepSomething, "keeps", B_NORMAL_PRIORITY, nullptr);

    EXPECT_EQ(wait_for_thread(thread, nullptr), B_OK);

    EXPECT_TRUE(gIsCleanedUp);
}

TEST(ThreadsTest, WaitTellsTheResultOfAThreadThatRuns)
{
    Gate gate;
    const thread_id thread = spawn_thread(WaitAtGate, "gate", B_NORMAL_PRIORITY, &gate);
    EXPECT_EQ(resume_thread(thread), B_OK);
    gate.entered.wait();
    EXPECT_EQ(resume_thread(thread), B_BAD_THREAD_STATE);

    std::thread opener([&] { gate.open.count_down(); });
    status_t result = 0;
    const status_t status = wait_for_thread(thread, &result);
    opener.join();

    // The thread may end before it is waited for; its result is gone then.
    EXPECT_TRUE((status == B_OK && result == 7) || (status == B_BAD_THREAD_ID && result == 0));
}

TEST(ThreadsTest, IsSuspendedUntilItIsResumed)
{
    Gate gate;
    const thread_id thread = spawn_thread(WaitAtGate, "suspended", B_LOW_PRIORITY, &gate);

    thread_info info;
    ASSERT_EQ(get_thread_info(thread, &info), B_OK);
    EXPECT_EQ(info.state, B_THREAD_SUSPENDED);
    EXPECT_EQ(info.priority, B_LOW_PRIORITY);
    EXPECT_STREQ(info.name, "suspended");
    EXPECT_EQ(info.thread, thread);

    resume_thread(thread);
    gate.entered.wait();
    EXPECT_EQ(get_thread_info(thread, &info), B_OK);
    EXPECT_EQ(info.state, B_THREAD_RUNNING);
    gate.open.count_down();
    wait_for_thread(thread, nullptr);
    EXPECT_EQ(get_thread_info(thread, &info), B_BAD_THREAD_ID);
}

TEST(ThreadsTest, IsFoundByItsNameWhileItLives)
{
    Gate gate;
    const std::string longName(100, 'n');
    const thread_id thread = spawn_thread(WaitAtGate, longName.c_str(), B_NORMAL_PRIORITY, &gate);

    EXPECT_EQ(find_thread(std::string(B_OS_NAME_LENGTH - 1, 'n').c_str()), thread);
    EXPECT_EQ(rename_thread(thread, "another name"), B_OK);
    EXPECT_EQ(find_thread("another name"), thread);

    gate.open.count_down();
    wait_for_thread(thread, nullptr);
    EXPECT_EQ(find_thread("another name"), B_NAME_NOT_FOUND);
    EXPECT_EQ(rename_thread(thread, "x"), B_BAD_THREAD_ID);
}

TEST(ThreadsTest, RefusesWhatIsNoThread)
{
    EXPECT_EQ(spawn_thread(nullptr, "none", B_NORMAL_PRIORITY, nullptr), B_BAD_VALUE);
    EXPECT_EQ(resume_thread(-1), B_BAD_THREAD_ID);
    status_t result = 5;
    EXPECT_EQ(wait_for_thread(INT32_MAX, &result), B_BAD_THREAD_ID);
    EXPECT_EQ(result, 5);
    EXPECT_EQ(wait_for_thread(find_thread(nullptr), &result), B_NOT_ALLOWED);
}

// Death tests run in a process of their own that starts anew: this one has threads.
class ThreadsDeathTest : public ::testing::Test
{
protected:
    ThreadsDeathTest() { ::testing::GTEST_FLAG(death_test_style) = "threadsafe"; }
};

int Throw(const void*, const void*)
{
    throw std::runtime_error("lost");
}

/// Throws out of a call whose name a stack shows: a stack that was unwound shows it no more.
status_t ThrowFromBelow(void*)
{
    int numbers[2] = {2, 1};
    size_t count = 2;
    lfind(&numbers[0], numbers, &count, sizeof(int), &Throw);
    return B_OK;
}

TEST_F(ThreadsDeathTest, AnExceptionEndsTheProgramWithItsStack)
{
    EXPECT_DEATH(
        {
            wait_for_thread(spawn_thread(ThrowFromBelow, "throws", B_NORMAL_PRIORITY, nullptr),
                            nullptr);
        },
        "std::runtime_error: lost, on the thread \"throws\"\n(.|\n)*lfind");
}

TEST(ThreadsTest, KnowsItsOwnNumber)
{
    std::atomic<thread_id> seen{0};
    const auto note = [](void* data) -> status_t {
        *static_cast<std::atomic<thread_id>*>(data) = find_thread(nullptr);
        return B_OK;
    };
    const thread_id thread = spawn_thread(note, "self", B_NORMAL_PRIORITY, &seen);

    wait_for_thread(thread, nullptr);

    EXPECT_EQ(seen, thread);
    EXPECT_NE(find_thread(nullptr), thread);
    EXPECT_EQ(find_thread(nullptr), find_thread(nullptr));
}

TEST(ThreadsTest, ThreadsOfOthersHaveNumbersWhileTheyLive)
{
    thread_id number = 0;
    status_t known = B_ERROR;
    std::thread other([&] {
        number = find_thread(nullptr);
        thread_info info;
        known = get_thread_info(number, &info);
    });
    other.join();

    EXPECT_GT(number, 0);
    EXPECT_EQ(known, B_OK);
    EXPECT_EQ(wait_for_thread(number, nullptr), B_BAD_THREAD_ID);
}

TEST(ThreadsTest, SeveralThreadsWaitForOne)
{
    Gate gate;
    const thread_id thread = spawn_thread(WaitAtGate, "popular", B_NORMAL_PRIORITY, &gate);
    resume_thread(thread);
    std::atomic<int> ended{0};
    const auto wait = [&] {
        status_t result = 0;
        const status_t status = wait_for_thread(thread, &result);
        ended += status == B_BAD_THREAD_ID || result == 7 ? 1 : 0;
    };
    std::thread first(wait);
    std::thread second(wait);

    gate.open.count_down();
    first.join();
    second.join();

    EXPECT_EQ(ended, 2);
    thread_info info;
    EXPECT_EQ(get_thread_info(thread, &info), B_BAD_THREAD_ID);
}

TEST(TimeTest, SnoozesAtLeastAsLongAsAsked)
{
    const bigtime_t begin = system_time();
    EXPECT_EQ(snooze(2000), B_OK);
    EXPECT_GE(system_time() - begin, 2000);

    const bigtime_t end = system_time() + 2000;
    EXPECT_EQ(snooze_until(end, B_SYSTEM_TIMEBASE), B_OK);
    EXPECT_GE(system_time(), end);
}

TEST(TimeTest, DoesNotSleepForThePast)
{
    EXPECT_EQ(snooze(0), B_OK);
    EXPECT_EQ(snooze(-5), B_OK);
    EXPECT_EQ(snooze_until(1, B_SYSTEM_TIMEBASE), B_OK);
    EXPECT_EQ(snooze_until(-1, B_SYSTEM_TIMEBASE), B_OK);
    EXPECT_EQ(snooze_until(system_time(), 17), B_BAD_VALUE);
}

TEST(TimeTest, RealTimeAgreesInBothUnits)
{
    const uint32 before = real_time_clock();
    const bigtime_t now = real_time_clock_usecs();
    const uint32 after = real_time_clock();

    EXPECT_GE(now / 1000000, before);
    EXPECT_LE(now / 1000000, after);
}
