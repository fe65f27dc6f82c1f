#include <Invoker.h>

#include "RecordingLooper.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32 kOwn = 1;
constexpr uint32 kOther = 2;
constexpr uint32 kKind = 'kind';

class InvokerTest : public ::testing::Test
{
protected:
    void SetUp() override { fLooper->Run(); }
    void TearDown() override { EndLooper(fLooper); }

    Record fRecord;
    RecordingLooper* fLooper = new RecordingLooper(fRecord);
};

TEST_F(InvokerTest, SendsItsMessageAgainAndAgain)
{
    BInvoker invoker(new BMessage(kOwn), fLooper);

    EXPECT_EQ(invoker.Invoke(), B_OK);
    EXPECT_EQ(invoker.Invoke(), B_OK);

    EXPECT_TRUE(fRecord.Await(2));
    EXPECT_EQ(invoker.Command(), kOwn);
}

TEST_F(InvokerTest, SendsAnotherMessageInstead)
{
    BInvoker invoker(new BMessage(kOwn), BMessenger(fLooper));
    BMessage other(kOther);

    EXPECT_EQ(invoker.Invoke(&other), B_OK);

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"looper", kOther}}));
}

TEST_F(InvokerTest, NeedsMessageAndTarget)
{
    BInvoker invoker;
    EXPECT_EQ(invoker.Invoke(), B_BAD_VALUE);
    EXPECT_EQ(invoker.Command(), 0u);

    invoker.SetMessage(new BMessage(kOwn));
    EXPECT_EQ(invoker.Invoke(), B_BAD_PORT_ID);

    EXPECT_EQ(invoker.SetTarget(fLooper), B_OK);
    EXPECT_EQ(invoker.Invoke(), B_OK);
}

TEST_F(InvokerTest, TellsItsTarget)
{
    BInvoker invoker(nullptr, fLooper);
    BLooper* looper = nullptr;

    EXPECT_EQ(invoker.Target(&looper), fLooper);
    EXPECT_EQ(looper, fLooper);
    EXPECT_EQ(invoker.Messenger(), BMessenger(fLooper));
    EXPECT_EQ(invoker.SetTarget(nullptr, nullptr), B_BAD_VALUE);
    EXPECT_EQ(invoker.Target(), nullptr);
}

TEST_F(InvokerTest, TellsTheKindWhileItNotifies)
{
    class Noting : public BInvoker
    {
    public:
        using BInvoker::BInvoker;
        status_t Invoke(BMessage* message) override
        {
            fKind = InvokeKind(&fNotifies);
            return BInvoker::Invoke(message);
        }
        uint32 fKind = 0;
        bool fNotifies = false;
    };
    Noting invoker(new BMessage(kOwn), fLooper);

    EXPECT_EQ(invoker.InvokeNotify(nullptr, kKind), B_OK);

    EXPECT_EQ(invoker.fKind, kKind);
    EXPECT_TRUE(invoker.fNotifies);
    bool notifies = true;
    EXPECT_EQ(invoker.InvokeKind(&notifies), B_CONTROL_INVOKED);
    EXPECT_FALSE(notifies);
}

TEST_F(InvokerTest, AnswersGoToTheHandlerNamed)
{
    class Answering : public BLooper
    {
    public:
        void MessageReceived(BMessage* message) override { message->SendReply(kOther); }
    };
    auto* answering = new Answering;
    answering->Run();
    BInvoker invoker(new BMessage(kOwn), answering);
    invoker.SetHandlerForReply(fLooper);
    EXPECT_EQ(invoker.HandlerForReply(), fLooper);

    invoker.Invoke();

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"looper", kOther}}));
    EndLooper(answering);
}

TEST_F(InvokerTest, TargetIsLocalWhileItLives)
{
    BInvoker invoker(nullptr, fLooper);
    EXPECT_TRUE(invoker.IsTargetLocal());

    EXPECT_EQ(invoker.SetTarget(BMessenger()), B_OK);
    EXPECT_FALSE(invoker.IsTargetLocal());
}

} // namespace
