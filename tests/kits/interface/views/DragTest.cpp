#include "TempTree.h"
#include "WindowFixture.h"

#include <AppDefs.h>
#include <Bitmap.h>
#include <Entry.h>
#include <Message.h>
#include <Messenger.h>

#include <atomic>

using namespace kits::testing;

namespace {

/// Drags what it is given as soon as the pressed pointer moves, and notes what is dragged over it
/// and dropped on it.
class DragView : public BView
{
public:
    DragView(BRect frame, const char* name) : BView(frame, name, B_FOLLOW_NONE, B_WILL_DRAW) {}

    bool TakesDrops() const override { return takesDrops; }
    void MouseDown(BPoint) override
    {
        SetMouseEventMask(B_POINTER_EVENTS);
        isPressed = true;
    }
    void MouseUp(BPoint) override { notes += "up "; }
    void MouseMoved(BPoint, uint32 transit, const BMessage* dragged) override
    {
        if (dragged != nullptr) {
            static const char* const kNames[] = {"enter ", "", "exit ", "outside "};
            notes += kNames[transit];
            lastDragged = dragged->what;
        } else if (isPressed && message != nullptr) {
            isPressed = false;
            DragMessage(message.get(), new BBitmap(BRect(0, 0, 15, 15), B_CMAP8), B_OP_ALPHA,
                        BPoint(3, 4)); // adopted
        }
    }
    void MessageReceived(BMessage* received) override
    {
        if (!received->WasDropped()) {
            BView::MessageReceived(received);
            return;
        }
        BPoint offset;
        dropPoint = ConvertFromScreen(received->DropPoint(&offset));
        dropOffset = offset;
        dropped = std::make_unique<BMessage>(*received);
        received->SendReply('rply');
    }

    bool takesDrops = true;
    bool isPressed = false;
    uint32 lastDragged = 0;
    std::string notes;
    std::unique_ptr<BMessage> message;
    std::unique_ptr<BMessage> dropped;
    BPoint dropPoint;
    BPoint dropOffset;
};

class DragTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        fFrom = new DragView(BRect(0, 0, 79, 99), "from");
        fTo = new DragView(BRect(100, 0, 199, 99), "to");
        fWindow->AddChild(fFrom); // adopted
        fWindow->AddChild(fTo);
        fFrom->message = std::make_unique<BMessage>('drag');
        fFrom->message->AddString("word", "kept");
        Show();
        ASSERT_TRUE(WaitForDropAreas(fWindow, 2));
    }

    // Presses the first view and moves until its message is dragged.
    bool Begin()
    {
        PressMouse(fFrom, BPoint(10, 10));
        MoveMouse(fFrom, BPoint(40, 20));
        return WaitForDrag();
    }

    void Over(DragView* view, BPoint where, uint32 modifiers = 0)
    {
        MoveMouse(view, where, modifiers);
        Settle();
    }

    bool DropOn(DragView* view, BPoint where, uint32 modifiers = 0)
    {
        Over(view, where, modifiers);
        ReleaseMouse(view, where, B_PRIMARY_MOUSE_BUTTON, modifiers);
        const bool isOver = WaitForDrag(false);
        Settle();
        return isOver;
    }

    void Settle()
    {
        SyncServer();
        ASSERT_TRUE(Sync(fWindow));
    }

    bool WaitForDrop()
    {
        return WaitFor([this] {
            bool isThere = false;
            Locked([&] { isThere = fTo->dropped != nullptr; });
            return isThere;
        });
    }

    DragView* fFrom = nullptr;
    DragView* fTo = nullptr;
};

TEST_F(DragTest, AMessageArrivesWhereItIsDropped)
{
    ASSERT_TRUE(Begin());

    ASSERT_TRUE(DropOn(fTo, BPoint(30, 40)));

    const BAutolock lock(fWindow);
    ASSERT_NE(fTo->dropped, nullptr);
    EXPECT_EQ(fTo->dropped->what, uint32{'drag'});
    EXPECT_STREQ(fTo->dropped->GetString("word", ""), "kept");
    EXPECT_EQ(fTo->dropped->GetInt32("be:actions", 0), B_COPY_TARGET);
    EXPECT_EQ(fTo->dropPoint, BPoint(30, 40));
    EXPECT_EQ(fTo->dropOffset, BPoint(3, 4));
    EXPECT_EQ(fFrom->dropped, nullptr);
}

