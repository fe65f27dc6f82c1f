#include "WindowFixture.h"

#include "interface/views/Look.h"

#include <Button.h>
#include <Message.h>

#include <algorithm>

// How dialogs are answered: default buttons, Escape, keys that come too soon, the focus.

using namespace kits::testing;

namespace {

using Notes = std::vector<std::string>;

class Counting : public BWindow
{
public:
    Counting() : BWindow(BRect(100, 100, 299, 199), "Counting", B_TITLED_WINDOW, 0) {}
    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'hit!') {
            hits++;
        }
        BWindow::MessageReceived(message);
    }
    int hits = 0;
};

class AnswerTest : public WindowFixture
{
protected:
    void SetUp() override { fWindow = fCounting = new Counting; }
    BButton* AddButton(const char* label, float top)
    {
        auto* button =
            new BButton(BRect(10, top, 89, top + 24), label, label, new BMessage('hit!'));
        fWindow->AddChild(button);
        return button;
    }
    int Hits()
    {
        SyncServer();
        Sync(fWindow);
        Sync(fWindow);
        int hits = 0;
        Locked([&] { hits = fCounting->hits; });
        return hits;
    }
    Counting* fCounting = nullptr;
};

TEST_F(AnswerTest, EnterPressesTheDefaultButtonOnce)
{
    fWindow->SetDefaultButton(AddButton("OK", 10));
    NotingView* view = Add(BRect(100, 0, 149, 99), "view");
    Show();
    Locked([&] { view->MakeFocus(true); });

    HoldKey(B_ENTER, 5);

    EXPECT_EQ(Hits(), 1);
    for (const std::string& note : TakeNotes()) {
        EXPECT_EQ(note.find("key"), std::string::npos) << note;
    }
}

TEST_F(AnswerTest, EscapePressesCancel)
{
    AddButton("OK", 10);
    AddButton("Cancel", 50);
    Show();

    TypeKey(B_ESCAPE);

    EXPECT_EQ(Hits(), 1);
}

TEST_F(AnswerTest, AnswersThatComeTooSoonAreDropped)
{
    fWindow->SetDefaultButton(AddButton("OK", 10));
    fWindow->SetAnswerDelay(60'000'000, 0);
    Show();

    TypeKey(B_ENTER);

    EXPECT_EQ(Hits(), 0);
}

TEST_F(AnswerTest, AnswersWhileTypingAreDropped)
{
    NotingView* view = Add(BRect(100, 0, 149, 99), "view");
    fWindow->SetDefaultButton(AddButton("OK", 10));
    fWindow->SetAnswerDelay(0, 60'000'000);
    Show();
    Locked([&] { view->MakeFocus(true); });

    TypeKey('a');
    TypeKey(B_ENTER);

    EXPECT_EQ(Hits(), 0);
    const Notes notes = TakeNotes();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "view key a"), 1);
}

TEST_F(AnswerTest, AfterAQuietMomentKeysAnswerHoweverFastTheyAre)
{
    constexpr bigtime_t kQuiet = 200'000;
    fWindow->SetDefaultButton(AddButton("OK", 10));
    AddButton("Other", 50);
    fWindow->SetAnswerDelay(0, kQuiet);
    Show();
    Locked([&] { fWindow->DefaultButton()->MakeFocus(true); });
    TypeKey(B_ENTER);
    EXPECT_EQ(Hits(), 0);
    const bigtime_t quietAt = system_time() + kQuiet;
    ASSERT_TRUE(WaitFor([quietAt] { return system_time() >= quietAt; }));

    TypeKey(B_TAB);
    TypeKey(B_TAB);
    TypeKey(B_ENTER);
    TypeKey(B_ENTER);
    EXPECT_EQ(Hits(), 2);

    // Shown again it is another question.
    Locked([&] {
        fWindow->Hide();
        fWindow->Show();
    });
    ASSERT_TRUE(WaitForFocus(fWindow));
    TypeKey(B_ENTER);
    EXPECT_EQ(Hits(), 2);

    ASSERT_TRUE(WaitUntilKeysAnswer(fWindow));
    TypeKey(B_ENTER);
    EXPECT_EQ(Hits(), 3);
}

