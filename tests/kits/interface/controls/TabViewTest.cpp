#include "ControlWindow.h"

#include <Button.h>
#include <CheckBox.h>
#include <TabView.h>
#include <TextControl.h>
#include <ViewDescription.h>

namespace {

using namespace kits::testing;

constexpr uint32 kFollowAll = B_FOLLOW_ALL_SIDES;

// Pages "First", "Second" and "Third", each with a check box of the page's name; another box
// stands below the tabs.
class TabViewTest : public ControlTest
{
protected:
    TabViewTest()
    {
        fTabs = Add(new BTabView(BRect(10, 10, 309, 199), "tabs"));
        for (const char* name : {"First", "Second", "Third"}) {
            const BRect frame = fTabs->ContainerView()->Bounds();
            auto* page = new BView(frame, name, kFollowAll, 0);
            fBoxes.push_back(
                new BCheckBox(BRect(10, 10, 150, 30), name, name, new BMessage('test')));
            page->AddChild(fBoxes.back());
            fTabs->AddTab(page);
        }
        fBelow = Add(new BCheckBox(BRect(10, 220, 150, 240), "below", "Below", nullptr));
    }

    void ShowFocused()
    {
        Show();
        Focus(fTabs);
    }
    void Do(const std::function<void()>& work)
    {
        Locked([&work] {
            work();
            return true;
        });
    }
    int32 Selected()
    {
        return Locked([this] { return fTabs->Selection(); });
    }
    int32 After(char key, uint32 modifiers = 0)
    {
        TypeKey(key, modifiers);
        return Selected();
    }
    std::string Focused()
    {
        return Locked([this] {
            const BView* focus = fWindow->CurrentFocus();
            return std::string(focus != nullptr ? focus->Name() : "");
        });
    }
    BPoint OnTab(int32 index)
    {
        return Locked([=, this] {
            const BRect frame = fTabs->TabFrame(index);
            return BPoint((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2);
        });
    }
    static bool IsHiddenByItself(BView* view)
    {
        BView around(BRect(0, 0, 9, 9), nullptr, B_FOLLOW_NONE, 0);
        around.AddChild(view);
        const bool isHidden = view->IsHidden(&around);
        around.RemoveChild(view);
        return isHidden;
    }
    BViewDescription Described()
    {
        BViewDescription description;
        Do([&] { fTabs->Describe(&description); });
        return description;
    }

    BTabView* fTabs = nullptr;
    BCheckBox* fBelow = nullptr;
    std::vector<BCheckBox*> fBoxes;
};

TEST_F(TabViewTest, FirstPageIsInFront)
{
    Show();

    EXPECT_EQ(Selected(), 0);
    EXPECT_TRUE(fTabs->TabAt(0)->IsSelected());
    EXPECT_FALSE(fTabs->TabAt(1)->IsSelected());
    EXPECT_EQ(fTabs->CountTabs(), 3);
    EXPECT_FALSE(Locked([this] { return fBoxes[0]->IsHidden(); }));
    EXPECT_TRUE(Locked([this] { return fBoxes[1]->IsHidden(); }));
    EXPECT_STREQ(fTabs->TabAt(2)->Label(), "Third");
}

TEST_F(TabViewTest, ClickOnATabBringsItsPageToTheFront)
{
    Show();

    Click(fTabs, OnTab(1));

    EXPECT_EQ(Selected(), 1);
    EXPECT_TRUE(Locked([this] { return fBoxes[0]->IsHidden(); }));
    EXPECT_FALSE(Locked([this] { return fBoxes[1]->IsHidden(); }));

    Click(fTabs, OnTab(2), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(Selected(), 1);
}

TEST_F(TabViewTest, ArrowsChooseWhileTheTabsHaveTheFocus)
{
    ShowFocused();

    EXPECT_EQ(After(B_RIGHT_ARROW), 1);
    EXPECT_EQ(After(B_RIGHT_ARROW), 2);
    EXPECT_EQ(After(B_RIGHT_ARROW), 2);
    EXPECT_EQ(After(B_LEFT_ARROW), 1);
    EXPECT_EQ(After(B_HOME), 0);
    EXPECT_EQ(After(B_LEFT_ARROW), 0);
    EXPECT_EQ(After(B_END), 2);
    EXPECT_EQ(Focused(), "tabs");
}

TEST_F(TabViewTest, TabGoesFromTheTabsToTheirPageAndNeverToAHiddenOne)
{
    ShowFocused();

    std::string order;
    for (int32 i = 0; i < 3; i++) {
        TypeKey(B_TAB);
        order += Focused() + " ";
    }
    EXPECT_EQ(order, "First below tabs ");

    After(B_RIGHT_ARROW);
    TypeKey(B_TAB);
    EXPECT_EQ(Focused(), "Second");
}

TEST_F(TabViewTest, KeysFromWithinThePageChooseToo)
{
    ShowFocused();
    TypeKey(B_TAB);
    ASSERT_EQ(Focused(), "First");

    EXPECT_EQ(After(B_PAGE_DOWN, B_COMMAND_KEY), 1);
    EXPECT_EQ(Focused(), "tabs");
    EXPECT_EQ(After(B_PAGE_UP, B_COMMAND_KEY), 0);
    EXPECT_EQ(After(B_PAGE_UP, B_COMMAND_KEY), 0);
    EXPECT_EQ(After(B_TAB, B_COMMAND_KEY | B_SHIFT_KEY), 2); // round the end
    EXPECT_EQ(After(B_TAB, B_COMMAND_KEY), 0);
    EXPECT_EQ(After(B_TAB, B_COMMAND_KEY), 1);
}

TEST_F(TabViewTest, FocusLeavesAPageThatIsHidden)
{
    Show();
    Focus(fBoxes[0]);

    Do([this] { fTabs->Select(2); });

    EXPECT_EQ(Focused(), "tabs");
    TypeKey(B_SPACE);
    EXPECT_EQ(Locked([this] { return fBoxes[0]->Value(); }), B_CONTROL_OFF);
}

TEST_F(TabViewTest, FocusElsewhereStaysWhereItIs)
{
    Show();
    Focus(fBelow);

    Do([this] { fTabs->Select(2); });

    EXPECT_EQ(Focused(), "below");
}

TEST_F(TabViewTest, HiddenPagesButtonsAnswerNoKey)
{
    Do([this] {
        auto* accept = new BButton(BRect(10, 60, 100, 85), "ok", "OK", new BMessage('teso'));
        auto* cancel =
            new BButton(BRect(110, 60, 190, 85), "cancel", "Cancel", new BMessage('tesc'));
        fTabs->ViewForTab(1)->AddChild(accept);
        fTabs->ViewForTab(1)->AddChild(cancel);
        fWindow->SetDefaultButton(accept);
    });
    Show();
    Do([this] { fTabs->MakeFocus(true); });

    TypeKey(B_ENTER);
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(fWindow->Messages().empty());

    Do([this] { fTabs->Select(1); });
    TypeKey(B_ENTER);
    TypeKey(B_ESCAPE);
    EXPECT_EQ(fWindow->Messages().size(), 2u);
}

TEST_F(TabViewTest, HiddenPagesFollowTheSize)
{
    Show();

    Do([this] {
        fTabs->ResizeBy(-100, -50);
        fTabs->Select(1);
    });

    const BRect page = Locked([this] { return fTabs->ViewForTab(1)->Frame(); });
    EXPECT_EQ(page, Locked([this] { return fTabs->ContainerView()->Bounds(); }));
    EXPECT_EQ(page.Width(), 299 - 100 - 4);
    EXPECT_EQ(page.Height(), Locked([this] { return 189 - 50 - fTabs->TabHeight() - 4; }));
}

TEST_F(TabViewTest, DisabledTabsArePassedOver)
{
    ShowFocused();
    Do([this] { fTabs->TabAt(1)->SetEnabled(false); });

    Click(fTabs, OnTab(1));
    EXPECT_EQ(Selected(), 0);
    EXPECT_EQ(After(B_RIGHT_ARROW), 2);
    EXPECT_EQ(After(B_LEFT_ARROW), 0);
    Do([this] { fTabs->TabAt(2)->SetEnabled(false); });
    EXPECT_EQ(After(B_RIGHT_ARROW), 0);
}

TEST_F(TabViewTest, RemovedTabGoesToTheCallerWithItsPage)
{
    Show();
    Focus(fBoxes[0]);

    std::unique_ptr<BTab> removed;
    Do([&] { removed.reset(fTabs->RemoveTab(0)); });

    ASSERT_NE(removed, nullptr);
    EXPECT_EQ(removed->View()->Window(), nullptr);
    EXPECT_FALSE(IsHiddenByItself(removed->View()));
    EXPECT_EQ(Selected(), 0);
    EXPECT_STREQ(fTabs->TabAt(0)->Label(), "Second");
    EXPECT_FALSE(Locked([this] { return fBoxes[1]->IsHidden(); }));
    EXPECT_EQ(Focused(), "tabs");

    // A hidden one comes out shown, so that it can be used anywhere; the selection stays.
    Do([&] {
        fTabs->Select(1);
        removed.reset(fTabs->RemoveTab(0));
    });
    EXPECT_EQ(Selected(), 0);
    EXPECT_FALSE(IsHiddenByItself(removed->View()));
    Do([&] { removed.reset(fTabs->RemoveTab(0)); });
    EXPECT_EQ(Selected(), -1);
    EXPECT_EQ(fTabs->RemoveTab(0), nullptr);
}

TEST_F(TabViewTest, OutsideIndexesSelectNothing)
{
    Show();

    Do([this] {
        fTabs->Select(3);
        fTabs->Select(-1);
    });

    EXPECT_EQ(Selected(), 0);
    EXPECT_EQ(fTabs->TabAt(3), nullptr);
    EXPECT_EQ(fTabs->ViewForTab(-1), nullptr);
    EXPECT_FALSE(fTabs->TabFrame(3).IsValid());
}

TEST_F(TabViewTest, TabsStayWithinTheViewHoweverNarrow)
{
    ShowFocused();
    for (const float width : {300.0f, 150.0f, 90.0f, 40.0f}) {
        Do([=, this] { fTabs->ResizeTo(width, 189); });
        const BRect last = Locked([this] { return fTabs->TabFrame(2); });
        EXPECT_LE(last.right, width) << width;
        EXPECT_TRUE(last.IsValid());
    }
}

TEST_F(TabViewTest, WidthsFollowTheMode)
{
    Show();
    const auto widthOf = [this](int32 index) {
        return Locked([=, this] { return fTabs->TabFrame(index).Width(); });
    };
    Do([this] {
        fTabs->ResizeTo(800, 189);
        fTabs->TabAt(1)->SetLabel("A longer label than that");
    });

    EXPECT_EQ(widthOf(0), 75);
    Do([this] { fTabs->SetTabWidth(B_WIDTH_FROM_LABEL); });
    EXPECT_LT(widthOf(0), 75);
    EXPECT_LT(widthOf(0), widthOf(1));
    Do([this] { fTabs->SetTabWidth(B_WIDTH_FROM_WIDEST); });
    EXPECT_EQ(widthOf(0), widthOf(1));
}

TEST_F(TabViewTest, HeightOfTheTabsMovesTheContainer)
{
    Show();

    Do([this] { fTabs->SetTabHeight(40); });

    EXPECT_EQ(fTabs->TabHeight(), 40);
    EXPECT_EQ(Locked([this] { return fTabs->ContainerView()->Frame().top; }), 42);
    EXPECT_EQ(Locked([this] { return fTabs->ContainerView()->Frame().bottom; }), 187);
}

TEST_F(TabViewTest, PageCanBeReplaced)
{
    Show();
    auto* page = new BView(BRect(0, 0, 50, 50), "Other", B_FOLLOW_NONE, 0);

    Do([=, this] { fTabs->TabAt(1)->SetView(page); });

    EXPECT_STREQ(fTabs->TabAt(1)->Label(), "Other");
    EXPECT_TRUE(Locked([=] { return page->IsHidden(); }));
    Do([this] { fTabs->Select(1); });
    EXPECT_FALSE(Locked([=] { return page->IsHidden(); }));
}

TEST_F(TabViewTest, DescribesItsTabs)
{
    ShowFocused();
    Do([this] { fTabs->TabAt(2)->SetEnabled(false); });
    After(B_RIGHT_ARROW);

    const BViewDescription tabs = Described();

    EXPECT_EQ(tabs.role, BViewDescription::Role::kTabList);
    EXPECT_EQ(tabs.value, "Second");
    ASSERT_EQ(tabs.parts.size(), 3u);
    EXPECT_EQ(tabs.parts[1].role, BViewDescription::Role::kTab);
    EXPECT_EQ(tabs.parts[0].states, 0u);
    EXPECT_EQ(tabs.parts[1].states, uint32{BViewDescription::kSelected});
    EXPECT_EQ(tabs.parts[2].states, uint32{BViewDescription::kDisabled});
    EXPECT_EQ(tabs.parts[0].name, "First");
}

TEST_F(TabViewTest, ShowsTheFocusOnTheSelectedTab)
{
    ShowFocused();
    const auto blueOn = [this](int32 index) {
        const BRect tab = Locked([=, this] { return fTabs->TabFrame(index); });
        const Picture picture = TakePicture(fWindow);
        const auto s = static_cast<int32>(picture.scale);
        return picture.Count({0, 0, 229, 255}, (static_cast<int32>(tab.left) + 12) * s, 10 * s,
                             (static_cast<int32>(tab.right) + 8) * s, 34 * s);
    };
    EXPECT_GT(blueOn(0), 60);
    EXPECT_EQ(blueOn(1), 0);

    After(B_RIGHT_ARROW);

    EXPECT_EQ(blueOn(0), 0);
    EXPECT_GT(blueOn(1), 60);
}

TEST_F(TabViewTest, SelectedTabAndPageAreOnePiece)
{
    Show();
    const Picture picture = TakePicture(fWindow);
    const auto s = static_cast<int32>(picture.scale);
    const auto y = static_cast<int32>(10 + fTabs->TabHeight());
    const auto colorBelow = [&](int32 index) {
        const BRect tab = Locked([=, this] { return fTabs->TabFrame(index); });
        return picture.At(static_cast<int32>(10 + tab.left + 30) * s, y * s);
    };

    EXPECT_EQ(colorBelow(0), (rgb_color{216, 216, 216, 255}));
    EXPECT_EQ(colorBelow(1), (rgb_color{96, 96, 96, 255}));
}

} // namespace
