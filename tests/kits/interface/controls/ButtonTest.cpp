#include "ControlWindow.h"

#include <Button.h>
#include <StringView.h>

namespace {

using namespace kits::testing;

class ButtonTest : public ControlTest
{
protected:
    BButton* AddButton(const char* label = "Push", float left = 20)
    {
        return Add(new BButton(BRect(left, 20, left + 80, 44), label, label, new BMessage('test')));
    }

    size_t CountMessages() { return fWindow->Messages().size(); }
};

TEST_F(ButtonTest, ClickSendsItsMessage)
{
    BButton* button = AddButton();
    Show();

    Click(button);

    ASSERT_EQ(CountMessages(), 1u);
    int64 when = 0;
    EXPECT_EQ(fWindow->Messages()[0].FindInt64("when", &when), B_OK);
    EXPECT_EQ(Locked([=] { return button->Value(); }), B_CONTROL_OFF);
}

TEST_F(ButtonTest, LooksPressedOnlyWhileThePointerIsOverIt)
{
    BButton* button = AddButton();
    Show();
    const auto value = [this, button] {
        return Locked([=] { return button->Value(); });
    };

    PressMouse(button, BPoint(10, 10));
    EXPECT_EQ(value(), B_CONTROL_ON);

    MoveMouse(button, BPoint(10, 200));
    EXPECT_EQ(value(), B_CONTROL_OFF);

    MoveMouse(button, BPoint(12, 12));
    EXPECT_EQ(value(), B_CONTROL_ON);

    MoveMouse(button, BPoint(10, 200));
    ReleaseMouse(button, BPoint(10, 200));
    EXPECT_EQ(CountMessages(), 0u);
}

TEST_F(ButtonTest, SecondaryButtonDoesNotPress)
{
    BButton* button = AddButton();
    Show();

    Click(button, BPoint(10, 10), B_SECONDARY_MOUSE_BUTTON);

    EXPECT_EQ(CountMessages(), 0u);
}

TEST_F(ButtonTest, SpaceAndEnterWorkTheFocusedButton)
{
    BButton* button = AddButton();
    Show();
    Focus(button);

    TypeKey(B_SPACE);
    TypeKey(B_ENTER);

    EXPECT_EQ(CountMessages(), 2u);
}

TEST_F(ButtonTest, HeldKeyPressesOnce)
{
    BButton* button = AddButton();
    Show();
    Focus(button);

    HoldKey(B_SPACE, 10);

    EXPECT_EQ(CountMessages(), 1u);
}

TEST_F(ButtonTest, TabMovesTheFocusPastDisabledButtons)
{
    BButton* first = AddButton("First", 20);
    BButton* second = AddButton("Second", 120);
    BButton* third = AddButton("Third", 220);
    second->SetEnabled(false);
    Show();
    Focus(first);

    TypeKey(B_TAB);
    EXPECT_TRUE(Locked([=] { return third->IsFocus(); }));

    TypeKey(B_TAB, B_SHIFT_KEY);
    EXPECT_TRUE(Locked([=] { return first->IsFocus(); }));
}

TEST_F(ButtonTest, DisabledButtonTakesNothing)
{
    BButton* button = AddButton();
    button->SetEnabled(false);
    Show();

    Click(button);
    Focus(button);
    TypeKey(B_SPACE);

    EXPECT_FALSE(Locked([=] { return button->IsFocus(); }));
    EXPECT_EQ(CountMessages(), 0u);
}

TEST_F(ButtonTest, DisablingTheFocusedButtonGivesTheFocusUp)
{
    BButton* button = AddButton();
    Show();
    Focus(button);

    Locked([=] {
        button->SetEnabled(false);
        return 0;
    });

    EXPECT_FALSE(Locked([=] { return button->IsFocus(); }));
    EXPECT_NE(Locked([=] {
                  button->SetEnabled(true);
                  return button->Flags() & B_NAVIGABLE;
              }),
              0u);
}

TEST_F(ButtonTest, DefaultButtonAnswersEnter)
{
    BButton* button = AddButton();
    Locked([=] {
        button->MakeDefault(true);
        return 0;
    });
    Show();

    TypeKey(B_ENTER);

    EXPECT_EQ(CountMessages(), 1u);
}

TEST_F(ButtonTest, DefaultMarkGrowsAroundTheFace)
{
    BButton* button = AddButton();
    const BRect before = button->Frame();
    Show();

    Locked([=] {
        button->MakeDefault(true);
        return 0;
    });
    EXPECT_EQ(Locked([=] { return button->Frame(); }), before.InsetByCopy(-3, -3));
    EXPECT_EQ(Locked([this] { return fWindow->DefaultButton(); }), button);

    Locked([=] {
        button->MakeDefault(false);
        return 0;
    });
    EXPECT_EQ(Locked([=] { return button->Frame(); }), before);
    EXPECT_EQ(Locked([this] { return fWindow->DefaultButton(); }), nullptr);
}

TEST_F(ButtonTest, OneDefaultButtonAtATime)
{
    BButton* first = AddButton("First", 20);
    BButton* second = AddButton("Second", 140);
    Show();
    Locked([=] {
        first->MakeDefault(true);
        second->MakeDefault(true);
        return 0;
    });

    EXPECT_FALSE(Locked([=] { return first->IsDefault(); }));
    EXPECT_EQ(Locked([this] { return fWindow->DefaultButton(); }), second);
}

TEST_F(ButtonTest, StringViewLowerThanItsFontGrowsAroundItsMiddle)
{
    auto* text = new BStringView(BRect(10, 10, 200, 20), "text", "Overwrite: /etc/passwd");
    Add(text);
    Show();

    const BRect frame = Locked([=] { return text->Frame(); });

    EXPECT_EQ(frame.Height(), 14);
    EXPECT_EQ(frame.top, 8);
}

TEST_F(ButtonTest, StringViewOfTheFontsHeightStays)
{
    auto* text = new BStringView(BRect(10, 1, 48, 15), "text", "From :");
    Add(text);
    Show();

    EXPECT_EQ(Locked([=] { return text->Frame(); }), BRect(10, 1, 48, 15));
}

} // namespace
