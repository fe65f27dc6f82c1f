#include "RunningAlert.h"

#include <NoThreads.h>

#include <Button.h>
#include <Invoker.h>

// How alerts are answered.

namespace {

using namespace kits::testing;

TEST(AlertTest, ClickAnswersWithTheButtonsIndex)
{
    RunningAlert running(MakeAlert);

    std::string text;
    ASSERT_TRUE(AnswerAlert("Delete", &text));

    EXPECT_EQ(running.Answer(), 1);
    EXPECT_TRUE(WaitForNoWindow("Sir?"));
}

TEST(AlertTest, WithoutAThreadNobodyAnswersAndNobodyWaits)
{
    BAlert* alert = MakeAlert();
    const NoThreads none;

    EXPECT_EQ(alert->Go(), -1);

    EXPECT_GT(NoThreads::CountRefused(), 0);
    EXPECT_TRUE(WaitForNoWindow("Sir?"));
}

TEST(AlertTest, EnterPressesTheRightmostButton)
{
    RunningAlert running(MakeAlert);
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));

    TypeKey(B_ENTER);

    EXPECT_EQ(running.Answer(), 1);
}

TEST(AlertTest, EscapePressesTheCancelButton)
{
    RunningAlert running(MakeAlert);
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));

    TypeKey(B_ESCAPE);

    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertTest, EscapePressesTheOnlyButton)
{
    RunningAlert running([] { return new BAlert("Foo", "Nothing can be done.", "OK"); });
    BWindow* alert = WaitForWindow("Foo");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));

    TypeKey(B_ESCAPE);

    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertTest, EscapeWithoutACancelButtonAnswersNothing)
{
    RunningAlert running([] { return new BAlert("Foo", "Which?", "One", "Two"); });
    BWindow* alert = WaitForWindow("Foo");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));

    TypeKey(B_ESCAPE);
    Sync(alert);
    EXPECT_TRUE(running.IsWaiting());

    TypeKey(B_ENTER);
    EXPECT_EQ(running.Answer(), 1);
}

TEST(AlertTest, EnterWorksTheButtonThatWasTabbedTo)
{
    RunningAlert running(MakeAlert);
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));

    TypeKey(B_TAB); // "Cancel" comes first
    TypeKey(B_ENTER);

    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertTest, DefaultButtonHasTheFocusAndArrowsLeadToTheOthers)
{
    RunningAlert running(MakeAlert);
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));
    alert->Lock();
    EXPECT_EQ(alert->CurrentFocus(), static_cast<BAlert*>(alert)->ButtonAt(1));
    alert->Unlock();

    TypeKey(B_LEFT_ARROW);
    TypeKey(B_SPACE);

    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertTest, AnswersThatComeTooSoonAreDropped)
{
    RunningAlert running([] {
        auto* made = new BAlert("Foo", "Read me first.", "OK");
        made->SetAnswerDelay(3'600'000'000, 0);
        return made;
    });
    auto* alert = dynamic_cast<BAlert*>(WaitForWindow("Foo"));
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));

    TypeKey(B_ENTER);
    TypeKey(B_ESCAPE);
    Click(alert->ButtonAt(0));
    Sync(alert);
    EXPECT_TRUE(running.IsWaiting());

    alert->Lock();
    alert->SetAnswerDelay(0, 0);
    alert->Unlock();
    TypeKey(B_ENTER);
    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertTest, RepeatsOfAHeldKeyAnswerNothing)
{
    auto* opener = new ControlWindow;
    opener->Show();
    ASSERT_TRUE(WaitForFocus(opener));
    PressKey(B_ENTER);
    RunningAlert running([] { return new BAlert("Foo", "Still held.", "OK"); });
    BWindow* alert = WaitForWindow("Foo");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));

    PressKey(B_ENTER);
    PressKey(B_ENTER);
    Sync(alert);
    EXPECT_TRUE(running.IsWaiting());

    ReleaseKey(B_ENTER);
    TypeKey(B_ENTER);
    EXPECT_EQ(running.Answer(), 0);
    opener->Lock();
    opener->Quit();
}

TEST(AlertTest, ShortcutPressesItsButton)
{
    RunningAlert running([] {
        BAlert* made = MakeAlert();
        made->SetShortcut(1, 'd');
        EXPECT_EQ(made->Shortcut(1), 'd');
        EXPECT_EQ(made->Shortcut(7), '\0');
        return made;
    });
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));

    TypeKey('d');

    EXPECT_EQ(running.Answer(), 1);
}

TEST(AlertTest, NewestOfTwoTakesTheKeysAndClicksWorkOnBoth)
{
    RunningAlert first([] { return new BAlert("First", "One", "Yes"); });
    ASSERT_NE(WaitForWindow("First"), nullptr);
    RunningAlert second([] { return new BAlert("Second", "Two", "No", "Maybe"); });
    BWindow* newest = WaitForWindow("Second");
    ASSERT_NE(newest, nullptr);
    ASSERT_TRUE(WaitForFocus(newest));

    ASSERT_TRUE(AnswerAlert("Yes"));
    EXPECT_EQ(first.Answer(), 0);

    ASSERT_TRUE(WaitForFocus(newest));
    ASSERT_TRUE(WaitUntilAnswers(newest));
    TypeKey(B_ENTER);
    EXPECT_EQ(second.Answer(), 1);
}

TEST(AlertTest, QuittingAnAlertEndsTheWait)
{
    RunningAlert running(MakeAlert);
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);

    ASSERT_TRUE(alert->Lock());
    alert->Quit();

    EXPECT_EQ(running.Answer(), -1);
}

// A window that opens an alert in its own thread and paints on meanwhile.
class AskingWindow : public ControlWindow
{
public:
    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'ask ') {
            answer = (new BAlert("Asking", "From a window", "OK"))->Go();
        } else {
            ControlWindow::MessageReceived(message);
        }
    }

    std::atomic<int32> answer{-100};
};

TEST(AlertTest, WindowMayWaitForAnAlertOfItsOwn)
{
    auto* window = new AskingWindow;
    window->Show();
    ASSERT_TRUE(WaitForFocus(window));

    window->PostMessage('ask ');
    ASSERT_TRUE(AnswerAlert("OK"));

    EXPECT_TRUE(WaitFor([window] { return window->answer == 0; }));
    EXPECT_TRUE(WaitForFocus(window));
    window->Lock();
    window->Quit();
}

TEST(AlertTest, InvokerGetsTheAnswer)
{
    auto* window = new ControlWindow;
    window->Show();
    ASSERT_TRUE(WaitForFocus(window));

    MakeAlert()->Go(new BInvoker(new BMessage('tesa'), window));
    ASSERT_TRUE(AnswerAlert("Delete"));

    ASSERT_TRUE(window->AwaitMessages(1));
    int32 which = -1;
    EXPECT_EQ(window->Messages()[0].FindInt32("which", &which), B_OK);
    EXPECT_EQ(which, 1);
    window->Lock();
    window->Quit();
}

} // namespace
