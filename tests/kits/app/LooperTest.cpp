#include <Looper.h>

#include <AppDefs.h>
#include <MessageQueue.h>
#include <Messenger.h>

#include "RecordingLooper.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <thread>

namespace {

constexpr uint32 kFirst = 1;
constexpr uint32 kSecond = 2;

class LooperTest : public ::testing::Test
{
protected:
    RecordingLooper* Start()
    {
        auto* looper = new RecordingLooper(fRecord);
        looper->TellEndTo(fEnd);
        looper->Run();
        return looper;
    }

    Record fRecord;
    Event fEnd;
};

/// Calls a function with each message that it is given.
class ActingLooper : public BLooper
{
public:
    explicit ActingLooper(std::function<void(ActingLooper&, BMessage*)> act) : fAct(std::move(act))
    {
    }

    void MessageReceived(BMessage* message) override { fAct(*this, message); }

private:
    std::function<void(ActingLooper&, BMessage*)> fAct;
};

TEST_F(LooperTest, HandlesMessagesInTheOrderOfPosting)
{
    RecordingLooper* looper = Start();

    for (uint32 what = 0; what < 1000; ++what) {
        looper->PostMessage(what);
    }
    EndLooper(looper);

    const Record::Entries entries = fRecord.All();
    ASSERT_EQ(entries.size(), 1000u);
    for (uint32 what = 0; what < 1000; ++what) {
        ASSERT_EQ(entries[what].second, what);
    }
}

TEST_F(LooperTest, KeepsTheOrderOfEachOfManyPosters)
{
    std::atomic<int> disorders{0};
    std::array<int32, 4> next{};
    Event all;
    auto* looper = new ActingLooper([&](ActingLooper&, BMessage* message) {
        int32 number = -1;
        message->FindInt32("number", &number);
        if (next[message->what]++ != number) {
            ++disorders;
        }
        all.Happen();
    });
    looper->Run();

    std::vector<std::thread> posters;
    for (uint32 poster = 0; poster < 4; ++poster) {
        posters.emplace_back([=] {
            for (int32 number = 0; number < 2000; ++number) {
                BMessage message(poster);
                message.AddInt32("number", number);
                looper->PostMessage(&message);
            }
        });
    }
    for (std::thread& poster : posters) {
        poster.join();
    }

    EXPECT_TRUE(all.Await(8000));
    EndLooper(looper);
    EXPECT_EQ(disorders, 0);
}

TEST_F(LooperTest, HandlesMessagesUnderItsLockOnItsThread)
{
    Event handled;
    bool isLocked = false;
    thread_id thread = -1;
    auto* looper = new ActingLooper([&](ActingLooper& self, BMessage*) {
        isLocked = self.IsLocked();
        thread = find_thread(nullptr);
        handled.Happen();
    });

    const thread_id started = looper->Run();
    looper->PostMessage(kFirst);
    ASSERT_TRUE(handled.Await());
    EndLooper(looper);

    EXPECT_TRUE(isLocked);
    EXPECT_EQ(thread, started);
    EXPECT_NE(thread, find_thread(nullptr));
}

TEST_F(LooperTest, RunsOnce)
{
    RecordingLooper* looper = Start();

    EXPECT_EQ(looper->Run(), B_BAD_VALUE);

    EndLooper(looper);
}

TEST_F(LooperTest, IsMadeLockedAndGivesTheLockBackWhenItRuns)
{
    auto* looper = new RecordingLooper(fRecord);
    EXPECT_TRUE(looper->IsLocked());
    EXPECT_EQ(looper->CountLocks(), 1);

    looper->Run();

    EXPECT_FALSE(looper->IsLocked());
    EndLooper(looper);
}

TEST_F(LooperTest, OneThatNeverRanIsDeletedByQuit)
{
    auto* looper = new RecordingLooper(fRecord);
    looper->TellEndTo(fEnd);

    looper->Quit();

    EXPECT_EQ(fEnd.Count(), 1);
    EXPECT_FALSE(looper->Lock());
}

TEST_F(LooperTest, QuitFromOutsideHandlesWhatWaitsAndReturnsWhenAllIsOver)
{
    RecordingLooper* looper = Start();
    looper->Lock();
    looper->PostMessage(kFirst);
    looper->PostMessage(kSecond);

    looper->Quit();

    EXPECT_EQ(fRecord.All().size(), 2u);
    EXPECT_EQ(fEnd.Count(), 1);
}

TEST_F(LooperTest, QuitFromOutsideGivesNestedLocksBack)
{
    RecordingLooper* looper = Start();
    looper->Lock();
    looper->Lock();

    looper->Quit();

    EXPECT_EQ(fEnd.Count(), 1);
}

TEST_F(LooperTest, QuitInAHookDropsWhatWaits)
{
    Event handled;
    auto* looper = new ActingLooper([&](ActingLooper& self, BMessage*) {
        handled.Happen();
        self.Quit();
    });
    for (int i = 0; i < 5; ++i) {
        looper->PostMessage(kFirst);
    }
    const thread_id thread = looper->Run();

    wait_for_thread(thread, nullptr);

    EXPECT_EQ(handled.Count(), 1);
    EXPECT_FALSE(looper->Lock());
}

TEST_F(LooperTest, TwoThreadsMayQuitItAtOnce)
{
    for (int round = 0; round < 50; ++round) {
        RecordingLooper* looper = Start();

        std::thread other([=] { EndLooper(looper); });
        EndLooper(looper);
        other.join();

        EXPECT_EQ(fEnd.Count(), round + 1);
    }
}

TEST_F(LooperTest, QuitRequestEndsIt)
{
    RecordingLooper* looper = Start();

    looper->PostMessage(B_QUIT_REQUESTED);

    EXPECT_TRUE(fEnd.Await());
}

TEST_F(LooperTest, StaysWhenItRefusesToQuit)
{
    class Refusing : public RecordingLooper
    {
    public:
        using RecordingLooper::RecordingLooper;
        bool QuitRequested() override { return false; }
    };
    auto* looper = new Refusing(fRecord);
    looper->Run();

    looper->PostMessage(B_QUIT_REQUESTED);
    looper->PostMessage(kFirst);

    EXPECT_TRUE(fRecord.Await());
    EndLooper(looper);
}

TEST_F(LooperTest, AnswersWhetherItQuits)
{
    RecordingLooper* looper = Start();
    BMessage answer;

    const status_t status = BMessenger(looper).SendMessage(B_QUIT_REQUESTED, &answer);

    EXPECT_EQ(status, B_OK);
    EXPECT_TRUE(answer.GetBool("result", false));
    EXPECT_TRUE(fEnd.Await());
}

TEST_F(LooperTest, PostingToOneThatIsGoneFails)
{
    RecordingLooper* looper = Start();
    EndLooper(looper);
    BMessage message(kFirst);

    EXPECT_EQ(looper->PostMessage(kFirst), B_BAD_PORT_ID);
    EXPECT_EQ(looper->PostMessage(&message), B_BAD_PORT_ID);
    EXPECT_EQ(looper->PostMessage(kFirst, nullptr), B_BAD_PORT_ID);
}

TEST_F(LooperTest, PostingNothingFails)
{
    RecordingLooper* looper = Start();

    EXPECT_EQ(looper->PostMessage(nullptr, nullptr), B_BAD_VALUE);

    EndLooper(looper);
}

TEST_F(LooperTest, PostingDoesNotWaitForTheLock)
{
    RecordingLooper* looper = Start();
    Event posted;
    looper->Lock();

    std::thread poster([&] {
        looper->PostMessage(kFirst);
        posted.Happen();
    });

    EXPECT_TRUE(posted.Await());
    looper->Unlock();
    poster.join();
    EXPECT_TRUE(fRecord.Await());
    EndLooper(looper);
}

TEST_F(LooperTest, LendsTheMessageBeingHandledOnlyThen)
{
    Event handled;
    bool isCurrent = false;
    auto* looper = new ActingLooper([&](ActingLooper& self, BMessage* message) {
        isCurrent = self.CurrentMessage() == message;
        handled.Happen();
    });
    looper->Run();

    looper->PostMessage(kFirst);
    ASSERT_TRUE(handled.Await());
    looper->Lock();

    EXPECT_TRUE(isCurrent);
    looper->Quit();
}

TEST_F(LooperTest, DetachedMessageOutlivesItsHandling)
{
    std::unique_ptr<BMessage> kept;
    Event handled;
    auto* looper = new ActingLooper([&](ActingLooper& self, BMessage*) {
        kept.reset(self.DetachCurrentMessage());
        handled.Happen();
    });
    looper->Run();
    BMessage message(kFirst);
    message.AddString("text", "kept");

    looper->PostMessage(&message);
    ASSERT_TRUE(handled.Await());
    EndLooper(looper);

    ASSERT_NE(kept, nullptr);
    EXPECT_STREQ(kept->GetString("text"), "kept");
}

TEST_F(LooperTest, FindsTheLooperOfAThread)
{
    RecordingLooper* looper = Start();

    EXPECT_EQ(BLooper::LooperForThread(looper->Thread()), looper);
    EXPECT_EQ(BLooper::LooperForThread(-1), nullptr);

    EndLooper(looper);
}

/// Counts how often it is idle, and asks to be called again a given number of times.
class IdleLooper : public BLooper
{
public:
    IdleLooper(Event& idle, int wakeUps) : fIdle(idle), fWakeUps(wakeUps) {}

    void MessageReceived(BMessage*) override {}

protected:
    void QueueEmpty() override { fIdle.Happen(); }
    bigtime_t NextWakeUp() override
    {
        return --fWakeUps >= 0 ? system_time() + 1000 : B_INFINITE_TIMEOUT;
    }

private:
    Event& fIdle;
    int fWakeUps;
};

TEST_F(LooperTest, SaysWhenTheQueueHasRunEmpty)
{
    Event idle;
    auto* looper = new IdleLooper(idle, 0);
    looper->Run();
    ASSERT_TRUE(idle.Await(1));

    looper->PostMessage(kFirst);

    EXPECT_TRUE(idle.Await(2));
    EndLooper(looper);
    EXPECT_EQ(idle.Count(), 2);
}

TEST_F(LooperTest, WakesUpWithoutAMessageWhenAsked)
{
    Event idle;
    auto* looper = new IdleLooper(idle, 3);

    looper->Run();

    EXPECT_TRUE(idle.Await(4));
    EndLooper(looper);
    EXPECT_EQ(idle.Count(), 4);
}

} // namespace
