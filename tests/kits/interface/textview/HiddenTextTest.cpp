#include "TextViewFixture.h"

#include <ViewDescription.h>

namespace {

using namespace kits::testing;

// A field that hides what is typed.

class HiddenTextTest : public TextViewFixture
{
protected:
    void ShowHidden(const char* text)
    {
        AddText(text);
        fView->HideTyping(true);
        Show();
        Focus(fView);
    }
    float Width()
    {
        return Locked([this] { return fView->LineWidth(0); });
    }
};

TEST_F(HiddenTextTest, ShowsABulletForEachCharacter)
{
    // One byte, two, three, four, and one that is no text.
    ShowHidden("a\xc3\xa9\xe4\xbd\xa0\xf0\x9f\x98\x80\xff");

    const float hidden = Width();

    Locked([this] {
        fView->HideTyping(false);
        fView->SetText("\u2022\u2022\u2022\u2022\u2022");
        return 0;
    });
    EXPECT_EQ(hidden, Width());
    EXPECT_GT(hidden, 0);
}

TEST_F(HiddenTextTest, LooksTheSameWhateverItIs)
{
    ShowHidden("mmm");
    const Picture before = TakePicture(fWindow);

    Locked([this] {
        fView->SetText("i i");
        return 0;
    });

    const Picture after = TakePicture(fWindow);
    ASSERT_EQ(before.pixels.size(), after.pixels.size());
    EXPECT_TRUE(before.pixels == after.pixels);
}

TEST_F(HiddenTextTest, KeepsTheText)
{
    ShowHidden("one");

    TypeKey(B_END);
    TypeText(" two");
    TypeKey(B_BACKSPACE);

    EXPECT_EQ(Text(), "one tw");
    EXPECT_TRUE(Locked([this] { return fView->IsTypingHidden(); }));
}

TEST_F(HiddenTextTest, WordsAreNotToldApart)
{
    ShowHidden("one two three");

    TypeKey(B_RIGHT_ARROW, B_COMMAND_KEY);
    EXPECT_EQ(Selection(), "13-13");
    TypeKey(B_LEFT_ARROW, B_COMMAND_KEY);
    EXPECT_EQ(Selection(), "0-0");
    Click(fView, Inside(5), B_PRIMARY_MOUSE_BUTTON, 2);
    EXPECT_EQ(Selection(), "0-13");
}

TEST_F(HiddenTextTest, TellsNothingOfItsValue)
{
    ShowHidden("secret");

    const BViewDescription said = Locked([this] {
        BViewDescription description;
        fView->Describe(&description);
        return description;
    });

    EXPECT_EQ(said.value, "");
    EXPECT_EQ(said.role, BViewDescription::Role::kTextField);
    EXPECT_NE(said.states & BViewDescription::kHidesText, 0u);
}

} // namespace
