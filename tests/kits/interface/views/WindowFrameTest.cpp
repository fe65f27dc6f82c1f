#include "WindowFixture.h"

#include <testing/Native.h>

#include <Alert.h>
#include <Message.h>

#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <atomic>

using namespace kits::testing;

// The frame of a window, when others than the window change it.

namespace {

constexpr uint32 kAsk = 'tAsk';
constexpr int32 kSteps = 60;

/// Asks a question when it is told to, as a program does that takes no messages meanwhile.
class Asking : public BWindow
{
public:
    Asking() : BWindow(BRect(100, 100, 299, 199), "Asking", B_TITLED_WINDOW, 0) {}
    void MessageReceived(BMessage* message) override
    {
        if (message->what == kAsk) {
            (new BAlert("Question", "Is it so?", "Yes"))->Go();
            SetTitle("Answered");
        } else {
            BWindow::MessageReceived(message);
        }
    }
    void FrameMoved(BPoint where) override
    {
        place = where;
        moves++;
    }
    void FrameResized(float width, float height) override
    {
        size = BPoint(width, height);
        resizes++;
    }

    BPoint place;
    BPoint size;
    std::atomic<int32> moves{0};
    std::atomic<int32> resizes{0};
};

class WindowFrameTest : public WindowFixture
{
protected:
    void SetUp() override { fWindow = fAsking = new Asking; }

    BRect Frame()
    {
        BRect frame;
        Locked([&] { frame = fWindow->Frame(); });
        return frame;
    }
    BRect NativeFrame()
    {
        BRect frame;
        OnServer([&] {
            const QRect geometry = NativeOf(fWindow)->geometry();
            frame =
                BRect(static_cast<float>(geometry.left()), static_cast<float>(geometry.top()),
                      static_cast<float>(geometry.right()), static_cast<float>(geometry.bottom()));
        });
        return frame;
    }
    // When both have heard each other's last word: what one says may make the other answer.
    void Settle()
    {
        for (int round = 0; round < 4; ++round) {
            EXPECT_TRUE(Sync(fWindow));
            SyncServer();
        }
    }
    // Moves and resizes as the left top edge being dragged does.
    BRect DragEdge()
    {
        BRect frame;
        for (int32 step = 1; step <= kSteps; ++step) {
            const auto by = static_cast<float>(step);
            frame = BRect(100 - by, 100 - by, 299, 199);
            PlaceWindow(fWindow, frame);
        }
        return frame;
    }

