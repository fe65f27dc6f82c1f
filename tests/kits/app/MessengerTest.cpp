#include <Messenger.h>

#include <AppDefs.h>
#include <MessageQueue.h>

#include "RecordingLooper.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

constexpr uint32 kKnown = 1;
constexpr uint32 kAsk = 'aask';
constexpr uint32 kAnswer = 2;
constexpr uint32 kSilent = 3;
constexpr uint32 kKeep = 'keep';

/// Answers kAsk, keeps kKeep for later, notes the rest.
class AnsweringLooper : public RecordingLooper
{
public:
    using RecordingLooper::RecordingLooper;

    void MessageReceived(BMessage* message) override
    {
        switch (message->what) {
        case kAsk:
            message->SendReply(kAnswer);
            fSecondStatus = message->SendReply(kAnswer);
            fHandled.Happen();
            break;
        case kKeep:
            fKept.reset(DetachCurrentMessage());
            fHandled.Happen();
            break;
        case 'what':
            BLooper::MessageReceived(message);
            break;
        default:
            RecordingLooper::MessageReceived(message);
        }
    }

    Event fHandled;
    std::unique_ptr<BMessage> fKept;
    status_t fSecondStatus = B_OK;
};

class MessengerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fLooper = new AnsweringLooper(fRecord);
        fLooper->Run();
    }

    void TearDown() override { EndLooper(fLooper); }

    Record fRecord;
    AnsweringLooper* fLooper = nullptr;
};

TEST_F(MessengerTest, NamesNobodyUnlessTold)
{
    BMessenger messenger;
    BLooper* looper = fLooper;

    EXPECT_FALSE(messenger.IsValid());
    EXPECT_EQ(messenger.SendMessage(kKnown), B_BAD_PORT_ID);
    EXPECT_EQ(messenger.Target(&looper), nullptr);
    EXPECT_EQ(looper, nullptr);
    EXPECT_FALSE(messenger.LockTarget());
}

TEST_F(MessengerTest, SendsToTheHandlerNamed)
{
    RecordingHandler handler("one", fRecord);
    fLooper->Lock();
    fLooper->AddHandler(&handler);
    fLooper->Unlock();
    BLooper* looper = nullptr;
    BMessenger messenger(&handler);

    EXPECT_EQ(messenger.SendMessage(kKnown), B_OK);

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"one", kKnown}}));
    EXPECT_EQ(messenger.Target(&looper), &handler);
    EXPECT_EQ(looper, fLooper);
}

TEST_F(MessengerTest, WithoutHandlerNamesThePreferredOne)
{
    RecordingHandler handler("one", fRecord);
    BMessenger messenger(nullptr, fLooper);
    fLooper->Lock();
    fLooper->AddHandler(&handler);
    fLooper->SetPreferredHandler(&handler);
    fLooper->Unlock();

    messenger.SendMessage(kKnown);

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"one", kKnown}}));
    EXPECT_EQ(messenger.Target(nullptr), nullptr);
}

TEST_F(MessengerTest, TellsWhyItCannotBeMade)
{
    status_t status = B_OK;
    RecordingHandler handler("one", fRecord);

    EXPECT_FALSE(BMessenger(nullptr, nullptr, &status).IsValid());
    EXPECT_EQ(status, B_BAD_VALUE);
    EXPECT_FALSE(BMessenger(&handler, fLooper, &status).IsValid());
    EXPECT_EQ(status, B_MISMATCHED_VALUES);
    EXPECT_TRUE(BMessenger(fLooper, nullptr, &status).IsValid());
    EXPECT_EQ(status, B_OK);
}

TEST_F(MessengerTest, IsInvalidOnceTheHandlerIsGone)
{
    auto handler = std::make_unique<RecordingHandler>("one", fRecord);
    fLooper->Lock();
    fLooper->AddHandler(handler.get());
    fLooper->Unlock();
    BMessenger messenger(handler.get());
    ASSERT_TRUE(messenger.IsValid());

    handler.reset();

    EXPECT_FALSE(messenger.IsValid());
    EXPECT_EQ(messenger.SendMessage(kKnown), B_BAD_PORT_ID);
    EXPECT_EQ(messenger.LockTargetWithTimeout(10), B_BAD_VALUE);
}

TEST_F(MessengerTest, IsInvalidOnceTheLooperIsGone)
{
    BMessenger messenger(fLooper);

    EndLooper(fLooper);

    BMessage reply;
    EXPECT_FALSE(messenger.IsValid());
    EXPECT_EQ(messenger.SendMessage(kAsk, &reply), B_BAD_PORT_ID);
}

TEST_F(MessengerTest, EqualsThoseThatNameTheSame)
{
    RecordingHandler handler("one", fRecord);

    EXPECT_EQ(BMessenger(fLooper), BMessenger(fLooper));
    EXPECT_EQ(BMessenger(), BMessenger());
    EXPECT_NE(BMessenger(fLooper), BMessenger(&handler));
    EXPECT_NE(BMessenger(fLooper), BMessenger(nullptr, fLooper));
}

