#include "app/LooperCore.h"

#include "Event.h"
#include "RecordingLooper.h"
#include "app/LooperRegistry.h"
#include "app/MessageDelivery.h"
#include "app/ReplySlot.h"

#include <Messenger.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using kits::LooperCore;
using kits::LooperRegistry;

constexpr bigtime_t kPatience = 10'000'000;
constexpr int kAskers = 6;

/// A looper that goes while threads send it messages and wait for the answers.
class DyingLooperTest : public ::testing::Test
{
protected:
    Record fRecord;
};

TEST(LooperCoreTest, AMessageForALooperThatIsGoneEndsAtOnce)
{
    Record record;
    auto* looper = new RecordingLooper(record);
    const std::shared_ptr<LooperCore> core =
        LooperRegistry::FindLooper(looper); // outlives the looper
    looper->Run();
    EndLooper(looper);
    core->WaitForEnd();
    const auto slot = std::make_shared<kits::ReplySlot>();
    auto late = std::make_unique<BMessage>(1);
    kits::NewDelivery(*late).slot = slot;

    core->Queue().AddMessage(late.release());

    BMessage reply;
    EXPECT_EQ(slot->Wait(&reply, system_time() + 1'000'000), B_BAD_PORT_ID);
    EXPECT_TRUE(core->Queue().IsEmpty());
}

TEST(LooperCoreTest, KeysPutBackIntoALooperThatIsGoneEnd)
{
    Record record;
    auto* looper = new RecordingLooper(record);
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(looper);
    looper->Quit();
    std::vector<std::unique_ptr<BMessage>> keys;
    keys.push_back(std::make_unique<BMessage>(2));

    core->PutInFront(std::move(keys));

    EXPECT_TRUE(core->Queue().IsEmpty());
    EXPECT_FALSE(core->Post(std::make_unique<BMessage>(3)));
    EXPECT_FALSE(core->PostFoldingMouseMove(std::make_unique<BMessage>(4)));
}

// Asks without end; every wait must end soon, with an answer or without one.
void Ask(const BMessenger& target, std::atomic<int>& overdue)
{
    status_t status = B_OK;
    while (status == B_OK) {
        BMessage message(5);
        BMessage reply;
        status = target.SendMessage(&message, &reply, B_INFINITE_TIMEOUT, kPatience);
        overdue += status == B_TIMED_OUT ? 1 : 0;
    }
}

TEST_F(DyingLooperTest, WhoeverWaitsForItsAnswerIsTold)
{
    std::atomic<int> overdue{0};
    for (int round = 0; round < 400 && overdue == 0; ++round) {
        auto* looper = new RecordingLooper(fRecord);
        const BMessenger target(looper);
        const std::shared_ptr<LooperCore> held = LooperRegistry::FindLooper(looper);
        looper->Run();
        std::vector<std::thread> askers;
        for (int i = 0; i < kAskers; ++i) {
            askers.emplace_back([&] { Ask(target, overdue); });
        }

        EndLooper(looper);
        for (std::thread& asker : askers) {
            asker.join();
        }
    }
    EXPECT_EQ(overdue, 0);
}

} // namespace