    Asking* fAsking = nullptr;
};

TEST_F(WindowFrameTest, ManyChangesEndAtTheLast)
{
    Show();

    const BRect last = DragEdge();

    Settle();
    EXPECT_EQ(NativeFrame(), last);
    EXPECT_EQ(Frame(), last);
    EXPECT_EQ(fAsking->place, last.LeftTop());
    EXPECT_EQ(fAsking->size, BPoint(last.Width(), last.Height()));
}

TEST_F(WindowFrameTest, ManyChangesWhileAQuestionIsOpenEndAtTheLast)
{
    Show();
    fWindow->PostMessage(kAsk);
    ASSERT_NE(WaitForWindow("Question"), nullptr);

    const BRect last = DragEdge();
    ASSERT_TRUE(AnswerAlert("Yes"));

    ASSERT_NE(WaitForWindow("Answered"), nullptr);
    Settle();
    EXPECT_EQ(NativeFrame(), last);
    EXPECT_EQ(Frame(), last);
}

TEST_F(WindowFrameTest, HooksAreToldOfWhatChangedAndOnce)
{
    Show();

    PlaceWindow(fWindow, BRect(50, 60, 249, 159));
    Settle();
    EXPECT_EQ(fAsking->moves, 1);
    EXPECT_EQ(fAsking->resizes, 0);

    PlaceWindow(fWindow, BRect(50, 60, 349, 209));
    Settle();
    EXPECT_EQ(fAsking->moves, 1);
    EXPECT_EQ(fAsking->resizes, 1);
}

TEST_F(WindowFrameTest, OwnMoveIsLaterThanWhatWaits)
{
    Show();

    Locked([&] {
        PlaceWindow(fWindow, BRect(50, 60, 349, 209));
        fWindow->MoveTo(70, 80);
        EXPECT_EQ(fWindow->Frame().LeftTop(), BPoint(70, 80));
    });

    Settle();
    EXPECT_EQ(Frame(), BRect(70, 80, 369, 229));
    EXPECT_EQ(NativeFrame(), Frame());
}

TEST_F(WindowFrameTest, OwnMoveToItsOldPlaceIsAMoveToo)
{
    Show();

    Locked([&] {
        PlaceWindow(fWindow, BRect(50, 60, 249, 159));
        fWindow->MoveTo(100, 100);
    });

    Settle();
    EXPECT_EQ(NativeFrame(), BRect(100, 100, 299, 199));
    EXPECT_EQ(Frame(), NativeFrame());
}

TEST_F(WindowFrameTest, OwnResizeIsLaterThanWhatWaits)
{
    Show();

    Locked([&] {
        PlaceWindow(fWindow, BRect(50, 60, 349, 209));
        fWindow->ResizeTo(149, 119);
    });

    Settle();
    EXPECT_EQ(Frame(), BRect(50, 60, 199, 179));
    EXPECT_EQ(NativeFrame(), Frame());
}

TEST_F(WindowFrameTest, OwnResizeToItsOldSizeIsAResizeToo)
{
    Show();

    Locked([&] {
        PlaceWindow(fWindow, BRect(50, 60, 349, 209));
        fWindow->ResizeTo(199, 99);
    });

    Settle();
    EXPECT_EQ(NativeFrame(), BRect(50, 60, 249, 159));
    EXPECT_EQ(Frame(), NativeFrame());
}

TEST_F(WindowFrameTest, RefusesASizeBeyondItsLimits)
{
    fWindow->SetSizeLimits(150, 400, 80, 300);
    Show();

    PlaceWindow(fWindow, BRect(100, 100, 149, 149));

    EXPECT_TRUE(WaitFor([&] { return NativeFrame() == BRect(100, 100, 250, 180); }));
    Settle();
    EXPECT_EQ(Frame(), NativeFrame());
}

TEST_F(WindowFrameTest, RefusingOneSizeLeavesTheNextAlone)
{
    fWindow->SetSizeLimits(150, 400, 80, 300);
    Show();

    OnServer([&] {
        QWindow* native = NativeOf(fWindow);
        native->setGeometry(QRect(100, 100, 50, 50));
        QWindowSystemInterface::flushWindowSystemEvents();
        // By now what the window answers is on its way.
        EXPECT_TRUE(WaitFor([&] { return fAsking->resizes > 0; }));
        native->setGeometry(QRect(100, 100, 300, 150));
        QWindowSystemInterface::flushWindowSystemEvents();
    });

    Settle();
    EXPECT_EQ(NativeFrame(), BRect(100, 100, 399, 249));
    EXPECT_EQ(Frame(), NativeFrame());
}

TEST_F(WindowFrameTest, OwnResizeAfterARefusedSizeIsItsOwn)
{
    fWindow->SetSizeLimits(150, 400, 80, 300);
    Show();
    PlaceWindow(fWindow, BRect(100, 100, 149, 149));
    Settle();
    PlaceWindow(fWindow, BRect(60, 60, 210, 140));
    Settle();

    Locked([&] { fWindow->ResizeTo(189, 99); });

    Settle();
    EXPECT_EQ(NativeFrame(), BRect(60, 60, 249, 159));
    EXPECT_EQ(Frame(), NativeFrame());
}

TEST_F(WindowFrameTest, TakesASizeThatSomebodyInsistsOn)
{
    fWindow->SetSizeLimits(2999, 4000, 80, 300);

    Show(); // no screen is that large

    Settle();
    EXPECT_LT(NativeFrame().Width(), 2999);
    EXPECT_EQ(Frame(), NativeFrame());
}

TEST_F(WindowFrameTest, LimitsThatFitChangeNothing)
{
    Show();

    Locked([&] {
        PlaceWindow(fWindow, BRect(50, 60, 349, 209));
        fWindow->SetSizeLimits(100, 500, 50, 500);
    });

    Settle();
    EXPECT_EQ(NativeFrame(), BRect(50, 60, 349, 209));
    EXPECT_EQ(Frame(), NativeFrame());
}

} // namespace