TEST_F(MessengerTest, LocksTheLooperOfItsTarget)
{
    BMessenger messenger(fLooper);

    EXPECT_TRUE(messenger.LockTarget());
    EXPECT_TRUE(fLooper->IsLocked());
    fLooper->Unlock();
    EXPECT_EQ(messenger.LockTargetWithTimeout(1000000), B_OK);
    EXPECT_TRUE(fLooper->IsLocked());
    fLooper->Unlock();
}

TEST_F(MessengerTest, WaitsForTheAnswer)
{
    BMessage reply;

    EXPECT_EQ(BMessenger(fLooper).SendMessage(kAsk, &reply), B_OK);

    EXPECT_EQ(reply.what, kAnswer);
    EXPECT_TRUE(reply.IsReply());
    EXPECT_FALSE(reply.IsSourceWaiting());
}

TEST_F(MessengerTest, SecondAnswerToAWaitingSenderFails)
{
    BMessage reply;

    BMessenger(fLooper).SendMessage(kAsk, &reply);

    ASSERT_TRUE(fLooper->fHandled.Await());
    EXPECT_EQ(fLooper->fSecondStatus, B_DUPLICATE_REPLY);
}

TEST_F(MessengerTest, TellsThatNoAnswerCame)
{
    BMessage reply;

    EXPECT_EQ(BMessenger(fLooper).SendMessage(kSilent, &reply), B_OK);

    EXPECT_EQ(reply.what, B_NO_REPLY);
}

TEST_F(MessengerTest, TellsThatTheMessageWasNotUnderstood)
{
    BMessage reply;

    EXPECT_EQ(BMessenger(fLooper).SendMessage('what', &reply), B_OK);

    EXPECT_EQ(reply.what, B_MESSAGE_NOT_UNDERSTOOD);
}

TEST_F(MessengerTest, AnswerMayComeLater)
{
    BMessage reply;
    std::thread answerer([&] {
        ASSERT_TRUE(fLooper->fHandled.Await());
        EXPECT_TRUE(fLooper->fKept->IsSourceWaiting());
        fLooper->fKept->SendReply(kAnswer);
    });

    EXPECT_EQ(BMessenger(fLooper).SendMessage(kKeep, &reply), B_OK);

    EXPECT_EQ(reply.what, kAnswer);
    answerer.join();
}

TEST_F(MessengerTest, GivesUpWaitingInTime)
{
    BMessage message(kKeep);
    BMessage reply;

    const status_t status =
        BMessenger(fLooper).SendMessage(&message, &reply, B_INFINITE_TIMEOUT, 2000);

    EXPECT_EQ(status, B_TIMED_OUT);
}

TEST_F(MessengerTest, DoesNotWaitForItself)
{
    BMessage reply;
    fLooper->Lock();

    EXPECT_EQ(BMessenger(fLooper).SendMessage(kAsk, &reply), B_MESSAGE_TO_SELF);

    fLooper->Unlock();
}

TEST_F(MessengerTest, WaitingEndsWhenTheTargetGoes)
{
    auto* later = new RecordingLooper(fRecord); // runs when the message waits
    RecordingHandler handler("one", fRecord);
    later->AddHandler(&handler);
    status_t status = B_OK;
    std::thread asker([&] {
        BMessage reply;
        status = BMessenger(&handler).SendMessage(kAsk, &reply);
    });
    while (later->MessageQueue()->IsEmpty()) {
        std::this_thread::yield();
    }

    later->RemoveHandler(&handler);
    later->Run();
    asker.join();

    EXPECT_EQ(status, B_BAD_PORT_ID);
    EndLooper(later);
}

TEST_F(MessengerTest, AnswersGoWhereTheSenderSaid)
{
    Record answers;
    auto* asker = new RecordingLooper(answers, "asker");
    asker->Run();

    BMessenger(fLooper).SendMessage(kAsk, asker);

    ASSERT_TRUE(answers.Await());
    EXPECT_EQ(answers.All().front(), (std::pair<std::string, uint32>("asker", kAnswer)));
    EndLooper(asker);
}

TEST_F(MessengerTest, MisunderstoodMessageIsAnsweredOnlyWhenAskedFor)
{
    Record answers;
    auto* asker = new RecordingLooper(answers, "asker");
    asker->Run();

    BMessenger(fLooper).SendMessage('what');
    BMessenger(fLooper).SendMessage('what', asker);

    ASSERT_TRUE(answers.Await());
    EXPECT_EQ(answers.All().front().second, B_MESSAGE_NOT_UNDERSTOOD);
    EndLooper(asker);
}

TEST_F(MessengerTest, AMessageNeverSentTakesNoAnswer)
{
    BMessage message(kKnown);

    EXPECT_EQ(message.SendReply(kAnswer), B_BAD_REPLY);
    EXPECT_FALSE(message.IsReply());
    EXPECT_FALSE(message.IsSourceWaiting());
    EXPECT_FALSE(message.WasDropped());
    EXPECT_FALSE(message.ReturnAddress().IsValid());
}

} // namespace
