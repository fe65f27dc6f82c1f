#include "ControlWindow.h"

#include <MenuBar.h>
#include <StringView.h>

#include <functional>
#include <memory>
#include <utility>

namespace {

using namespace kits::testing;

class MenuTest : public ControlTest
{
protected:
    MenuTest()
    {
        fBar = new BMenuBar(BRect(0, 0, 0, 0), "MenuBar");
        auto* file = new BMenu("File");
        file->AddItem(new BMenuItem("Open", new BMessage('tesa'), 'O'));
        file->AddItem(new BMenuItem("Rename", new BMessage('tesb'), 'E', B_SHIFT_KEY));
        file->AddSeparatorItem();
        file->AddItem(new BMenuItem("Quit", new BMessage('tesc'), 'Q'));
        fBar->AddItem(file);
        auto* view = new BMenu("View");
        view->AddItem(new BMenuItem("Up", new BMessage('tesd'), B_UP_ARROW));
        auto* more = new BMenu("More");
        more->AddItem(new BMenuItem("Deep", new BMessage('tese')));
        view->AddItem(more);
        fBar->AddItem(view);
        fBelow = new BView(BRect(0, 30, 399, 299), "below", B_FOLLOW_ALL, B_WILL_DRAW);
        Add(fBelow);
        Add(fBar);
        Show();
    }

    /// The codes of the messages that came, as a word of their last letters.
    std::string Chosen()
    {
        std::string codes;
        for (const BMessage& message : fWindow->Messages()) {
            codes += static_cast<char>(message.what & 0xff);
        }
        return codes;
    }

