#include "NativeFixture.h"

#include <AppDefs.h>
#include <OS.h>

#include "server/NativeWindow.h"
#include "server/ServerState.h"
#include "server/Surface.h"
#include "server/WindowServer.h"
#include "testing/Native.h"

#include <QGuiApplication>

using namespace kits::testing;

namespace {

class NativeWindowTest : public NativeFixture
{
protected:
    // Runs on the server with the native window of a token.
    static void WithNative(const TestWindow& window,
                           const std::function<void(kits::Surface&)>& task)
    {
        OnServer([&] {
            kits::NativeWindow* native = kits::ServerState::Get().windows.Find(window.Token());
            ASSERT_NE(native, nullptr);
            task(*native->GetSurface());
        });
    }
    static int32 FocusedToken()
    {
        int32 token = 0;
        OnServer([&token] { token = kits::ServerState::Get().router.Focused(); });
        return token;
    }
};

} // namespace

TEST_F(NativeWindowTest, IsOnTheScreenWithItsFirstFrame)
{
    fA.Show();

    EXPECT_TRUE(WaitFor([this] { return fA.Link().Front().firstPresentTime != 0; }));
    EXPECT_TRUE(fA.WaitForActivation());
}

TEST_F(NativeWindowTest, ForgetsTheFirstFrameWhenHidden)
{
    ShowA();
    ASSERT_TRUE(WaitFor([this] { return fA.Link().Front().firstPresentTime != 0; }));

    fA.Link().Hide();

    EXPECT_EQ(fA.Link().Front().firstPresentTime, 0);
}

TEST_F(NativeWindowTest, HasTheFrameAndTitleItAskedFor)
{
    ShowA();

    WithNative(fA, [](kits::Surface& surface) {
        EXPECT_EQ(surface.geometry(), QRect(50, 60, 200, 150));
        EXPECT_EQ(surface.title(), QStringLiteral("A"));
    });
}

TEST_F(NativeWindowTest, KeepsAPersonsSizeWhenOnlyTheTitleChanges)
{
    ShowA();
    WithNative(fA, [](kits::Surface& surface) { surface.resize(300, 180); });

    fA.Shape().title = std::string("Other");
    fA.Link().SetShape(fA.Shape());
    SyncServer();

    WithNative(fA, [](kits::Surface& surface) {
        EXPECT_EQ(surface.size(), QSize(300, 180));
        EXPECT_EQ(surface.title(), QStringLiteral("Other"));
    });
}

TEST_F(NativeWindowTest, CannotBeResizedWhenItsFlagsSaySo)
{
    TestWindow fixed("fixed", BRect(0, 100, 99, 149), B_NOT_RESIZABLE);
    fixed.Show();

    WithNative(fixed, [](kits::Surface& surface) {
        EXPECT_EQ(surface.minimumSize(), QSize(100, 50));
        EXPECT_EQ(surface.maximumSize(), QSize(100, 50));
    });
}

TEST_F(NativeWindowTest, AsksItsLooperBeforeItCloses)
{
    ShowA();

    WithNative(fA, [](kits::Surface& surface) { surface.close(); });

    EXPECT_TRUE(fA.Looper().WaitForCount(B_QUIT_REQUESTED, 1));
    WithNative(fA, [](kits::Surface& surface) { EXPECT_TRUE(surface.isVisible()); });
}

TEST_F(NativeWindowTest, DropsACloseItsFlagsForbid)
{
    TestWindow open("open", BRect(10, 100, 99, 149), B_NOT_CLOSABLE);
    open.Show();

    WithNative(open, [](kits::Surface& surface) { surface.close(); });

    ASSERT_TRUE(Sync(open));
    EXPECT_EQ(open.Looper().Count(B_QUIT_REQUESTED), 0u);
}

