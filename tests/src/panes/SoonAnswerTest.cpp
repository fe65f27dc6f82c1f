#include "panes/SoonAnswer.h"

#include "Event.h"
#include "NoThreads.h"
#include "RecordingLooper.h"

#include <Message.h>
#include <OS.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

namespace {

using namespace norvane;

/// Whoever asks is a looper, which hears the answers that come late.
class SoonAnswerTest : public ::testing::Test
{
protected:
    SoonAnswerTest() { fAsker->Run(); }
    ~SoonAnswerTest() override { EndLooper(fAsker); }

    Record fHeard;
    RecordingLooper* fAsker = new RecordingLooper(fHeard, "asker"); // deletes itself
};

TEST_F(SoonAnswerTest, OneThatIsThereInTimeIsReturnedAndNotSent)
{
    std::thread::id by;
    const std::optional<BMessage> answer = AnswerSoon(
        [&by] {
            by = std::this_thread::get_id();
            return BMessage('Answ');
        },
        BMessenger(fAsker));

    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->what, uint32{'Answ'});
    EXPECT_NE(by, std::this_thread::get_id());
    fAsker->PostMessage('Last');
    ASSERT_TRUE(fHeard.Await());
    EXPECT_EQ(fHeard.All(), (Record::Entries{{"asker", 'Last'}}));
}

TEST_F(SoonAnswerTest, OneThatIsLateIsSent)
{
    const auto isHeld = std::make_shared<std::atomic<bool>>(true);
    const bigtime_t begin = system_time();
    const std::optional<BMessage> answer = AnswerSoon(
        [isHeld] {
            while (*isHeld) {
                snooze(1000);
            }
            return BMessage('Late');
        },
        BMessenger(fAsker));

    EXPECT_FALSE(answer.has_value());
    EXPECT_LT(system_time() - begin, 1'000'000);
    EXPECT_TRUE(fHeard.All().empty());
    *isHeld = false;
    ASSERT_TRUE(fHeard.Await());
    EXPECT_EQ(fHeard.All(), (Record::Entries{{"asker", 'Late'}}));
}

TEST_F(SoonAnswerTest, WithoutAThreadItIsWaitedFor)
{
    const NoThreads none;
    const std::optional<BMessage> answer =
        AnswerSoon([] { return BMessage('Answ'); }, BMessenger(fAsker));
    EXPECT_TRUE(answer.has_value());
}

} // namespace