TEST_F(DragTest, ViewsAreToldWhatIsDraggedOverThem)
{
    ASSERT_TRUE(Begin());
    Over(fTo, BPoint(30, 40));
    Over(fTo, BPoint(31, 41));
    Over(fFrom, BPoint(20, 20));
    ASSERT_TRUE(DropOn(fTo, BPoint(5, 5)));

    const BAutolock lock(fWindow);
    EXPECT_EQ(fTo->notes, "enter exit enter exit ");
    EXPECT_EQ(fTo->lastDragged, uint32{'drag'});
}

TEST_F(DragTest, WhoBeganItHearsOfTheReleaseAtTheEnd)
{
    ASSERT_TRUE(Begin());
    Over(fTo, BPoint(30, 40));
    Locked([&] { EXPECT_EQ(fFrom->notes.find("up"), std::string::npos); });

    ASSERT_TRUE(DropOn(fTo, BPoint(30, 40)));

    const BAutolock lock(fWindow);
    EXPECT_TRUE(fFrom->notes.ends_with("up ")) << fFrom->notes;
}

TEST_F(DragTest, ShiftAtTheDropMoves)
{
    ASSERT_TRUE(Begin());
    Over(fTo, BPoint(30, 40));

    ASSERT_TRUE(DropOn(fTo, BPoint(30, 40), B_SHIFT_KEY));

    const BAutolock lock(fWindow);
    ASSERT_NE(fTo->dropped, nullptr);
    EXPECT_EQ(fTo->dropped->GetInt32("be:actions", 0), B_MOVE_TARGET);
}

TEST_F(DragTest, NothingArrivesWhereNothingIsTaken)
{
    Locked([&] {
        fTo->takesDrops = false;
        fTo->Invalidate();
    });
    ASSERT_TRUE(WaitForDropAreas(fWindow, 1));
    ASSERT_TRUE(Begin());

    ASSERT_TRUE(DropOn(fTo, BPoint(30, 40)));

    const BAutolock lock(fWindow);
    EXPECT_EQ(fTo->dropped, nullptr);
    EXPECT_EQ(fTo->notes, "enter exit ");
}

TEST_F(DragTest, EscapeEndsIt)
{
    ASSERT_TRUE(Begin());
    Over(fTo, BPoint(30, 40));

    TypeKey(B_ESCAPE);
    ASSERT_TRUE(WaitForDrag(false));
    ReleaseMouse(fTo, BPoint(30, 40));
    Settle();

    const BAutolock lock(fWindow);
    EXPECT_EQ(fTo->dropped, nullptr);
    EXPECT_TRUE(fTo->notes.ends_with("exit ")) << fTo->notes;
}

