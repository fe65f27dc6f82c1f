#include "ControlWindow.h"

#include <MenuBar.h>

#include <memory>
#include <string>

// Menus by calls: their items, how wide they are, what letters do.

namespace {

using namespace kits::testing;

std::string Labels(const BMenu& menu)
{
    std::string labels;
    for (int32 i = 0; i < menu.CountItems(); i++) {
        labels += menu.ItemAt(i)->Label();
    }
    return labels;
}

class MenuListTest : public ::testing::Test
{
protected:
    MenuListTest()
    {
        for (const char* label : {"a", "b", "c", "d"}) {
            fMenu.AddItem(new BMenuItem(label, nullptr));
        }
    }

    BMenu fMenu{"menu"};
};

TEST_F(MenuListTest, AddsAListInItsOrder)
{
    BList items;
    items.AddItem(new BMenuItem("x", nullptr));
    items.AddItem(new BMenuItem("y", nullptr));

    EXPECT_FALSE(fMenu.AddList(&items, 5));
    EXPECT_FALSE(fMenu.AddList(nullptr, 0));
    EXPECT_TRUE(fMenu.AddList(&items, 1));

    EXPECT_EQ(Labels(fMenu), "axybcd");
    EXPECT_FALSE(fMenu.AddList(&items, 0)) << "they are in a menu";
    EXPECT_EQ(Labels(fMenu), "axybcd");
}

TEST_F(MenuListTest, RemovesAnItemByItself)
{
    const std::unique_ptr<BMenuItem> item(fMenu.ItemAt(1));

    EXPECT_TRUE(fMenu.RemoveItem(item.get()));
    EXPECT_FALSE(fMenu.RemoveItem(item.get()));

    EXPECT_EQ(Labels(fMenu), "acd");
    EXPECT_EQ(item->Menu(), nullptr);
}

TEST_F(MenuListTest, RemovesARunOfItems)
{
    const std::unique_ptr<BMenuItem> kept(fMenu.ItemAt(3));

    EXPECT_TRUE(fMenu.RemoveItems(0, 2, true));
    EXPECT_EQ(Labels(fMenu), "cd");
    EXPECT_TRUE(fMenu.RemoveItems(1, 9));
    EXPECT_EQ(Labels(fMenu), "c");
    EXPECT_EQ(kept->Menu(), nullptr);

    EXPECT_FALSE(fMenu.RemoveItems(1, 1));
    EXPECT_FALSE(fMenu.RemoveItems(-1, 2));
    EXPECT_FALSE(fMenu.RemoveItems(0, 0));
    EXPECT_EQ(Labels(fMenu), "c");
}

TEST_F(MenuListTest, ShowsTheMarkedLabelAsItsOwn)
{
    BMenu above("above");
    auto* menu = new BMenu("Choose");
    menu->AddItem(new BMenuItem("One", nullptr));
    menu->AddItem(new BMenuItem("Two", nullptr));
    above.AddItem(menu);

    menu->SetLabelFromMarked(true);
    EXPECT_TRUE(menu->IsLabelFromMarked());
    EXPECT_TRUE(menu->IsRadioMode());
    menu->ItemAt(1)->SetMarked(true);

    EXPECT_STREQ(above.ItemAt(0)->Label(), "Two");
}

TEST_F(MenuListTest, ItsItemsTakeATargetAndShortcuts)
{
    EXPECT_EQ(fMenu.SetTargetForItems(be_app_messenger), B_OK);
    EXPECT_EQ(fMenu.ItemAt(3)->Messenger(), be_app_messenger);
    EXPECT_EQ(fMenu.SetTargetForItems(static_cast<BHandler*>(nullptr)), B_BAD_VALUE);
    EXPECT_FALSE(fMenu.ItemAt(0)->Messenger().IsValid());

    fMenu.ItemAt(0)->SetShortcut('X', B_SHIFT_KEY);
    uint32 modifiers = 0;
    EXPECT_EQ(fMenu.ItemAt(0)->Shortcut(&modifiers), 'X');
    EXPECT_EQ(modifiers, uint32(B_SHIFT_KEY));
}

class MeasuredMenu : public BMenu
{
public:
    using BMenu::BMenu;
    using BMenu::GetItemMargins;
    using BMenu::SetItemMargins;