TEST_F(NativeWindowTest, IsAskedToCloseOnceTheQuestionBeforeItIsGone)
{
    ShowA();
    fB.Show(ModalFor(fA));
    ASSERT_TRUE(fB.WaitForActivation());

    WithNative(fA, [](kits::Surface& surface) { surface.close(); });
    ASSERT_TRUE(Sync(fA));
    EXPECT_EQ(fA.Looper().Count(B_QUIT_REQUESTED), 0u);
    fB.Link().Hide();

    EXPECT_TRUE(fA.Looper().WaitForCount(B_QUIT_REQUESTED, 1));
    fB.Show(ModalFor(fA));
    fB.Link().Hide();
    ASSERT_TRUE(Sync(fA));
    EXPECT_EQ(fA.Looper().Count(B_QUIT_REQUESTED), 1u);
}

TEST_F(NativeWindowTest, GivesTheFocusBackToItsOpener)
{
    ShowA();
    fB.Show(OpenedBy(fA));
    ASSERT_TRUE(fB.WaitForActivation());

    fB.Link().Hide();

    EXPECT_TRUE(WaitFor([this] { return FocusedToken() == fA.Token(); }));
    const std::vector<BMessage> changes = fA.Looper().Messages(B_WINDOW_ACTIVATED);
    ASSERT_TRUE(fA.Looper().WaitForCount(B_WINDOW_ACTIVATED, 3));
    EXPECT_TRUE(fB.Looper().WaitForCount(B_WINDOW_ACTIVATED, 2));
}

TEST_F(NativeWindowTest, LeavesTheFocusWhereItIsWithoutBeingAsked)
{
    ShowA();
    kits::ShowRequest request = OpenedBy(fA);
    request.takesFocus = false;

    fB.Show(request);
    SyncServer();
    fB.Link().Hide();

    TypeKey('a');
    EXPECT_TRUE(fA.Looper().WaitForCount(B_KEY_UP, 1));
}

TEST_F(NativeWindowTest, CanGoWhileItIsShown)
{
    ShowA();
    {
        TestWindow brief("brief", BRect(10, 100, 99, 149));
        brief.Show(OpenedBy(fA));
    }

    TypeKey('a');

    EXPECT_TRUE(fA.Looper().WaitForCount(B_KEY_UP, 1));
}

TEST_F(NativeWindowTest, PresentsDamageOfABusyWindowWithoutAskingIt)
{
    ShowA();
    fA.Looper().Occupy();

    fA.Paint(Qt::blue);
    SyncServer();

    QColor shown;
    WithNative(fA, [&shown](kits::Surface& surface) {
        const QImage picture = surface.Owner().Front().Copy();
        shown = picture.pixelColor(10, 10);
        EXPECT_FALSE(surface.Owner().Front().Update(picture, QRegion()));
    });
    EXPECT_EQ(shown, QColor(Qt::blue));
}

TEST_F(NativeWindowTest, HoldsTheFirstFrameInItsFrontImage)
{
    fA.Show({}, Qt::green);
    ASSERT_TRUE(WaitFor([this] { return fA.Link().Front().firstPresentTime != 0; }));

    EXPECT_EQ(fA.Link().Front().Copy().pixelColor(10, 10), QColor(Qt::green));
}

TEST(WindowServerTest, HasNoIconOfAnUnknownName)
{
    kits::WindowServer& server = kits::WindowServer::Get();

    EXPECT_TRUE(server.ThemeIcon("no-such-icon-anywhere", 16, 1).isNull());
    EXPECT_TRUE(server.ThemeIcon("no-such-icon-anywhere", 16, 1).isNull());
}

TEST(WindowServerTest, RunsTasksInOrderOnItsThread)
{
    kits::WindowServer& server = kits::WindowServer::Get();
    std::vector<int> order;
    bool isServerThread = false;

    server.Post([&order] { order.push_back(1); });
    server.Post([&order] { order.push_back(2); });
    server.Call([&] {
        order.push_back(3);
        isServerThread = server.IsServerThread();
    });

    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    EXPECT_TRUE(isServerThread);
    EXPECT_FALSE(server.IsServerThread());
}
