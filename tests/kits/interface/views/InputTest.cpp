#include "WindowFixture.h"

#include "interface/views/Look.h"

#include <Button.h>
#include <Message.h>

using namespace kits::testing;

namespace {

using Notes = std::vector<std::string>;

class InputTest : public WindowFixture
{
protected:
    Notes Settled()
    {
        SyncServer();
        EXPECT_TRUE(Sync(fWindow));
        return TakeNotes();
    }
};

TEST_F(InputTest, ClickReachesTheDeepestView)
{
    NotingView* outer = Add(BRect(10, 10, 99, 89), "outer");
    Add(BRect(20, 20, 39, 39), "inner", outer);
    Show();
    Settled();

    Click(outer, BPoint(25, 26));

    const Notes notes = Settled();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "inner down 5,6"), 1);
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "inner up 5,6"), 1);
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "outer down 25,26"), 0);
}

TEST_F(InputTest, ViewThatTookTheMouseGetsItUntilTheRelease)
{
    NotingView* left = Add(BRect(0, 0, 49, 99), "left");
    NotingView* right = Add(BRect(50, 0, 99, 99), "right");
    left->takesMouse = true;
    Show();
    MoveMouse(left, BPoint(10, 10));
    Settled();

    PressMouse(left, BPoint(10, 10));
    MoveMouse(left, BPoint(60, 10));
    // A move that waits would be folded into the next.
    SyncServer();
    Sync(fWindow);
    MoveMouse(left, BPoint(20, 10));
    ReleaseMouse(left, BPoint(70, 10));
    MoveMouse(right, BPoint(5, 5));

    const Notes notes = Settled();
    const auto index = [&notes](const char* note) {
        return std::find(notes.begin(), notes.end(), note) - notes.begin();
    };
    const auto count = static_cast<ptrdiff_t>(notes.size());
    EXPECT_LT(index("left exited 60,10"), count);
    EXPECT_LT(index("left up 70,10"), index("right entered 5,5"));
    EXPECT_LT(index("right entered 5,5"), count);
    for (const std::string& note : notes) {
        EXPECT_TRUE(note.rfind("right down", 0) != 0 && note.rfind("right up", 0) != 0) << note;
    }
}

TEST_F(InputTest, TellsEnteringAndLeaving)
{
    NotingView* left = Add(BRect(0, 0, 49, 99), "left");
    NotingView* right = Add(BRect(50, 0, 99, 99), "right");
    Show();
    MoveMouse(left, BPoint(5, 5));
    Settled();

    MoveMouse(left, BPoint(6, 6));
    SyncServer();
    Sync(fWindow);
    MoveMouse(right, BPoint(1, 1));

    EXPECT_EQ(Settled(), (Notes{"left inside 6,6", "left exited 51,1", "right entered 1,1"}));
}

TEST_F(InputTest, ViewThatLeavesDuringItsHookIsForgotten)
{
    NotingView* view = Add(BRect(0, 0, 99, 99), "view");
    view->takesMouse = true;
    view->onPress = [view] {
        view->RemoveSelf();
        delete view;
    };
    Show();

    Click(view, BPoint(5, 5));

    Settled();
    Locked([&] { EXPECT_EQ(fWindow->CountChildren(), 0); });
}

TEST_F(InputTest, ListenerHearsPressesElsewhereUntilItLeaves)
{
    NotingView* view = Add(BRect(0, 0, 49, 99), "view");
    NotingView* listener = Add(BRect(50, 0, 99, 99), "listener");
    listener->SetEventMask(B_POINTER_EVENTS);
    Show();
    Click(view, BPoint(5, 5));
    Notes notes = Settled();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "listener down -45,5"), 1);

    Locked([&] {
        view->onPress = [listener] {
            listener->RemoveSelf();
        };
    });
    Click(view, BPoint(5, 5));

    notes = Settled();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "listener down -45,5"), 0);
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "view up 5,5"), 1);
    delete listener;
}

TEST_F(InputTest, KeysGoToTheFocusView)
{
    Add(BRect(0, 0, 49, 99), "left");
    NotingView* right = Add(BRect(50, 0, 99, 99), "right");
    Show();
    Locked([&] { right->MakeFocus(true); });
    Settled();

    TypeText("ab");

    EXPECT_EQ(Settled(), (Notes{"right key a", "right key b"}));
}

TEST_F(InputTest, TabMovesTheFocusRound)
{
    NotingView* first = Add(BRect(0, 0, 9, 9), "first");
    Add(BRect(10, 0, 19, 9), "picture", nullptr, B_FOLLOW_NONE, B_WILL_DRAW);
    NotingView* last = Add(BRect(20, 0, 29, 9), "last");
    Show();
    const auto focus = [this] {
        Settled();
        BView* view = nullptr;
        Locked([&] { view = fWindow->CurrentFocus(); });
        return view;
    };

    TypeKey(B_TAB);
    EXPECT_EQ(focus(), first);
    TypeKey(B_TAB);
    EXPECT_EQ(focus(), last);
    TypeKey(B_TAB);
    EXPECT_EQ(focus(), first);
    TypeKey(B_TAB, B_SHIFT_KEY);
    EXPECT_EQ(focus(), last);
}

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
}

TEST_F(AnswerTest, ArrowsMoveBetweenButtons)
{
    BButton* first = AddButton("One", 10);
    BButton* second = AddButton("Two", 50);
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
    EXPECT_EQ(focusAfter(B_RIGHT_ARROW), first); // past what is no button
    EXPECT_EQ(focusAfter(B_UP_ARROW), second);
    EXPECT_EQ(focusAfter(B_LEFT_ARROW), first);
    EXPECT_EQ(focusAfter(B_DOWN_ARROW), second);
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
