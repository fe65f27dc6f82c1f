#include <Handler.h>

#include "RecordingLooper.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

constexpr uint32 kKnown = 1;
constexpr uint32 kUnknown = 'zzzz'; // recording handlers pass it on

class HandlerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fLooper = new RecordingLooper(fRecord);
        fLooper->Run();
    }

    void TearDown() override { EndLooper(fLooper); }

    void Add(BHandler& handler)
    {
        fLooper->Lock();
        fLooper->AddHandler(&handler);
        fLooper->Unlock();
    }

    Record fRecord;
    RecordingLooper* fLooper = nullptr;
};

TEST_F(HandlerTest, GetsWhatIsPostedToIt)
{
    RecordingHandler handler("one", fRecord);
    Add(handler);

    EXPECT_EQ(fLooper->PostMessage(kKnown, &handler), B_OK);

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"one", kKnown}}));
}

TEST_F(HandlerTest, OfNoLooperTakesNoMessages)
{
    RecordingHandler handler("one", fRecord);

    EXPECT_EQ(fLooper->PostMessage(kKnown, &handler), B_MISMATCHED_VALUES);
    EXPECT_EQ(handler.Looper(), nullptr);
    EXPECT_FALSE(handler.LockLooper());
    EXPECT_EQ(handler.LockLooperWithTimeout(10), B_BAD_VALUE);
}

TEST_F(HandlerTest, OfAnotherLooperTakesNoMessages)
{
    auto* other = new RecordingLooper(fRecord);
    other->Run();
    RecordingHandler handler("one", fRecord);
    Add(handler);

    EXPECT_EQ(other->PostMessage(kKnown, &handler), B_MISMATCHED_VALUES);

    EndLooper(other);
}

TEST_F(HandlerTest, UnknownMessagesClimbTheChain)
{
    RecordingHandler child("child", fRecord);
    RecordingHandler parent("parent", fRecord);
    Add(parent);
    Add(child);
    fLooper->Lock();
    EXPECT_EQ(child.NextHandler(), fLooper);
    child.SetNextHandler(&parent);
    fLooper->Unlock();

    fLooper->PostMessage(kUnknown, &child);
    fLooper->PostMessage(kKnown, &child);

    ASSERT_TRUE(fRecord.Await(2));
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"looper", kUnknown}, {"child", kKnown}}));
}

TEST_F(HandlerTest, ChainClosesOverARemovedHandler)
{
    RecordingHandler child("child", fRecord);
    RecordingHandler parent("parent", fRecord);
    Add(parent);
    Add(child);
    fLooper->Lock();
    child.SetNextHandler(&parent);

    EXPECT_TRUE(fLooper->RemoveHandler(&parent));

    EXPECT_EQ(child.NextHandler(), fLooper);
    EXPECT_EQ(parent.NextHandler(), nullptr);
    fLooper->Unlock();
}

TEST_F(HandlerTest, ChainStaysInOneLooper)
{
    auto* other = new RecordingLooper(fRecord);
    other->Run();
    RecordingHandler handler("one", fRecord);
    Add(handler);
    fLooper->Lock();

    handler.SetNextHandler(other);

    EXPECT_EQ(handler.NextHandler(), fLooper);
    fLooper->Unlock();
    EndLooper(other);
}

TEST_F(HandlerTest, MessagesForADeletedHandlerAreDropped)
{
    auto handler = std::make_unique<RecordingHandler>("one", fRecord);
    Add(*handler);
    fLooper->Lock();
    fLooper->PostMessage(kKnown, handler.get());
    fLooper->PostMessage(kKnown);

    handler.reset();
    fLooper->Unlock();

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"looper", kKnown}}));
}

TEST_F(HandlerTest, LeavesItsLooperWhenItIsDeleted)
{
    auto handler = std::make_unique<RecordingHandler>("one", fRecord);
    Add(*handler);
    EXPECT_EQ(fLooper->CountHandlers(), 2);

    handler.reset();

    EXPECT_EQ(fLooper->CountHandlers(), 1);
}

TEST_F(HandlerTest, OutlivesItsLooper)
{
    RecordingHandler handler("one", fRecord);
    Add(handler);

    EndLooper(fLooper);

    EXPECT_EQ(handler.Looper(), nullptr);
    EXPECT_EQ(handler.NextHandler(), nullptr);
    EXPECT_FALSE(handler.LockLooper());
}

TEST_F(HandlerTest, HasAPlaceInItsLooper)
{
    RecordingHandler handler("one", fRecord);
    RecordingHandler stranger("two", fRecord);
    Add(handler);

    EXPECT_EQ(fLooper->HandlerAt(0), fLooper);
    EXPECT_EQ(fLooper->HandlerAt(1), &handler);
    EXPECT_EQ(fLooper->HandlerAt(2), nullptr);
    EXPECT_EQ(fLooper->HandlerAt(-1), nullptr);
    EXPECT_EQ(fLooper->IndexOf(&handler), 1);
    EXPECT_EQ(fLooper->IndexOf(&stranger), -1);
    EXPECT_FALSE(fLooper->RemoveHandler(&stranger));
    EXPECT_FALSE(fLooper->RemoveHandler(fLooper));
}

TEST_F(HandlerTest, PreferredOneGetsWhatIsForNoneInParticular)
{
    RecordingHandler handler("one", fRecord);
    Add(handler);
    fLooper->Lock();
    fLooper->SetPreferredHandler(&handler);
    fLooper->Unlock();

    fLooper->PostMessage(kKnown, nullptr);
    fLooper->PostMessage(kKnown);

    ASSERT_TRUE(fRecord.Await(2));
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"one", kKnown}, {"looper", kKnown}}));
}

TEST_F(HandlerTest, LooperStandsInForAMissingPreferredOne)
{
    auto handler = std::make_unique<RecordingHandler>("one", fRecord);
    Add(*handler);
    fLooper->Lock();
    fLooper->SetPreferredHandler(handler.get());
    handler.reset();
    EXPECT_EQ(fLooper->PreferredHandler(), nullptr);
    fLooper->Unlock();

    fLooper->PostMessage(kKnown, nullptr);

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All(), (Record::Entries{{"looper", kKnown}}));
}

TEST_F(HandlerTest, LockLooperFollowsAHandlerThatMoves)
{
    auto* former =
        new RecordingLooper(fRecord); // locked, and never run: nobody else asks for its lock
    RecordingHandler handler("one", fRecord);
    former->AddHandler(&handler);
    BLooper* locked = nullptr;
    std::thread thread([&] {
        if (handler.LockLooper()) {
            locked = handler.Looper();
            handler.UnlockLooper();
        }
    });
    while (former->CountLockRequests() < 2) {
        std::this_thread::yield();
    }

    former->RemoveHandler(&handler);
    Add(handler);
    former->Unlock();
    thread.join();

    EXPECT_EQ(locked, fLooper);
    EndLooper(former);
}

TEST_F(HandlerTest, MayHaveNoName)
{
    BHandler handler;
    EXPECT_EQ(handler.Name(), nullptr);

    handler.SetName("late");

    EXPECT_STREQ(handler.Name(), "late");
}

} // namespace
