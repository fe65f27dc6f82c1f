#include "WindowFixture.h"

#include <app/LooperRegistry.h>

#include <Message.h>

#include <cmath>

using namespace kits::testing;

namespace {

class Resizing : public BWindow
{
public:
    Resizing() : BWindow(BRect(100, 100, 299, 199), "Resizing", B_TITLED_WINDOW, 0) {}
    void FrameResized(float width, float height) override { size = BPoint(width, height); }
    void FrameMoved(BPoint where) override { place = where; }
    void WindowActivated(bool active) override { activations += active ? "+" : "-"; }
    BPoint size;
    BPoint place;
    std::string activations;
};

class WindowTest : public WindowFixture
{
protected:
    void SetUp() override { fWindow = fResizing = new Resizing; }
    bool WaitLocked(const std::function<bool()>& condition)
    {
        return WaitFor([&] {
            bool isTrue = false;
            Locked([&] { isTrue = condition(); });
            return isTrue;
        });
    }
    Resizing* fResizing = nullptr;
};

TEST_F(WindowTest, IsBornHiddenAndNestsHiding)
{
    EXPECT_TRUE(fWindow->IsHidden());
    Show();

    Locked([&] {
        EXPECT_FALSE(fWindow->IsHidden());
        fWindow->Hide();
        fWindow->Hide();
        fWindow->Show();
        EXPECT_TRUE(fWindow->IsHidden());
    });
    EXPECT_TRUE(WaitForNoWindow("Resizing"));
    Locked([&] { fWindow->Show(); });
    EXPECT_NE(WaitForWindow("Resizing"), nullptr);
}

TEST_F(WindowTest, HiddenAndShownAtOnceItIsActiveAgain)
{
    Show();
    ASSERT_TRUE(WaitLocked([&] { return fResizing->activations == "+"; }));

    Locked([&] {
        fWindow->Hide();
        fWindow->Show();
    });

    EXPECT_TRUE(WaitLocked([&] { return fResizing->activations == "+-+"; }));
    Locked([&] { EXPECT_TRUE(fWindow->IsActive()) << fResizing->activations; });
}

TEST_F(WindowTest, FirstFrameIsThereWithTheWindow)
{
    Add(BRect(0, 0, 199, 99), "view")->SetViewColor(255, 0, 0);
    fWindow->Show();
    ASSERT_NE(WaitForWindow("Resizing"), nullptr);

    EXPECT_EQ(TakePicture(fWindow).At(5, 5), (rgb_color{255, 0, 0, 255}));
}

TEST_F(WindowTest, OwnResizeMovesViewsAtOnceAndTellsTheHook)
{
    NotingView* view = Add(BRect(0, 0, 199, 99), "view", nullptr, B_FOLLOW_ALL);
    Show();

    Locked([&] {
        fWindow->ResizeTo(249, 149);
        EXPECT_EQ(view->Frame(), BRect(0, 0, 249, 149));
        EXPECT_EQ(fWindow->Bounds(), BRect(0, 0, 249, 149));
    });

    EXPECT_TRUE(WaitLocked([&] { return fResizing->size == BPoint(249, 149); }));
    const Picture picture = TakePicture(fWindow);
    EXPECT_EQ(picture.width, static_cast<int32>(std::ceil(250 * picture.scale)));
}

TEST_F(WindowTest, PersonsResizeReachesViewsAndHook)
{
    NotingView* view = Add(BRect(0, 0, 199, 99), "view", nullptr, B_FOLLOW_ALL);
    Show();

    ResizeWindow(fWindow, 219, 119);

    EXPECT_TRUE(WaitLocked([&] { return fResizing->size == BPoint(219, 119); }));
    Locked([&] { EXPECT_EQ(view->Frame(), BRect(0, 0, 219, 119)); });
}

TEST_F(WindowTest, KeepsWithinItsLimits)
{
    fWindow->SetSizeLimits(150, 250, 80, 120);
    Show();

    Locked([&] {
        fWindow->ResizeTo(1000, 10);
        EXPECT_EQ(fWindow->Bounds(), BRect(0, 0, 250, 80));
    });
}

TEST_F(WindowTest, HiddenWindowTellsItsFrameToo)
{
    fWindow->ResizeTo(149, 89);
    fWindow->MoveTo(120, 130);
    fWindow->Run();

    EXPECT_TRUE(WaitLocked([&] { return fResizing->size == BPoint(149, 89); }));
    EXPECT_TRUE(WaitLocked([&] { return fResizing->place == BPoint(120, 130); }));
}

TEST_F(WindowTest, CloseButtonAsksAndEndsIt)
{
    Show();

    CloseWindow(fWindow);
    fWindow = nullptr;

    EXPECT_TRUE(WaitForNoWindow("Resizing"));
}

TEST_F(WindowTest, QuitFromAnotherThreadReturnsWhenItIsGone)
{
    Show();

    ASSERT_TRUE(fWindow->Lock());
    fWindow->Quit();

    EXPECT_EQ(kits::LooperRegistry::FindLooper(fWindow), nullptr);
    fWindow = nullptr;
    EXPECT_EQ(CountShown("Resizing"), 0);
}

TEST_F(WindowTest, NeverShownWindowCanQuit)
{
    Add(BRect(0, 0, 9, 9), "view");

    fWindow->Quit();
    fWindow = nullptr;

    EXPECT_EQ(fNotes.back(), "view all detached");
}

TEST_F(WindowTest, BusyWindowKeepsItsPicture)
{
    Add(BRect(0, 0, 199, 99), "view")->SetViewColor(0, 0, 255);
    Show();
    const Picture before = TakePicture(fWindow);

    EXPECT_EQ(before.At(50, 50), (rgb_color{0, 0, 255, 255}));
    Locked([&] {
        // While the lock is held the window cannot paint; what is shown stays.
        fWindow->ChildAt(0)->SetViewColor(255, 0, 0);
        EXPECT_TRUE(fWindow->NeedsUpdate());
        fWindow->DisableUpdates();
        fWindow->Sync();
        EXPECT_TRUE(fWindow->NeedsUpdate());
        fWindow->EnableUpdates();
    });
    EXPECT_EQ(TakePicture(fWindow).At(50, 50), (rgb_color{255, 0, 0, 255}));
}

TEST_F(WindowTest, TypesAreLookAndFeel)
{
    fWindow->SetType(B_MODAL_WINDOW);

    EXPECT_TRUE(fWindow->IsModal());
    EXPECT_EQ(fWindow->Look(), B_MODAL_WINDOW_LOOK);
    EXPECT_EQ(fWindow->Type(), B_MODAL_WINDOW);
    fWindow->SetFeel(B_FLOATING_APP_WINDOW_FEEL);
    EXPECT_TRUE(fWindow->IsFloating());
    EXPECT_EQ(fWindow->Type(), B_UNTYPED_WINDOW);
}

} // namespace
