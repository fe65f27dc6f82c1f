#include "MenuFixture.h"

#include <CheckBox.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>
#include <ViewDescription.h>

namespace {

using namespace kits::testing;

// A field over a menu of "Red" (no message), "Green", "Grey" and "Blue"; "Green" is marked.
class MenuFieldTest : public ControlTest
{
protected:
    MenuFieldTest()
    {
        fMenu = new BPopUpMenu("Colour");
        for (const auto& [label, what] :
             {std::pair("Red", 0), std::pair("Green", int('tesg')), std::pair("Grey", int('tesy')),
              std::pair("Blue", int('tesb'))}) {
            fMenu->AddItem(new BMenuItem(label, what != 0 ? new BMessage(static_cast<uint32>(what))
                                                          : nullptr));
        }
        fMenu->ItemAt(1)->SetMarked(true);
        fField = Add(new BMenuField(BRect(20, 60, 260, 80), "field", "A colour:", fMenu));
        fField->SetDivider(100);
    }

    void ShowFocused()
    {
        Show();
        Focus(fField);
    }
    bool IsOpen()
    {
        SyncServer();
        return Locked([this] { return fMenu->Window() != nullptr; });
    }
    void Type(char byte, uint32 modifiers = 0)
    {
        SyncServer();
        TypeKey(byte, modifiers);
        Sync(fWindow);
    }
    std::string Shown()
    {
        return Locked([this] { return std::string(fField->MenuItem()->Label()); });
    }
    std::string Chosen()
    {
        std::string codes;
        for (const BMessage& message : fWindow->Messages()) {
            codes += static_cast<char>(message.what & 0xff);
        }
        return codes;
    }
    BRect OnScreen(BMenuItem* item)
    {
        return Locked([item] { return item->Menu()->ConvertToScreen(item->Frame()); });
    }
    BPoint MiddleOf(BMenuItem* item)
    {
        const BRect frame = OnScreen(item);
        return BPoint(frame.left + 10, (frame.top + frame.bottom) / 2);
    }

    BPopUpMenu* fMenu; // the field's
    BMenuField* fField = nullptr;
};

TEST_F(MenuFieldTest, ShowsWhatIsMarked)
{
    Show();
    EXPECT_EQ(Shown(), "Green");

    Locked([this] {
        fMenu->ItemAt(3)->SetMarked(true);
        return true;
    });
    EXPECT_EQ(Shown(), "Blue");
    EXPECT_FALSE(Locked([this] { return fMenu->ItemAt(1)->IsMarked(); }));

    Locked([this] {
        fMenu->ItemAt(3)->SetLabel("Indigo");
        return true;
    });
    EXPECT_EQ(Shown(), "Indigo");
}

TEST_F(MenuFieldTest, ShowsTheMenusNameWhileNothingIsMarked)
{
    auto* menu = new BPopUpMenu("Nothing yet");
    menu->AddItem(new BMenuItem("One", nullptr));
    auto* field = Add(new BMenuField(BRect(20, 100, 260, 120), "other", nullptr, menu));
    Show();

    EXPECT_EQ(Locked([=] { return std::string(field->MenuItem()->Label()); }), "Nothing yet");
    EXPECT_EQ(field->Divider(), 0);
    EXPECT_EQ(field->Menu(), menu);
}

TEST_F(MenuFieldTest, OpensWithTheMarkedItemOverTheField)
{
    Show();
    const BRect field = Locked([this] { return fField->ConvertToScreen(fField->Bounds()); });

    Click(fField, BPoint(120, 10));
    ASSERT_TRUE(IsOpen());

    const BRect marked = OnScreen(fMenu->ItemAt(1));
    EXPECT_LE(std::abs((marked.top + marked.bottom) - (field.top + field.bottom)), 2);
    EXPECT_GT(marked.right, field.left + 110); // over the field, not over its label
    EXPECT_GE(marked.left, field.left + 85);
}

TEST_F(MenuFieldTest, StaysOnTheScreen)
{
    Show();
    for (int32 i = 0; i < 12; i++) {
        Locked([=, this] {
            fMenu->AddItem(new BMenuItem("More", nullptr), 0);
            return true;
        });
    }
    PlaceWindow(fWindow, BRect(0, 0, 399, 299));
    Sync(fWindow);

    Click(fField, BPoint(120, 10));

    ASSERT_TRUE(IsOpen());
    EXPECT_GE(OnScreen(fMenu->ItemAt(0)).top, 0);
}

TEST_F(MenuFieldTest, ClickOpensAndClickChooses)
{
    Show();

    Click(fField, BPoint(120, 10));
    ASSERT_TRUE(IsOpen());
    EXPECT_EQ(Chosen(), "");
    ClickAt(MiddleOf(fMenu->ItemAt(3)));

    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Shown(), "Blue");
    EXPECT_EQ(Chosen(), "b");
}

