#include "WindowFixture.h"

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

} // namespace
