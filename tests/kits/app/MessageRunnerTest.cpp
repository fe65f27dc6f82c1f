#include <MessageRunner.h>

#include "NoThreads.h"
#include "RecordingLooper.h"

#include <Message.h>
#include <Messenger.h>
#include <OS.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

constexpr bigtime_t kSoon = 2'000;
constexpr bigtime_t kNever = 3'600'000'000; // not while a test runs
constexpr uint32 kTick = 7;

class MessageRunnerTest : public ::testing::Test
{
protected:
    MessageRunnerTest() { fLooper->Run(); }
    ~MessageRunnerTest() override { EndLooper(fLooper); }

    BMessenger Target() const { return BMessenger(fLooper); }

    Record fRecord;
    RecordingLooper* fLooper = new RecordingLooper(fRecord);
    const BMessage fTick{kTick};
};

TEST_F(MessageRunnerTest, SendsUntilItEnds)
{
    const bigtime_t begin = system_time();
    auto runner = std::make_unique<BMessageRunner>(Target(), fTick, kSoon);

    EXPECT_EQ(runner->InitCheck(), B_OK);
    ASSERT_TRUE(fRecord.Await(5));
    EXPECT_GE(system_time() - begin, 5 * kSoon);
    runner.reset();

    // What is sent now comes behind everything that the runner may have sent last.
    fLooper->PostMessage(1);
    while (fRecord.All().back().second != 1) {
        snooze(1000);
    }
    const size_t count = fRecord.All().size();
    BMessageRunner other(Target(), BMessage(2), 5 * kSoon, 1);
    ASSERT_TRUE(fRecord.Await(static_cast<int>(count) + 1));
    EXPECT_EQ(fRecord.All().back().second, 2u) << "the ended runner sent again";
}

