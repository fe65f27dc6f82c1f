#include "ControlWindow.h"

#include <CheckBox.h>
#include <ViewDescription.h>

namespace {

using namespace kits::testing;

class CheckBoxTest : public ControlTest
{
protected:
    BCheckBox* AddBox(const char* label = "Passive", float top = 20)
    {
        return Add(
            new BCheckBox(BRect(20, top, 160, top + 20), label, label, new BMessage('test')));
    }
    int32 ValueOf(const BCheckBox* box)
    {
        return Locked([=] { return box->Value(); });
    }
    size_t CountMessages() { return fWindow->Messages().size(); }
};

TEST_F(CheckBoxTest, ClickMarksAndUnmarks)
{
    BCheckBox* box = AddBox();
    Show();
    EXPECT_EQ(ValueOf(box), B_CONTROL_OFF);

    Click(box, BPoint(6, 10));
    EXPECT_EQ(ValueOf(box), B_CONTROL_ON);

    Click(box, BPoint(40, 10)); // on its label
    EXPECT_EQ(ValueOf(box), B_CONTROL_OFF);
}

TEST_F(CheckBoxTest, MessageTellsTheNewValue)
{
    BCheckBox* box = AddBox();
    Show();

    Click(box);
    Click(box);

    const std::vector<BMessage> messages = fWindow->Messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].GetInt32("be:value", -1), B_CONTROL_ON);
    EXPECT_EQ(messages[1].GetInt32("be:value", -1), B_CONTROL_OFF);
}

TEST_F(CheckBoxTest, ReleaseElsewhereChangesNothing)
{
    BCheckBox* box = AddBox();
    Show();

    PressMouse(box, BPoint(6, 10));
    EXPECT_EQ(ValueOf(box), B_CONTROL_OFF);
    MoveMouse(box, BPoint(6, 200));
    ReleaseMouse(box, BPoint(6, 200));

    EXPECT_EQ(ValueOf(box), B_CONTROL_OFF);
    EXPECT_EQ(CountMessages(), 0u);
}

TEST_F(CheckBoxTest, SecondaryButtonChangesNothing)
{
    BCheckBox* box = AddBox();
    Show();

    Click(box, BPoint(6, 10), B_SECONDARY_MOUSE_BUTTON);

    EXPECT_EQ(ValueOf(box), B_CONTROL_OFF);
}

TEST_F(CheckBoxTest, SpaceWorksItOnceHoweverLongItIsHeld)
{
    BCheckBox* box = AddBox();
    Show();
    Focus(box);

    HoldKey(B_SPACE, 6);

    EXPECT_EQ(ValueOf(box), B_CONTROL_ON);
    EXPECT_EQ(CountMessages(), 1u);
}

TEST_F(CheckBoxTest, DisabledBoxTakesNothing)
{
    BCheckBox* box = AddBox();
    box->SetEnabled(false);
    Show();

    Click(box);
    Focus(box);
    TypeKey(B_SPACE);

    EXPECT_EQ(ValueOf(box), B_CONTROL_OFF);
    EXPECT_EQ(CountMessages(), 0u);
}

TEST_F(CheckBoxTest, ShowsItsMarkInsideTheBox)
{
    BCheckBox* box = AddBox();
    BCheckBox* other = AddBox("Other", 60); // has the focus, so that its mark alone tells
    Show();
    Focus(other);
    const rgb_color black = {0, 0, 0, 255};
    const auto countBlack = [&] {
        const Picture picture = TakePicture(fWindow);
        const int32 s = static_cast<int32>(picture.scale);
        return picture.Count(black, 20 * s, 20 * s, 34 * s, 41 * s);
    };
    EXPECT_EQ(countBlack(), 0);

    Locked([=] {
        box->SetValue(B_CONTROL_ON);
        return 0;
    });

    EXPECT_GT(countBlack(), 6);
}

TEST_F(CheckBoxTest, ShowsTheFocus)
{
    BCheckBox* box = AddBox();
    AddBox("Other", 60);
    Show();
    const rgb_color blue = {0, 0, 229, 255};
    const auto countBlue = [&] {
        const Picture picture = TakePicture(fWindow);
        return picture.Count(blue, 0, 0, picture.width, picture.height);
    };
    EXPECT_EQ(countBlue(), 0);

    Focus(box);

    EXPECT_GT(countBlue(), 40);
}

// Letters that reach below the line: how many pixels of them are seen must not depend on a box that
// begins where another one of 21 units ends, less four.
TEST_F(CheckBoxTest, LettersStayWholeAboveABoxThatOverlaps)
{
    AddBox("gjpqy", 20);
    Show();
    const auto countDark = [this] {
        const Picture picture = TakePicture(fWindow);
        const auto s = static_cast<int32>(picture.scale);
        int32 count = 0;
        for (int32 y = 20 * s; y < 37 * s; y++) {
            for (int32 x = 39 * s; x < 100 * s; x++) {
                count += picture.At(x, y).red < 160 ? 1 : 0;
            }
        }
        return count;
    };
    const auto isBare = [this] {
        const Picture picture = TakePicture(fWindow);
        const auto s = static_cast<int32>(picture.scale);
        return picture.Count({255, 255, 255, 255}, 39 * s, 37 * s, 100 * s, 41 * s) ==
               61 * s * 4 * s;
    };
    const int32 alone = countDark();
    ASSERT_GT(alone, 40);
    EXPECT_TRUE(isBare()); // all of them stand above

    AddBox("", 37);

    EXPECT_EQ(countDark(), alone);
}

TEST_F(CheckBoxTest, PreferredSizeHoldsTheWholeLabel)
{
    BCheckBox* box = AddBox("A label of some length");
    Show();
    const float label = Locked([=] { return box->StringWidth(box->Label()); });

    float width = 0;
    float height = 0;
    Locked([&] {
        box->GetPreferredSize(&width, &height);
        box->ResizeToPreferred();
        return 0;
    });

    EXPECT_GE(width, label + 12);
    EXPECT_EQ(Locked([=] { return box->Bounds().Width(); }), width);
    EXPECT_GE(height, 15);
}

TEST_F(CheckBoxTest, DescribesItself)
{
    BCheckBox* box = AddBox();
    box->SetValue(B_CONTROL_ON);
    Show();

    BViewDescription description;
    Locked([&] {
        box->Describe(&description);
        return 0;
    });

    EXPECT_EQ(description.role, BViewDescription::Role::kCheckBox);
    EXPECT_EQ(description.name, "Passive");
    EXPECT_NE(description.states & BViewDescription::kMarked, 0u);
}

} // namespace
