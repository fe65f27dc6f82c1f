#include <Application.h>

#include <AppDefs.h>
#include <OS.h>

#include "RecordingLooper.h"
#include "app/DisplayHooks.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>
#include <unistd.h>

namespace {

constexpr const char* kSignature = "application/x-vnd.test";

class TestApplication : public BApplication
{
public:
    TestApplication() : BApplication(kSignature) {}

    void ReadyToRun() override
    {
        fCalls += "ready ";
        if (fWhenReady) {
            fWhenReady();
        }
    }
    void ArgvReceived(int32 argc, char** argv) override
    {
        fCalls += "arguments ";
        fArguments.assign(argv, argv + argc);
    }
    void RefsReceived(BMessage*) override { fCalls += "refs "; }
    bool QuitRequested() override
    {
        ++fQuitRequests;
        return BApplication::QuitRequested();
    }
    void MessageReceived(BMessage* message) override { fRecord.Add("application", message->what); }

    std::string fCalls;
    std::vector<std::string> fArguments;
    std::atomic<int> fQuitRequests{0};
    std::function<void()> fWhenReady;
    Record fRecord;
};

/// What the interface kit's windows are to the application.
class TestWindow : public RecordingLooper
{
public:
    explicit TestWindow(
        Record& record, std::function<bool()> agrees = [] { return true; })
        : RecordingLooper(record, "window"), fAgrees(std::move(agrees))
    {
        kits::LooperRegistry::FindLooper(this)->MarkAsWindow(reinterpret_cast<BWindow*>(this));
        Run();
    }

    ~TestWindow() override { snooze(fEndTakes); }

    bool QuitRequested() override
    {
        ++sAsked;
        return fAgrees();
    }
    void Quit() override
    {
        for (int i = 0; i < fRequestsAtEnd; i++) {
            BMessage reply;
            be_app_messenger.SendMessage('busy', &reply);
        }
        RecordingLooper::Quit();
    }
    void SetEndTakes(bigtime_t time) { fEndTakes = time; }
    void SetRequestsAtEnd(int count) { fRequestsAtEnd = count; }

    static std::atomic<int> sAsked;

private:
    std::function<bool()> fAgrees;
    std::atomic<bigtime_t> fEndTakes{0};
    std::atomic<int> fRequestsAtEnd{0};
};

std::atomic<int> TestWindow::sAsked{0};

class ApplicationTest : public ::testing::Test
{
protected:
    void SetUp() override { TestWindow::sAsked = 0; }

