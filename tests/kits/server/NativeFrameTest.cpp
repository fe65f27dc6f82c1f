#include "NativeFixture.h"

#include "server/InputMessages.h"
#include "server/NativeWindow.h"
#include "server/ServerState.h"
#include "server/Surface.h"
#include "server/WindowServer.h"
#include "testing/Native.h"

using namespace kits::testing;

namespace {

using News = kits::FrameNews::News;

class NativeFrameTest : public NativeFixture
{
protected:
    static QRect Geometry(const TestWindow& window)
    {
        QRect geometry;
        OnServer([&] { geometry = SurfaceOf(window).geometry(); });
        return geometry;
    }
    // As a window manager does.
    static void Place(const TestWindow& window, const QRect& frame)
    {
        OnServer([&] { SurfaceOf(window).setGeometry(frame); });
    }
    // What the window is told when it looks at last.
    static std::optional<News> Told(const TestWindow& window)
    {
        EXPECT_TRUE(Sync(window));
        return window.Link().News().Take();
    }
    // As BWindow asks: nothing but the numbers says what is new.
    void AskForPlace(BPoint where)
    {
        fA.Shape().frame.OffsetTo(where);
        fA.Shape().asks.place++;
        fA.Link().SetShape(fA.Shape());
    }
    void AskForSize(float width, float height)
    {
        BRect& frame = fA.Shape().frame;
        frame = BRect(frame.left, frame.top, frame.left + width, frame.top + height);
        fA.Shape().asks.size++;
        fA.Link().SetShape(fA.Shape());
    }

private:
    static kits::Surface& SurfaceOf(const TestWindow& window)
    {
        return *kits::ServerState::Get().windows.Find(window.Token())->GetSurface();
    }
};

} // namespace

TEST_F(NativeFrameTest, TellsPlaceAndSizeInOne)
{
    ShowA();

    Place(fA, QRect(70, 80, 300, 180));

    ASSERT_TRUE(fA.Looper().WaitForCount(kits::kFrameChanged, 1));
    const std::optional<News> told = Told(fA);
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->frame, BRect(70, 80, 369, 259));
    EXPECT_EQ(fA.Looper().Count(kits::kFrameChanged), 1u);
}

TEST_F(NativeFrameTest, OnlyTheNewestFrameWaits)
{
    ShowA();
    fA.Looper().Occupy();

    for (int step = 1; step <= 60; ++step) {
        Place(fA, QRect(50 + step, 60 + step, 200 + step, 150 + step));
    }
    fA.Looper().Release();

    const std::optional<News> told = Told(fA);
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->frame, BRect(110, 120, 369, 329));
    EXPECT_EQ(fA.Looper().Count(kits::kFrameChanged), 1u);
    EXPECT_FALSE(Told(fA).has_value());
}

TEST_F(NativeFrameTest, ShapeWithAnOldFrameMovesNothing)
{
    ShowA();
    Place(fA, QRect(70, 80, 300, 180));

    fA.Shape().title = std::string("Other");
    fA.Link().SetShape(fA.Shape());

    EXPECT_EQ(Geometry(fA), QRect(70, 80, 300, 180));
}

TEST_F(NativeFrameTest, AskedPlaceKeepsTheSizeThatAPersonGave)
{
    ShowA();
    Place(fA, QRect(70, 80, 300, 180));

    AskForPlace(BPoint(10, 40));

    EXPECT_EQ(Geometry(fA), QRect(10, 40, 300, 180));
}

TEST_F(NativeFrameTest, AskedSizeKeepsThePlaceThatAPersonGave)
{
    ShowA();
    Place(fA, QRect(70, 80, 300, 180));

    AskForSize(99, 89);

    EXPECT_EQ(Geometry(fA), QRect(70, 80, 100, 90));
}

TEST_F(NativeFrameTest, NewsSayWhichWishesTheyKnow)
{
    ShowA();
    Place(fA, QRect(70, 80, 300, 180));
    EXPECT_EQ(Told(fA)->asks.size, 0u);
    AskForSize(99, 89);

    Place(fA, QRect(71, 80, 310, 180));

    EXPECT_EQ(Told(fA)->asks.size, 1u);
}

TEST_F(NativeFrameTest, CorrectionOfAnOldSizeIsToldTheNewOne)
{
    ShowA();
    Place(fA, QRect(50, 60, 90, 90));
    const std::optional<News> tooSmall = Told(fA);
    ASSERT_TRUE(tooSmall.has_value());
    Place(fA, QRect(50, 60, 300, 180));

    fA.Shape().asks.corrected = tooSmall->serial;
    AskForSize(99, 99);

    EXPECT_EQ(Geometry(fA), QRect(50, 60, 300, 180));
    const std::optional<News> told = Told(fA);
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->frame, BRect(50, 60, 349, 239));
    EXPECT_EQ(told->asks.size, 1u);
}

TEST_F(NativeFrameTest, NoWindowIsLargerThanItsScreen)
{
    ShowA();
    const BRect screen = kits::WindowServer::Get().AvailableFrame();

    AskForSize(9999, 9999);

    EXPECT_LE(Geometry(fA).width(), screen.IntegerWidth() + 1);
    EXPECT_LE(Geometry(fA).height(), screen.IntegerHeight() + 1);
    const std::optional<News> told = Told(fA);
    ASSERT_TRUE(told.has_value());
    EXPECT_LE(told->frame.Width(), screen.Width());
}

TEST_F(NativeFrameTest, IsFittedOntoTheScreen)
{
    TestWindow far("far", BRect(-3000, -3000, -2901, -2951));
    far.Show();

    const std::optional<News> told = Told(far);
    ASSERT_TRUE(told.has_value());
    EXPECT_TRUE(kits::WindowServer::Get().ScreenFrame().Contains(told->frame));
}