TEST_F(DragTest, WithoutAButtonNothingIsDragged)
{
    Locked([&] { fFrom->DragMessage(fFrom->message.get(), BRect(0, 0, 20, 20)); });
    Settle();

    EXPECT_FALSE(WaitForDrag(true, 50'000));

    ASSERT_TRUE(Begin()); // and a later one is not in its way
    EXPECT_TRUE(DropOn(fTo, BPoint(5, 5)));
    EXPECT_TRUE(WaitForDrop());
}

TEST_F(DragTest, AnAnswerGoesToWhomTheDragNamed)
{
    BLooper* looper = new BLooper("answers");
    class Listener : public BHandler
    {
    public:
        void MessageReceived(BMessage* message) override { what = message->what; }
        std::atomic<uint32> what{0};
    };
    auto* listener = new Listener;
    looper->Run();
    looper->Lock();
    looper->AddHandler(listener);
    looper->Unlock();
    PressMouse(fFrom, BPoint(10, 10));
    Locked([&] {
        fFrom->isPressed = false;
        fFrom->DragMessage(fFrom->message.get(), BRect(0, 0, 20, 20), listener);
    });
    ASSERT_TRUE(WaitForDrag());

    ASSERT_TRUE(DropOn(fTo, BPoint(5, 5)));

    EXPECT_TRUE(WaitFor([&] { return listener->what == uint32{'rply'}; }));
    looper->Lock();
    looper->RemoveHandler(listener);
    delete listener;
    looper->Quit();
}

TEST_F(DragTest, ItsWindowMayGoMeanwhile)
{
    auto* other = new BWindow(BRect(400, 100, 499, 199), "Other", B_TITLED_WINDOW, 0);
    auto* target = new DragView(BRect(0, 0, 99, 99), "target");
    other->AddChild(target); // adopted
    other->Show();
    ASSERT_TRUE(WaitForFocus(other));
    ASSERT_TRUE(WaitForDropAreas(other, 1));
    ASSERT_TRUE(Begin());
    MoveMouse(target, BPoint(20, 20));
    ASSERT_TRUE(Sync(other));

    fWindow->Lock();
    fWindow->Quit();
    fWindow = nullptr;
    ReleaseMouse(target, BPoint(20, 20));

    ASSERT_TRUE(WaitForDrag(false));
    ASSERT_TRUE(Sync(other));
    other->Lock();
    EXPECT_NE(target->dropped, nullptr);
    other->Quit();
}

// From other programs

class ForeignDragTest : public DragTest
{
protected:
    void SetUp() override
    {
        DragTest::SetUp();
        fTree.Write("a b", "");
        fTree.Write("c", "");
        fList = "file://" + fTree.Path("a%20b") + "\r\nfile://" + fTree.Path("c") + "\r\n";
    }

    TempTree fTree;
    std::string fList;
};

TEST_F(ForeignDragTest, FilesArriveAsRefs)
{
    EXPECT_EQ(DragForeign(fTo, BPoint(10, 10), fList.c_str()), kMayCopy);

    EXPECT_EQ(DropForeign(fTo, BPoint(20, 30), fList.c_str()), kMayCopy);

    ASSERT_TRUE(WaitForDrop());
    const BAutolock lock(fWindow);
    entry_ref first;
    entry_ref second;
    EXPECT_EQ(fTo->dropped->what, B_SIMPLE_DATA);
    EXPECT_EQ(fTo->dropped->FindRef("refs", 0, &first), B_OK);
    EXPECT_EQ(fTo->dropped->FindRef("refs", 1, &second), B_OK);
    EXPECT_STREQ(first.name, "a b");
    EXPECT_STREQ(second.name, "c");
    EXPECT_EQ(fTo->dropped->GetInt32("be:actions", 0), B_COPY_TARGET);
    EXPECT_EQ(fTo->dropPoint, BPoint(20, 30));
}

TEST_F(ForeignDragTest, AMoveIsOursToMake)
{
    const uint32 both = kMayCopy | kMayMove;
    EXPECT_EQ(DragForeign(fTo, BPoint(10, 10), fList.c_str(), both, B_SHIFT_KEY), kMayMove);

    // The other program hears of a copy: else it might delete what is being moved.
    EXPECT_EQ(DropForeign(fTo, BPoint(10, 10), fList.c_str(), both, B_SHIFT_KEY), kMayCopy);

    ASSERT_TRUE(WaitForDrop());
    const BAutolock lock(fWindow);
    EXPECT_EQ(fTo->dropped->GetInt32("be:actions", 0), B_MOVE_TARGET);
}

TEST_F(ForeignDragTest, WhatMayOnlyBeLinkedIsNotTaken)
{
    EXPECT_EQ(DragForeign(fTo, BPoint(10, 10), fList.c_str(), kMayLink), 0U);
    EXPECT_EQ(DropForeign(fTo, BPoint(10, 10), fList.c_str(), kMayLink), 0U);
    EXPECT_EQ(DropForeign(fTo, BPoint(10, 10), fList.c_str(), kMayMove), kMayMove);
    ASSERT_TRUE(WaitForDrop());
}

TEST_F(ForeignDragTest, LeavingIsTold)
{
    DragForeign(fTo, BPoint(10, 10), fList.c_str());
    Settle();
    LeaveForeign(fTo);
    Settle();

    const BAutolock lock(fWindow);
    EXPECT_EQ(fTo->lastDragged, B_SIMPLE_DATA);
    EXPECT_TRUE(fTo->notes.ends_with("exit ")) << fTo->notes;
}

TEST_F(ForeignDragTest, AWindowBehindAQuestionTakesNothing)
{
    auto* modal =
        new BWindow(BRect(300, 300, 399, 349), "Question", B_MODAL_WINDOW, B_NOT_RESIZABLE);
    modal->Show();
    ASSERT_TRUE(WaitForFocus(modal));

    EXPECT_EQ(DragForeign(fTo, BPoint(10, 10), fList.c_str()), 0U);
    EXPECT_EQ(DropForeign(fTo, BPoint(10, 10), fList.c_str()), 0U);

    modal->Lock();
    modal->Quit();
    ASSERT_TRUE(WaitForNoWindow("Question"));
    EXPECT_EQ(DragForeign(fTo, BPoint(10, 10), fList.c_str()), kMayCopy);
    LeaveForeign(fTo);
    const BAutolock lock(fWindow);
    EXPECT_EQ(fTo->dropped, nullptr);
}

} // namespace
