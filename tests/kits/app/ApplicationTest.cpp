#include "ApplicationFixture.h"

#include <AppDefs.h>

#include "app/DisplayHooks.h"

#include <csignal>
#include <thread>
#include <unistd.h>

namespace {

class ApplicationTest : public ApplicationFixture
{
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

class DisplayTest : public ApplicationFixture
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
