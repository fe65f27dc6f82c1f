#include <testing/Driver.h>
#include <testing/Native.h>

#include <Autolock.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>
#include <Screen.h>
#include <Window.h>

#include <server/NativeWindow.h>
#include <server/ServerState.h>
#include <server/Surface.h>

#include <gtest/gtest.h>

#include <QWindow>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

using namespace kits::testing;

// Windows of a program that has two screens: 800 x 600, and right of it, a little lower, 640 x 480.

namespace {

constexpr BRect kLeft(0, 0, 799, 599);
constexpr BRect kRight(800, 100, 1439, 579);

class TwoScreens : public ::testing::Environment
{
public:
    void SetUp() override
    {
        const std::string file = std::string(std::getenv("HOME")) + "/two-screens.json";
        std::ofstream(file) << R"({"screens": [
            {"name": "left", "x": 0, "y": 0, "width": 800, "height": 600,
             "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
            {"name": "right", "x": 800, "y": 100, "width": 640, "height": 480,
             "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
        setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + file).c_str(), 1);
        setenv("QT_SCALE_FACTOR", "1", 1);
        fApplication = std::make_unique<HeadlessApplication>();
    }
    void TearDown() override { fApplication.reset(); }

private:
    std::unique_ptr<HeadlessApplication> fApplication;
};

[[maybe_unused]] const ::testing::Environment* const gTwoScreens =
    ::testing::AddGlobalTestEnvironment(new TwoScreens);

class TwoScreensTest : public ::testing::Test
{
protected:
    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
    }
    void Show(BRect frame)
    {
        fWindow = new BWindow(frame, "Test", B_TITLED_WINDOW, 0);
        fWindow->Show();
        ASSERT_TRUE(WaitForFocus(fWindow));
        ASSERT_TRUE(Sync(fWindow));
    }
    BRect Frame()
    {
        const BAutolock lock(fWindow);
        return fWindow->Frame();
    }
    BRect ScreenOf()
    {
        const BAutolock lock(fWindow);
        return BScreen(fWindow).Frame();
    }

    BWindow* fWindow = nullptr; // deletes itself
};

TEST_F(TwoScreensTest, ScreensHaveNumbers)
{
    EXPECT_EQ(BScreen().Frame(), kLeft);
    EXPECT_EQ(BScreen(screen_id{1}).Frame(), kRight);
    EXPECT_FALSE(BScreen(screen_id{2}).IsValid());
    EXPECT_FALSE(BScreen(screen_id{-1}).IsValid());
}

TEST_F(TwoScreensTest, WindowComesBackOnTheSecondScreen)
{
    const BRect saved(900, 200, 1299, 499);

    Show(saved);

    EXPECT_EQ(Frame(), saved);
    EXPECT_EQ(ScreenOf(), kRight);
}

TEST_F(TwoScreensTest, WindowIsOnTheScreenThatShowsMostOfIt)
{
    Show(BRect(700, 150, 999, 349));
    EXPECT_EQ(ScreenOf(), kRight);

    PlaceWindow(fWindow, BRect(600, 150, 899, 349));

    ASSERT_TRUE(Sync(fWindow));
    EXPECT_EQ(ScreenOf(), kLeft);
}

TEST_F(TwoScreensTest, WindowThatNoScreenShowsGoesOntoTheNearest)
{
    Show(BRect(1700, 200, 1999, 399));

    EXPECT_TRUE(WaitFor([this] { return Frame() == BRect(1140, 200, 1439, 399); }));
}

TEST_F(TwoScreensTest, WindowAboveAllGoesOntoTheMainScreen)
{
    Show(BRect(100, -900, 399, -700));

    EXPECT_TRUE(WaitFor([this] { return kLeft.Contains(Frame()); }));
    EXPECT_EQ(Frame().left, 100);
}

TEST_F(TwoScreensTest, WindowIsNoLargerThanItsOwnScreen)
{
    Show(BRect(820, 150, 1619, 749));

    EXPECT_TRUE(WaitFor([this] {
        return Frame().Width() <= kRight.Width() && Frame().Height() <= kRight.Height();
    }));
}

TEST_F(TwoScreensTest, ZoomingKeepsTheScreen)
{
    Show(BRect(900, 200, 1299, 499));

    {
        const BAutolock lock(fWindow);
        fWindow->Zoom();
    }

    ASSERT_TRUE(Sync(fWindow));
    EXPECT_TRUE(kRight.Contains(Frame()));
    EXPECT_EQ(Frame().Width(), kRight.Width());
}

TEST_F(TwoScreensTest, MenusOpenOnTheWindowsScreen)
{
    fWindow = new BWindow(BRect(900, 200, 1299, 499), "Test", B_TITLED_WINDOW, 0);
    auto* bar = new BMenuBar(BRect(0, 0, 399, 18), "bar");
    auto* menu = new BMenu("File");
    menu->AddItem(new BMenuItem("Close", new BMessage('clos')));
    bar->AddItem(menu);
    fWindow->AddChild(bar);
    fWindow->SetKeyMenuBar(bar);
    fWindow->Show();
    ASSERT_TRUE(WaitForFocus(fWindow));

    Click(bar, BPoint(8, 8));

    QRect opened;
    EXPECT_TRUE(WaitFor([&] {
        OnServer([&] {
            const kits::WindowTable& windows = kits::ServerState::Get().windows;
            for (const int32 token : windows.Shown()) {
                if (windows.Find(token)->IsPopUp()) {
                    opened = windows.Find(token)->GetSurface()->geometry();
                }
            }
        });
        return !opened.isEmpty();
    }));
    EXPECT_TRUE(kRight.Contains(
        BPoint(static_cast<float>(opened.left()), static_cast<float>(opened.top()))));
    TypeKey(B_ESCAPE);
}

} // namespace
