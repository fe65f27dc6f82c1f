#include "app/Guards.h"

#include "RecordingLooper.h"
#include "app/DisplayHooks.h"
#include "app/LongWork.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/Watchdog.h"

#include <Messenger.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#ifdef KITS_GUARDS

namespace {

using kits::LooperRegistry;

// Death tests run in a process of their own that starts anew: this one has threads.
class GuardsDeathTest : public ::testing::Test
{
protected:
    GuardsDeathTest() { ::testing::GTEST_FLAG(death_test_style) = "threadsafe"; }

    RecordingLooper* Start()
    {
        auto* looper = new RecordingLooper(fRecord);
        looper->Run();
        return looper;
    }

    Record fRecord;
};

constexpr const char* kTwoLocks = "takes a looper's lock while it holds another one's";

TEST_F(GuardsDeathTest, TwoLoopersLocksEndTheProgram)
{
    EXPECT_DEATH(
        {
            RecordingLooper* one = Start();
            RecordingLooper* other = Start();
            one->Lock();
            other->Lock();
        },
        kTwoLocks);
}

TEST_F(GuardsDeathTest, LockAfterLockIsFine)
{
    RecordingLooper* one = Start();
    RecordingLooper* other = Start();

    EXPECT_TRUE(one->Lock());
    EXPECT_TRUE(one->Lock());
    one->Unlock();
    one->Unlock();
    EXPECT_TRUE(other->Lock());

    other->Quit();
    EndLooper(one);
}

TEST_F(GuardsDeathTest, ALooperThatNeverRanDoesNotCount)
{
    RecordingLooper* one = Start();
    one->Lock();

    auto* built = new RecordingLooper(fRecord); // locked by its constructor

    EXPECT_TRUE(built->IsLocked());
    built->Quit();
    one->Quit();
}

TEST_F(GuardsDeathTest, ADeclaredPairIsFine)
{
    RecordingLooper* one = Start();
    RecordingLooper* other = Start();

    {
        kits::AllowLockPair allow(one, other);
        one->Lock();
        EXPECT_TRUE(other->Lock());
        other->Unlock();
        one->Unlock();
    }

    EndLooper(one);
    EndLooper(other);
}

TEST_F(GuardsDeathTest, ALongRunningLooperMayLockItsOwnQuestion)
{
    RecordingLooper* operation = Start();
    operation->SetLongRunning(true);
    operation->Lock();
    RecordingLooper* question = Start();

    EXPECT_TRUE(question->Lock());

    question->Unlock();
    operation->Quit();
    EndLooper(question);
}

TEST_F(GuardsDeathTest, ALongRunningLooperMayLockNoOther)
{
    EXPECT_DEATH(
        {
            RecordingLooper* stranger = Start();
            RecordingLooper* operation = Start();
            operation->SetLongRunning(true);
            operation->Lock();
            stranger->Lock();
        },
        kTwoLocks);
}

TEST_F(GuardsDeathTest, TheQuestionMayNotLockTheOperation)
{
    EXPECT_DEATH(
        {
            RecordingLooper* operation = Start();
            operation->SetLongRunning(true);
            operation->Lock();
            RecordingLooper* question = Start();
            operation->Unlock();
            question->Lock();
            operation->Lock();
        },
        kTwoLocks);
}

/// Makes the calling thread, and no other, the window server's.
void BeTheServer()
{
    static thread_id sServer;
    sServer = find_thread(nullptr);
    kits::SetDisplayHooks({nullptr, nullptr, [] {
                               return find_thread(nullptr) == sServer;
                           }});
}

TEST_F(GuardsDeathTest, TheServersThreadTakesNoLock)
{
    EXPECT_DEATH(
        {
            RecordingLooper* looper = Start();
            BeTheServer();
            looper->Lock();
        },
        "server's thread takes a looper's lock");
}

TEST_F(GuardsDeathTest, TheServersThreadWaitsForNoAnswer)
{
    EXPECT_DEATH(
        {
            RecordingLooper* looper = Start();
            BeTheServer();
            BMessage message(1);
            BMessage reply;
            BMessenger(looper).SendMessage(&message, &reply, B_INFINITE_TIMEOUT, 1000);
        },
        "server's thread waits for an answer");
}

/// A window whose thread takes no message while `work` runs.
class BusyWindow : public BLooper
{
public:
    explicit BusyWindow(Event& mayGoOn) : fMayGoOn(mayGoOn)
    {
        LooperRegistry::FindLooper(this)->MarkAsWindow(reinterpret_cast<BWindow*>(this));
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'work') {
            kits::LongWork work;
            fIsBusy.Happen();
            fMayGoOn.Await();
        } else if (message->what == 'hang') {
            fIsBusy.Happen();
            fMayGoOn.Await();
        }
    }

    Event fIsBusy;

private:
    Event& fMayGoOn;
};

constexpr bigtime_t kShortLimit = 50000;

// Posts `what` and one more message, and looks on for `limits` times the watchdog's patience.
void Watch(uint32 what, int limits, bool isLongRunning = false)
{
    Event mayGoOn;
    auto* window = new BusyWindow(mayGoOn);
    window->SetLongRunning(isLongRunning);
    window->Run();
    window->PostMessage(what);
    window->fIsBusy.Await();
    window->PostMessage(1);
    {
        kits::Watchdog watchdog(kShortLimit);
        snooze(limits * kShortLimit); // that nothing happens for so long is what is tested
    }
    mayGoOn.Happen();
    EndLooper(window);
}

TEST_F(GuardsDeathTest, ASilentWindowIsReportedWithAllStacks)
{
    EXPECT_DEATH(
        {
            ::setenv("KITS_WATCHDOG", "abort", 1);
            Watch('hang', 100);
        },
        "takes no messages of its window");
}

TEST_F(GuardsDeathTest, ASilentWindowIsReportedOnce)
{
    ::testing::internal::CaptureStderr();

    Watch('hang', 6);

    const std::string report = ::testing::internal::GetCapturedStderr();
    const size_t first = report.find("takes no messages");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(report.find("takes no messages", first + 1), std::string::npos);
    // The main thread, the window's and the watching one, at least.
    size_t stacks = 0;
    for (size_t at = report.find("thread "); at != std::string::npos;
         at = report.find("thread ", at + 1)) {
        ++stacks;
    }
    EXPECT_GE(stacks, 3u);
}

TEST_F(GuardsDeathTest, AWindowAtWorkIsLeftInPeace)
{
    ::testing::internal::CaptureStderr();

    Watch('work', 4);
    Watch('hang', 4, true);

    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

} // namespace

#endif
