#include "WindowFixture.h"

#include <Region.h>
#include <Screen.h>

using namespace kits::testing;

namespace {

class WindowPlaceTest : public WindowFixture
{
};

TEST_F(WindowPlaceTest, ConvertsBetweenItsAndTheScreensCoordinates)
{
    const BPoint corner = fWindow->Frame().LeftTop();

    EXPECT_EQ(fWindow->ConvertToScreen(BPoint(3, 4)), corner + BPoint(3, 4));
    EXPECT_EQ(fWindow->ConvertFromScreen(corner + BPoint(3, 4)), BPoint(3, 4));
    EXPECT_EQ(fWindow->ConvertToScreen(fWindow->Bounds()), fWindow->Frame());
    EXPECT_EQ(fWindow->ConvertFromScreen(fWindow->Frame()), fWindow->Bounds());
    BPoint there(1, 1);
    fWindow->ConvertToScreen(&there);
    EXPECT_EQ(there, corner + BPoint(1, 1));
    fWindow->ConvertFromScreen(&there);
    EXPECT_EQ(there, BPoint(1, 1));
}

TEST_F(WindowPlaceTest, ItsTitleIsShownWholeWhateverCharactersItHas)
{
    Show();
    fWindow->Lock();
    fWindow->SetTitle("log\n\u202Etxt");
    fWindow->Unlock();

    EXPECT_TRUE(
        WaitFor([] { return !WaitForNoWindow("log\u20390A\u203A\u2039202E\u203Atxt", 0); }));
    EXPECT_STREQ(fWindow->Title(), "log\n\u202Etxt");
}

TEST_F(WindowPlaceTest, MovesByADistanceAndToTheMiddle)
{
    const BRect before = fWindow->Frame();

    fWindow->MoveBy(10, -20);
    EXPECT_EQ(fWindow->Frame(), before.OffsetByCopy(10, -20));

    fWindow->CenterOnScreen();
    const BRect room = BScreen(fWindow).AvailableFrame();
    const BRect frame = fWindow->Frame();
    EXPECT_NEAR(frame.left - room.left, room.right - frame.right, 1);
    EXPECT_NEAR(frame.top - room.top, room.bottom - frame.bottom, 1);
    EXPECT_EQ(frame.Width(), before.Width());
}

TEST_F(WindowPlaceTest, ZoomsWithinItsLimitsAndBack)
{
    const BRect before = fWindow->Frame();
    float least = 0;
    float most = 0;
    float lowest = 0;
    float highest = 0;
    fWindow->SetSizeLimits(50, 600, 40, 5000);
    fWindow->GetSizeLimits(&least, &most, &lowest, &highest);
    EXPECT_EQ(least, 50);
    EXPECT_EQ(most, 600);
    EXPECT_EQ(lowest, 40);
    EXPECT_EQ(highest, 5000);

    fWindow->SetZoomLimits(10000, 300);
    fWindow->Zoom();
    EXPECT_EQ(fWindow->Frame().Width(), 600);
    EXPECT_EQ(fWindow->Frame().Height(), 300);

    fWindow->Zoom();
    EXPECT_EQ(fWindow->Frame(), before);
}

TEST_F(WindowPlaceTest, ZoomingMovesItNoFurtherThanItMust)
{
    const BRect room = BScreen(fWindow).AvailableFrame();
    fWindow->MoveTo(room.left + 30, room.bottom - 250);
    fWindow->SetZoomLimits(500, 300);

    fWindow->Zoom();

    EXPECT_EQ(fWindow->Frame(),
              BRect(room.left + 30, room.bottom - 300, room.left + 530, room.bottom));
}

TEST_F(WindowPlaceTest, ZoomingLeavesRoomForTheTitle)
{
    const BRect room = BScreen(fWindow).AvailableFrame();

    fWindow->Zoom();

    EXPECT_GT(fWindow->Frame().top, room.top + 10);
    EXPECT_EQ(fWindow->Frame().bottom, room.bottom);
}

TEST_F(WindowPlaceTest, KeepsLookAndFlagsAsTheyAreSet)
{
    EXPECT_EQ(fWindow->SetLook(B_MODAL_WINDOW_LOOK), B_OK);
    EXPECT_EQ(fWindow->SetFlags(B_NOT_CLOSABLE | B_NOT_RESIZABLE), B_OK);

    EXPECT_EQ(fWindow->Look(), B_MODAL_WINDOW_LOOK);
    EXPECT_EQ(fWindow->Flags(), B_NOT_CLOSABLE | B_NOT_RESIZABLE);
    EXPECT_EQ(fWindow->Type(), B_UNTYPED_WINDOW); // no type has that look with the normal feel
}

TEST_F(WindowPlaceTest, FindsTheViewAtAPoint)
{
    NotingView* outer = Add(BRect(10, 10, 99, 89), "outer");
    NotingView* inner = Add(BRect(5, 5, 14, 14), "inner", outer);

    EXPECT_EQ(fWindow->FindView(BPoint(20, 20)), inner);
    EXPECT_EQ(fWindow->FindView(BPoint(60, 60)), outer);
    EXPECT_EQ(fWindow->FindView(BPoint(150, 50)), nullptr);
}

TEST_F(WindowPlaceTest, KnowsWhereThePointerWentLast)
{
    NotingView* view = Add(BRect(10, 10, 99, 89), "view");
    Show();

    MoveMouse(view, BPoint(30, 20));
    ASSERT_TRUE(Sync(fWindow));

    Locked([&] {
        EXPECT_EQ(fWindow->LastMouseMovedView(), view);
        BPoint where;
        uint32 buttons = 7;
        view->GetMouse(&where, &buttons);
        EXPECT_EQ(where, BPoint(30, 20));
        EXPECT_EQ(buttons, 0u);
        view->GetMouse(nullptr, nullptr);
    });
}

TEST_F(WindowPlaceTest, IsFrontWhileItHasTheKeyboard)
{
    Locked([&] { EXPECT_FALSE(fWindow->IsFront()); });

    Show();

    Locked([&] {
        EXPECT_TRUE(fWindow->IsFront());
        EXPECT_FALSE(fWindow->IsMinimized());
        fWindow->Minimize(true);
        EXPECT_TRUE(fWindow->IsMinimized());
        fWindow->Minimize(false);
        EXPECT_FALSE(fWindow->IsMinimized());
    });
}

class Pulsed : public BView
{
public:
    Pulsed() : BView(BRect(0, 0, 9, 9), "pulsed", B_FOLLOW_NONE, B_PULSE_NEEDED) {}
    void Pulse() override { pulses++; }
    int32 pulses = 0;
};

TEST_F(WindowPlaceTest, PulsesAtItsRate)
{
    auto* view = new Pulsed;
    fWindow->AddChild(view);
    fWindow->SetPulseRate(-5);
    EXPECT_EQ(fWindow->PulseRate(), 0);
    fWindow->SetPulseRate(1000);
    EXPECT_EQ(fWindow->PulseRate(), 1000);

    fWindow->Show();

    EXPECT_TRUE(WaitFor([&] {
        int32 pulses = 0;
        Locked([&] { pulses = view->pulses; });
        return pulses >= 3;
    }));
}

TEST_F(WindowPlaceTest, ViewsConvertRectanglesToAndFromTheirParent)
{
    NotingView* view = Add(BRect(10, 20, 59, 69), "view");
    view->ScrollTo(BPoint(3, 4));

    EXPECT_EQ(view->ConvertToParent(view->Bounds()), view->Frame());
    EXPECT_EQ(view->ConvertFromParent(view->Frame()), view->Bounds());
}

TEST_F(WindowPlaceTest, InvalidRegionIsDrawnWithinItsFrame)
{
    NotingView* view = Add(BRect(0, 0, 199, 99), "view");
    Show();
    BRegion region(BRect(10, 10, 19, 19));
    region.Include(BRect(40, 30, 49, 39));
    Locked([&] { view->drawn.clear(); });

    Locked([&] { view->Invalidate(&region); });
    TakePicture(fWindow);

    Locked([&] {
        ASSERT_FALSE(view->drawn.empty());
        BRect all = view->drawn.front();
        for (const BRect& rect : view->drawn) {
            all = all | rect;
        }
        EXPECT_EQ(all, region.Frame());
    });
}

TEST_F(WindowPlaceTest, DrawingOutsideDrawIsSeenAfterSyncAndFlush)
{
    NotingView* view = Add(BRect(0, 0, 199, 99), "view");
    Show();

    Locked([&] {
        view->SetHighColor(255, 0, 0);
        view->FillRect(BRect(0, 0, 19, 19));
        view->Sync();
        view->SetHighColor(0, 0, 255);
        view->FillRect(BRect(50, 0, 69, 19));
        fWindow->Flush();
    });

    const Picture picture = TakePicture(fWindow);
    EXPECT_EQ(picture.At(5, 5), (rgb_color{255, 0, 0, 255}));
    EXPECT_EQ(picture.At(55, 5), (rgb_color{0, 0, 255, 255}));
}

} // namespace
