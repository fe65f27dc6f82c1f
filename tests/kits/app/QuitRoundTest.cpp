#include "ApplicationFixture.h"

#include <AppDefs.h>

#include <thread>

// An application that is asked to end asks its windows.

namespace {

class QuitRoundTest : public ApplicationFixture
{
};

TEST_F(QuitRoundTest, QuitsItsWindowsAndWaitsForTheirEnd)
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

TEST_F(QuitRoundTest, StaysWhenAWindowRefuses)
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

TEST_F(QuitRoundTest, WindowsThatPassTheRequestOnStartNoSecondRound)
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

TEST_F(QuitRoundTest, WaitsForABusyWindowAndServesOthersMeanwhile)
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

TEST_F(QuitRoundTest, WaitsForAWindowThatTakesLongToEnd)
{
    TestApplication application;
    auto* window = new TestWindow(fRecord);
    window->TellEndTo(fEnd);
    window->SetEndTakes(50000); // long after its answer has come
    application.PostMessage(B_QUIT_REQUESTED);

    application.Run();

    EXPECT_EQ(fEnd.Count(), 1);
}

TEST_F(QuitRoundTest, BelievesAWindowThatAgreedHoweverOftenItLooks)
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

TEST_F(QuitRoundTest, AsksWindowsOpenedDuringTheRound)
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

TEST_F(QuitRoundTest, EndsOtherLoopersWithoutAsking)
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

} // namespace
