#include "panes/PaneNotifier.h"

#include "ApplicationEnvironment.h"

#include <Autolock.h>
#include <Message.h>
#include <OS.h>
#include <View.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace norvane;

/// Writes down what reaches it.
class NotedView : public BView
{
public:
    NotedView() : BView(BRect(0, 0, 9, 9), "noted", B_FOLLOW_NONE, 0) {}
    void MessageReceived(BMessage* message) override { received.push_back(*message); }

    std::vector<BMessage> received; // under the window's lock
};

class PaneNotifierTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fWindow = new BWindow(BRect(50, 50, 149, 149), "noted", B_TITLED_WINDOW, 0);
        fView = new NotedView;
        fWindow->AddChild(fView);
        fWindow->Show();
    }
    void TearDown() override
    {
        if (fWindow->Lock()) {
            fWindow->Quit();
        }
    }

    size_t CountReceived()
    {
        const BAutolock lock(fWindow);
        return fView->received.size();
    }

    BWindow* fWindow = nullptr; // deletes itself
    NotedView* fView = nullptr;
};

TEST_F(PaneNotifierTest, NoticesWaitForTheCurrentMessagesEnd)
{
    PaneNotifier notifier(fView);
    notifier.Attached();
    {
        const BAutolock lock(fWindow); // stands for the message that is being handled
        notifier.Post(MSG_PANE_INFO);
        snooze(20'000); // time in which a direct call would have come through
        EXPECT_TRUE(fView->received.empty());
    }
    ASSERT_TRUE(kits::testing::WaitFor([this] { return CountReceived() == 1; }));
    EXPECT_EQ(fView->received[0].what, uint32(MSG_PANE_INFO));
}

TEST_F(PaneNotifierTest, ProgressOfThePanesOwnThreadComesAtOnce)
{
    PaneNotifier notifier(fView);
    notifier.Attached();
    const BAutolock lock(fWindow);
    notifier.StartProgress();
    notifier.SetProgressMax(42);
    notifier.StopProgress();
    ASSERT_EQ(fView->received.size(), 3u);
    EXPECT_EQ(fView->received[0].what, uint32(MSG_PROGRESS_START));
    EXPECT_EQ(fView->received[1].what, uint32(MSG_PROGRESS_MAX));
    EXPECT_EQ(fView->received[1].GetInt32("maxvalue", 0), 42);
    EXPECT_EQ(fView->received[2].what, uint32(MSG_PROGRESS_STOP));
}

TEST_F(PaneNotifierTest, StepsComeOncePerFrameAndCarryTheirNumber)
{
    PaneNotifier notifier(fView);
    notifier.Attached();
    const BAutolock lock(fWindow);
    const bigtime_t start = system_time();
    notifier.StartProgress();
    int32 made = 0;
    while (system_time() - start < 100'000) {
        notifier.Step();
        made++;
    }
    const bigtime_t lasted = system_time() - start;
    int32 carried = 0;
    for (size_t index = 1; index < fView->received.size(); index++) {
        EXPECT_EQ(fView->received[index].what, uint32(MSG_PROGRESS_STEP));
        carried += fView->received[index].GetInt32("steps", 0);
    }
    EXPECT_GT(carried, 0);
    EXPECT_LE(carried, made);
    EXPECT_LE(static_cast<bigtime_t>(fView->received.size() - 1), lasted / (1'000'000 / 60));
}

TEST_F(PaneNotifierTest, ProgressOfAnotherThreadIsPosted)
{
    PaneNotifier notifier(fView);
    notifier.Attached();
    notifier.StartProgress();
    EXPECT_TRUE(kits::testing::WaitFor([this] { return CountReceived() == 1; }));
}

TEST_F(PaneNotifierTest, WithoutAPaneNothingHappens)
{
    PaneNotifier notifier(nullptr);
    notifier.Attached();
    notifier.Post(MSG_PANE_INFO);
    notifier.StartProgress();
    notifier.Step(5);
    notifier.StopProgress();
    EXPECT_EQ(CountReceived(), 0u);
}

} // namespace
