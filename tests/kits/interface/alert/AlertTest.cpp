#include "ControlWindow.h"

#include <Alert.h>
#include <Button.h>
#include <Invoker.h>
#include <Messenger.h>
#include <Screen.h>
#include <TextView.h>

#include <atomic>
#include <cmath>
#include <functional>
#include <future>
#include <thread>

namespace {

using namespace kits::testing;

// Makes and runs an alert on a thread of its own, which is no window's.
class RunningAlert
{
public:
    explicit RunningAlert(std::function<BAlert*()> make)
        : fThread([this, make = std::move(make)] {
              BAlert* alert = make();
              fMade.set_value(BMessenger(alert));
              fAnswer = alert->Go();
          })
    {
    }
    /// Quits an alert that was not answered: a test that fails must end all the same.
    ~RunningAlert()
    {
        const BMessenger alert = fMade.get_future().get();
        if (IsWaiting()) {
            alert.SendMessage(B_QUIT_REQUESTED);
        }
        fThread.join();
    }

    int32 Answer()
    {
        WaitFor([this] { return fAnswer != kNone; });
        return fAnswer;
    }
    bool IsWaiting() const { return fAnswer == kNone; }

private:
    static constexpr int32 kNone = -100;
    std::atomic<int32> fAnswer{kNone};
    std::promise<BMessenger> fMade;
    std::thread fThread;
};

BAlert* MakeAlert()
{
    return new BAlert("Sir?", "Do you really want to delete this?", "Cancel", "Delete", nullptr,
                      B_WIDTH_FROM_LABEL, B_WARNING_ALERT);
}

TEST(AlertTest, ClickAnswersWithTheButtonsIndex)
{
    RunningAlert running(MakeAlert);

    std::string text;
    ASSERT_TRUE(AnswerAlert("Delete", &text));

    EXPECT_EQ(running.Answer(), 1);
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

TEST(AlertTest, LongTextMakesItHigherAndStaysOnTheScreen)
{
    std::string names = "Do you really want to delete the following files/folders:";
    for (int32 i = 0; i < 20; i++) {
        names += "\n\tfile number " + std::to_string(i);
    }
    const BRect screen = BScreen().Frame();
    RunningAlert running([&] { return new BAlert("Sir?", names.c_str(), "Cancel", "Delete"); });
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);

    alert->Lock();
    const BRect frame = alert->Frame();
    alert->Unlock();

    EXPECT_GT(frame.Height(), 21 * 15);
    EXPECT_GE(frame.top, screen.top);
    EXPECT_LE(frame.bottom, screen.bottom);
    ASSERT_TRUE(AnswerAlert("Cancel"));
    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertTest, TextThatIsTooLongScrollsAboveTheButtons)
{
    std::string names = "Do you really want to delete the following files/folders:";
    for (int32 i = 0; i < 90; i++) {
        names += "\n\t" + std::string(90, 'n') + " number " + std::to_string(i);
    }
    const BRect screen = BScreen().Frame();
    RunningAlert running([&] { return new BAlert("Sir?", names.c_str(), "Cancel", "Delete"); });
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));
    const auto read = [alert](const auto& get) {
        alert->Lock();
        const auto value = get();
        alert->Unlock();
        return value;
    };
    auto* text = dynamic_cast<BTextView*>(FindView(alert, "text"));
    BView* button = FindView(alert, "Cancel");
    ASSERT_NE(text, nullptr);
    ASSERT_NE(button, nullptr);

    EXPECT_LT(read([&] { return alert->Frame().Height(); }), screen.Height());
    EXPECT_LT(read([&] { return text->Frame().bottom; }),
              read([&] { return button->Frame().top; }));
    const float line = read([&] { return text->LineHeight(); });
    EXPECT_EQ(std::fmod(read([&] { return text->Bounds().Height(); }) + 1, line), 0);

    const auto top = [&] {
        return read([&] { return text->Bounds().top; });
    };
    EXPECT_EQ(top(), 0);
    TypeKey(B_PAGE_DOWN);
    Sync(alert);
    EXPECT_GT(top(), 10 * line);
    TypeKey(B_HOME);
    Sync(alert);
    EXPECT_EQ(top(), 0);
    TurnWheel(text, BPoint(20, 20), 1);
    Sync(alert);
    EXPECT_GT(top(), 0);
    TypeKey(B_END);
    Sync(alert);
    const float height = read([&] { return text->TextHeight(0, text->CountLines() - 1); });
    EXPECT_EQ(top(), height - read([&] { return text->Bounds().Height() + 1; }));
    TypeKey(B_ESCAPE);
    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertTest, LongNamesAreBrokenAnywhere)
{
    auto* alert = new BAlert("a", std::string(400, 'm').c_str(), "OK");

    alert->Lock();
    auto* text = dynamic_cast<BTextView*>(alert->FindView("text"));
    ASSERT_NE(text, nullptr);
    EXPECT_GT(text->CountLines(), 3);
    for (int32 i = 0; i < text->CountLines(); ++i) {
        EXPECT_LE(text->LineWidth(i), text->Bounds().Width() + 1);
    }
    alert->Quit();
}

