#include "ControlWindow.h"

#include <Alert.h>
#include <OS.h>

#include <atomic>

namespace {

using namespace kits::testing;

constexpr bigtime_t kQuietTime = 500'000; // microseconds without a key before one may answer

/// A window that shows progress, whose thread asks something while a person may be typing.
class ProgressWindow : public ControlWindow
{
public:
    explicit ProgressWindow(BWindow* opener) : ControlWindow("progress")
    {
        SetOpener(opener);
        SetTakesKeys(false);
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'ask ') {
            answer = (new BAlert("Unasked", "Shall it go on?", "No", "Yes"))->Go();
        } else {
            ControlWindow::MessageReceived(message);
        }
    }

    static constexpr int32 kNone = -100;
    std::atomic<int32> answer{kNone};
};

/// An alert that an operation opens unasked, shown and with the keyboard.
class AlertQuietTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fOpener = new ControlWindow("opener");
        fOpener->Show();
        ASSERT_TRUE(WaitForFocus(fOpener));
        fProgress = new ProgressWindow(fOpener);
        fProgress->Show();
        fProgress->PostMessage('ask ');
        fAlert = WaitForWindow("Unasked");
        ASSERT_NE(fAlert, nullptr);
        ASSERT_TRUE(WaitForFocus(fAlert));
        ASSERT_TRUE(WaitUntilAnswers(fAlert));
    }

    void TearDown() override
    {
        if (IsWaiting() && fAlert != nullptr) {
            fAlert->PostMessage(B_QUIT_REQUESTED);
        }
        WaitFor([this] { return !IsWaiting(); });
        for (BWindow* window : {static_cast<BWindow*>(fProgress), static_cast<BWindow*>(fOpener)}) {
            if (window->Lock()) {
                window->Quit();
            }
        }
    }

    bool IsWaiting() const { return fProgress->answer == ProgressWindow::kNone; }

    /// Whether the alert still waits once it has handled all keys so far, and what those led to.
    bool IsWaitingAfterKeys()
    {
        SyncServer();
        return Sync(fAlert) && Sync(fAlert) && CountShown("Unasked") == 1 && IsWaiting();
    }

    int32 Answer()
    {
        WaitFor([this] { return !IsWaiting(); });
        return fProgress->answer;
    }

    ControlWindow* fOpener = nullptr;    // deletes itself
    ProgressWindow* fProgress = nullptr; // deletes itself
    BWindow* fAlert = nullptr;           // deletes itself
};

TEST_F(AlertQuietTest, AKeyRightAfterTypingIsNoAnswer)
{
    TypeKey('x');
    TypeKey(B_ENTER);

    EXPECT_TRUE(IsWaitingAfterKeys());
}

TEST_F(AlertQuietTest, AKeyAfterAQuietTimeIsAnAnswer)
{
    TypeKey('x');
    TypeKey(B_ENTER);
    ASSERT_TRUE(IsWaitingAfterKeys());
    const bigtime_t typed = system_time();
    ASSERT_TRUE(WaitFor([typed] { return system_time() > typed + kQuietTime; }));

    TypeKey(B_ENTER);

    EXPECT_EQ(Answer(), 1);
}

TEST_F(AlertQuietTest, EachDroppedKeyBeginsTheQuietTimeAnew)
{
    TypeKey('x');
    const bigtime_t typed = system_time();
    // Enter again and again, for longer than the quiet time and never that far apart.
    while (system_time() < typed + 2 * kQuietTime) {
        TypeKey(B_ENTER);
    }

    EXPECT_TRUE(IsWaitingAfterKeys());
}

TEST_F(AlertQuietTest, AClickIsAnAnswerEvenRightAfterTyping)
{
    TypeKey('x');
    Click(FindView(fAlert, "No"));

    EXPECT_EQ(Answer(), 0);
}

} // namespace
