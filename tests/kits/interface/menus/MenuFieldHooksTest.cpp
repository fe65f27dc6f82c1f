#include "MenuFixture.h"

#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>

namespace {

// What the window does when its menus begin, or the field's target when it is told.
class MenuFieldHooksTest : public MenuFixture
{
protected:
    MenuFieldHooksTest()
    {
        auto* menu = new BPopUpMenu("Colour");
        menu->AddItem(new BMenuItem("Red", new BMessage('tesr')));
        fField = new BMenuField(BRect(20, 60, 260, 80), "field", "A colour:", menu);
        fWindow->Lock();
        fWindow->AddChild(fField);
        fField->MakeFocus();
        fWindow->Unlock();
    }
    void Open()
    {
        kits::testing::TypeKey(B_SPACE);
        kits::testing::Sync(fWindow);
        kits::testing::SyncServer();
    }

    BMenuField* fField;
};

TEST_F(MenuFieldHooksTest, WindowIsToldOfBeginningAndEnd)
{
    Open();
    EXPECT_EQ(Notes(), "b");

    kits::testing::TypeKey(B_ENTER);

    EXPECT_EQ(Chosen(), "r");
    EXPECT_EQ(Notes(), "be");
}

TEST_F(MenuFieldHooksTest, FieldMayGoAtTheBeginning)
{
    Do([this] {
        fWindow->atBeginning = [this] {
            delete fField;
        };
    });

    Open();

    EXPECT_EQ(Notes(), "be");
    EXPECT_EQ(Locked([this] { return fWindow->FindView("field"); }), nullptr);
}

TEST_F(MenuFieldHooksTest, FieldThatIsDisabledAtTheBeginningStaysClosed)
{
    Do([this] {
        fWindow->atBeginning = [this] {
            fField->SetEnabled(false);
        };
    });

    Open();

    EXPECT_FALSE(IsOpen(fField->Menu()));
    EXPECT_EQ(Notes(), "be");
}

} // namespace
