#include "Event.h"

#include <AppDefs.h>
#include <Application.h>
#include <Looper.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <stdexcept>

namespace {

// Death tests run in a process of their own that starts anew: this one has threads.
class HookExceptionDeathTest : public ::testing::Test
{
protected:
    HookExceptionDeathTest() { ::testing::GTEST_FLAG(death_test_style) = "threadsafe"; }
};

class ThrowingLooper : public BLooper
{
public:
    void MessageReceived(BMessage*) override { throw std::runtime_error("lost"); }
};

class IdlyThrowingLooper : public BLooper
{
protected:
    void QueueEmpty() override { throw 7; }
};

class ThrowingApplication : public BApplication
{
public:
    ThrowingApplication() : BApplication("application/x-vnd.throws") {}
    void ReadyToRun() override { throw std::runtime_error("lost"); }
};

TEST_F(HookExceptionDeathTest, EndsTheProgramAtOnce)
{
    EXPECT_DEATH(
        {
            auto* looper = new ThrowingLooper;
            looper->Run();
            looper->PostMessage(1);
            snooze(10'000'000); // the end comes before
        },
        "std::runtime_error: lost, on the thread \"looper\"");
}

TEST_F(HookExceptionDeathTest, WhileIdleEndsTheProgramToo)
{
    EXPECT_DEATH(
        {
            (new IdlyThrowingLooper)->Run();
            snooze(10'000'000);
        },
        "exception: int, on the thread");
}

TEST_F(HookExceptionDeathTest, ReachesNobodyWhoWouldCatchIt)
{
    EXPECT_DEATH(
        {
            ThrowingApplication application;
            try {
                application.Run();
            } catch (const std::exception&) {
                std::fprintf(stderr, "it was caught\n");
            }
        },
        "^An exception leaves a hook\n");
}

} // namespace