TEST(AlertTest, LinesOfAListStayWhole)
{
    const std::string head = "These are the items:\n\t";
    const std::string item = "one: " + std::string(20, 'm');
    const std::vector<std::string> texts = {
        head + "one: m", head + item, head + item + std::string(16, 'm'), head + item + "\n\ttwo"};
    std::vector<BAlert*> alerts;
    for (const std::string& text : texts) {
        alerts.push_back(new BAlert("a", text.c_str(), "OK"));
    }

    EXPECT_EQ(alerts[0]->Bounds().Width(), 310);
    EXPECT_EQ(alerts[1]->Bounds().Width(), 400);
    EXPECT_EQ(alerts[2]->Bounds().Width(), 600);
    EXPECT_EQ(alerts[3]->Bounds().Width(), 400);
    EXPECT_EQ(alerts[1]->Bounds().Height(), alerts[0]->Bounds().Height());
    for (BAlert* alert : alerts) {
        alert->Lock();
        alert->Quit();
    }
}

TEST(AlertTest, ButtonsAreAsBroadAsAsked)
{
    auto* usual = new BAlert("a", "b", "I", "A rather long label", nullptr, B_WIDTH_AS_USUAL);
    EXPECT_EQ(usual->ButtonAt(0)->Bounds().Width(), 75);
    EXPECT_GT(usual->ButtonAt(1)->Bounds().Width(), 100);

    auto* widest = new BAlert("a", "b", "I", "A rather long label", nullptr, B_WIDTH_FROM_WIDEST);
    EXPECT_EQ(widest->ButtonAt(0)->Bounds().Width() + 6, widest->ButtonAt(1)->Bounds().Width());

    auto* own = new BAlert("a", "b", "I", "A rather long label", nullptr, B_WIDTH_FROM_LABEL);
    EXPECT_LT(own->ButtonAt(0)->Bounds().Width(), 40);
    EXPECT_EQ(own->ButtonAt(2), nullptr);
    for (BAlert* alert : {usual, widest, own}) {
        alert->Lock();
        alert->Quit();
    }
}

void Discard(BAlert* alert)
{
    alert->Lock();
    alert->Quit();
}

TEST(AlertTest, IsOfTheKindItWasMadeAs)
{
    BAlert* warning = MakeAlert();
    auto* offset = new BAlert("a", "b", "I", nullptr, nullptr, B_WIDTH_AS_USUAL, B_OFFSET_SPACING,
                              B_STOP_ALERT);
    auto* usual = new BAlert("a", "b", "I");

    EXPECT_EQ(warning->Type(), B_WARNING_ALERT);
    EXPECT_EQ(offset->Type(), B_STOP_ALERT);
    EXPECT_EQ(usual->Type(), B_INFO_ALERT);
    for (BAlert* alert : {warning, offset, usual}) {
        Discard(alert);
    }
}

TEST(AlertTest, AnotherKindMakesRoomForItsIcon)
{
    const auto make = [](alert_type type) {
        return new BAlert("a", "b", "No", "Yes", nullptr, B_WIDTH_FROM_LABEL, type);
    };
    BAlert* const plain = make(B_EMPTY_ALERT);
    BAlert* const changed = make(B_STOP_ALERT);

    changed->SetType(B_EMPTY_ALERT);

    EXPECT_EQ(changed->Type(), B_EMPTY_ALERT);
    EXPECT_EQ(changed->Bounds(), plain->Bounds());
    EXPECT_EQ(changed->ButtonAt(0)->Frame(), plain->ButtonAt(0)->Frame());
    EXPECT_EQ(changed->ButtonAt(1)->Frame(), plain->ButtonAt(1)->Frame());
    changed->SetType(B_WARNING_ALERT);
    EXPECT_GT(changed->Bounds().Height(), plain->Bounds().Height());
    Discard(plain);
    Discard(changed);
}

TEST(AlertTest, ItsKindIsSeenInTheIconStrip)
{
    constexpr rgb_color kRed = {204, 36, 36, 255};
    constexpr rgb_color kYellow = {255, 206, 40, 255};
    RunningAlert running([] {
        BAlert* made = MakeAlert();
        made->SetType(B_STOP_ALERT);
        return made;
    });
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);

    const Picture picture = TakePicture(alert);

    EXPECT_GT(picture.Count(kRed, 18, 10, 50, 42), 100);
    EXPECT_EQ(picture.Count(kYellow, 18, 10, 50, 42), 0);
    ASSERT_TRUE(AnswerAlert("Cancel"));
    EXPECT_EQ(running.Answer(), 0);
}

} // namespace
