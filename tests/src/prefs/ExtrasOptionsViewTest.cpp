#include "prefs/ExtrasOptionsView.h"

#include "ControlWindow.h"
#include "prefs/SwitchList.h"

#include <Autolock.h>
#include <CheckBox.h>
#include <ScrollBar.h>
#include <ScrollView.h>

#include <string>

namespace norvane {

namespace {

using kits::testing::TypeKey;

constexpr int kMany = 12;

/// A list of many switches, of which a few are seen at a time.
class SwitchListTest : public ControlTest
{
protected:
    void Open(float height)
    {
        fList = new SwitchList(BRect(10, 10, 209, 10 + height));
        for (int i = 0; i < kMany; i++) {
            fList->AddSwitch(("box " + std::to_string(i)).c_str(), "A box");
        }
        fScroller = Add(
            new BScrollView("scroller", fList, B_FOLLOW_ALL_SIDES, 0, false, true, B_NO_BORDER));
        Show();
    }

    template<typename Ask>
    auto Locked(Ask ask)
    {
        kits::testing::Sync(fWindow);
        const BAutolock lock(fWindow);
        return ask();
    }
    bool HasBar()
    {
        return Locked([this] { return !fScroller->ScrollBar(B_VERTICAL)->IsHidden(); });
    }
    float Top()
    {
        return Locked([this] { return fList->Bounds().top; });
    }
    BView* Box(int index) { return fList->ChildAt(index); }
    bool IsInSight(int index)
    {
        return Locked([=, this] { return fList->Bounds().Contains(Box(index)->Frame()); });
    }
    void Focus(int index)
    {
        Locked([=, this] {
            Box(index)->MakeFocus();
            return true;
        });
    }
    bool HasFocus(int index)
    {
        return Locked([=, this] { return Box(index)->IsFocus(); });
    }

    SwitchList* fList = nullptr;      // the scroller's
    BScrollView* fScroller = nullptr; // the window's
};

TEST_F(SwitchListTest, ShowsABarOnlyWhenItScrolls)
{
    Open(270);
    EXPECT_FALSE(HasBar());
    Locked([this] {
        fScroller->ResizeBy(0, -100);
        return true;
    });
    EXPECT_TRUE(HasBar());
    Locked([this] {
        fScroller->ResizeBy(0, 100);
        return true;
    });
    EXPECT_FALSE(HasBar());
}

TEST_F(SwitchListTest, FocusScrollsIntoSightBothWays)
{
    Open(70);
    Focus(0);
    for (int i = 0; i < kMany; i++) {
        EXPECT_TRUE(HasFocus(i)) << i;
        EXPECT_TRUE(IsInSight(i)) << i;
        if (i + 1 < kMany) {
            TypeKey(B_TAB);
        }
    }
    EXPECT_GT(Top(), 0);
    for (int i = kMany - 1; i > 0; i--) {
        TypeKey(B_TAB, B_SHIFT_KEY);
        EXPECT_TRUE(HasFocus(i - 1)) << i;
        EXPECT_TRUE(IsInSight(i - 1)) << i;
    }
    EXPECT_EQ(Top(), 0);
}

TEST_F(SwitchListTest, WheelOverABoxScrolls)
{
    Open(70);

    kits::testing::TurnWheel(Box(1), BPoint(5, 5), 1);

    EXPECT_GT(Top(), 0);
    kits::testing::TurnWheel(fList, Locked([this] { return fList->Bounds().LeftTop(); }), 50);
    EXPECT_TRUE(IsInSight(kMany - 1));
}

TEST_F(SwitchListTest, LowPageOfExtrasScrolls)
{
    auto* page = Add(new ExtrasOptionsView(BRect(5, 5, 304, 35)));
    Show();

    const auto* bar = Locked([=] { return dynamic_cast<BScrollBar*>(page->FindView("_VSB_")); });
    ASSERT_NE(bar, nullptr);
    EXPECT_FALSE(Locked([=] { return bar->IsHidden(); }));
    EXPECT_TRUE(
        Locked([=] { return page->Bounds().Contains(page->FindView("ExtrasScroll")->Frame()); }));
}

} // namespace

} // namespace norvane