    BPoint Size()
    {
        BPoint size;
        GetPreferredSize(&size.x, &size.y);
        return size;
    }
};

TEST(MenuSizeTest, GrowsWithItsMarginsAndNotBeyondItsWidestContent)
{
    MeasuredMenu menu("menu");
    menu.AddItem(new BMenuItem("A rather long label for a menu", nullptr));
    const BPoint size = menu.Size();
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;
    menu.GetItemMargins(&left, &top, &right, &bottom);

    menu.SetItemMargins(left + 10, top + 3, right + 20, bottom + 4);
    EXPECT_EQ(menu.Size(), size + BPoint(30, 7));

    menu.SetMaxContentWidth(40);
    EXPECT_EQ(menu.MaxContentWidth(), 40);
    EXPECT_LT(menu.Size().x, size.x);
}

TEST(MenuSizeTest, MakesRoomForTheNamesOfKeysAsForShortcuts)
{
    MeasuredMenu bare("menu");
    bare.AddItem(new BMenuItem("Label", nullptr));
    MeasuredMenu withShortcut("menu");
    withShortcut.AddItem(new BMenuItem("Label", nullptr, 'P', B_SHIFT_KEY));
    MeasuredMenu withKey("menu");
    withKey.AddItem(new BMenuItem("Label", nullptr));
    withKey.ItemAt(0)->SetKeyText("Ctrl+Shift+P");

    EXPECT_GT(withKey.Size().x, bare.Size().x);
    EXPECT_EQ(withKey.Size(), withShortcut.Size());
    EXPECT_EQ(withKey.ItemAt(0)->Shortcut(), 0); // it works nothing

    withKey.ItemAt(0)->SetKeyText(nullptr);
    EXPECT_EQ(withKey.Size(), bare.Size());
}

class MenuLetterTest : public ControlTest
{
protected:
    MenuLetterTest()
    {
        fBar = new BMenuBar(BRect(0, 0, 0, 0), "bar");
        fMenu = new BMenu("Menu");
        fMenu->AddItem(new BMenuItem("Alpha", new BMessage('tesa')));
        fMenu->AddItem(new BMenuItem("Beta", new BMessage('tesb')));
        fMenu->ItemAt(1)->SetTrigger('x');
        fBar->AddItem(fMenu);
        Add(fBar);
        Show();
    }

    void OpenAndType(char letter)
    {
        TypeFunctionKey(B_F10_KEY);
        TypeKey(B_DOWN_ARROW);
        ASSERT_TRUE(
            WaitFor([this] { return Locked([this] { return fMenu->Window() != nullptr; }); }));
        TypeKey(letter);
    }

    BMenuBar* fBar;
    BMenu* fMenu;
};

TEST_F(MenuLetterTest, TriggerChoosesItsItem)
{
    OpenAndType('x');

    ASSERT_TRUE(fWindow->AwaitMessages(1));
    EXPECT_EQ(fWindow->Messages()[0].what, uint32('tesb'));
}

TEST_F(MenuLetterTest, TriggersCanBeSwitchedOff)
{
    Locked([this] {
        fMenu->SetTriggersEnabled(false);
        return 0;
    });

    OpenAndType('x');

    EXPECT_TRUE(fWindow->Messages().empty());
    TypeKey(B_ESCAPE);
    TypeKey(B_ESCAPE);
}

TEST_F(MenuLetterTest, BarShowsItsBorderAsItIsSet)
{
    const Picture framed = TakePicture(fWindow);

    Locked([this] {
        fBar->SetBorder(B_BORDER_CONTENTS);
        return 0;
    });

    const Picture plain = TakePicture(fWindow);
    EXPECT_EQ(fBar->Border(), B_BORDER_CONTENTS);
    EXPECT_NE(framed.At(350, 0), framed.At(350, 5));
    EXPECT_EQ(plain.At(350, 0), plain.At(350, 5));
}

} // namespace
