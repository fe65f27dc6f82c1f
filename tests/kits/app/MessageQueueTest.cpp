#include <MessageQueue.h>

#include <AppDefs.h>
#include <Message.h>

#include "RecordingLooper.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"

#include <gtest/gtest.h>

namespace {

std::vector<uint32> WhatsOf(const BMessageQueue& queue)
{
    std::vector<uint32> whats;
    for (int32 i = 0; queue.FindMessage(i) != nullptr; ++i) {
        whats.push_back(queue.FindMessage(i)->what);
    }
    return whats;
}

TEST(MessageQueueTest, YieldsMessagesInTheOrderOfTheirComing)
{
    BMessageQueue queue;
    queue.AddMessage(new BMessage(1));
    queue.AddMessage(new BMessage(2));
    EXPECT_EQ(queue.CountMessages(), 2);

    const std::unique_ptr<BMessage> first(queue.NextMessage());
    const std::unique_ptr<BMessage> second(queue.NextMessage());

    EXPECT_EQ(first->what, 1u);
    EXPECT_EQ(second->what, 2u);
    EXPECT_TRUE(queue.IsEmpty());
    EXPECT_EQ(queue.NextMessage(), nullptr);
}

TEST(MessageQueueTest, FindsByPlaceAndByCode)
{
    BMessageQueue queue;
    queue.AddMessage(new BMessage(1));
    queue.AddMessage(new BMessage(2));
    queue.AddMessage(new BMessage(1));

    EXPECT_EQ(queue.FindMessage(1)->what, 2u);
    EXPECT_EQ(queue.FindMessage(1u, 1), queue.FindMessage(2));
    EXPECT_EQ(queue.FindMessage(1u, 2), nullptr);
    EXPECT_EQ(queue.FindMessage(3), nullptr);
    EXPECT_EQ(queue.FindMessage(-1), nullptr);
}

TEST(MessageQueueTest, RemovesOneMessage)
{
    BMessageQueue queue;
    BMessage stranger(9);
    queue.AddMessage(new BMessage(1));
    queue.AddMessage(new BMessage(2));

    queue.RemoveMessage(queue.FindMessage(0));
    queue.RemoveMessage(&stranger);

    EXPECT_EQ(WhatsOf(queue), std::vector<uint32>{2});
}

TEST(MessageQueueTest, LockNests)
{
    BMessageQueue queue;

    EXPECT_TRUE(queue.Lock());
    EXPECT_TRUE(queue.Lock());
    queue.AddMessage(new BMessage(1));
    queue.Unlock();
    queue.Unlock();

    EXPECT_EQ(queue.CountMessages(), 1);
}

/// A looper that does not run, so that its queue can be looked at.
class CoreQueueTest : public ::testing::Test
{
protected:
    void TearDown() override { fLooper->Quit(); }

    static std::unique_ptr<BMessage> Input(uint32 what, int32 window, int32 number = 0)
    {
        auto message = std::make_unique<BMessage>(what);
        message->AddInt32("window", window);
        message->AddInt32("number", number);
        return message;
    }

    void Move(int32 window, int32 number)
    {
        fCore->PostFoldingMouseMove(Input(B_MOUSE_MOVED, window, number));
    }

    std::vector<int32> Numbers()
    {
        std::vector<int32> numbers;
        for (int32 i = 0; fCore->Queue().FindMessage(i) != nullptr; ++i) {
            numbers.push_back(fCore->Queue().FindMessage(i)->GetInt32("number", -1));
        }
        return numbers;
    }

    Record fRecord;
    RecordingLooper* fLooper = new RecordingLooper(fRecord);
    std::shared_ptr<kits::LooperCore> fCore = kits::LooperRegistry::FindLooper(fLooper);
};

TEST_F(CoreQueueTest, NewerMouseMoveTakesThePlaceOfTheWaitingOne)
{
    Move(1, 10);
    fCore->Post(Input(77, 1, 20));
    Move(1, 30);

    EXPECT_EQ(Numbers(), (std::vector<int32>{30, 20}));
}

TEST_F(CoreQueueTest, MouseMovesAreNotCarriedOverOtherInput)
{
    for (const uint32 what : {B_MOUSE_DOWN, B_MOUSE_UP, B_MOUSE_WHEEL_CHANGED, B_KEY_DOWN}) {
        Move(1, 10);
        fCore->Post(Input(what, 1, 20));
        Move(1, 30);
        Move(1, 40);

        EXPECT_EQ(Numbers(), (std::vector<int32>{10, 20, 40}));
        while (!fCore->Queue().IsEmpty()) {
            delete fCore->Queue().NextMessage();
        }
    }
}

TEST_F(CoreQueueTest, MouseMovesOfAnotherWindowStay)
{
    Move(1, 10);
    Move(2, 20);
    Move(2, 30);

    EXPECT_EQ(Numbers(), (std::vector<int32>{10, 30}));
}

TEST_F(CoreQueueTest, MouseMoveThatWasTakenIsNotReplaced)
{
    Move(1, 10);
    const std::unique_ptr<BMessage> taken(fCore->Queue().NextMessage());

    Move(1, 20);

    EXPECT_EQ(taken->GetInt32("number", -1), 10);
    EXPECT_EQ(Numbers(), std::vector<int32>{20});
}

TEST_F(CoreQueueTest, MouseMovesFoldAgainOnceTheKeysAreTaken)
{
    Move(1, 10);
    fCore->Post(Input(B_KEY_DOWN, 1, 20));

    const auto keys = fCore->TakeKeyMessages();
    Move(1, 30);

    EXPECT_EQ(keys.size(), 1u);
    EXPECT_EQ(Numbers(), std::vector<int32>{30});
}

TEST_F(CoreQueueTest, KeysMoveToTheFrontOfAnotherQueueInTheirOrder)
{
    auto* other = new RecordingLooper(fRecord);
    const auto otherCore = kits::LooperRegistry::FindLooper(other);
    fCore->Post(Input(B_KEY_DOWN, 1, 1));
    fCore->Post(Input(B_KEY_UP, 1, 2));
    fCore->Post(Input(B_KEY_DOWN, 1, 3));
    otherCore->Post(Input(B_KEY_DOWN, 2, 4));

    otherCore->PutInFront(fCore->TakeKeyMessages());

    EXPECT_EQ(Numbers(), std::vector<int32>{2});
    std::vector<int32> moved;
    for (int32 i = 0; i < 3; ++i) {
        moved.push_back(otherCore->Queue().FindMessage(i)->GetInt32("number", -1));
    }
    EXPECT_EQ(moved, (std::vector<int32>{1, 3, 4}));
    other->Quit();
}

TEST_F(CoreQueueTest, PuttingInFrontWakesALooper)
{
    fLooper->Run();
    std::vector<std::unique_ptr<BMessage>> messages;
    messages.push_back(Input(5, 1));

    fCore->PutInFront(std::move(messages));

    EXPECT_TRUE(fRecord.Await());
    fLooper->Lock();
}

TEST_F(CoreQueueTest, NothingIsPostedToALooperThatIsGone)
{
    auto* other = new RecordingLooper(fRecord);
    const auto otherCore = kits::LooperRegistry::FindLooper(other);

    other->Quit();

    EXPECT_FALSE(otherCore->Post(Input(1, 1)));
    EXPECT_FALSE(otherCore->PostFoldingMouseMove(Input(B_MOUSE_MOVED, 1)));
    EXPECT_FALSE(otherCore->IsAlive());
    EXPECT_EQ(kits::LooperRegistry::FindLooper(other), nullptr);
}

} // namespace