    Record fRecord;
    Event fEnd;
};

TEST_F(ApplicationTest, IsKnownWhileItLives)
{
    {
        TestApplication application;
        EXPECT_EQ(be_app, &application);
        EXPECT_STREQ(application.Signature(), kSignature);
        EXPECT_EQ(application.InitCheck(), B_OK);
        EXPECT_TRUE(be_app_messenger.IsValid());
    }

    EXPECT_EQ(be_app, nullptr);
    EXPECT_FALSE(be_app_messenger.IsValid());
}

TEST_F(ApplicationTest, IsReadyBeforeItHandlesMessages)
{
    TestApplication application;
    application.PostMessage(B_REFS_RECEIVED);
    application.PostMessage(B_QUIT_REQUESTED);

    const thread_id thread = application.Run();

    EXPECT_TRUE(application.fCalls.ends_with("ready refs "));
    EXPECT_EQ(thread, find_thread(nullptr));
}

TEST_F(ApplicationTest, QuitInReadyToRunEndsRun)
{
    TestApplication application;
    application.fWhenReady = [&] {
        application.Quit();
    };

    application.Run();

    EXPECT_EQ(application.fQuitRequests, 0);
}

TEST_F(ApplicationTest, QuitFromAnotherThreadEndsRun)
{
    TestApplication application;
    std::thread other;
    application.fWhenReady = [&] {
        other = std::thread([&] {
            application.Lock();
            application.Quit();
        });
    };

    application.Run();

    other.join();
    EXPECT_EQ(application.fQuitRequests, 0);
}

TEST_F(ApplicationTest, HandsOverItsArguments)
{
    TestApplication application;
    BMessage message(B_ARGV_RECEIVED);
    message.AddString("argv", "program");
    message.AddString("argv", "");
    message.AddString("argv", "folder");
    application.PostMessage(&message);
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(application.fArguments, (std::vector<std::string>{"program", "", "folder"}));
}

TEST_F(ApplicationTest, QuitsItsWindowsAndWaitsForTheirEnd)
{
    TestApplication application;
    for (int i = 0; i < 3; ++i) {
        (new TestWindow(fRecord))->TellEndTo(fEnd);
    }
    EXPECT_EQ(application.CountWindows(), 3);
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(fEnd.Count(), 3);
    EXPECT_EQ(TestWindow::sAsked, 3);
    EXPECT_EQ(application.CountWindows(), 0);
}

TEST_F(ApplicationTest, StaysWhenAWindowRefuses)
{
    TestApplication application;
    std::atomic<bool> agrees{false};
    Event refused;
    auto* stubborn = new TestWindow(fRecord, [&] {
        refused.Happen();
        return agrees.load();
    });
    (new TestWindow(fRecord))->TellEndTo(fEnd);
    application.PostMessage(B_QUIT_REQUESTED);
    std::thread user([&] {
        EXPECT_TRUE(refused.Await());
        EXPECT_TRUE(fEnd.Await());
        application.PostMessage(7);
        EXPECT_TRUE(application.fRecord.Await()); // it goes on
        while (application.CountWindows() > 1) {
            snooze(1000); // a window tells its end before the application has forgotten it
        }
        EXPECT_EQ(application.WindowAt(0), reinterpret_cast<BWindow*>(stubborn));
        EXPECT_EQ(application.WindowAt(1), nullptr);
        agrees = true;
        while (application.fQuitRequests < 2) { // the first round may still be open
            application.PostMessage(B_QUIT_REQUESTED);
            snooze(1000); // a flood would outrun a slow application
        }
    });

    application.Run();

    user.join();
    EXPECT_EQ(application.CountWindows(), 0);
}

TEST_F(ApplicationTest, WindowsThatPassTheRequestOnStartNoSecondRound)
{
    TestApplication application;
    for (int i = 0; i < 2; ++i) {
        new TestWindow(fRecord, [] {
            be_app->PostMessage(B_QUIT_REQUESTED);
            return true;
        });
    }
    application.PostMessage(B_QUIT_REQUESTED);
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(TestWindow::sAsked, 2);
    EXPECT_EQ(application.fQuitRequests, 1);
}

TEST_F(ApplicationTest, WaitsForABusyWindowAndServesOthersMeanwhile)
{
    TestApplication application;
    Event isBusy;
    Event mayGoOn;
    auto* busy = new TestWindow(fRecord, [&] { // its thread holds its lock, as an operation's does
        isBusy.Happen();
        return mayGoOn.Await();
    });
    busy->TellEndTo(fEnd);
    application.PostMessage(B_QUIT_REQUESTED);
    bool isLocked = false;
    std::thread other([&] {
        EXPECT_TRUE(isBusy.Await());
        application.PostMessage(7);
        EXPECT_TRUE(application.fRecord.Await());
        isLocked = application.LockWithTimeout(5000000) == B_OK;
        application.Unlock();
        EXPECT_EQ(fEnd.Count(), 0);
        mayGoOn.Happen();
    });

    application.Run();

    other.join();
    EXPECT_TRUE(isLocked);
    EXPECT_EQ(fEnd.Count(), 1);
}

TEST_F(ApplicationTest, WaitsForAWindowThatTakesLongToEnd)
{
    TestApplication application;
    auto* window = new TestWindow(fRecord);
    window->TellEndTo(fEnd);
    window->SetEndTakes(50000); // long after its answer has come
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(fEnd.Count(), 1);
}

TEST_F(ApplicationTest, BelievesAWindowThatAgreedHoweverOftenItLooks)
{
    TestApplication application;
    auto* window = new TestWindow(fRecord);
    // Between its answer and its end the application is busy with other messages.
    window->SetRequestsAtEnd(3);
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(application.fQuitRequests, 1);
    EXPECT_EQ(application.CountWindows(), 0);
}

TEST_F(ApplicationTest, AsksWindowsOpenedDuringTheRound)
{
    TestApplication application;
    new TestWindow(fRecord, [&] {
        (new TestWindow(fRecord))->TellEndTo(fEnd);
        return true;
    });
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(TestWindow::sAsked, 2);
    EXPECT_EQ(fEnd.Count(), 1);
}

TEST_F(ApplicationTest, EndsOtherLoopersWithoutAsking)
{
    TestApplication application;
    auto* looper = new RecordingLooper(fRecord);
    looper->TellEndTo(fEnd);
    looper->Run();
    EXPECT_EQ(application.CountLoopers(), 2);
    EXPECT_EQ(application.LooperAt(0), &application);
    EXPECT_EQ(application.LooperAt(1), looper);
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(fEnd.Count(), 1);
}

TEST_F(ApplicationTest, SignalsAskToQuit)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        TestApplication application;
        application.fWhenReady = [&] {
            ::kill(::getpid(), signal);
        };

        application.Run();

        EXPECT_EQ(application.fQuitRequests, 1);
    }
}

std::string gDisplayCalls;
int gWindowsAtStop = -1;
status_t gStartStatus = B_OK;

class DisplayTest : public ApplicationTest
{
protected:
    void SetUp() override
    {
        gDisplayCalls.clear();
        gStartStatus = B_OK;
        kits::SetDisplayHooks({[] {
                                   gDisplayCalls += "start ";
                                   return gStartStatus;
                               },
                               [] {
                                   gDisplayCalls += "stop ";
                                   gWindowsAtStop = be_app->CountWindows();
                               },
                               nullptr});
    }

    void TearDown() override { kits::SetDisplayHooks({}); }
};

TEST_F(DisplayTest, StopsWhenTheLastWindowIsGone)
{
    {
        TestApplication application;
        EXPECT_EQ(gDisplayCalls, "start ");
        new TestWindow(fRecord);
        application.PostMessage(B_QUIT_REQUESTED);

        application.Run();

        EXPECT_EQ(gDisplayCalls, "start stop ");
        EXPECT_EQ(gWindowsAtStop, 0);
    }
    EXPECT_EQ(gDisplayCalls, "start stop ");
}

TEST_F(DisplayTest, StopsWithAnApplicationThatNeverRan)
{
    {
        TestApplication application;
    }

    EXPECT_EQ(gDisplayCalls, "start stop ");
}

TEST_F(DisplayTest, WithoutItTheApplicationDoesNotRun)
{
    gStartStatus = B_ERROR;
    {
        TestApplication application;
        EXPECT_EQ(application.InitCheck(), B_ERROR);

        application.Run();

        EXPECT_EQ(application.fCalls, "");
    }
    EXPECT_EQ(gDisplayCalls, "start ");
}

TEST(ApplicationStatusTest, ConstructorTellsItsStatusAtOnce)
{
    status_t status = B_ERROR;
    const BApplication application(kSignature, &status);

    EXPECT_EQ(status, B_OK);
    EXPECT_EQ(application.InitCheck(), B_OK);
}

} // namespace