    /// A point of the screen in the middle of an item; the item's menu must be laid out.
    BPoint On(BMenuItem* item)
    {
        return Locked([item] {
            const BRect frame = item->Frame();
            const BPoint middle((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2);
            return item->Menu()->ConvertToScreen(middle);
        });
    }

    bool IsOpen(BMenu* menu)
    {
        return Locked([menu] { return menu->Window() != nullptr; });
    }

    BMenuItem* Title(int32 index) { return fBar->ItemAt(index); }
    BMenuItem* Item(int32 title, int32 index) { return fBar->SubmenuAt(title)->ItemAt(index); }

    BMenuBar* fBar;
    BView* fBelow;
};

TEST_F(MenuTest, BarTakesTheWidthOfItsWindowAndTheHeightOfItsItems)
{
    const BRect frame = Locked([this] { return fBar->Frame(); });

    EXPECT_EQ(frame.left, 0);
    EXPECT_EQ(frame.Width(), 399);
    EXPECT_GE(frame.Height(), 18);
    EXPECT_EQ(Locked([this] { return fWindow->KeyMenuBar(); }), fBar);
}

TEST_F(MenuTest, ClickOnATitleAndOnAnItemChooses)
{
    ClickAt(On(Title(0)));
    ASSERT_TRUE(IsOpen(fBar->SubmenuAt(0)));

    ClickAt(On(Item(0, 1)));

    EXPECT_EQ(Chosen(), "b");
    EXPECT_FALSE(IsOpen(fBar->SubmenuAt(0)));
}

TEST_F(MenuTest, MessageTellsItemAndIndex)
{
    ClickAt(On(Title(0)));
    ClickAt(On(Item(0, 3)));

    ASSERT_EQ(Chosen(), "c");
    int32 index = -1;
    void* source = nullptr;
    fWindow->Messages()[0].FindInt32("index", &index);
    fWindow->Messages()[0].FindPointer("source", &source);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(source, static_cast<BMenuItem*>(Item(0, 3)));
}

TEST_F(MenuTest, PressDragReleaseChooses)
{
    PressMouseAt(On(Title(0)));
    MoveMouseAt(On(Item(0, 0)));
    ReleaseMouseAt(On(Item(0, 0)));

    EXPECT_EQ(Chosen(), "a");
}

TEST_F(MenuTest, KeysOpenWalkAndChoose)
{
    TypeFunctionKey(B_F10_KEY);
    ASSERT_TRUE(IsOpen(fBar->SubmenuAt(0)));

    TypeKey(B_DOWN_ARROW);
    TypeKey(B_ENTER);

    EXPECT_EQ(Chosen(), "b");
}

TEST_F(MenuTest, KeysReachASubmenu)
{
    // The headless platform gives each pop-up the focus for a moment; a screen does not. So each
    // key waits until that is over.
    const auto type = [this](char byte) {
        SyncServer();
        TypeKey(byte);
        Sync(fWindow);
    };
    TypeFunctionKey(B_F10_KEY);
    Sync(fWindow);
    type(B_RIGHT_ARROW);
    ASSERT_TRUE(IsOpen(fBar->SubmenuAt(1)));
    EXPECT_FALSE(IsOpen(fBar->SubmenuAt(0)));

    type(B_UP_ARROW);
    type(B_RIGHT_ARROW);
    type(B_ENTER);

    EXPECT_EQ(Chosen(), "e");
}

TEST_F(MenuTest, EscapeLeavesWithoutChoosing)
{
    TypeFunctionKey(B_F10_KEY);
    TypeKey(B_ESCAPE);

    EXPECT_FALSE(IsOpen(fBar->SubmenuAt(0)));
    EXPECT_EQ(Chosen(), "");
}

TEST_F(MenuTest, LettersSelect)
{
    TypeFunctionKey(B_F10_KEY);
    TypeKey('q');
    TypeKey(B_ENTER);

    EXPECT_EQ(Chosen(), "c");
}

TEST_F(MenuTest, PressOutsideClosesAndIsSwallowed)
{
    class Presses : public BView
    {
    public:
        Presses() : BView(BRect(200, 100, 300, 200), "presses", 0, B_WILL_DRAW) {}
        void MouseDown(BPoint) override { count++; }
        int32 count = 0;
    };
    auto* presses = new Presses;
    Add(presses);
    ClickAt(On(Title(0)));
    const BPoint outside = Locked([=] { return presses->ConvertToScreen(BPoint(50, 50)); });

    ClickAt(outside);
    EXPECT_FALSE(IsOpen(fBar->SubmenuAt(0)));
    EXPECT_EQ(Locked([=] { return presses->count; }), 0);

    ClickAt(outside);
    EXPECT_EQ(Locked([=] { return presses->count; }), 1);
}

TEST_F(MenuTest, ShortcutsWorkWithoutOpening)
{
    TypeKey('o', B_COMMAND_KEY);
    TypeKey('e', B_COMMAND_KEY | B_SHIFT_KEY);
    TypeKey(B_UP_ARROW, B_COMMAND_KEY);

    EXPECT_EQ(Chosen(), "abd");
}

TEST_F(MenuTest, ShortcutOfADisabledItemDoesNothing)
{
    Locked([this] {
        Item(0, 0)->SetEnabled(false);
        return 0;
    });

    TypeKey('o', B_COMMAND_KEY);
    TypeKey('q', B_COMMAND_KEY);

    EXPECT_EQ(Chosen(), "c");
}

TEST_F(MenuTest, HeldShortcutWorksOnce)
{
    HoldKey('o', 5, B_COMMAND_KEY);

    EXPECT_EQ(Chosen(), "a");
}

TEST_F(MenuTest, DisabledItemCannotBeChosen)
{
    Locked([this] {
        Item(0, 0)->SetEnabled(false);
        return 0;
    });
    ClickAt(On(Title(0)));

    ClickAt(On(Item(0, 0)));
    EXPECT_TRUE(IsOpen(fBar->SubmenuAt(0)));

    ClickAt(On(Item(0, 1)));
    EXPECT_EQ(Chosen(), "b");
}

TEST_F(MenuTest, AltAloneOpensAndCloses)
{
    PressModifier(B_OPTION_KEY);
    ReleaseModifier(B_OPTION_KEY);
    EXPECT_TRUE(IsOpen(fBar->SubmenuAt(0)));
    SyncServer();

    PressModifier(B_OPTION_KEY);
    ReleaseModifier(B_OPTION_KEY);
    EXPECT_FALSE(IsOpen(fBar->SubmenuAt(0)));
}

TEST_F(MenuTest, AltWithSomethingBetweenOpensNothing)
{
    const std::pair<const char*, std::function<void()>> between[] = {
        {"a click",
         [this] {
             Click(fBelow);
         }},
        {"the wheel",
         [this] {
             TurnWheel(fBelow, BPoint(10, 10), 1, 0, B_OPTION_KEY);
         }},
        {"a letter",
         [] {
             TypeKey('x', B_OPTION_KEY);
         }},
        {"a key without a character",
         [] {
             TypeFunctionKey(B_F3_KEY, B_OPTION_KEY);
         }},
        {"the focus",
         [this] {
             auto* other = new ControlWindow("other");
             other->Show();
             WaitForFocus(other);
             other->Lock();
             other->Quit();
             WaitForFocus(fWindow);
         }},
    };
    for (const auto& [what, happens] : between) {
        PressModifier(B_OPTION_KEY);
        happens();
        ReleaseModifier(B_OPTION_KEY);

        EXPECT_FALSE(IsOpen(fBar->SubmenuAt(0))) << what;
        TypeKey(B_ESCAPE);
    }
}

TEST_F(MenuTest, OtherWindowsActivationCloses)
{
    ClickAt(On(Title(0)));
    Sync(fWindow);
    SyncServer(); // the pop-up has had the focus
    auto* other = new ControlWindow("other");
    other->Show();
    ASSERT_TRUE(WaitForFocus(other));

    EXPECT_TRUE(WaitFor([this] { return !IsOpen(fBar->SubmenuAt(0)); }));
    other->Lock();
    other->Quit();
}

TEST_F(MenuTest, QuittingWithAnOpenMenuIsClean)
{
    ClickAt(On(Title(0)));
    ASSERT_TRUE(IsOpen(fBar->SubmenuAt(0)));

    fWindow->PostMessage(B_QUIT_REQUESTED);

    EXPECT_TRUE(WaitForNoWindow("controls"));
    fWindow = new ControlWindow; // for the fixture to quit
}

// Items without a window.

TEST(MenuItemsTest, RadioModeMarksOne)
{
    BMenu menu("radio");
    menu.SetRadioMode(true);
    menu.AddItem(new BMenuItem("One", nullptr));
    menu.AddItem(new BMenuItem("Two", nullptr));

    menu.ItemAt(0)->SetMarked(true);
    menu.ItemAt(1)->SetMarked(true);

    EXPECT_FALSE(menu.ItemAt(0)->IsMarked());
    EXPECT_EQ(menu.FindMarked(), menu.ItemAt(1));
}

TEST(MenuItemsTest, FindsItemsInSubmenus)
{
    BMenu menu("menu");
    auto* below = new BMenu("below");
    below->AddItem(new BMenuItem("Deep", new BMessage('deep')));
    menu.AddItem(below);

    EXPECT_EQ(menu.FindItem('deep'), below->ItemAt(0));
    EXPECT_EQ(menu.FindItem("Deep"), below->ItemAt(0));
    EXPECT_EQ(menu.FindItem("nothing"), nullptr);
    EXPECT_EQ(menu.SubmenuAt(0), below);
    EXPECT_EQ(below->Superitem(), menu.ItemAt(0));
    EXPECT_EQ(below->Supermenu(), &menu);
}

TEST(MenuItemsTest, RemovedItemIsTheCallers)
{
    BMenu menu("menu");
    menu.AddItem(new BMenuItem("One", nullptr));
    menu.AddItem(new BMenuItem("Two", nullptr));

    const std::unique_ptr<BMenuItem> removed(menu.RemoveItem(int32(0)));

    EXPECT_STREQ(removed->Label(), "One");
    EXPECT_EQ(removed->Menu(), nullptr);
    EXPECT_EQ(menu.CountItems(), 1);
    EXPECT_EQ(menu.RemoveItem(int32(5)), nullptr);
}

TEST(MenuItemsTest, RemovedSubmenuIsTheCallers)
{
    BMenu menu("menu");
    auto* below = new BMenu("below");
    menu.AddItem(below);

    EXPECT_TRUE(menu.RemoveItem(below));

    EXPECT_EQ(below->Superitem(), nullptr);
    EXPECT_EQ(menu.CountItems(), 0);
    delete below;
}

TEST(MenuItemsTest, DisabledMenuDisablesItsItems)
{
    BMenu menu("menu");
    menu.AddItem(new BMenuItem("One", nullptr));

    menu.SetEnabled(false);

    EXPECT_FALSE(menu.ItemAt(0)->IsEnabled());
}

} // namespace