TEST_F(MessageRunnerTest, WhatWasMissedIsLeftOut)
{
    BMessageRunner runner(Target(), fTick, 10'000);
    ASSERT_TRUE(fRecord.Await(2));
    const std::string program = std::to_string(getpid());
    const std::string rest = "kill -STOP " + program + "; sleep 0.5; kill -CONT " + program;

    const size_t before = fRecord.All().size();
    const bigtime_t begin = system_time();
    ASSERT_EQ(std::system(rest.c_str()), 0);
    snooze(20'000);
    const size_t after = fRecord.All().size();

    ASSERT_GE(system_time() - begin, 500'000) << "the program did not rest";
    EXPECT_GT(after, before);
    EXPECT_LT(after, before + 25) << "some fifty were due meanwhile";
}

TEST_F(MessageRunnerTest, SendsAsManyAsWanted)
{
    BMessageRunner runner(Target(), &fTick, kSoon, 3);
    ASSERT_TRUE(fRecord.Await(3));

    bigtime_t interval = 5;
    int32 count = 6;
    EXPECT_EQ(runner.GetInfo(&interval, &count), B_BAD_VALUE);
    EXPECT_EQ(interval, 5);
    EXPECT_EQ(count, 6);
    EXPECT_EQ(runner.SetCount(2), B_BAD_VALUE);
    EXPECT_EQ(runner.SetInterval(kSoon), B_BAD_VALUE);
    EXPECT_EQ(runner.InitCheck(), B_OK);
}

TEST_F(MessageRunnerTest, TellsWhatIsToCome)
{
    BMessageRunner runner(Target(), fTick, kNever, 4);

    bigtime_t interval = 0;
    int32 count = 0;
    EXPECT_EQ(runner.GetInfo(&interval, &count), B_OK);
    EXPECT_EQ(interval, kNever);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(runner.GetInfo(nullptr, nullptr), B_OK);
}

TEST_F(MessageRunnerTest, ANewIntervalCountsFromNow)
{
    BMessageRunner runner(Target(), fTick, kNever);

    EXPECT_EQ(runner.SetInterval(kSoon), B_OK);

    EXPECT_TRUE(fRecord.Await(2));
    EXPECT_EQ(runner.SetInterval(0), B_BAD_VALUE);
}

TEST_F(MessageRunnerTest, ACountOfNoneEndsIt)
{
    BMessageRunner runner(Target(), fTick, kNever);
    EXPECT_EQ(runner.SetCount(-1), B_OK);
    EXPECT_EQ(runner.SetCount(0), B_OK);

    EXPECT_EQ(runner.GetInfo(nullptr, nullptr), B_BAD_VALUE);
}

TEST_F(MessageRunnerTest, TheEarlierOfTwoComesFirst)
{
    BMessageRunner late(Target(), BMessage(2), 20 * kSoon, 1);
    BMessageRunner soon(Target(), BMessage(1), kSoon, 1);

    ASSERT_TRUE(fRecord.Await(2));

    EXPECT_EQ(fRecord.All()[0].second, 1u);
    EXPECT_EQ(fRecord.All()[1].second, 2u);
}

TEST_F(MessageRunnerTest, AnEarlierOneIsNotKeptWaitingByALaterOne)
{
    const BMessageRunner never(Target(), BMessage(2), kNever);

    // After the first the thread waits for the one that never comes.
    for (int i = 1; i <= 5; ++i) {
        const BMessageRunner soon(Target(), fTick, kSoon, 1);
        ASSERT_TRUE(fRecord.Await(i));
    }
}

TEST_F(MessageRunnerTest, AnswersGoWhereTheyAreWanted)
{
    Record answers;
    auto* asker = new RecordingLooper(answers, "asker");
    asker->Run();
    class Answering : public BLooper
    {
        void MessageReceived(BMessage* message) override { message->SendReply(9); }
    };
    auto* answering = new Answering;
    answering->Run();

    BMessageRunner runner(BMessenger(answering), fTick, kSoon, 1, BMessenger(asker));

    ASSERT_TRUE(answers.Await());
    EXPECT_EQ(answers.All().front().second, 9u);
    EndLooper(answering);
    EndLooper(asker);
}

TEST_F(MessageRunnerTest, RefusesWhatCannotBeSent)
{
    EXPECT_EQ(BMessageRunner(Target(), nullptr, kSoon).InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BMessageRunner(Target(), fTick, 0).InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BMessageRunner(Target(), fTick, kSoon, 0).InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BMessageRunner(BMessenger(), fTick, kSoon).InitCheck(), B_BAD_PORT_ID);
    EXPECT_EQ(BMessageRunner::StartSending(Target(), nullptr, kSoon, 1), B_BAD_VALUE);
}

TEST_F(MessageRunnerTest, EndsWithItsTarget)
{
    Record record;
    auto* target = new RecordingLooper(record);
    target->Run();
    BMessageRunner runner(BMessenger(target), fTick, kSoon);
    ASSERT_TRUE(record.Await());

    EndLooper(target);

    const bigtime_t end = system_time() + 10'000'000;
    while (runner.GetInfo(nullptr, nullptr) == B_OK && system_time() < end) {
        snooze(1000);
    }
    EXPECT_EQ(runner.GetInfo(nullptr, nullptr), B_BAD_VALUE);
}

TEST_F(MessageRunnerTest, SendsWithoutAnObject)
{
    EXPECT_EQ(BMessageRunner::StartSending(Target(), &fTick, kSoon, 2), B_OK);

    EXPECT_TRUE(fRecord.Await(2));
}

/// How often a thread of this program has gone to sleep; -1 when there is none of the name.
long SleepsOf(const std::string& name)
{
    const thread_id unused = find_thread(name.c_str());
    long sleeps = -1;
    for (int task = getpid(); unused > 0 && task < getpid() + 10'000; ++task) {
        const std::string folder = "/proc/self/task/" + std::to_string(task);
        char text[64] = "";
        FILE* comm = std::fopen((folder + "/comm").c_str(), "r");
        const bool isIt = comm != nullptr && std::fgets(text, sizeof(text), comm) != nullptr &&
                          std::string(text) == name + "\n";
        if (comm != nullptr) {
            std::fclose(comm);
        }
        FILE* status = isIt ? std::fopen((folder + "/status").c_str(), "r") : nullptr;
        while (status != nullptr && std::fgets(text, sizeof(text), status) != nullptr) {
            std::sscanf(text, "voluntary_ctxt_switches: %ld", &sleeps);
        }
        if (status != nullptr) {
            std::fclose(status);
            break;
        }
    }
    return sleeps;
}

TEST_F(MessageRunnerTest, ItsThreadSleepsWhileNothingRuns)
{
    BMessageRunner(Target(), fTick, kSoon, 1).InitCheck();
    BMessageRunner last(Target(), fTick, kSoon, 1);
    ASSERT_TRUE(fRecord.Await());
    snooze(20 * kSoon); // it looks once for the one that was given up
    const long before = SleepsOf("message runners");

    snooze(20 * kSoon); // that nothing happens for so long is what is tested

    ASSERT_GE(before, 0);
    EXPECT_EQ(SleepsOf("message runners"), before);
}

// In a process of its own that starts anew: the thread starts once.
TEST(MessageRunnerDeathTest, TellsThatThereIsNoThread)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            Record record;
            auto* looper = new RecordingLooper(record);
            looper->Run();
            status_t refused = B_OK;
            {
                const NoThreads none;
                BMessage tick(kTick);
                refused = BMessageRunner(BMessenger(looper), tick, kSoon).InitCheck();
            }
            BMessageRunner later(BMessenger(looper), BMessage(kTick), kSoon);
            const bool isSent = record.Await();
            std::_Exit(refused == B_NO_MORE_THREADS && isSent ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