TEST_F(AnswerTest, ArrowsMoveBetweenButtons)
{
    BButton* first = AddButton("One", 0);
    BButton* second = AddButton("Two", 30);
    BButton* third = AddButton("Three", 60);
    NotingView* view = Add(BRect(100, 0, 149, 99), "view");
    Show();
    Locked([&] { first->MakeFocus(true); });
    const auto focusAfter = [this](char arrow) {
        TypeKey(arrow);
        Sync(fWindow);
        BView* focus = nullptr;
        Locked([&] { focus = fWindow->CurrentFocus(); });
        return focus;
    };

    EXPECT_EQ(focusAfter(B_RIGHT_ARROW), second);
    EXPECT_EQ(focusAfter(B_DOWN_ARROW), third);
    EXPECT_EQ(focusAfter(B_RIGHT_ARROW), first); // past what is no button
    EXPECT_EQ(focusAfter(B_UP_ARROW), third);
    EXPECT_EQ(focusAfter(B_LEFT_ARROW), second);
    TypeKey(B_SPACE);
    EXPECT_EQ(Hits(), 1);
    Locked([&] { view->MakeFocus(true); });
    EXPECT_EQ(focusAfter(B_RIGHT_ARROW), view);
}

/// Notes whether it showed the focus when it was first drawn.
class FocusNoter : public BView
{
public:
    FocusNoter() : BView(BRect(0, 0, 49, 49), "noter", 0, B_WILL_DRAW) {}
    void Draw(BRect) override { notes += kits::look::ShowsFocus(this) ? 'f' : '-'; }
    std::string notes;
};

TEST_F(AnswerTest, FocusIsSeenFromTheFirstFrame)
{
    auto* noter = new FocusNoter;
    fWindow->AddChild(noter);
    noter->MakeFocus(true);

    Show();
    Locked([&] { EXPECT_EQ(noter->notes.substr(0, 1), "f"); });
}

TEST_F(AnswerTest, FocusIsNotSeenWithoutTheKeyboard)
{
    auto* noter = new FocusNoter;
    fWindow->AddChild(noter);
    noter->MakeFocus(true);
    Show();
    auto* other = new BWindow(BRect(320, 100, 419, 199), "Other", B_TITLED_WINDOW, 0);
    other->Show();
    ASSERT_TRUE(WaitForFocus(other));
    Hits();

    Locked([&] {
        EXPECT_FALSE(fWindow->IsActive());
        EXPECT_FALSE(kits::look::ShowsFocus(noter));
    });

    ASSERT_TRUE(other->Lock());
    other->Quit();
    EXPECT_TRUE(WaitForFocus(fWindow));
}

TEST_F(AnswerTest, WindowThatTakesNoFocusShowsNone)
{
    auto* noter = new FocusNoter;
    fWindow->AddChild(noter);
    noter->MakeFocus(true);
    fWindow->SetTakesFocus(false);

    fWindow->Show();
    ASSERT_TRUE(WaitForWindow("Counting"));
    Locked([&] { EXPECT_EQ(noter->notes.substr(0, 1), "-"); });
}

TEST_F(AnswerTest, ShortcutSendsItsMessageAndReachesNoView)
{
    NotingView* view = Add(BRect(100, 0, 149, 99), "view");
    fWindow->AddShortcut('K', B_SHIFT_KEY, new BMessage('hit!'));
    Show();
    Locked([&] { view->MakeFocus(true); });
    TakeNotes();

    TypeKey('k', B_COMMAND_KEY | B_SHIFT_KEY);
    EXPECT_EQ(Hits(), 1);
    EXPECT_TRUE(TakeNotes().empty());

    TypeKey('k', B_COMMAND_KEY);
    EXPECT_EQ(Hits(), 1);
    EXPECT_EQ(TakeNotes(), (Notes{"view key k"}));
}

TEST_F(AnswerTest, FocusSurvivesDeactivation)
{
    NotingView* view = Add(BRect(100, 0, 149, 99), "view");
    Show();
    Locked([&] { view->MakeFocus(true); });
    auto* other = new BWindow(BRect(320, 100, 419, 199), "Other", B_TITLED_WINDOW, 0);
    other->Show();
    ASSERT_TRUE(WaitForFocus(other));
    Hits();
    Locked([&] {
        EXPECT_FALSE(fWindow->IsActive());
        EXPECT_TRUE(view->IsFocus());
        EXPECT_EQ(view->activations.back(), '-');
    });

    ASSERT_TRUE(other->Lock());
    other->Quit();

    EXPECT_TRUE(WaitForFocus(fWindow));
    TypeKey('x');
    Hits();
    const Notes notes = TakeNotes();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "view key x"), 1);
}

} // namespace