TEST_F(MenuFieldTest, DragChooses)
{
    Show();

    PressMouse(fField, BPoint(120, 10));
    ASSERT_TRUE(IsOpen());
    const BPoint blue = MiddleOf(fMenu->ItemAt(3));
    MoveMouseAt(blue);
    ReleaseMouseAt(blue);

    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Chosen(), "b");
}

TEST_F(MenuFieldTest, LabelAndSecondaryButtonDoNotOpen)
{
    Show();

    Click(fField, BPoint(10, 10));
    EXPECT_FALSE(IsOpen());
    Click(fField, BPoint(120, 10), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_FALSE(IsOpen());
}

TEST_F(MenuFieldTest, KeysOpenWithTheMarkedItemCurrent)
{
    ShowFocused();
    for (const char key : {B_SPACE, B_DOWN_ARROW, B_UP_ARROW, B_ENTER}) {
        Type(key);
        ASSERT_TRUE(IsOpen()) << int(key);
        Type(B_ESCAPE);
        ASSERT_FALSE(IsOpen()) << int(key);
    }
    EXPECT_EQ(Shown(), "Green");
    EXPECT_EQ(Chosen(), "");

    Type(B_SPACE);
    Type(B_DOWN_ARROW);
    Type(B_ENTER);

    EXPECT_EQ(Shown(), "Grey");
    EXPECT_EQ(Chosen(), "y");
    EXPECT_TRUE(Locked([this] { return fField->IsFocus(); }));
}

TEST_F(MenuFieldTest, ItemWithoutMessageIsMarkedAndTellsNobody)
{
    ShowFocused();

    Type(B_SPACE);
    Type(B_UP_ARROW);
    Type(B_SPACE);

    EXPECT_EQ(Shown(), "Red");
    EXPECT_EQ(Chosen(), "");
}

TEST_F(MenuFieldTest, LettersChooseWithoutOpening)
{
    ShowFocused();

    Type('g');
    EXPECT_EQ(Shown(), "Grey");
    Type('G', B_SHIFT_KEY);
    EXPECT_EQ(Shown(), "Green");
    Type('x');
    Type('b', B_COMMAND_KEY);

    EXPECT_EQ(Shown(), "Green");
    EXPECT_EQ(Chosen(), "yg");
    EXPECT_FALSE(IsOpen());
}

TEST_F(MenuFieldTest, DisabledItemsAreSkippedByLetters)
{
    ShowFocused();
    Locked([this] {
        fMenu->ItemAt(2)->SetEnabled(false);
        return true;
    });

    Type('g');

    EXPECT_EQ(Shown(), "Green");
    EXPECT_EQ(Chosen(), "");
}

TEST_F(MenuFieldTest, DisabledFieldTakesNothingAndLeavesTheTabOrder)
{
    auto* box = Add(new BCheckBox(BRect(20, 100, 160, 120), "box", "Box", nullptr));
    ShowFocused();
    Locked([this] {
        fField->SetEnabled(false);
        return true;
    });
    EXPECT_FALSE(Locked([this] { return fField->IsFocus(); }));

    Click(fField, BPoint(120, 10));
    EXPECT_FALSE(IsOpen());
    Type(B_TAB);
    EXPECT_TRUE(Locked([=] { return box->IsFocus(); }));
    Type(B_TAB);
    EXPECT_TRUE(Locked([=] { return box->IsFocus(); }));

    Locked([this] {
        fMenu->SetEnabled(true); // the same by the menu
        return true;
    });
    EXPECT_TRUE(fField->IsEnabled());
    Type(B_TAB);
    EXPECT_TRUE(Locked([this] { return fField->IsFocus(); }));
}

TEST_F(MenuFieldTest, FieldThatGoesTakesItsOpenMenuAlong)
{
    ShowFocused();
    Type(B_SPACE);
    ASSERT_TRUE(IsOpen());

    Locked([this] {
        fField->RemoveSelf();
        return true;
    });

    EXPECT_EQ(fMenu->Window(), nullptr);
    delete fField;
}

TEST_F(MenuFieldTest, FieldWithoutItemsStaysClosed)
{
    ShowFocused();
    Locked([this] { return fMenu->RemoveItems(0, 4, true); });

    Type(B_SPACE);
    Click(fField, BPoint(120, 10));

    EXPECT_FALSE(IsOpen());
}

TEST_F(MenuFieldTest, LabelWiderThanTheDividerMovesTheFieldOn)
{
    Show();
    Locked([this] {
        fField->SetLabel("A rather long label");
        fField->SetDivider(10);
        return true;
    });

    const float label = Locked([this] { return fField->StringWidth(fField->Label()); });
    Click(fField, BPoint(label - 2, 10));
    EXPECT_FALSE(IsOpen());
    Click(fField, BPoint(label + 12, 10));
    EXPECT_TRUE(IsOpen());
}

TEST_F(MenuFieldTest, PreferredSizeHoldsLabelAndWidestItem)
{
    Show();
    Locked([this] {
        fMenu->AddItem(new BMenuItem("A far wider item than any of the others", nullptr));
        fField->ResizeToPreferred();
        return true;
    });

    const float item = Locked([this] { return fField->StringWidth(fMenu->ItemAt(4)->Label()); });
    EXPECT_GT(Locked([this] { return fField->Bounds().Width(); }), 100 + item);
}

TEST_F(MenuFieldTest, DescribesItself)
{
    Show();

    BViewDescription description;
    Locked([&] {
        fField->Describe(&description);
        return true;
    });

    EXPECT_EQ(description.role, BViewDescription::Role::kMenuField);
    EXPECT_EQ(description.name, "A colour:");
    EXPECT_EQ(description.value, "Green");
    EXPECT_EQ(description.states & BViewDescription::kDisabled, 0u);
}

TEST_F(MenuFieldTest, LowFrameGrowsAroundItsMiddle)
{
    auto* low = Add(new BMenuField(BRect(20, 120, 260, 125), "low", "Low", new BPopUpMenu("Low")));
    Show();

    const BRect frame = Locked([=] { return low->Frame(); });
    EXPECT_GE(frame.Height(), 19);
    EXPECT_LE(std::abs(frame.top + frame.bottom - 245), 1);
}

class MenuFieldFocusTest : public MenuFieldTest
{
protected:
    int32 CountBlue()
    {
        const Picture picture = TakePicture(fWindow);
        const auto s = static_cast<int32>(picture.scale);
        return picture.Count({0, 0, 229, 255}, 100 * s, 50 * s, 300 * s, 90 * s);
    }
};

TEST_F(MenuFieldFocusTest, IsShown)
{
    Add(new BCheckBox(BRect(20, 100, 160, 120), "box", "Box", nullptr))->MakeFocus();
    Show();
    EXPECT_EQ(CountBlue(), 0);

    Focus(fField);

    EXPECT_GT(CountBlue(), 200);
}

TEST_F(MenuFieldFocusTest, IsNotShownWhileAnotherWindowHasTheKeyboard)
{
    ShowFocused();
    ASSERT_GT(CountBlue(), 200);

    auto* other = new ControlWindow("other");
    other->Show();
    ASSERT_TRUE(WaitForFocus(other));
    EXPECT_TRUE(WaitFor([this] { return CountBlue() == 0; }));

    other->Lock();
    other->Quit();
    EXPECT_TRUE(WaitFor([this] { return CountBlue() > 200; }));
}

// What holds of the menu itself.

TEST(PopUpMenuTest, IsInBothModesUnlessToldOtherwise)
{
    const BPopUpMenu usual("menu");
    EXPECT_TRUE(usual.IsRadioMode());
    EXPECT_TRUE(usual.IsLabelFromMarked());
    EXPECT_EQ(usual.Layout(), B_ITEMS_IN_COLUMN);

    const BPopUpMenu plain("menu", false, false);
    EXPECT_FALSE(plain.IsRadioMode());
    EXPECT_FALSE(plain.IsLabelFromMarked());

    const BPopUpMenu marked("menu", false, true);
    EXPECT_TRUE(marked.IsRadioMode());
}

} // namespace
